// Paths that are no calibration file are refused at once, by the load and
// by the save, and neither the model nor the path changes: folders,
// devices, FIFOs, sockets, and files too large or with too long a line. A
// read that blocked would hang: the test's time limit catches that.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "files/FileTestSupport.h"
#include "files/TextLineReader.h"

namespace {

// The one-star example with a star name of `length` characters, padded with
// empty lines behind its last section to `size` bytes.
std::string ExampleFile(std::size_t length, std::size_t size = 0) {
    auto lines = filetest::OneStarExampleLines();
    lines.at(4) = std::string(length, 'x');
    std::string text = filetest::JoinLines(lines);
    if (size > text.size()) text.resize(size, '\n');
    return text;
}

TEST(BoundedFiles, WhatIsNoRegularFileOrTooLargeIsRefusedAtOnce) {
    filetest::TempFolder dir;
    const std::size_t line = TextLineReader::kMaxLineBytes, size = TextLineReader::kMaxFileBytes;
    ASSERT_EQ(mkfifo(dir.File("fifo.AZT").c_str(), 0644), 0);
    const int sock = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, dir.File("socket.AZT").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    filetest::WriteBytes(dir.File("longest-line.AZT"), ExampleFile(line));
    filetest::WriteBytes(dir.File("too-long-line.AZT"), ExampleFile(line + 1));
    filetest::WriteBytes(dir.File("largest.AZT"), ExampleFile(0, size));
    filetest::WriteBytes(dir.File("too-large.AZT"), ExampleFile(0, size + 1));
    // clang-format off
    const struct { std::string path; bool regular, loads; } cases[] = {
        {dir.Path(), false, false}, {"/dev/zero", false, false}, {dir.File("fifo.AZT"), false, false},
        {dir.File("socket.AZT"), false, false},
        {dir.File("longest-line.AZT"), true, true}, {dir.File("too-long-line.AZT"), true, false},
        {dir.File("largest.AZT"), true, true}, {dir.File("too-large.AZT"), true, false}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = filetest::FreshModel();
        s->NumCalPoints = 3;
        EXPECT_EQ(LoadCalFile(*s, c.path), c.loads) << c.path;
        // A refused file is not read at all.
        EXPECT_EQ(s->NumCalPoints, c.loads ? 1 : 3) << c.path;
        if (c.regular) continue;
        struct stat before {};
        struct stat after {};
        ASSERT_EQ(stat(c.path.c_str(), &before), 0);
        EXPECT_FALSE(SaveCalFile(*s, c.path)) << c.path;
        ASSERT_EQ(stat(c.path.c_str(), &after), 0);
        EXPECT_EQ(after.st_mode, before.st_mode) << c.path;
    }
    close(sock);
}

}  // namespace

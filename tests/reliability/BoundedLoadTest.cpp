// Paths that are no calibration file are refused at once by the load and
// the save, and neither the model nor the path changes: folders, devices,
// FIFOs, files too large or with too long a line. A read that
// blocked would hang: the test's time limit catches that.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "files/FileTestSupport.h"
#include "files/TextLineReader.h"

namespace {

// The one-star example with a name of `length` characters, padded with
// empty lines behind its last section to `size` bytes.
std::string Example(std::size_t length, std::size_t size = 0) {
    auto lines = filetest::OneStarExampleLines();
    lines.at(4) = std::string(length, 'x');
    std::string text = filetest::JoinLines(lines);
    text.resize(std::max(size, text.size()), '\n');
    return text;
}

TEST(BoundedFiles, WhatIsNoRegularFileOrTooLargeIsRefusedAtOnce) {
    filetest::TempFolder dir;
    const std::size_t line = TextLineReader::kMaxLineBytes, size = TextLineReader::kMaxFileBytes;
    ASSERT_EQ(mkfifo(dir.File("fifo").c_str(), 0644), 0);
    const std::pair<const char*, std::string> files[] = {{"longest-line", Example(line)},
                                                         {"too-long-line", Example(line + 1)},
                                                         {"largest", Example(0, size)},
                                                         {"too-large", Example(0, size + 1)}};
    for (const auto& [name, bytes] : files) filetest::WriteBytes(dir.File(name), bytes);
    // clang-format off
    const struct { std::string path; bool regular, loads; } cases[] = {
        {dir.path, false, false}, {"/dev/zero", false, false}, {dir.File("fifo"), false, false},
        {dir.File("longest-line"), true, true},
        {dir.File("too-long-line"), true, false}, {dir.File("largest"), true, true},
        {dir.File("too-large"), true, false}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = filetest::FreshModel();
        s->NumCalPoints = 3;
        EXPECT_EQ(LoadCalFile(*s, c.path), c.loads) << c.path;
        EXPECT_EQ(s->NumCalPoints, c.loads ? 1 : 3) << c.path << ": a refused file is not read";
        if (c.regular) continue;
        struct stat before {};
        struct stat after {};
        ASSERT_EQ(stat(c.path.c_str(), &before), 0);
        EXPECT_FALSE(SaveCalFile(*s, c.path)) << c.path;
        ASSERT_EQ(stat(c.path.c_str(), &after), 0);
        EXPECT_EQ(after.st_mode, before.st_mode) << c.path << " is still what it was";
    }
}

}  // namespace

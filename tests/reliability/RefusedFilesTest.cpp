// Paths that are no file, files too large or with too long a line: refused
// at once, changing neither model nor path (a read that blocked would hang
// into the time limit). Numbers that are not finite, by the load and the fit.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sstream>

#include "app/FitCommand.h"
#include "files/FileTestSupport.h"
#include "files/TextLineReader.h"

namespace {

// The one-star example, its name `length` characters, padded to `size` bytes.
std::string Example(std::size_t length, std::size_t size = 0) {
    auto lines = filetest::OneStarExampleLines();
    lines.at(4) = std::string(length, 'x');
    std::string text = filetest::JoinLines(lines);
    text.resize(std::max(size, text.size()), '\n');
    return text;
}

TEST(RefusedFiles, WhatIsNoRegularFileOrTooLargeIsRefusedAtOnce) {
    filetest::TempFolder dir;
    const std::size_t line = TextLineReader::kMaxLineBytes, size = TextLineReader::kMaxFileBytes;
    ASSERT_EQ(mkfifo(dir.File("fifo").c_str(), 0644), 0);
    const struct { std::string path, bytes; bool loads; } cases[] = {
        {dir.path, "", false}, {"/dev/zero", "", false}, {dir.File("fifo"), "", false},
        {dir.File("longest-line"), Example(line), true},
        {dir.File("too-long-line"), Example(line + 1), false},
        {dir.File("largest"), Example(0, size), true},
        {dir.File("too-large"), Example(0, size + 1), false}};
    for (const auto& c : cases) {
        if (!c.bytes.empty()) filetest::WriteBytes(c.path, c.bytes);
        auto s = filetest::FreshModel();
        s->NumCalPoints = 3;
        EXPECT_EQ(LoadCalFile(*s, c.path), c.loads) << c.path;
        EXPECT_EQ(s->NumCalPoints, c.loads ? 1 : 3) << c.path << ": a refused file is not read";
        struct stat before {}, after {};
        ASSERT_EQ(stat(c.path.c_str(), &before), 0);
        EXPECT_TRUE(!c.bytes.empty() || !SaveCalFile(*s, c.path)) << c.path;
        ASSERT_EQ(stat(c.path.c_str(), &after), 0);
        EXPECT_EQ(after.st_mode, before.st_mode) << c.path << " is still what it was";
    }
}

TEST(RefusedFiles, NonFiniteNumbersFailTheLoadAndTheFitCommand) {
    // clang-format off
    // The example with a largest sensitivity of 150 (the default is 300).
    const struct { filetest::LineEdit edit; bool loads; double sens; int exit; const char* text; }
    cases[] = {
        {{"RA, Dec:", 0, 1, " 1e99999 "}, false, 300, kFitInvalidFile, "not a valid"},
        {{"Temperature, Pressure:", 0, 2, "-1e400 "}, false, 300, kFitInvalidFile, "not a valid"},
        // In an optional section it ends the reading as a truncation does.
        {{"Max Sensitivity:", 0, 1, " 1e99999 "}, true, 300, kFitOk, ""},
        // Finite numbers whose fit is not finite: no counts per turn.
        {{"CW Azimuth, MaxAzCounts:", 0, 2, " 0 "}, true, 150, kFitInvalidFile, "no finite"}};
    // clang-format on
    filetest::TempFolder dir;
    const std::string file = dir.File("run.AZT");
    const auto example =
        filetest::Edited(filetest::OneStarExampleLines(), {{"Max Sensitivity:", 0, 1, " 150 "}});
    for (const auto& c : cases) {
        filetest::WriteBytes(file, filetest::JoinLines(filetest::Edited(example, {c.edit})));
        auto s = filetest::FreshModel();
        EXPECT_EQ(LoadCalFile(*s, file), c.loads) << c.edit.text;
        EXPECT_EQ(s->MaxSensitivity, c.sens) << c.edit.text;
        std::ostringstream out, err;
        EXPECT_EQ(RunFitCommand({file}, out, err), c.exit) << c.edit.text << ": " << err.str();
        EXPECT_TRUE(*c.text ? err.str().find(c.text) != std::string::npos : err.str().empty())
            << err.str();
    }
}

}  // namespace

// Line-by-line reading of the program's text files (calibration, horizon,
// candidate points), with a test for the end of the file between lines.
// Every text reader of the program reads through this class, so the bounds
// below hold for all of them: a reader can neither hang on a path nor be
// made to take unbounded memory.
#pragma once

#include <cstddef>
#include <string>

class TextLineReader {
  public:
    // Largest file and longest line (without its line end) that are read.
    static constexpr std::size_t kMaxFileBytes = 16 * 1024 * 1024;
    static constexpr std::size_t kMaxLineBytes = 64 * 1024;

    // Opens the file and reads it whole. False, at once and without waiting
    // for anything, when it cannot be opened, when it is no regular file (a
    // folder, a device, a FIFO, a socket), when it holds more than
    // kMaxFileBytes, or when a line of it is longer than kMaxLineBytes: such
    // a file is refused before any line is handed out.
    bool Open(const std::string& FileName);

    // True when nothing is left to read (also when no file is open).
    bool AtEnd();

    // Reads the next line into Line, without its line end. A line ends at
    // carriage return and line feed, at a bare line feed (files edited on
    // Linux) or at a bare carriage return; the last line may have no line
    // end. False, with Line emptied, when nothing is left to read.
    bool ReadLine(std::string& Line);

    // Lines handed out since the file was opened: the number of the last.
    int LinesRead() const { return linesRead_; }

  private:
    std::string text_;  // the whole file
    std::size_t next_ = 0;
    int linesRead_ = 0;
};

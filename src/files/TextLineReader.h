// Line-by-line reading of the program's text files, with a test for the end
// of the file between lines.
#pragma once

#include <fstream>
#include <string>

class TextLineReader {
  public:
    // Opens the file for reading. False when it cannot be opened.
    bool Open(const std::string& FileName);

    // True when nothing is left to read (also when the file is not open or
    // a read has failed).
    bool AtEnd();

    // Reads the next line into Line, without its line end. A line ends at
    // carriage return and line feed, at a bare line feed (files edited on
    // Linux) or at a bare carriage return; the last line may have no line
    // end. False, with Line emptied, when nothing is left to read.
    bool ReadLine(std::string& Line);

  private:
    std::ifstream in_;
};

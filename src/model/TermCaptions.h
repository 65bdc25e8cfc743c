// Where each correction term stands in the Model Parameters window: its
// group (frame), and the row and column captions of its cell.
#pragma once

#include <string>

struct TermCaption {
    std::string Group;
    std::string Row;
    std::string Column;  // empty where the group has a single column
};

// Captions of term 1 to 46; an empty caption outside that range.
const TermCaption& TermCaptionOf(int term);

// "Group, Row" or "Group, Row, Column", trimmed, for reports.
std::string TermCaptionText(int term);

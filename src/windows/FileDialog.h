// One routine for every file chooser of the windows: open or save, with a
// filter list, a default extension and an initial name. The chooser is Qt's
// own (not the desktop's), so it looks the same everywhere and can be driven
// by a test.
#pragma once

#include <string>

class QWidget;

// Flag that hides the read-only box of the chooser; the only flag the
// windows pass.
inline constexpr long kHideReadOnly = 4;

// Prefix, Description, NUL, Pattern, NUL: one pair of a filter list. Pairs
// are joined to a list by passing an empty Prefix and adding the results.
std::string MakeFilter(const std::string& Prefix, const std::string& Description,
                       const std::string& Pattern = "*.*");

// What stands before the first NUL of Text, or all of Text.
std::string CutAtNull(const std::string& Text);

struct FileDialogArgs {
    long Flags = 0;            // in; on success the flags of the chooser
    std::string InitialDir;    // empty: the current folder
    std::string Filter;        // list made with MakeFilter
    int FilterIndex = 1;       // first filter shown, counted from 1
    std::string DefaultExt;    // added to a chosen name without extension
    std::string FileName;      // name shown at the start, cut to 256 characters
    std::string Title;         // chooser's title
    QWidget* Owner = nullptr;  // owner window
    bool OpenDialog = true;    // true: open, false: save
};

// Shows the chooser modally and returns the chosen path, or an empty text
// when it was cancelled or the path is longer than 255 characters. Neither
// kind asks about an existing file or tests that a file exists.
std::string ShowFileDialog(FileDialogArgs& Args);

// Why a text file of the program could not be used, for a message that says
// more than the reader's result. The results themselves stay as each file
// format has them.
#pragma once

struct LoadFailure {
    enum class Why {
        None,
        Unreadable,  // cannot be opened, no regular file, over 16 MB or a line over 64 kB
        TooMany,     // more entries than the table takes
        Truncated,   // ends inside an entry
        NotFinite,   // a number that does not fit a finite double
    };
    Why Reason = Why::None;
    int Line = 0;  // the line of the file where it failed, from 1; 0 for the whole file
};

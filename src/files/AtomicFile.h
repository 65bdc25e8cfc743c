// Crash-safe replacement of a whole file: every file the program saves goes
// through here (the trace log, which only grows by lines, does not), so that
// a save cut short by a crash, a kill, a full disk or a file-size limit
// leaves the old file as it was.
#pragma once

#include <string>

// Replaces the content of FileName by Bytes, or leaves it untouched. The
// bytes go to a new file in the same folder, are flushed to the disk, and
// that file is renamed over FileName in one step. A symbolic link is
// written through to the file it names, and a file that already exists
// keeps its permissions (and its owner, where the process may keep it).
// False, with the old file as it was and no temporary file left, when any
// step fails, when FileName exists and is no regular file (a folder, a
// device, a FIFO, a socket) or when the existing file is write-protected;
// errno then tells why (EISDIR for a folder, EINVAL for another path that
// is no regular file).
// Images and other outputs are written by making their bytes in memory
// first and handing them here.
bool WriteFileAtomically(const std::string& FileName, const std::string& Bytes);

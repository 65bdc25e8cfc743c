// Where this platform keeps the user's documents.
#pragma once

#include <string>

// $XDG_DOCUMENTS_DIR, else the XDG_DOCUMENTS_DIR entry of
// ~/.config/user-dirs.dirs (with $HOME expanded), else $HOME/Documents.
// Without a trailing "/". Empty when not even $HOME is known.
std::string DocumentsFolder();

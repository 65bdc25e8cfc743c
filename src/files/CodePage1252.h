// Conversion between the program's UTF-8 text and the single-byte
// Windows-1252 text of its data files, so that files made on Windows load
// here and files saved here open there.
#pragma once

#include <string>

// UTF-8 to Windows-1252. A character with no Windows-1252 form, and any byte
// that is not part of a well-formed UTF-8 sequence, becomes "?".
std::string Utf8ToCp1252(const std::string& Text);

// Windows-1252 to UTF-8. The five byte values that Windows-1252 leaves
// unassigned (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the control characters
// of the same number, as Windows reads them, so that they come back
// unchanged through Utf8ToCp1252.
std::string Cp1252ToUtf8(const std::string& Text);

#include "files/TextLineReader.h"

bool TextLineReader::Open(const std::string& FileName) {
    in_.open(FileName, std::ios::in | std::ios::binary);
    return in_.is_open();
}

bool TextLineReader::AtEnd() {
    if (!in_.is_open() || !in_.good()) return true;
    return in_.peek() == std::char_traits<char>::eof();
}

bool TextLineReader::ReadLine(std::string& Line) {
    Line.clear();
    if (AtEnd()) return false;
    using Traits = std::char_traits<char>;
    for (;;) {
        const Traits::int_type c = in_.get();
        if (Traits::eq_int_type(c, Traits::eof())) break;
        if (c == '\n') break;
        if (c == '\r') {
            if (in_.peek() == '\n') in_.get();
            break;
        }
        Line += Traits::to_char_type(c);
    }
    // A read that stopped at the end of the file leaves eofbit set; clear it
    // so that AtEnd reports the end through peek and not as a failure.
    if (in_.eof() && !in_.bad()) in_.clear();
    return true;
}

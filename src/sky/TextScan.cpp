#include "sky/TextScan.h"

std::string TrimBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

TextMark FindFirstKind(const std::string& text, std::initializer_list<std::string_view> kinds) {
    for (std::string_view kind : kinds) {
        const std::size_t pos = text.find(kind);
        if (pos != std::string::npos) return TextMark{true, pos, kind.size()};
    }
    return TextMark{};
}

std::string TextBefore(const std::string& text, const TextMark& mark) {
    return text.substr(0, mark.Pos);
}

std::string TextBehind(const std::string& text, const TextMark& mark) {
    return text.substr(mark.Pos + mark.Length);
}

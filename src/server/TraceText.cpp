#include "server/TraceText.h"

std::string CallText(const std::string& Name, std::initializer_list<std::string> Args) {
    std::string text = Name + "(";
    bool first = true;
    for (const std::string& arg : Args) {
        if (!first) text += ", ";
        text += arg;
        first = false;
    }
    return text + ")";
}

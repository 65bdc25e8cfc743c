#include "files/DocumentsFolder.h"

#include <cstdlib>
#include <fstream>

namespace {

std::string EnvText(const char* name) {
    const char* v = std::getenv(name);
    return v ? std::string(v) : std::string();
}

std::string StripTrailingSlash(std::string s) {
    while (s.size() > 1 && s.back() == '/') s.pop_back();
    return s;
}

// Reads the value of XDG_DOCUMENTS_DIR="..." from user-dirs.dirs.
std::string FromUserDirsFile(const std::string& home) {
    std::string config = EnvText("XDG_CONFIG_HOME");
    if (config.empty()) config = home + "/.config";
    std::ifstream in(config + "/user-dirs.dirs");
    std::string line;
    const std::string key = "XDG_DOCUMENTS_DIR=";
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.compare(0, key.size(), key) != 0) continue;
        std::string value = line.substr(key.size());
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        const std::string homeVar = "$HOME";
        if (value.compare(0, homeVar.size(), homeVar) == 0)
            value = home + value.substr(homeVar.size());
        return value;
    }
    return {};
}

}  // namespace

std::string DocumentsFolder() {
    std::string fromEnv = EnvText("XDG_DOCUMENTS_DIR");
    if (!fromEnv.empty()) return StripTrailingSlash(fromEnv);
    std::string home = EnvText("HOME");
    if (home.empty()) return {};
    std::string fromFile = FromUserDirsFile(home);
    if (!fromFile.empty()) return StripTrailingSlash(fromFile);
    return StripTrailingSlash(home) + "/Documents";
}

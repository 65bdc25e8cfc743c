// Scratch files of a fuzz target whose reader takes a file name: a folder
// private to the process, made once and removed at its end.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "FuzzCheck.h"

inline std::string& ScratchFolder() {
    static std::string folder;
    return folder;
}

// For LLVMFuzzerInitialize.
inline void MakeScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "aztrue-fuzz-XXXXXX").string();
    FuzzCheck(mkdtemp(pattern.data()) != nullptr, "a private temporary folder can be made");
    ScratchFolder() = pattern;
    std::atexit([] { std::filesystem::remove_all(ScratchFolder()); });
}

// Writes the bytes as the file Name of the folder and gives its full path.
inline std::string WriteScratchFile(const std::string& Name, const uint8_t* data, size_t size) {
    const std::string path = ScratchFolder() + "/" + Name;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    FuzzCheck(f != nullptr, "the input can be written");
    const bool written = std::fwrite(data, 1, size, f) == size;
    FuzzCheck(std::fclose(f) == 0 && written, "the input can be written");
    return path;
}

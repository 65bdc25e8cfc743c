#include "app/ProgramFolder.h"

#include <filesystem>

#include "autoalign/AlignPoints.h"

std::string FindProgramFolder() {
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::path bin = fs::read_symlink("/proc/self/exe", ec).parent_path();
    if (!ec) {
        for (const fs::path& folder : {bin, (bin / AZTRUE_DATA_FROM_BIN).lexically_normal()}) {
            if (fs::is_regular_file(folder / kPointsFileName, ec)) return folder.string();
        }
    }
    return AZTRUE_INSTALLED_DATA_DIR;
}

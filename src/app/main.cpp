// The aztrue executable: command-line entry point.
#include <cstring>
#include <iostream>

#include "model/ModelState.h"

int main(int argc, char** argv) {
    if (argc >= 2 && std::strcmp(argv[1], "--version") == 0) {
        ModelState state;
        InitModel(state);
        std::cout << state.Version << "\n";
        return 0;
    }
    std::cerr << "usage: aztrue --version\n";
    return 2;
}

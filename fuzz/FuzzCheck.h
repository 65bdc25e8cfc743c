// The one way a fuzz target reports a broken property: a message and an
// abort, which libFuzzer records as a crash together with its input.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void FuzzCheck(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
}

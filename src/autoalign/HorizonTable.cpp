#include "autoalign/HorizonTable.h"

#include <utility>

#include "autoalign/CombSort.h"

namespace {

// Keeps the first of each run of equal azimuths of the sorted entries 1 to
// h.Num; entry 0 (azimuth 0) drops every sample at azimuth 0. Returns the
// count kept. In place: entry i - 1 is never overwritten before entry i is
// compared with it.
int DropDuplicates(HorizonRecord& h) {
    int kept = 0;
    for (int i = 1; i <= h.Num; ++i) {
        if (h.Az[i] > h.Az[i - 1]) {
            ++kept;
            h.Az[kept] = h.Az[i];
            h.El[kept] = h.El[i];
        }
    }
    return kept;
}

// The table of 360 elevations from the M sorted samples of h (and entry 0),
// by straight lines in azimuth; behind the last sample the line runs back
// to entry 0 at 360 degrees.
void BuildTable(const HorizonRecord& h, int M, HorizonRecord& Hrz) {
    int k = 1;
    for (int a = 0; a <= 359; ++a) {
        double el = h.El[0];
        if (M != 0) {
            while (h.Az[k] < a && k < M) ++k;
            const bool behindLast = h.Az[k] < a;
            const int left = behindLast ? k : k - 1;
            const int right = behindLast ? 0 : k;
            const double Az1 = h.Az[left];
            const double El1 = h.El[left];
            const double Az2 = h.Az[right] == 0 ? 360 : h.Az[right];
            const double El2 = h.El[right];
            el = Az2 > Az1 ? (El2 - El1) * (a - Az1) / (Az2 - Az1) + El1 : El1;
        }
        Hrz.Az[a] = a;
        Hrz.El[a] = el;
    }
    Hrz.Num = 360;
}

}  // namespace

void SortHorizon(HorizonRecord& Hrz) {
    int n = Hrz.Num;
    if (n < 0) n = 0;
    if (n > kHorizonTableSize - 1) n = kHorizonTableSize - 1;
    CombSort(
        n / 2, n, [&](int j, int i) { return Hrz.Az[j] > Hrz.Az[i]; },
        [&](int j, int i) {
            std::swap(Hrz.Az[j], Hrz.Az[i]);
            std::swap(Hrz.El[j], Hrz.El[i]);
        });
}

void HorizonFromSamples(HorizonRecord& Samples, HorizonRecord& Hrz) {
    SortHorizon(Samples);
    BuildTable(Samples, DropDuplicates(Samples), Hrz);
}

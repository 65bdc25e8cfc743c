// The comb sort of both tables of the planner (the skyline samples and the
// alignment list).
#pragma once

// Sorts entries 0 to Last by rising key, starting with FirstGap; each next
// gap is the whole part of gap / 1.3. Greater(j, i) tells whether entry j
// has the greater key, Swap(j, i) exchanges two entries. At gap 1 an entry
// that moved down is compared again further down, so the last pass finishes
// the order. Equal keys are never swapped.
template <class GreaterFn, class SwapFn>
void CombSort(int FirstGap, int Last, GreaterFn Greater, SwapFn Swap) {
    int gap = FirstGap;
    while (gap > 0) {
        int i = gap;
        while (i <= Last) {
            const int j = i - gap;
            if (Greater(j, i)) {
                Swap(j, i);
                if (gap == 1 && j >= 1) {
                    i = j;
                    continue;
                }
            }
            ++i;
        }
        gap = static_cast<int>(gap / 1.3);
    }
}

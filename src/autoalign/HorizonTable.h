// The site's skyline as a table of 360 elevations, one per whole degree of
// azimuth, made from samples by straight lines in azimuth. Entry 0 of the
// samples (azimuth 0, elevation 0) is both ends of the ring, so the skyline
// comes down to 0 at north whatever the samples say near it.
#pragma once

#include "model/AutoAlignRecords.h"

// Sorts entries 0 to Hrz.Num by rising Az, elevations moving with them.
void SortHorizon(HorizonRecord& Hrz);

// Turns the samples in entries 1 to Samples.Num (entry 0 azimuth 0,
// elevation 0; azimuths 0 to 360, in any order) into the table of Hrz:
// entries 0 to 359 with Az[a] = a and the elevation there, Num 360. Of equal
// azimuths the first after sorting counts; a sample at azimuth 0 none.
// Samples is sorted on the way.
void HorizonFromSamples(HorizonRecord& Samples, HorizonRecord& Hrz);

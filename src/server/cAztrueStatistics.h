// The statistics of the fit for an automation client: how well each active
// term is determined, how the model fares on points it has not seen, and
// which terms move together. A second face of the server object beside
// cAztrue, over the same shared model, holding nothing of its own.
//
// Every member fits again first (Calibrate, then ComputeResiduals), as
// GetErrors does, so a client always sees the statistics of a fresh fit; the
// windows are not refreshed. Angles are radians. Each member writes its
// trace line first, like every member of cAztrue.
#pragma once

#include <cstdint>
#include <vector>

struct ModelState;

class cAztrueStatistics {
  public:
    explicit cAztrueStatistics(ModelState& Model);
    // The same over the process-wide model.
    cAztrueStatistics();

    // The active terms in rising order, each with its value (for terms 1 to
    // 4 the offset or rotation it was moved into, with its coefficient) and
    // its standard error, NaN when the points leave no freedom (2N <= k).
    void GetTermStatistics(std::vector<int16_t>& Terms, std::vector<double>& Coef,
                           std::vector<double>& Sigma);
    // RMS and largest error of the used points, each measured against the
    // fit made without it: one more fit per used point.
    void GetCrossValidatedErrors(double& RMS, double& Max);
    // The pairs of active terms whose correlation exceeds Limit in size; a
    // negative Limit gives every pair.
    void GetCorrelations(double Limit, std::vector<int16_t>& TermA, std::vector<int16_t>& TermB,
                         std::vector<double>& Rho);

    // At most Count directions (0 to kMaxSuggestedPoints) where the next
    // stars would pin the active terms down best, in the order to walk:
    // azimuth from north through east and elevation, radians. The candidates
    // are Points.txt of the program's folder above the model's skyline;
    // false, with both lists empty, when that file cannot be read.
    bool SuggestPoints(int Count, std::vector<double>& Azimuth, std::vector<double>& Elevation);

  private:
    void FitAgain();

    ModelState& model_;
};

// The server tests' recording display, fresh server and perfect mount.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

#include "model/ModelState.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"

using Calls = std::vector<std::string>;
constexpr double kTruePi = 3.14159265358979323846;  // the program's own is 3.141592654

#define RECORD(member) void member() override { Record(#member); }
class CountingDisplay : public DisplayRefresh {
  public:
    RECORD(DisplayCalPoints) RECORD(UpdateGraph) RECORD(MakeGraph) RECORD(DisplayData)
    RECORD(ProcessPendingEvents) RECORD(ShowMain) RECORD(KillWindows) RECORD(DisposeAll)
    void FileNameChanged(const std::string& name) override { Record("FileNameChanged " + name); }
    void Record(const std::string& name) {
        calls.push_back(name);
        if (onCall) onCall(name);  // a test's look inside the call
    }
    Calls calls;
    std::function<void(const std::string&)> onCall;
};

// The object ends first, without a test's hook (whose locals are gone).
class ServerTest : public ::testing::Test {
  protected:
    ~ServerTest() override { display.onCall = nullptr, server.reset(); }
    int Recalculations() const {
        return int(std::count(display.calls.begin(), display.calls.end(), "UpdateGraph"));
    }
    std::unique_ptr<ModelState> model = std::make_unique<ModelState>();
    CountingDisplay display;
    RecalcChain chain{*model, display};
    std::unique_ptr<cAztrue> server = std::make_unique<cAztrue>(chain);
};

// Six stars high above the default site (latitude 33.5), spread so that the
// four lowest terms are well determined, read by the fresh server's perfect
// mount plus phiShift; star `spoiled` (1-based) reads 0.01 more on Theta.
inline void AddSixStars(cAztrue& server, double phiShift = 0, int spoiled = 0) {
    const double lst = 1.0, jd = 2451545.25, hourAngle[6] = {-1.0, -0.5, 0.0, 0.5, 1.0, 1.5};
    const double dec[6] = {0.2, 0.8, -0.1, 0.5, 1.1, 0.3};
    double theta[6], phi[6];
    for (int i = 0; i < 6; ++i)
        server.CelestialToEncoder(lst, jd, lst - hourAngle[i], dec[i], 1, theta[i], phi[i]);
    for (int i = 0; i < 6; ++i)
        server.AddCalPoint(phi[i] + phiShift, theta[i] + (i + 1 == spoiled ? 0.01 : 0),
                           lst - hourAngle[i], dec[i], lst, jd, "", "");
}

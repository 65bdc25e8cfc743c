// Shared pieces of the server tests: a display that records every call,
// a fixture with a fresh model and server object, and synthetic stars.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/ModelState.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"

// Records the name of every call in order; an optional hook runs inside
// each call, to look at the model or the chain at that moment.
class CountingDisplay : public DisplayRefresh {
  public:
    void DisplayCalPoints() override { Record("DisplayCalPoints"); }
    void UpdateGraph() override { Record("UpdateGraph"); }
    void MakeGraph() override { Record("MakeGraph"); }
    void DisplayData() override { Record("DisplayData"); }
    void ProcessPendingEvents() override { Record("ProcessPendingEvents"); }
    void ShowMain() override { Record("ShowMain"); }
    void KillWindows() override { Record("KillWindows"); }
    void DisposeAll() override { Record("DisposeAll"); }
    void FileNameChanged(const std::string& FullFileName) override {
        fileName = FullFileName;
        Record("FileNameChanged");
    }

    int Count(const std::string& name) const {
        int n = 0;
        for (const auto& c : calls) n += (c == name) ? 1 : 0;
        return n;
    }

    std::vector<std::string> calls;
    std::string fileName;
    std::function<void(const std::string&)> onCall;

  private:
    void Record(const std::string& name) {
        calls.push_back(name);
        if (onCall) onCall(name);
    }
};

// A fresh all-zero model, its main window object over a counting display,
// and one server object created on them. Declared in this order so that
// the server object ends first, while the display still exists.
class ServerTest : public ::testing::Test {
  protected:
    // A test's hook may look at the test's own locals, gone by now: the
    // object's end reaches the display without it.
    ~ServerTest() override {
        display.onCall = nullptr;
        server.reset();
    }

    std::unique_ptr<ModelState> model = std::make_unique<ModelState>();
    CountingDisplay display;
    RecalcChain chain{*model, display};
    std::unique_ptr<cAztrue> server = std::make_unique<cAztrue>(chain);

    // Number of full recalculations so far: UpdateGraph runs once in each.
    int Recalculations() const { return display.Count("UpdateGraph"); }
};

// A star of a calibration run, as mean J2000 place and time.
struct SyntheticStar {
    double RA;
    double Dec;
    double LST;
    double JD;
};

// Six stars well above the horizon of the default site (latitude 33.5),
// spread over hour angle and declination so that the four lowest terms
// are well determined.
inline std::vector<SyntheticStar> SixStars() {
    const double lst = 1.0;
    const double jd = 2451545.25;
    const double hourAngle[6] = {-1.0, -0.5, 0.0, 0.5, 1.0, 1.5};
    const double dec[6] = {0.2, 0.8, -0.1, 0.5, 1.1, 0.3};
    std::vector<SyntheticStar> stars;
    for (int i = 0; i < 6; ++i) stars.push_back({lst - hourAngle[i], dec[i], lst, jd});
    return stars;
}

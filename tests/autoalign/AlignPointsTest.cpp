// Alignment point lists from small candidate files written for each test,
// with every choice worked out by hand in the comments.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "autoalign/AlignPoints.h"
#include "files/FileTestSupport.h"
#include "model/ModelState.h"

namespace {

struct Candidate {
    std::string Name;
    double X, Y, Z;
};

// The last is an alt-az mount whose German flag is set, which the window's
// mount type 0 does.
enum Mount { kAltAz, kFork, kGem, kAltAzGemFlag };

// A model at Latitude with the mount, reading Points.txt made of Points.
struct Planner {
    filetest::TempFolder Dir;
    std::unique_ptr<ModelState> s = filetest::FreshModel();

    Planner(const std::vector<Candidate>& Points, double Latitude, Mount m) {
        std::ostringstream text;
        text.precision(17);
        for (const Candidate& c : Points) text << c.X << "\n" << c.Y << "\n" << c.Z << "\n";
        filetest::WriteBytes(Dir.File(kPointsFileName), text.str());
        s->ProgramFolder = Dir.path;
        s->Latitude = Latitude;
        s->IsAltAz = m == kAltAz || m == kAltAzGemFlag;
        s->IsGEM = m == kGem || m == kAltAzGemFlag;
    }

    // The names of the list's entries, in the list's order, each checked for
    // its number on the plot unless the list is not numbered yet.
    std::string List(const std::vector<Candidate>& Points, bool Numbered = true) const {
        std::string names;
        for (int i = 0; i < s->NumAutoAlign; ++i) {
            const AutoAlignPoint& p = s->AutoAlignPoints[i];
            for (const Candidate& c : Points)
                if (c.X == p.X && c.Y == p.Y && c.Z == p.Z) names += " " + c.Name;
            if (Numbered && p.Index != i + 1) names += " (bad Index)";
        }
        return names;
    }
};

// At latitude 52 the pole stands at elevation 52 in the north, about
// (0.6157, 0, 0.7880); at -52 in the south, (-0.6157, 0, 0.7880). The first
// candidate is 0.1 radian from the zenith toward the east, "half-deg" and
// "west-2deg" stand 0.5 and 2 degrees above the horizon.
const std::vector<Candidate> kZones = {
    {"near-zenith", 0, std::sin(0.1), std::cos(0.1)},
    {"north-pole", 0.6157, 0, 0.788},
    {"south", -0.8, 0, 0.6},
    {"east", 0, 0.8, 0.6},
    {"half-deg", std::cos(0.0087266), 0, std::sin(0.0087266)},
    {"west-2deg", 0, -std::cos(0.0349066), std::sin(0.0349066)},
};

TEST(AlignPointFilter, SkylineAndTheZonesOfEachMount) {
    // The flat skyline keeps what stands more than 1 degree up. Alt-az loses
    // the zenith cap (Theta < 0.15), whatever the German flag; equatorial the
    // pole (chord < 0.15); German also the meridian (|Y| < 0.05; the first
    // candidate has |Y| = 0.0998).
    const struct {
        double Latitude;
        Mount m;
        const char* Kept;
    } cases[] = {
        {52, kAltAz, " north-pole south east west-2deg"},
        {52, kAltAzGemFlag, " north-pole south east west-2deg"},
        {52, kFork, " near-zenith south east west-2deg"},
        {52, kGem, " near-zenith east west-2deg"},
        // South of the equator the pole is the southern one: the candidate in
        // the north stays, and "south" is 0.26 away from (-0.6157, 0, 0.788).
        {-52, kFork, " near-zenith north-pole south east west-2deg"},
    };
    for (const auto& c : cases) {
        Planner p(kZones, c.Latitude, c.m);
        ASSERT_TRUE(ReadAutoAlignPoints(*p.s));
        FilterAutoAlignPoints(*p.s);
        EXPECT_EQ(p.List(kZones, false), c.Kept) << "latitude " << c.Latitude << ", mount " << c.m;
    }
}

TEST(AlignPointChoice, NearestToTheSeedThenFarthestFromTheChosen) {
    // Fork mount at latitude 0 (pole on the north horizon): distances are
    // plain chords. Seed (-0.4, -0.4, 0.8) / sqrt(0.96) = (-0.40825,
    // -0.40825, 0.81650): south and west both at 0.19175^2 + 0.40825^2 +
    // 0.0165^2 (the same squares in another order: the same double), east
    // and north farther; the lower index, south, comes first. Chords from
    // south: north 1.2, east and west both sqrt(0.72): north second. Then
    // east and west are both sqrt(0.72) from south and from north: east,
    // the lower index, third. Order "Rnd" keeps the file's order.
    const std::vector<Candidate> points = {{"east", 0, 0.6, 0.8},
                                           {"south", -0.6, 0, 0.8},
                                           {"west", 0, -0.6, 0.8},
                                           {"north", 0.6, 0, 0.8}};
    const struct {
        int Target;
        const char* List;
    } cases[] = {{-5, " south"},
                 {0, " south"},
                 {1, " south"},
                 {2, " south north"},
                 {3, " east south north"},
                 {9, " east south west north"}};
    for (const auto& c : cases) {
        Planner p(points, 0, kFork);
        p.s->AutoAlignTarget = c.Target;
        p.s->AutoAlignOrder = kOrderRnd;
        EXPECT_TRUE(MakeAutoAlignPoints(*p.s));
        EXPECT_EQ(p.List(points), c.List) << "target " << c.Target;
    }
}

TEST(AlignPointChoice, AltAzDistanceAddsThetaAndTheShorterAzimuth) {
    auto s = filetest::FreshModel();
    auto& t = s->AutoAlignPoints;
    // Zenith and east at elevation 36.87: chord sqrt(0.36 + 0.04) =
    // 0.632455532, dTheta acos(0.8) = 0.643501109, dPhi 1.570796327:
    // 0.632455532 + 0.321750554 + 0.314159265 = 1.268365351. Then one place
    // at azimuths 0.1 and 6.1: the short way round is 6.283185308 - 6.
    t[0] = {0, 0, 1, 0, 0};
    t[1] = {0, 0.6, 0.8, 1.570796327, 0.643501109};
    t[2] = {1, 0, 0, 0.1, 1};
    t[3] = {1, 0, 0, 6.1, 1};
    s->IsAltAz = true;
    EXPECT_NEAR(PointDistance(*s, 0, 1), 1.268365351, 2e-9);
    EXPECT_NEAR(PointDistance(*s, 1, 0), 1.268365351, 2e-9);
    EXPECT_NEAR(PointDistance(*s, 2, 3), 0.2 * 0.283185308, 2e-9);
    s->IsAltAz = false;
    EXPECT_NEAR(PointDistance(*s, 0, 1), 0.632455532, 2e-9);
}

TEST(AlignPointOrder, EachOrderStartsAndRunsItsWay) {
    // Five places at elevation 45, in Points.txt in this order (the smallest
    // azimuth last, which the last pass of the sort has to carry to the top).
    std::vector<Candidate> points;
    for (int az : {100, 170, 190, 350, 10}) {
        const double a = az * std::acos(-1.0) / 180;
        points.push_back({std::to_string(az), std::cos(a) / std::sqrt(2.0),
                          std::sin(a) / std::sqrt(2.0), 1 / std::sqrt(2.0)});
    }
    const char* const walks[] = {
        " 10 100 170 190 350",  // NE: from just east of north, rising
        " 350 190 170 100 10",  // NW: from just west of north, falling
        " 170 100 10 350 190",  // SE: from just east of south, falling
        " 190 350 10 100 170",  // SW: from just west of south, rising
        " 100 170 190 350 10",  // Rnd: the file's order
    };
    for (int order = 0; order <= 4; ++order) {
        Planner p(points, 52, kAltAz);
        p.s->AutoAlignTarget = 5;
        p.s->AutoAlignOrder = static_cast<int16_t>(order);
        MakeAutoAlignPoints(*p.s);
        EXPECT_EQ(p.List(points), walks[order]) << "order " << order;
    }
}

TEST(AlignPointRead, AFailedReadLeavesTheTable) {
    const std::string one = "0.6\n0\n0.8\n";
    std::string many;
    for (int i = 0; i < 501; ++i) many += one;
    const struct {
        const char* Name;
        std::string Text;
        bool Ok;
        int Count;
    } cases[] = {{"501 candidates", many, true, 501},
                 {"502 candidates", many + one, false, 7},
                 {"ends inside a group", one + "0.6\n0\n", false, 7},
                 {"beyond a double", "1e99999\n0\n0\n", false, 7}};
    for (const auto& c : cases) {
        Planner p({}, 52, kAltAz);
        filetest::WriteBytes(p.Dir.File(kPointsFileName), c.Text);
        p.s->NumAutoAlign = 7;
        EXPECT_EQ(ReadAutoAlignPoints(*p.s), c.Ok) << c.Name;
        EXPECT_EQ(p.s->NumAutoAlign, c.Count) << c.Name;
    }
    Planner missing({}, 52, kAltAz);
    missing.s->ProgramFolder = missing.Dir.File("no-such-folder");
    EXPECT_FALSE(ReadAutoAlignPoints(*missing.s));
}

}  // namespace

// Alignment point lists from small candidate files, every choice worked by hand.
#include <gtest/gtest.h>

#include <sstream>

#include "autoalign/AlignPoints.h"
#include "files/FileTestSupport.h"

namespace {

struct Candidate { std::string Name; double X, Y, Z; };
// The last: alt-az with the German flag set, as mount type 0 may leave it.
enum Mount { kAltAz, kFork, kGem, kAltAzGemFlag };

// A model at Latitude with the mount, reading Points.txt made of Points.
struct Planner {
    filetest::TempFolder Dir;
    std::unique_ptr<ModelState> s = filetest::FreshModel();
    std::vector<Candidate> Points;

    Planner(const std::vector<Candidate>& P, double Latitude, Mount m, std::string Text = "")
        : Points(P) {
        std::ostringstream text;
        text.precision(17);  // the doubles themselves come back
        for (const Candidate& c : P) text << c.X << "\n" << c.Y << "\n" << c.Z << "\n";
        filetest::WriteBytes(Dir.File(kPointsFileName), Text + text.str());
        s->ProgramFolder = Dir.path, s->Latitude = Latitude;
        s->IsAltAz = m == kAltAz || m == kAltAzGemFlag, s->IsGEM = m == kGem || m == kAltAzGemFlag;
    }
    // The list's names in order, each checked for its number on the plot.
    std::string List(bool Numbered = true) const {
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

TEST(AlignPointFilter, SkylineAndTheZonesOfEachMount) {
    // The pole at latitude 52 is (0.6157, 0, 0.7880), at -52 (-0.6157, 0,
    // 0.7880). The flat skyline keeps what is over 1 degree up. Alt-az loses
    // the zenith cap (Theta < 0.15) whatever the German flag, equatorial the
    // pole (chord < 0.15; "south" is 0.26 from the southern one), German also
    // the meridian (|Y| < 0.05; "near-zenith" has 0.0998).
    const std::vector<Candidate> zones = {
        {"near-zenith", 0, std::sin(0.1), std::cos(0.1)}, {"north-pole", 0.6157, 0, 0.788},
        {"south", -0.8, 0, 0.6}, {"east", 0, 0.8, 0.6},
        {"half-deg", std::cos(0.0087266), 0, std::sin(0.0087266)},
        {"west-2deg", 0, -std::cos(0.0349066), std::sin(0.0349066)}};
    const struct { double Latitude; Mount m; const char* Kept; } cases[] = {
        {52, kAltAz, " north-pole south east west-2deg"}, {52, kGem, " near-zenith east west-2deg"},
        {52, kAltAzGemFlag, " north-pole south east west-2deg"},
        {52, kFork, " near-zenith south east west-2deg"},
        {-52, kFork, " near-zenith north-pole south east west-2deg"}};
    for (const auto& c : cases) {
        Planner p(zones, c.Latitude, c.m);
        ASSERT_TRUE(ReadAutoAlignPoints(*p.s));
        FilterAutoAlignPoints(*p.s);
        EXPECT_EQ(p.List(false), c.Kept) << "latitude " << c.Latitude << ", mount " << c.m;
    }
}

TEST(AlignPointChoice, NearestToTheSeedThenFarthestFromTheChosen) {
    // Fork at latitude 0, distances are chords. Seed (-0.4, -0.4, 0.8) /
    // sqrt(0.96): south and west equally near (the same squares in another
    // order), south has the lower index. From south, north 1.2, east and west
    // sqrt(0.72): north. Then east and west tie: east, the lower index.
    const std::vector<Candidate> points = {{"east", 0, 0.6, 0.8}, {"south", -0.6, 0, 0.8},
                                           {"west", 0, -0.6, 0.8}, {"north", 0.6, 0, 0.8}};
    const std::pair<int, const char*> cases[] = {  // "Rnd" keeps the file's order
        {-5, " south"}, {0, " south"}, {1, " south"}, {2, " south north"},
        {3, " east south north"}, {9, " east south west north"}};
    for (const auto& [target, list] : cases) {
        Planner p(points, 0, kFork);
        p.s->AutoAlignTarget = target, p.s->AutoAlignOrder = kOrderRnd;
        EXPECT_TRUE(MakeAutoAlignPoints(*p.s));
        EXPECT_EQ(p.List(), list) << "target " << target;
    }
    // Alt-az: zenith and east at elevation 36.87, chord 0.632455532, plus
    // half of dTheta acos(0.8) and a fifth of dPhi pi/2: 1.268365351. At
    // azimuths 0.1 and 6.1 the short way round is 6.283185308 - 6.
    Planner p({}, 0, kAltAz);
    auto& t = p.s->AutoAlignPoints;
    t[0] = {0, 0, 1, 0, 0}, t[1] = {0, 0.6, 0.8, 1.570796327, 0.643501109};
    t[2] = {1, 0, 0, 0.1, 1}, t[3] = {1, 0, 0, 6.1, 1};
    EXPECT_NEAR(PointDistance(*p.s, 0, 1), 1.268365351, 2e-9);
    EXPECT_NEAR(PointDistance(*p.s, 2, 3), 0.2 * 0.283185308, 2e-9);
    p.s->IsAltAz = false;
    EXPECT_NEAR(PointDistance(*p.s, 0, 1), 0.632455532, 2e-9);
}

TEST(AlignPointOrder, EachOrderStartsAndRunsItsWay) {
    // Elevation 45, the smallest azimuth last: the sort's last pass lifts it.
    std::vector<Candidate> points;
    for (int az : {100, 170, 190, 350, 10}) {
        const double a = az * std::acos(-1.0) / 180, h = 1 / std::sqrt(2.0);
        points.push_back({std::to_string(az), std::cos(a) * h, std::sin(a) * h, h});
    }
    const char* const walks[] = {
        " 10 100 170 190 350",  // NE: from just east of north, rising
        " 350 190 170 100 10",  // NW: from just west of north, falling
        " 170 100 10 350 190",  // SE: from just east of south, falling
        " 190 350 10 100 170",  // SW: from just west of south, rising
        " 100 170 190 350 10"};  // Rnd: the file's order
    for (int16_t order = 0; order <= 4; ++order) {
        Planner p(points, 52, kAltAz);
        p.s->AutoAlignTarget = 5, p.s->AutoAlignOrder = order;
        MakeAutoAlignPoints(*p.s);
        EXPECT_EQ(p.List(), walks[order]) << "order " << order;
    }
}

TEST(AlignPointRead, AFailedReadLeavesTheTable) {
    const std::string one = "0.6\n0\n0.8\n", many = filetest::JoinLines(
        std::vector<std::string>(501, "0.6\n0\n0.8"), "\n");
    const struct { const char* Name; std::string Text; bool Ok; int Count; } cases[] = {
        {"501 candidates", many, true, 501}, {"502 candidates", many + one, false, 7},
        {"ends inside a group", one + "0.6\n0\n", false, 7},
        {"beyond a double", "1e99999\n0\n0\n", false, 7}};
    for (const auto& c : cases) {
        Planner p({}, 52, kAltAz, c.Text);
        p.s->NumAutoAlign = 7;
        EXPECT_EQ(ReadAutoAlignPoints(*p.s), c.Ok) << c.Name;
        EXPECT_EQ(p.s->NumAutoAlign, c.Count) << c.Name;
    }
    Planner missing({}, 52, kAltAz);
    missing.s->ProgramFolder = missing.Dir.File("no-such-folder");
    EXPECT_FALSE(ReadAutoAlignPoints(*missing.s));
}

}  // namespace

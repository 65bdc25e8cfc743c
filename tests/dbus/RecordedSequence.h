// A recorded call sequence of a client's evening: site, presets, 30 stars,
// fit reads, residuals, conversions both ways, tracking, guiding, the
// Jacobian, the field angle and its rate, the clock, a save and a load, and
// points removed and taken out of the fit. Written once over any client
// with the members of cAztrue, it records every number and text that comes
// back, so that two clients can be compared to the last bit.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "model/SyntheticCalibration.h"

namespace bustest {

// What came back, in call order, each with the call that gave it.
struct Record {
    std::vector<std::string> labels;
    std::vector<double> numbers;
    std::vector<std::string> textLabels;
    std::vector<std::string> texts;

    void Add(const std::string& Label, double Value) {
        labels.push_back(Label);
        numbers.push_back(Value);
    }
    void Add(const std::string& Label, const std::string& Value) {
        textLabels.push_back(Label);
        texts.push_back(Value);
    }
};

// SaveFileName is where the client saves its calibration file.
template <class Client>
void RunRecordedSequence(Client& c, const std::vector<SyntheticPoint>& Points,
                         const std::string& SaveFileName, Record& r) {
    const auto I = [](int v) { return static_cast<int16_t>(v); };
    // The site and mount of the points (see SequencePoints.h).
    c.SetLatitude(33.5);
    c.SetLongitude(-118);
    c.SetTemperature(16);
    c.SetPressure(1018);
    c.SetMountType(I(0));
    c.SetThetaCountsPerRev(4194304);  // 2^22
    c.SetPhiCountsPerRev(4194304);
    c.SetPhiPosCW(true);
    c.SetThetaPosUp(true);
    c.SetEnableRefraction(true);
    c.EnableTermsForAltAz();
    for (const SyntheticPoint& p : Points)
        c.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);
    r.Add("NumCalPoints", c.NumCalPoints());

    // The presets change the fit; each is read back.
    c.EnableAllTerms();
    r.Add("ErrorNorth after EnableAllTerms", c.ErrorNorth());
    c.EnableTermsForEquatorial();
    r.Add("ErrorNorth after EnableTermsForEquatorial", c.ErrorNorth());
    c.DisableAllTerms();
    r.Add("Sensitivity after DisableAllTerms", c.Sensitivity());
    c.EnableTermsForAltAz();

    r.Add("ErrorNorth", c.ErrorNorth());
    r.Add("ErrorWest", c.ErrorWest());
    r.Add("ThetaEncOffset", c.ThetaEncOffset());
    r.Add("PhiEncOffset", c.PhiEncOffset());
    r.Add("Sensitivity", c.Sensitivity());
    double e[5] = {};
    c.GetErrors(e[0], e[1], e[2], e[3]);
    for (int k = 0; k < 4; ++k) r.Add("GetErrors " + std::to_string(k), e[k]);
    for (int i = 0; i <= static_cast<int>(Points.size()) + 1; ++i) {
        // A bad index leaves the caller's variables alone, and a caller over
        // the bus gets zeros: the variables start at zero each time.
        for (double& v : e) v = 0;
        c.GetCalPointErrors(I(i), e[0], e[1], e[2], e[3], e[4]);
        for (int k = 0; k < 5; ++k)
            r.Add("GetCalPointErrors(" + std::to_string(i) + ") " + std::to_string(k), e[k]);
    }
    for (int i : {0, 1, 17, 30, 31}) {
        double v[6] = {};
        std::string timeStr, dateStr;
        bool used = false;
        c.GetCalPoint(I(i), v[0], v[1], v[2], v[3], v[4], v[5], timeStr, dateStr, used);
        const std::string label = "GetCalPoint(" + std::to_string(i) + ") ";
        for (int k = 0; k < 6; ++k) r.Add(label + std::to_string(k), v[k]);
        r.Add(label + "Used", used ? 1 : 0);
        r.Add(label + "TimeStr", timeStr);
        r.Add(label + "DateStr", dateStr);
    }

    // Conversions, rates and derivatives at the places of a few points,
    // on both sides of the axis.
    for (int i : {0, 9, 21}) {
        const SyntheticPoint& p = Points[i];
        const std::string at = " at point " + std::to_string(i + 1);
        for (int tsign : {1, -1}) {
            const std::string label = at + " Tsign " + std::to_string(tsign);
            double theta = 0, phi = 0, ra = 0, dec = 0, alt = 0, az = 0;
            c.CelestialToEncoder(p.LST, p.JD, p.RA, p.Dec, I(tsign), theta, phi);
            r.Add("CelestialToEncoder Theta" + label, theta);
            r.Add("CelestialToEncoder Phi" + label, phi);
            c.EncoderToCelestial(p.LST, p.JD, theta, phi, ra, dec);
            r.Add("EncoderToCelestial RA" + label, ra);
            r.Add("EncoderToCelestial Dec" + label, dec);
            c.EncoderToAltAz(theta, phi, alt, az);
            r.Add("EncoderToAltAz Alt" + label, alt);
            r.Add("EncoderToAltAz Az" + label, az);
            c.ApparentToEncoder(p.LST, p.JD, p.RA, p.Dec, I(tsign), theta, phi);
            r.Add("ApparentToEncoder Theta" + label, theta);
            r.Add("ApparentToEncoder Phi" + label, phi);
            c.EncoderToApparent(p.LST, p.JD, theta, phi, ra, dec);
            r.Add("EncoderToApparent RA" + label, ra);
            r.Add("EncoderToApparent Dec" + label, dec);
            double a = 0, b = 0, d1 = 0, d2 = 0;
            c.GetTrackingRates(p.LST, p.JD, p.RA, p.Dec, I(tsign), a, b);
            r.Add("GetTrackingRates Theta" + label, a);
            r.Add("GetTrackingRates Phi" + label, b);
            c.GetGuideError(p.LST, p.JD, p.RA, p.Dec, I(tsign), 1e-4, -2e-4, a, b);
            r.Add("GetGuideError Theta" + label, a);
            r.Add("GetGuideError Phi" + label, b);
            c.GetJacobian(p.LST, p.JD, p.RA, p.Dec, I(tsign), a, b, d1, d2);
            r.Add("GetJacobian dThetaEnc_dDec" + label, a);
            r.Add("GetJacobian dThetaEnc_dRA" + label, b);
            r.Add("GetJacobian dPhiEnc_dDec" + label, d1);
            r.Add("GetJacobian dPhiEnc_dRA" + label, d2);
            r.Add("GetFieldAngle" + label, c.GetFieldAngle(p.LST, p.JD, p.RA, p.Dec, I(tsign)));
            r.Add("GetFieldAngleRate" + label,
                  c.GetFieldAngleRate(p.LST, p.JD, p.RA, p.Dec, I(tsign)));
            c.SyncEncoders(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, I(tsign), a, b);
            r.Add("SyncEncoders Phi" + label, a);
            r.Add("SyncEncoders Theta" + label, b);
        }
    }

    // The clock of the client's evening.
    c.SetYear(I(2026));
    c.SetMonth(I(1));
    c.SetDay(I(15));
    c.SetHour(I(21));
    c.SetMinute(I(7));
    c.SetSecond(31.25);
    c.SetTimeZone(-8);
    c.SetDST(false);
    r.Add("GetLSTRad", c.GetLSTRad());
    r.Add("GetUTRad", c.GetUTRad());
    r.Add("GetJulianDay", c.GetJulianDay());
    r.Add("JDtoLSTRad", c.JDtoLSTRad(2461056.75));

    // Save, change the points, and load the saved run back.
    r.Add("SaveFile", c.SaveFile(SaveFileName) ? 1 : 0);
    c.RemoveCalPoint(I(3));
    c.RemoveCalPoint(I(0));
    c.SetUseCalPoint(I(5), false);
    c.SetUseCalPoint(I(99), false);
    r.Add("UseCalPoint(5)", c.UseCalPoint(I(5)) ? 1 : 0);
    r.Add("UseCalPoint(99)", c.UseCalPoint(I(99)) ? 1 : 0);
    r.Add("NumCalPoints after removal", c.NumCalPoints());
    c.GetErrors(e[0], e[1], e[2], e[3]);
    for (int k = 0; k < 4; ++k) r.Add("GetErrors after removal " + std::to_string(k), e[k]);
    r.Add("LoadFile", c.LoadFile(SaveFileName) ? 1 : 0);
    r.Add("NumCalPoints after load", c.NumCalPoints());
    r.Add("ErrorNorth after load", c.ErrorNorth());
    c.GetErrors(e[0], e[1], e[2], e[3]);
    for (int k = 0; k < 4; ++k) r.Add("GetErrors after load " + std::to_string(k), e[k]);

    // Points taken out and removed after the load.
    c.SetUseCalPoint(I(2), false);
    c.SetUseCalPoint(I(11), false);
    c.RemoveCalPoint(I(1));
    c.RemoveCalPoint(I(c.NumCalPoints()));
    r.Add("NumCalPoints at the end", c.NumCalPoints());
    c.GetErrors(e[0], e[1], e[2], e[3]);
    for (int k = 0; k < 4; ++k) r.Add("GetErrors at the end " + std::to_string(k), e[k]);
    r.Add("ThetaEncOffset at the end", c.ThetaEncOffset());
    double theta = 0, phi = 0;
    c.CelestialToEncoder(Points[4].LST, Points[4].JD, Points[4].RA, Points[4].Dec, I(1), theta,
                         phi);
    r.Add("CelestialToEncoder Theta at the end", theta);
    r.Add("CelestialToEncoder Phi at the end", phi);
    r.Add("Version", c.Version());
    r.Add("Path", c.Path());
}

// The two doubles are the same to the last bit (NaN included).
inline bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace bustest

// The server's conversions between sky places and encoders, and the rates
// and derivatives for tracking and guiding. Each is a trace line and a call
// of the model; none fits.
#include "files/TraceLog.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "server/ModelDifferences.h"
#include "server/TraceText.h"
#include "server/cAztrue.h"
#include "sky/NumberText.h"

void cAztrue::CelestialToEncoder(double LST, double JD, double RARad2000, double DecRad2000,
                                 int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    LogLineWith([&] {
        return CallText("CelestialToEncoder",
                        {NumberText(LST), NumberText(JD), NumberText(RARad2000),
                         NumberText(DecRad2000), IntText(Tsign)});
    });
    CelestialToEncoders(model_, LST, JD, RARad2000, DecRad2000, Tsign, ThetaEnc, PhiEnc);
}

void cAztrue::EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                                 double& RARad2000, double& DecRad2000) {
    LogLineWith([&] {
        return CallText("EncoderToCelestial", {NumberText(LST), NumberText(JD),
                                               NumberText(ThetaEnc), NumberText(PhiEnc)});
    });
    EncodersToCelestial(model_, LST, JD, ThetaEnc, PhiEnc, RARad2000, DecRad2000);
}

void cAztrue::EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Alt, double& Az) {
    LogLineWith([&] {
        return CallText("EncoderToAltAz", {NumberText(ThetaEnc), NumberText(PhiEnc)});
    });
    EncodersToAltAz(model_, ThetaEnc, PhiEnc, Alt, Az);
}

void cAztrue::ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp,
                                int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    LogLineWith([&] {
        return CallText("ApparentToEncoder", {NumberText(LST), NumberText(JD), NumberText(RARadApp),
                                              NumberText(DecRadApp), IntText(Tsign)});
    });
    ApparentToEncoders(model_, LST, JD, RARadApp, DecRadApp, Tsign, ThetaEnc, PhiEnc);
}

void cAztrue::EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc,
                                double& RARadApp, double& DecRadApp) {
    LogLineWith([&] {
        return CallText("EncoderToApparent", {NumberText(LST), NumberText(JD), NumberText(ThetaEnc),
                                              NumberText(PhiEnc)});
    });
    EncodersToApparent(model_, LST, JD, ThetaEnc, PhiEnc, RARadApp, DecRadApp);
}

namespace {

// The five inputs shared by the tracking members, in their default text.
std::string TrackingCall(const char* Name, double LSTRad, double JD, double RARadApp,
                         double DecRadApp, int16_t Tsign) {
    return CallText(Name, {NumberText(LSTRad), NumberText(JD), NumberText(RARadApp),
                           NumberText(DecRadApp), IntText(Tsign)});
}

}  // namespace

void cAztrue::GetTrackingRates(double LSTRad, double JD, double RARadApp, double DecRadApp,
                               int16_t Tsign, double& ThetaEncRate, double& PhiEncRate) {
    LogLineWith(
        [&] { return TrackingCall("GetTrackingRates", LSTRad, JD, RARadApp, DecRadApp, Tsign); });
    TrackingRates(model_, LSTRad, JD, RARadApp, DecRadApp, Tsign, ThetaEncRate, PhiEncRate);
}

void cAztrue::GetGuideError(double LSTRad, double JD, double RARadApp, double DecRadApp,
                            int16_t Tsign, double dRA, double dDec, double& dThetaEnc,
                            double& dPhiEnc) {
    LogLineWith([&] {
        return CallText("GetGuideError",
                        {NumberText(LSTRad), NumberText(JD), NumberText(RARadApp),
                         NumberText(DecRadApp), IntText(Tsign), NumberText(dRA), NumberText(dDec)});
    });
    GuideError(model_, LSTRad, JD, RARadApp, DecRadApp, Tsign, dRA, dDec, dThetaEnc, dPhiEnc);
}

void cAztrue::GetJacobian(double LSTRad, double JD, double RARadApp, double DecRadApp,
                          int16_t Tsign, double& dThetaEnc_dDec, double& dThetaEnc_dRA,
                          double& dPhiEnc_dDec, double& dPhiEnc_dRA) {
    LogLineWith(
        [&] { return TrackingCall("GetJacobian", LSTRad, JD, RARadApp, DecRadApp, Tsign); });
    Jacobian(model_, LSTRad, JD, RARadApp, DecRadApp, Tsign, dThetaEnc_dDec, dThetaEnc_dRA,
             dPhiEnc_dDec, dPhiEnc_dRA);
}

double cAztrue::GetFieldAngle(double LSTRad, double JD, double RARadApp, double DecRadApp,
                              int16_t Tsign) {
    LogLineWith(
        [&] { return TrackingCall("GetFieldAngle", LSTRad, JD, RARadApp, DecRadApp, Tsign); });
    return FieldAngle(model_, LSTRad, JD, RARadApp, DecRadApp, Tsign);
}

// Goes through the member GetFieldAngle, so that its two calls are traced.
double cAztrue::GetFieldAngleRate(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                  int16_t Tsign) {
    LogLineWith(
        [&] { return TrackingCall("GetFieldAngleRate", LSTRad, JD, RARadApp, DecRadApp, Tsign); });
    double before = GetFieldAngle(LSTRad - kSiderealHalfStep, JD, RARadApp, DecRadApp, Tsign);
    double after = GetFieldAngle(LSTRad + kSiderealHalfStep, JD, RARadApp, DecRadApp, Tsign);
    return FieldAngleRate(before, after);
}

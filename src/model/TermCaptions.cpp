#include "model/TermCaptions.h"

#include <array>

#include "model/Constants.h"

namespace {

const std::string kOffsets = "Encoder Offsets";
const std::string kAxis = "Axis Misalignment";
const std::string kOrtho = "Axis Non-Orthogonality";
const std::string kTheta = "Theta Corrections";
const std::string kPhi = "Phi Corrections";

const std::array<TermCaption, kNumTerms + 1> kCaptions = {{
    {"", "", ""},
    {kOffsets, "Phi", ""},
    {kOffsets, "Theta", ""},
    {kAxis, "North", ""},
    {kAxis, "West", ""},
    {kOrtho, "Cone", ""},
    {kOrtho, "Hub", ""},
    {kTheta, " N=1", "Sin(N*Theta)"},
    {kTheta, " N=1", "Cos(N*Theta)"},
    {kPhi, " N=1", "Sin(N*Phi)"},
    {kPhi, " N=1", "Cos(N*Phi)"},
    {kTheta, " N=1", "Sin(N*Phi)"},
    {kTheta, " N=1", "Cos(N*Phi)"},
    {kTheta, "Cos(Phi)", "Sin(Theta)"},
    {kTheta, "Cos(Phi)", "Cos(Theta)"},
    {kPhi, "Cos(Phi)", "Sin(Theta)"},
    {kPhi, "Cos(Phi)", "Cos(Theta)"},
    {kTheta, "Sin(Phi)", "Sin(Theta)"},
    {kTheta, "Sin(Phi)", "Cos(Theta)"},
    {kTheta, " N=2", "Sin(N*Theta)"},
    {kTheta, " N=2", "Cos(N*Theta)"},
    {kPhi, " N=2", "Sin(N*Phi)"},
    {kPhi, " N=2", "Cos(N*Phi)"},
    {kTheta, " N=2", "Sin(N*Phi)"},
    {kTheta, " N=2", "Cos(N*Phi)"},
    {kPhi, "Sin(Phi)", "Sin(Theta)"},
    {kPhi, "Sin(Phi)", "Cos(Theta)"},
    {kTheta, " N=3", "Sin(N*Theta)"},
    {kTheta, " N=3", "Cos(N*Theta)"},
    {kPhi, " N=3", "Sin(N*Phi)"},
    {kPhi, " N=3", "Cos(N*Phi)"},
    {kTheta, " N=3", "Sin(N*Phi)"},
    {kTheta, " N=3", "Cos(N*Phi)"},
    {kTheta, " N=4", "Sin(N*Phi)"},
    {kTheta, " N=4", "Cos(N*Phi)"},
    {kTheta, " N=5", "Sin(N*Phi)"},
    {kTheta, " N=5", "Cos(N*Phi)"},
    {kTheta, " N=6", "Sin(N*Phi)"},
    {kTheta, " N=6", "Cos(N*Phi)"},
    {kPhi, " N=4", "Sin(N*Phi)"},
    {kPhi, " N=4", "Cos(N*Phi)"},
    {kPhi, " N=5", "Sin(N*Phi)"},
    {kPhi, " N=5", "Cos(N*Phi)"},
    {kTheta, " N=4", "Sin(N*Theta)"},
    {kTheta, " N=4", "Cos(N*Theta)"},
    {kTheta, " N=5", "Sin(N*Theta)"},
    {kTheta, " N=5", "Cos(N*Theta)"},
}};

std::string Trimmed(const std::string& s) {
    size_t a = s.find_first_not_of(' ');
    if (a == std::string::npos) return {};
    size_t b = s.find_last_not_of(' ');
    return s.substr(a, b - a + 1);
}

}  // namespace

const TermCaption& TermCaptionOf(int term) {
    if (term < 1 || term > kNumTerms) return kCaptions[0];
    return kCaptions[term];
}

std::string TermCaptionText(int term) {
    const TermCaption& c = TermCaptionOf(term);
    std::string text = c.Group + ", " + Trimmed(c.Row);
    if (!c.Column.empty()) text += ", " + c.Column;
    return text;
}

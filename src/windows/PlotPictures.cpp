#include "windows/PlotPictures.h"

#include "sky/Rounding.h"
#include "windows/AnalysisGraph.h"
#include "windows/PictureBox.h"
#include "windows/SkyPlots.h"
#include "windows/fAnalysis.h"
#include "windows/fMain.h"

namespace {

// The pictures inside the windows' controls, without their borders.
constexpr int kSkyInner = fMain::kPicErrorSize - 2 * PictureBox::kBorder;
constexpr int kGraphInnerWidth = fAnalysis::kGraphWidth - 2 * PictureBox::kBorder;
constexpr int kGraphInnerHeight = fAnalysis::kGraphHeight - 2 * PictureBox::kBorder;

}  // namespace

std::vector<PlotPicture> DrawPlotPictures(const ModelState& s, int Size) {
    std::vector<PlotPicture> out;
    const int sky = Size > 0 ? Size : kSkyInner;
    const int graphWidth = Size > 0 ? Size : kGraphInnerWidth;
    const int graphHeight =
        Size > 0
            ? static_cast<int>(RoundHalfEven(1.0 * Size * kGraphInnerHeight / kGraphInnerWidth))
            : kGraphInnerHeight;

    cSkyPlots plots;
    cPicture pic(sky, sky);
    plots.DrawError(s, pic, true);
    out.push_back({"errors.png", pic.Image()});
    plots.DrawGeo(s, pic);
    out.push_back({"positions.png", pic.Image()});

    const struct {
        AnalysisY Y;
        const char* Name;
    } ys[] = {{AnalysisY::ThetaError, "theta-error"}, {AnalysisY::PhiError, "phi-error"}};
    const struct {
        AnalysisX X;
        const char* Name;
    } xs[] = {{AnalysisX::Theta, "theta"},
              {AnalysisX::Phi, "phi"},
              {AnalysisX::ZenithDistance, "zenith-distance"}};
    cAnalysisGraph graph;
    cPicture graphPic(graphWidth, graphHeight);
    for (const auto& y : ys) {
        for (const auto& x : xs) {
            graph.MakeGraph(s, graphPic, {y.Y, x.X, true});
            out.push_back(
                {std::string("analysis-") + y.Name + "-vs-" + x.Name + ".png", graphPic.Image()});
        }
    }
    return out;
}

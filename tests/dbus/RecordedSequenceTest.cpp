// A client's evening as a call sequence gives over the bus the answers of
// the in-process class to the last bit, and finds the sample's mount.

#include <QDBusArgument>
#include <QFile>
#include <functional>
#include <map>
#include <memory>
#include <tuple>

#include "BusSupport.h"
#include "model/ModelState.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"

namespace {

using namespace bustest;

// The class's member on a bus call's inputs; its results in the reply's order.
using Invoker = std::function<QVariantList(cAztrue&, const QVariantList&)>;

// clang-format off
template <class A>
constexpr bool kOut = std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;
template <class T> T From(const QVariant& v) { return v.value<T>(); }
template <> std::string From(const QVariant& v) { return v.toString().toStdString(); }
template <class T> QVariant To(const T& v) { return QVariant::fromValue(v); }
QVariant To(const std::string& v) { return QString::fromStdString(v); }
// clang-format on

template <class R, class... A>
Invoker Local(R (cAztrue::*f)(A...)) {
    return [f](cAztrue& c, const QVariantList& in) {
        std::tuple<std::decay_t<A>...> v;
        int k = 0;
        std::apply(
            [&](auto&... x) {
                ((kOut<A> ? void() : void(x = From<std::decay_t<A>>(in.value(k++)))), ...);
            },
            v);
        QVariantList out;
        if constexpr (std::is_void_v<R>)
            std::apply([&](auto&... x) { (c.*f)(x...); }, v);
        else
            out << To(std::apply([&](auto&... x) { return (c.*f)(x...); }, v));
        std::apply([&](auto&... x) { ((kOut<A> ? void(out << To(x)) : void()), ...); }, v);
        return out;
    };
}

struct Step {
    QString member;  // "Set X" and "Get X" for properties
    Invoker local;
    QVariantList args;
};

QVariantList OverTheBus(const ServerProcess& s, const QString& path, const Step& step) {
    const QString name = step.member.mid(4);
    if (step.member.startsWith(u"Set ")) return s.Set(path, name, step.args.value(0)).arguments();
    if (step.member.startsWith(u"Get ")) return {s.Get(path, name)};
    return s.Call(path, step.member, step.args).arguments();
}

constexpr double kArcsec = 3.141592654 / 648000;
const QString kSample = QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT");

// clang-format off
#define GET(X) Step{"Get " #X, Local(&cAztrue::X), {}}
#define SET(X, Value) Step{"Set " #X, Local(&cAztrue::Set##X), {Value}}
#define CALL(X, ...) Step{#X, Local(&cAztrue::X), QVariantList{__VA_ARGS__}}
#define AT(X, ...) Step{#X, Local(&cAztrue::X), __VA_ARGS__}

std::vector<Step> Evening(const QString& SaveFile) {
    std::vector<Step> s = {CALL(LoadFile, kSample), GET(ErrorNorth),
        GET(ErrorWest), GET(ThetaEncOffset), GET(PhiEncOffset), GET(Sensitivity), CALL(GetErrors),
        CALL(GetCalPointErrors, N(17)), CALL(GetCalPoint, N(17))};
    // A place an hour west of the meridian, 50 degrees up, on both sides of
    // the axis; encoders in radians, as the sample's counts are.
    for (const int t : {1, -1}) {
        const QVariantList place = {1.0, 2461056.65, 0.74, 0.3, N(t)};
        s.insert(s.end(), {AT(CelestialToEncoder, place), AT(ApparentToEncoder, place),
            AT(GetTrackingRates, place), AT(GetJacobian, place), AT(GetFieldAngle, place),
            AT(GetGuideError, place + QVariantList{1e-4, -2e-4}), AT(GetFieldAngleRate, place),
            CALL(SyncEncoders, 3.1, 0.9, 0.74, 0.3, 1.0, 2461056.65, N(t))});
    }
    s.insert(s.end(), {CALL(EncoderToCelestial, 1.0, 2461056.65, 0.9, 3.1),
        CALL(EncoderToApparent, 1.0, 2461056.65, 0.9, 3.1), CALL(EncoderToAltAz, 0.9, 3.1),
        SET(Hour, N(21)), SET(Second, 31.25), SET(TimeZone, -8.0), SET(DST, true),
        CALL(GetLSTRad), CALL(GetUTRad), CALL(GetJulianDay), CALL(JDtoLSTRad, 2461056.75),
        CALL(SaveFile, SaveFile), CALL(RemoveCalPoint, N(3)), CALL(SetUseCalPoint, N(5), false),
        CALL(GetErrors),
        CALL(AddCalPoint, 3.1, 0.9, 0.74, 0.3, 1.0, 2461056.65, "19:30:00", "2026/1/15"),
        CALL(LoadFile, SaveFile), CALL(EnableAllTerms), GET(ErrorNorth),
        CALL(EnableTermsForEquatorial), GET(ErrorWest), CALL(DisableAllTerms), GET(PhiEncOffset)});
    return s;
}
// clang-format on

TEST(RecordedSequence, BusAnswersAsTheClassAndItsFitFindsTheMount) {
    const QString saved = qEnvironmentVariable("XDG_DOCUMENTS_DIR") + QStringLiteral("/run.AZT");
    const std::vector<Step> steps = Evening(saved);
    std::vector<QVariantList> local;
    {
        // A fresh model, as the server's is at its start.
        auto model = std::make_unique<ModelState>();
        NoDisplay noWindows;
        RecalcChain mainWindow(*model, noWindows);
        cAztrue object(mainWindow);
        for (const Step& s : steps) local.push_back(s.local(object, s.args));
    }
    ASSERT_TRUE(QFile::remove(saved));  // the server saves its own

    ServerProcess server;
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    for (size_t i = 0; i < steps.size(); ++i) {
        const QVariantList got = OverTheBus(server, path, steps[i]);
        // Doubles in 17 digits: the same text is the same number to the last bit.
        EXPECT_EQ(Text(got), Text(local[i]))
            << "step " << i << " " << steps[i].member.toStdString() << Text(steps[i].args);
    }

    // The sample's imaginary mount as data/README.md gives it (term:
    // arcseconds; the file's other terms 0). 40 stars with 3" of noise place
    // each within 2"; 5" allows for the correlations of the terms.
    server.Call(path, QStringLiteral("LoadFile"), {kSample});
    const QVariantList terms =
        server.Call(path, QStringLiteral("GetTermStatistics"), {}, kStatistics).arguments();
    const auto number = qdbus_cast<QList<short>>(terms.value(0));
    const auto coef = qdbus_cast<QList<double>>(terms.value(1));
    const std::map<short, double> kMount = {{1, -1500}, {2, 720}, {3, 240}, {4, -150},
                                            {5, 180},   {10, 40}, {11, -30}};
    ASSERT_EQ(number, (QList<short>{1, 2, 3, 4, 5, 9, 10, 11, 12}));
    for (qsizetype k = 0; k < number.size(); ++k) {
        EXPECT_NEAR(coef[k] / kArcsec, kMount.count(number[k]) ? kMount.at(number[k]) : 0, 5)
            << "term " << number[k] << " in arcseconds";
    }

    // The next points: the Count asked for, above the horizon (radians), in
    // the walk from north through east.
    const QVariantList next =
        server.Call(path, QStringLiteral("SuggestPoints"), {N(4)}, kStatistics).arguments();
    const auto az = qdbus_cast<QList<double>>(next.value(0));
    const auto el = qdbus_cast<QList<double>>(next.value(1));
    ASSERT_TRUE(az.size() == 4 && el.size() == 4) << az.size() << " " << el.size();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(el[i] > 0 && el[i] < 1.5708) << "elevation " << el[i];
        EXPECT_TRUE(az[i] >= (i ? az[i - 1] : 0) && az[i] < 6.2832) << "azimuth " << az[i];
    }
}

}  // namespace

// The automation server measured from a C++ client over the session bus:
// round trips of CelestialToEncoder per second, and a read of ErrorNorth
// (a full fit) with 500 calibration points. Starts the built server itself;
// run it on a session bus, for instance:
//
//   dbus-run-session -- build/bench/dbus_bench
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <cstdio>
#include <memory>

#include "dbus/BusNames.h"
#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"

namespace {

// The server and one object on it with 500 points of a synthetic alt-az
// mount, shared by the benchmarks.
struct BenchServer {
    QProcess process;
    QString unique;
    QString path;
    std::vector<SyntheticPoint> points;
};

BenchServer* server = nullptr;

QDBusMessage Call(const QString& Path, const char* Interface, const char* Member,
                  const QVariantList& Args = {}) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        server->unique, Path, QString::fromLatin1(Interface), QString::fromLatin1(Member));
    call.setArguments(Args);
    return QDBusConnection::sessionBus().call(call);
}

QDBusMessage CallObject(const char* Member, const QVariantList& Args = {}) {
    return Call(server->path, AztrueBus::kObjectInterface, Member, Args);
}

bool StartServer(BenchServer& s) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        std::fprintf(stderr, "dbus_bench: no session bus; run it under dbus-run-session\n");
        return false;
    }
    s.process.setProcessChannelMode(QProcess::ForwardedChannels);
    s.process.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    QElapsedTimer clock;
    clock.start();
    while (s.unique.isEmpty() && clock.elapsed() < 20000 &&
           s.process.state() != QProcess::NotRunning) {
        s.unique =
            bus.interface()->serviceOwner(QString::fromLatin1(AztrueBus::kServiceName)).value();
        if (s.unique.isEmpty()) QThread::msleep(10);
    }
    if (s.unique.isEmpty()) {
        std::fprintf(stderr, "dbus_bench: the server did not start\n");
        return false;
    }
    server = &s;
    const QDBusMessage created = Call(QString::fromLatin1(AztrueBus::kFactoryPath),
                                      AztrueBus::kFactoryInterface, "CreateObject");
    s.path = qvariant_cast<QDBusObjectPath>(created.arguments().value(0)).path();
    if (s.path.isEmpty()) return false;

    // 500 stars of a synthetic mount with all terms on; each point added
    // fits again, as a client's would.
    auto site = std::make_unique<ModelState>();
    InitModel(*site);
    SyntheticMount m;
    m.Num = 500;
    m.ErrorNorth = 1.2e-3;
    m.ErrorWest = -0.7e-3;
    m.ThetaEncOffset = 3e-3;
    m.PhiEncOffset = -7e-3;
    m.TermCoef[5] = 9e-4;
    m.NoiseRMS = 3 * 3.141592654 / 648000;
    m.MinutesBetween = 0.5;
    s.points = MakeSyntheticPoints(*site, m);
    CallObject("EnableAllTerms");
    for (const SyntheticPoint& p : s.points)
        CallObject("AddCalPoint",
                   {p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD,
                    QString::fromStdString(p.TimeStr), QString::fromStdString(p.DateStr)});
    return true;
}

void BM_CelestialToEncoderRoundTrip(benchmark::State& state) {
    const SyntheticPoint& star = server->points[100];
    const QVariantList args = {star.LST, star.JD, star.RA, star.Dec,
                               QVariant::fromValue(static_cast<short>(1))};
    for (auto _ : state) {
        const QDBusMessage reply = CallObject("CelestialToEncoder", args);
        if (reply.type() != QDBusMessage::ReplyMessage) {
            state.SkipWithError("CelestialToEncoder failed");
            break;
        }
        benchmark::DoNotOptimize(reply.arguments().value(0).toDouble());
    }
    state.SetItemsProcessed(state.iterations());
}
// The work is done in the server process: only the wall clock tells.
BENCHMARK(BM_CelestialToEncoderRoundTrip)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BM_ErrorNorthAt500Points(benchmark::State& state) {
    const QVariantList args = {QString::fromLatin1(AztrueBus::kObjectInterface),
                               QStringLiteral("ErrorNorth")};
    for (auto _ : state) {
        const QDBusMessage reply =
            Call(server->path, "org.freedesktop.DBus.Properties", "Get", args);
        if (reply.type() != QDBusMessage::ReplyMessage) {
            state.SkipWithError("Get ErrorNorth failed");
            break;
        }
        benchmark::DoNotOptimize(
            qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant().toDouble());
    }
    state.counters["points"] = static_cast<double>(server->points.size());
}
BENCHMARK(BM_ErrorNorthAt500Points)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    BenchServer s;
    if (!StartServer(s)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    CallObject("Release");
    s.process.waitForFinished(20000);
    return 0;
}

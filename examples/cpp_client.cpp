// A telescope control program's side of Aztrue in C++ with Qt D-Bus: the
// same walk as python_client.py. The proxy classes AztrueInterface and
// FactoryInterface are generated from the interface descriptions in
// src/dbus at build time.
//
//   build/examples/cpp_client [FILE.AZT]
#include <QCoreApplication>
#include <QDBusConnection>
#include <QFile>
#include <QStringList>
#include <QTextStream>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "AztrueInterface.h"
#include "FactoryInterface.h"

namespace {

const char* const kService = "com.brightfold.AZTSERVR";
const double kArcsec = 3.141592654 / 648000;  // radians

struct Star {
    QString name, time, date;
    double ra, dec, theta, phi, lst, jd;
};

// The star records of a calibration file: after the three lines of the
// count, 15 lines each (number, name, RA and Dec, ThetaEnc and PhiEnc, LST
// and JD, time and date, each pair under a label, and a blank line).
std::vector<Star> ReadStars(const QString& fileName) {
    QFile file(fileName);
    std::vector<Star> stars;
    if (!file.open(QIODevice::ReadOnly)) return stars;
    QStringList lines = QString::fromLatin1(file.readAll()).split(QStringLiteral("\r\n"));
    const int count = lines.value(1).trimmed().toInt();
    for (int k = 0; k < count && 3 + 15 * (k + 1) <= lines.size(); ++k) {
        const QStringList r = lines.mid(3 + 15 * k, 15);
        auto number = [&](int i) { return r[i].trimmed().toDouble(); };
        stars.push_back({r[1], r[12], r[13], number(3), number(4), number(6), number(7), number(9),
                         number(10)});
    }
    return stars;
}

// Stops with the server's message when a call failed.
template <class Reply>
Reply Checked(Reply reply) {
    reply.waitForFinished();
    if (reply.isError()) {
        std::fprintf(stderr, "cpp_client: %s\n", qPrintable(reply.error().message()));
        std::exit(1);
    }
    return reply;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QString fileName =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(AZTRUE_SAMPLE_FILE);
    const std::vector<Star> stars = ReadStars(fileName);
    if (stars.empty()) {
        std::fprintf(stderr, "cpp_client: no stars in %s\n", qPrintable(fileName));
        return 1;
    }

    QDBusConnection bus = QDBusConnection::sessionBus();
    FactoryInterface factory(kService, QStringLiteral("/com/brightfold/AZTSERVR"), bus);
    const QString path = Checked(factory.CreateObject()).value().path();
    AztrueInterface aztrue(kService, path, bus);

    // The site and the mount: each write of these runs a new fit.
    aztrue.setLatitude(33.5);
    aztrue.setLongitude(-118);
    aztrue.setTemperature(16);
    aztrue.setPressure(1018);
    aztrue.setMountType(0);  // alt-azimuth
    aztrue.setThetaCountsPerRev(6.283185308);
    aztrue.setPhiCountsPerRev(6.283185308);
    aztrue.setPhiPosCW(true);
    aztrue.setThetaPosUp(true);
    Checked(aztrue.EnableTermsForAltAz());

    // The stars, Phi encoder first.
    for (const Star& s : stars)
        Checked(aztrue.AddCalPoint(s.phi, s.theta, s.ra, s.dec, s.lst, s.jd, s.time, s.date));

    // The fit: every read of these fits again.
    const double counts = aztrue.thetaCountsPerRev();
    std::printf("%s: fit of %d stars (%s)\n", qPrintable(aztrue.version()), aztrue.numCalPoints(),
                qPrintable(path));
    std::printf("  primary axis tilt north: %8.1f\"\n", aztrue.errorNorth() / kArcsec);
    std::printf("  primary axis tilt west:  %8.1f\"\n", aztrue.errorWest() / kArcsec);
    std::printf("  Theta encoder offset:    %8.1f\"\n", aztrue.thetaEncOffset() / counts * 1296000);
    std::printf("  Phi encoder offset:      %8.1f\"\n", aztrue.phiEncOffset() / counts * 1296000);
    const auto errors = Checked(aztrue.GetErrors());
    std::printf("  RMS error of the fit:    %8.1f\"  (largest %.1f\")\n",
                errors.argumentAt<1>() / kArcsec, errors.argumentAt<0>() / kArcsec);

    // A star to the encoders and back, at the time it was measured.
    const Star& s = stars[stars.size() / 2];
    const auto encoders = Checked(aztrue.CelestialToEncoder(s.lst, s.jd, s.ra, s.dec, 1));
    const double theta = encoders.argumentAt<0>();
    const double phi = encoders.argumentAt<1>();
    const auto sky = Checked(aztrue.EncoderToCelestial(s.lst, s.jd, theta, phi));
    std::printf("%s: Theta %.6f, Phi %.6f counts (measured %.6f, %.6f)\n", qPrintable(s.name),
                theta, phi, s.theta, s.phi);
    std::printf("  and back to the sky: RA %+.3f\", Dec %+.3f\" from its place\n",
                (sky.argumentAt<0>() - s.ra) / kArcsec, (sky.argumentAt<1>() - s.dec) / kArcsec);

    // Without this the object would end with the connection all the same.
    Checked(aztrue.Release());
    return 0;
}

#!/usr/bin/python3
"""A telescope control program's side of Aztrue, in a few lines of Python.

Creates an object of the automation server on the D-Bus session bus, sets
up an alt-azimuth site, reports the calibration stars of a calibration file
(data/sample.AZT by default), reads the fit and converts a star from the sky
to the encoders and back.

    examples/python_client.py [FILE.AZT]

The first call starts the server by D-Bus activation once
scripts/install-dbus-service.sh has installed its service file (the run
script does that). Needs python3-dbus.
"""

import os
import sys

import dbus

SERVICE = "com.brightfold.AZTSERVR"
FACTORY_PATH = "/com/brightfold/AZTSERVR"
FACTORY = "com.brightfold.AZTSERVR.Factory"
INTERFACE = "com.brightfold.AZTSERVR._cAztrue"
ARCSEC = 3.141592654 / 648000  # radians


def read_stars(file_name):
    """The star records of a calibration file. After the three lines of the
    count, each star takes 15 lines: its number, its name, then RA and Dec,
    ThetaEnc and PhiEnc, LST and JD, time and date, each pair under a label,
    and a blank line."""
    with open(file_name, encoding="cp1252") as f:
        lines = [line.rstrip("\r\n") for line in f]
    stars = []
    for k in range(int(lines[1])):
        r = lines[3 + 15 * k:3 + 15 * (k + 1)]
        stars.append({
            "name": r[1],
            "ra": float(r[3]), "dec": float(r[4]),
            "theta": float(r[6]), "phi": float(r[7]),
            "lst": float(r[9]), "jd": float(r[10]),
            "time": r[12], "date": r[13],
        })
    return stars


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    file_name = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "data", "sample.AZT")
    stars = read_stars(file_name)

    bus = dbus.SessionBus()
    factory = dbus.Interface(bus.get_object(SERVICE, FACTORY_PATH), FACTORY)
    path = factory.CreateObject()
    obj = bus.get_object(SERVICE, path)
    aztrue = dbus.Interface(obj, INTERFACE)
    properties = dbus.Interface(obj, dbus.PROPERTIES_IFACE)

    def set_property(name, value):
        properties.Set(INTERFACE, name, value)

    def get_property(name):
        return properties.Get(INTERFACE, name)

    try:
        # The site and the mount: each write of these runs a new fit.
        set_property("Latitude", dbus.Double(33.5))
        set_property("Longitude", dbus.Double(-118))
        set_property("Temperature", dbus.Double(16))
        set_property("Pressure", dbus.Double(1018))
        set_property("MountType", dbus.Int16(0))  # alt-azimuth
        set_property("ThetaCountsPerRev", dbus.Double(6.283185308))
        set_property("PhiCountsPerRev", dbus.Double(6.283185308))
        set_property("PhiPosCW", dbus.Boolean(True))
        set_property("ThetaPosUp", dbus.Boolean(True))
        aztrue.EnableTermsForAltAz()

        # The stars, Phi encoder first.
        for s in stars:
            aztrue.AddCalPoint(s["phi"], s["theta"], s["ra"], s["dec"], s["lst"], s["jd"],
                               s["time"], s["date"])

        # The fit: every read of these fits again.
        counts = get_property("ThetaCountsPerRev")
        print("%s: fit of %d stars (%s)" % (get_property("Version"), get_property("NumCalPoints"),
                                            path))
        print("  primary axis tilt north: %8.1f\"" % (get_property("ErrorNorth") / ARCSEC))
        print("  primary axis tilt west:  %8.1f\"" % (get_property("ErrorWest") / ARCSEC))
        print("  Theta encoder offset:    %8.1f\"" % (get_property("ThetaEncOffset") / counts * 1296000))
        print("  Phi encoder offset:      %8.1f\"" % (get_property("PhiEncOffset") / counts * 1296000))
        max_sel, rms_sel, max_all, rms_all = aztrue.GetErrors()
        print("  RMS error of the fit:    %8.1f\"  (largest %.1f\")" % (rms_sel / ARCSEC,
                                                                       max_sel / ARCSEC))

        # A star to the encoders and back, at the time it was measured.
        s = stars[len(stars) // 2]
        theta, phi = aztrue.CelestialToEncoder(s["lst"], s["jd"], s["ra"], s["dec"], dbus.Int16(1))
        ra, dec = aztrue.EncoderToCelestial(s["lst"], s["jd"], theta, phi)
        print("%s: Theta %.6f, Phi %.6f counts (measured %.6f, %.6f)" % (
            s["name"], theta, phi, s["theta"], s["phi"]))
        print("  and back to the sky: RA %+.3f\", Dec %+.3f\" from its place" % (
            (ra - s["ra"]) / ARCSEC, (dec - s["dec"]) / ARCSEC))
    finally:
        # Without this the object would end with the connection all the same.
        aztrue.Release()


if __name__ == "__main__":
    try:
        main()
    except dbus.DBusException as e:
        print("python_client: %s" % e.get_dbus_message(), file=sys.stderr)
        sys.exit(1)

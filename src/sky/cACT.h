// cACT: mean J2000 place <-> apparent place of a date. Precession by a
// rigorous rotation (IAU 1976 angles, short series), nutation and annual
// aberration as first-order corrections. Stateless; one instance lives in
// ModelState. All angles radians, JD in days.
#pragma once

class cACT {
  public:
    // Mean J2000 place to the apparent place of JD.
    void FromJ2000ToJD(double JD, double RA, double Dec, double& RAApp, double& DecApp) const;
    // Apparent place of JD to the mean J2000 place.
    void FromJDToJ2000(double JD, double RAApp, double DecApp, double& RA, double& Dec) const;
    // Mean place of the date plus nutation and aberration.
    void MeanToApparent(double JD, double RA, double Dec, double& RAApp, double& DecApp) const;
    // Apparent place minus the same correction, evaluated at the apparent place.
    void ApparentToMean(double JD, double RAApp, double DecApp, double& RA, double& Dec) const;
    // 2000 + (JD - 2451545.0) / 365.25.
    double JulianEpoch(double JD) const;
    // (Epoch - 2000) x 365.25 + 2451545.0.
    double JulianDay(double Epoch) const;
    // Mean place of JD1 to the mean place of JD2.
    void Precess(double JD1, double JD2, double RA1, double Dec1, double& RA2, double& Dec2) const;

  private:
    double Atn2(double Y, double X) const;
};

// cString: right ascension and declination as text, and file-name parts.
// Stateless; one instance lives in ModelState. Text is UTF-8.
#pragma once

#include <string>

class cString {
  public:
    // "a" as Separator gives 12h30m05s; any other separator joins the fields.
    std::string RARadToStr(double RA, const std::string& Separator) const;
    // "a" as Separator gives 12° 30' 05"; any other separator joins the fields.
    std::string DecRadToStr(double Dec, const std::string& Separator) const;
    // Hours text (or a lone number in degrees) to radians; -1 on bad input.
    double StrToRARad(const std::string& Text) const;
    // The part of a path behind the last "\" or "/".
    std::string HasFileName(const std::string& Path) const;
    // Characters First to Last, counted from 1.
    std::string Extract(const std::string& S, int First, int Last) const;
};

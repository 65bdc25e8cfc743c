// The optional trace log: a line per client call, written only while the
// marker file "Brightfold Optics/AztrueLog-Enabled.txt" exists in the user's
// documents folder.
#pragma once

#include <string>

// Date, time, ": " and Text, as one line of the day's log file, if the
// marker exists. Never fails to its caller.
void LogLine(const std::string& Text);

// The optional trace log: a line per client call, written only while the
// marker file "Brightfold Optics/AztrueLog-Enabled.txt" exists in the user's
// documents folder.
#pragma once

#include <string>

// Date, time, ": " and Text, as one line of the day's log file, if the
// marker exists. Never fails to its caller.
void LogLine(const std::string& Text);

// The marker test of LogLine alone: true while the log is on.
bool TraceLogMarkerPresent();

// Writes the line without testing the marker again; for LogLineWith.
void AppendLogLine(const std::string& Text);

// LogLine for a text that costs work to build (numbers of a call): the
// marker is tested as for every line, and the text is built only when the
// line is written.
template <class MakeText>
void LogLineWith(MakeText&& makeText) {
    if (TraceLogMarkerPresent()) AppendLogLine(makeText());
}

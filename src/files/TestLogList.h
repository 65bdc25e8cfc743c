// The Test Log list: lines of the developers' checks and of the routines
// they exercise. The core has no windows, so the windows plug the list in
// here; a line reaches it only while the model's TestLog switch is on.
// Until a list is plugged in, lines go nowhere.
#pragma once

#include <functional>
#include <string>

struct ModelState;

using TestLogSink = std::function<void(const std::string& Line)>;

// Plugs Sink in and returns the one it replaces, so that its owner can put
// that back. An empty function plugs in nothing.
TestLogSink SetTestLogSink(TestLogSink Sink);

// Adds Line (UTF-8 text) to the list while s.TestLog is true.
void AddTestLogLine(const ModelState& s, const std::string& Line);

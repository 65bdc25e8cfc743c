#include "files/TestLogList.h"

#include <utility>

#include "model/ModelState.h"

namespace {

// Allocated once and never destroyed, so the sink stays callable from the
// destructors of other static objects at process end.
TestLogSink& TheSink() {
    static auto* sink = new TestLogSink();
    return *sink;
}

}  // namespace

TestLogSink SetTestLogSink(TestLogSink Sink) {
    return std::exchange(TheSink(), std::move(Sink));
}

void AddTestLogLine(const ModelState& s, const std::string& Line) {
    if (s.TestLog && TheSink()) TheSink()(Line);
}

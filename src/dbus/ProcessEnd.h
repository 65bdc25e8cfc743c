// The end of the automation process, once the reply to the current call
// has left it: the client that asked for the end gets its answer.
#pragma once

#include <QDBusConnection>

// Queues the end of the process behind the call being served. When the
// event loop reaches it, the well-known name is released (a round trip to
// the bus daemon, so every reply sent before it has been delivered), and
// the process ends at once with status 0: no object's termination runs and
// nothing is saved.
void EndProcessAfterReply(const QDBusConnection& Bus);

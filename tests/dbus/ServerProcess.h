// A server process for the tests: `aztrue --automation` started directly on
// the session bus of the test, with a documents folder of the test's, and
// the calls of the test addressed to its unique bus name, so that no call
// can start another server by activation.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace bustest {

// Milliseconds that a test waits for a start, an end or a reply; far beyond
// what any of them takes, even in the sanitizer build.
inline constexpr int kPatience = 20000;

class ServerProcess {
  public:
    // Starts the server with XDG_DOCUMENTS_DIR set to DocumentsFolder and
    // waits until it owns the well-known name. Started() tells whether it
    // did; Failure() says why not.
    // Extra holds further variables of the server's environment.
    explicit ServerProcess(const QString& DocumentsFolder,
                           const QDBusConnection& Bus = QDBusConnection::sessionBus(),
                           const QProcessEnvironment& Extra = {});
    // Kills the process if it still runs.
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    bool Started() const { return !uniqueName_.isEmpty(); }
    const QString& Failure() const { return failure_; }
    const QString& UniqueName() const { return uniqueName_; }
    qint64 Pid() const { return process_.processId(); }
    // Waits for the process to end by itself; true when it ended with
    // status 0.
    bool EndsCleanly(int Milliseconds = kPatience);
    bool Running() const { return process_.state() != QProcess::NotRunning; }
    // Resident memory of the process, in kB, from /proc; -1 if unknown.
    long ResidentKb() const;

  private:
    QProcess process_;
    QString uniqueName_;
    QString failure_;
};

// The arguments of a call with explicit D-Bus types: doubles stay 'd',
// shorts 'n', bools 'b' and texts 's'.
inline QVariant N(int Value) {
    return QVariant::fromValue(static_cast<short>(Value));
}

// A blocking call of Member on Path of the server Destination.
QDBusMessage CallMember(const QDBusConnection& Bus, const QString& Destination, const QString& Path,
                        const QString& Interface, const QString& Member,
                        const QVariantList& Args = {});

// CreateObject of the factory; the path, or empty text after an error.
QString CreateObject(const QDBusConnection& Bus, const QString& Destination);

// Waits, while serving events, until the name has no owner on the bus.
bool WaitForNameGone(const QDBusConnection& Bus, const QString& Name, int Milliseconds = kPatience);

}  // namespace bustest

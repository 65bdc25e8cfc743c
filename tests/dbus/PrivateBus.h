// A bus daemon of the test's own whose service folder holds a service file
// for the built server, so that a call to the well-known name starts
// `aztrue --automation` by activation, as the user's session bus does once
// the service file is installed.
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace bustest {

class PrivateBus {
  public:
    // Starts the daemon; the activated server inherits Environment.
    explicit PrivateBus(const QProcessEnvironment& Environment);
    // Closes the test's connection and ends the daemon.
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool Ready() const { return connection_.isConnected(); }
    // The address for DBUS_SESSION_BUS_ADDRESS of a process on this bus.
    const QString& Address() const { return address_; }
    // Ends the daemon now, as the end of a desktop session does.
    void Stop();
    const QString& Failure() const { return failure_; }
    const QDBusConnection& Connection() const { return connection_; }

  private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QDBusConnection connection_{QString()};
    QString address_;
    QString failure_;
};

}  // namespace bustest

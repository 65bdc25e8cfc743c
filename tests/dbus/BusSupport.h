// The built server as the bus tests see it: `aztrue --automation` started
// on the test's bus with a documents folder of the test's, and every call
// addressed to its unique name, so that none starts a server by activation.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QStringList>
#include <QVariantList>
#include <string>
#include <vector>

#include "dbus/BusNames.h"

namespace bustest {

// Milliseconds to wait for a start, an end or a reply: far beyond any.
inline constexpr int kPatience = 20000;
inline const QString kObject = QString::fromLatin1(AztrueBus::kObjectInterface);
inline const QString kStatistics = QString::fromLatin1(AztrueBus::kStatisticsInterface);
inline const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString kInvalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");

// A 16-bit integer argument ('n'); doubles, bools and texts keep their own.
inline QVariant N(int Value) {
    return QVariant::fromValue(static_cast<short>(Value));
}
// Values as text, doubles to the last digit, for the message of a failure.
std::string Text(const QVariantList& Values);

class ServerProcess {
  public:
    // Starts the server and waits until it owns the well-known name on Bus.
    explicit ServerProcess(QString Documents = {}, const QProcessEnvironment& Extra = {},
                           const QDBusConnection& Bus = QDBusConnection::sessionBus());
    ~ServerProcess();  // kills the process if it still runs

    bool Started() const { return !name_.isEmpty(); }
    const QString& Name() const { return name_; }
    bool Running() const { return process_.state() != QProcess::NotRunning; }
    bool EndsCleanly();  // waits for the end by itself, with status 0

    QDBusMessage Call(const QString& Path, const QString& Member, const QVariantList& Args = {},
                      const QString& Interface = kObject) const;
    QString CreateObject() const;  // the path; empty after an error
    QVariant Get(const QString& Path, const QString& Property) const;
    QDBusMessage Set(const QString& Path, const QString& Property, const QVariant& Value) const;

  private:
    QDBusConnection bus_;
    QProcess process_;
    QString name_;
};

}  // namespace bustest

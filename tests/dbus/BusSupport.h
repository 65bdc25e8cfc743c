// The built server as the bus tests see it: `aztrue --automation` started
// directly on the test's bus with a documents folder given, and every call
// addressed to its unique name, so that none starts another server by
// activation.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <string>
#include <vector>

#include "dbus/BusNames.h"

namespace bustest {

// Milliseconds a test waits for a start, an end or a reply; far beyond what
// any of them takes, even in the sanitizer build.
inline constexpr int kPatience = 20000;
inline const QString kObject = QString::fromLatin1(AztrueBus::kObjectInterface);
inline const QString kStatistics = QString::fromLatin1(AztrueBus::kStatisticsInterface);
inline const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString kInvalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
inline const QString kUnknownMethod = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");

// A 16-bit integer argument ('n'); doubles, bools and texts keep their own.
inline QVariant N(int Value) {
    return QVariant::fromValue(static_cast<short>(Value));
}

// The arguments of a reply as text, for the messages of a failed check.
std::string Text(const QVariantList& Values);

// A member of an interface description: a property has a type and access,
// a method its arguments, each as "type name".
struct Member {
    QString name, type, access;
    QStringList in, out;
};
std::vector<Member> InterfaceMembers(const QString& Xml, const QString& Interface);
// The description in the repository of an interface.
QString DescriptionFile(const QString& Interface);
// The types of arguments ("dd"), and a valid value of each type.
QString Types(const QStringList& Args);
QVariantList ArgsOfTypes(const QStringList& Args);

class ServerProcess {
  public:
    // Starts the server with XDG_DOCUMENTS_DIR set to Documents (by default
    // the test's own) and waits until it owns the well-known name on Bus.
    explicit ServerProcess(QString Documents = {}, const QProcessEnvironment& Extra = {},
                           const QDBusConnection& Bus = QDBusConnection::sessionBus());
    ~ServerProcess();  // kills the process if it still runs
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    bool Started() const { return !name_.isEmpty(); }
    const QString& Failure() const { return failure_; }
    const QString& Name() const { return name_; }
    bool Running() const { return process_.state() != QProcess::NotRunning; }
    // Waits for the process to end by itself; true when it ended with 0.
    bool EndsCleanly();

    // A blocking call of Member; Interface defaults to the object's.
    QDBusMessage Call(const QString& Path, const QString& Member, const QVariantList& Args = {},
                      const QString& Interface = kObject) const;
    // CreateObject of the factory: the path, or empty text after an error.
    QString CreateObject() const;
    // A property of the object's interface, unwrapped; and its write.
    QVariant Get(const QString& Path, const QString& Property) const;
    QDBusMessage Set(const QString& Path, const QString& Property, const QVariant& Value) const;

  private:
    QDBusConnection bus_;
    QProcess process_;
    QString name_;
    QString failure_;
};

}  // namespace bustest

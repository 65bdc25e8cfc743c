// `aztrue --automation` started on the test's bus, every call addressed to
// its unique name, so that none starts a server by activation.
#pragma once

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include "dbus/BusNames.h"

namespace bustest {

inline constexpr int kPatience = 20000;  // ms for a start, an end or a reply: far beyond any
inline const QString kObject = QString::fromLatin1(AztrueBus::kObjectInterface);
inline const QString kFactoryPath = QString::fromLatin1(AztrueBus::kFactoryPath);
inline const QString kFactory = QString::fromLatin1(AztrueBus::kFactoryInterface);
inline const QString kStatistics = QString::fromLatin1(AztrueBus::kStatisticsInterface);
inline const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString kInvalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");

// A 16-bit integer argument ('n'); doubles, bools and texts keep their own.
inline QVariant N(int Value) {
    return QVariant::fromValue(static_cast<short>(Value));
}

// Values as text for the message of a failure; doubles in 17 digits, so
// that the same text is the same number to the last bit.
inline std::string Text(const QVariantList& Values) {
    QStringList parts;
    for (const QVariant& v : Values)
        parts << (v.metaType() == QMetaType::fromType<double>()
                      ? QString::number(v.toDouble(), 'g', 17)
                      : v.toString());
    return ("(" + parts.join(QStringLiteral(", ")) + ")").toStdString();
}

class ServerProcess {
  public:
    // Starts the server and waits until it owns the well-known name on Bus.
    explicit ServerProcess(QString Documents = {}, const QProcessEnvironment& Extra = {},
                           const QDBusConnection& Bus = QDBusConnection::sessionBus())
        : bus_(Bus) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_DOCUMENTS_DIR",
                   Documents.isEmpty() ? qEnvironmentVariable("XDG_DOCUMENTS_DIR") : Documents);
        env.insert(Extra);
        process_.setProcessEnvironment(env);
        process_.setProcessChannelMode(QProcess::ForwardedChannels);
        process_.start(AZTRUE_EXECUTABLE, {"--automation"});
        QElapsedTimer clock;
        clock.start();
        while (process_.waitForStarted(kPatience) && Running() && clock.elapsed() < kPatience &&
               !Started()) {
            name_ = bus_.interface()->serviceOwner(QString::fromLatin1(AztrueBus::kServiceName));
            QThread::msleep(Started() ? 0 : 10);
        }
    }
    ~ServerProcess() {
        process_.kill();
        process_.waitForFinished(kPatience);
    }

    bool Started() const { return !name_.isEmpty(); }
    const QString& Name() const { return name_; }
    bool Running() const { return process_.state() != QProcess::NotRunning; }
    bool EndsCleanly() {  // waits for the process to end by itself, with status 0
        return (!Running() || process_.waitForFinished(kPatience)) &&
               process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

    QDBusMessage Call(const QString& Path, const QString& Member, const QVariantList& Args = {},
                      const QString& Interface = kObject) const {
        QDBusMessage call = QDBusMessage::createMethodCall(name_, Path, Interface, Member);
        call.setArguments(Args);
        return bus_.call(call, QDBus::Block, kPatience);
    }
    QString CreateObject() const {  // the path; empty after an error
        const QDBusMessage reply = Call(kFactoryPath, "CreateObject", {}, kFactory);
        return qvariant_cast<QDBusObjectPath>(reply.arguments().value(0)).path();
    }
    QVariant Get(const QString& Path, const QString& Property) const {
        const QDBusMessage reply = Call(Path, "Get", {kObject, Property}, kProperties);
        EXPECT_EQ(reply.errorMessage(), QString()) << Property.toStdString();
        return qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant();
    }
    QDBusMessage Set(const QString& Path, const QString& Property, const QVariant& Value) const {
        return Call(Path, "Set", {kObject, Property, QVariant::fromValue(QDBusVariant(Value))},
                    kProperties);
    }

  private:
    QDBusConnection bus_;
    QProcess process_;
    QString name_;
};

}  // namespace bustest

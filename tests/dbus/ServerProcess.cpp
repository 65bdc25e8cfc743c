#include "ServerProcess.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include "dbus/BusNames.h"

namespace bustest {

ServerProcess::ServerProcess(const QString& DocumentsFolder, const QDBusConnection& Bus,
                             const QProcessEnvironment& Extra) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DOCUMENTS_DIR"), DocumentsFolder);
    env.insert(Extra);
    process_.setProcessEnvironment(env);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    if (!process_.waitForStarted(kPatience)) {
        failure_ = QStringLiteral("the server did not start: ") + process_.errorString();
        return;
    }
    const QString name = QString::fromLatin1(AztrueBus::kServiceName);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < kPatience) {
        const QDBusReply<QString> owner = Bus.interface()->serviceOwner(name);
        if (owner.isValid() && !owner.value().isEmpty()) {
            uniqueName_ = owner.value();
            return;
        }
        if (process_.state() == QProcess::NotRunning) {
            failure_ = QStringLiteral("the server ended before it owned the name, status ") +
                       QString::number(process_.exitCode());
            return;
        }
        QThread::msleep(10);
    }
    failure_ = QStringLiteral("the server did not claim the name in time");
}

ServerProcess::~ServerProcess() {
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished(kPatience);
    }
}

bool ServerProcess::EndsCleanly(int Milliseconds) {
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(Milliseconds))
        return false;
    return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

long ServerProcess::ResidentKb() const {
    QFile status(QStringLiteral("/proc/%1/status").arg(process_.processId()));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (!line.startsWith("VmRSS:")) continue;
        bool ok = false;
        const long kb = line.mid(6).trimmed().split(' ').value(0).toLong(&ok);
        return ok ? kb : -1;
    }
    return -1;
}

QDBusMessage CallMember(const QDBusConnection& Bus, const QString& Destination, const QString& Path,
                        const QString& Interface, const QString& Member, const QVariantList& Args) {
    QDBusMessage call = QDBusMessage::createMethodCall(Destination, Path, Interface, Member);
    call.setArguments(Args);
    return Bus.call(call, QDBus::Block, kPatience);
}

QString CreateObject(const QDBusConnection& Bus, const QString& Destination) {
    const QDBusMessage reply = CallMember(
        Bus, Destination, QString::fromLatin1(AztrueBus::kFactoryPath),
        QString::fromLatin1(AztrueBus::kFactoryInterface), QStringLiteral("CreateObject"));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) return {};
    return qvariant_cast<QDBusObjectPath>(reply.arguments().at(0)).path();
}

bool WaitForNameGone(const QDBusConnection& Bus, const QString& Name, int Milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < Milliseconds) {
        const QDBusReply<bool> owned = Bus.interface()->isServiceRegistered(Name);
        if (owned.isValid() && !owned.value()) return true;
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
    return false;
}

}  // namespace bustest

#include "PrivateBus.h"

#include <QDir>
#include <QFile>

#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace bustest {

namespace {

const QString kConnectionName = QStringLiteral("aztrue-private-bus");

bool WriteFile(const QString& Name, const QString& Text) {
    QFile f(Name);
    return f.open(QIODevice::WriteOnly) && f.write(Text.toUtf8()) >= 0;
}

}  // namespace

PrivateBus::PrivateBus(const QProcessEnvironment& Environment) {
    const QString services = folder_.filePath(QStringLiteral("services"));
    const QString config = folder_.filePath(QStringLiteral("bus.conf"));
    const QString serviceFile = services + QStringLiteral("/") +
                                QString::fromLatin1(AztrueBus::kServiceName) +
                                QStringLiteral(".service");
    if (!folder_.isValid() || !QDir().mkpath(services) ||
        !WriteFile(serviceFile, QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2 --automation\n")
                                    .arg(QString::fromLatin1(AztrueBus::kServiceName),
                                         QStringLiteral(AZTRUE_EXECUTABLE))) ||
        !WriteFile(config, QStringLiteral(R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <servicedir>%2</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)")
                               .arg(folder_.path(), services))) {
        failure_ = QStringLiteral("cannot write the bus configuration");
        return;
    }
    daemon_.setProcessEnvironment(Environment);
    daemon_.setProcessChannelMode(QProcess::SeparateChannels);
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=") + config, QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
    if (!daemon_.waitForStarted(kPatience)) {
        failure_ = QStringLiteral("dbus-daemon did not start: ") + daemon_.errorString();
        return;
    }
    QByteArray address;
    while (!address.contains('\n') && daemon_.waitForReadyRead(kPatience))
        address += daemon_.readAllStandardOutput();
    if (!address.contains('\n')) {
        failure_ = QStringLiteral("dbus-daemon gave no address");
        return;
    }
    address_ = QString::fromUtf8(address.trimmed());
    connection_ = QDBusConnection::connectToBus(address_, kConnectionName);
    if (!connection_.isConnected())
        failure_ = QStringLiteral("cannot connect to the private bus: ") +
                   connection_.lastError().message();
}

PrivateBus::~PrivateBus() {
    Stop();
}

void PrivateBus::Stop() {
    connection_ = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(kConnectionName);
    if (daemon_.state() != QProcess::NotRunning) {
        daemon_.terminate();
        if (!daemon_.waitForFinished(kPatience)) daemon_.kill();
        daemon_.waitForFinished(kPatience);
    }
}

}  // namespace bustest

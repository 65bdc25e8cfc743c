#include "dbus/AutomationServer.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusReply>

#include "FactoryAdaptor.h"
#include "dbus/BusNames.h"
#include "dbus/FactoryService.h"
#include "dbus/ProcessEnd.h"
#include "server/ServerProcess.h"

AutomationServer::AutomationServer(const QDBusConnection& Bus) : bus_(Bus), display_(Bus) {}

// The main window object outlives this server: it gets a display back that
// refreshes nothing.
AutomationServer::~AutomationServer() {
    static NoDisplay noWindows;
    TheMainWindow().SetDisplay(noWindows);
}

AutomationServer::Outcome AutomationServer::Publish(QString& Message) {
    const QString name = QString::fromLatin1(AztrueBus::kServiceName);
    if (!bus_.isConnected()) {
        Message = QStringLiteral("cannot connect to the D-Bus session bus: ") +
                  bus_.lastError().message();
        return Outcome::Failed;
    }
    factory_ = std::make_unique<FactoryService>(bus_);
    new FactoryAdaptor(factory_.get());
    if (!bus_.registerObject(QString::fromLatin1(AztrueBus::kFactoryPath), factory_.get(),
                             QDBusConnection::ExportAdaptors)) {
        Message = QStringLiteral("cannot publish the object ") +
                  QString::fromLatin1(AztrueBus::kFactoryPath);
        return Outcome::Failed;
    }
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus_.interface()->registerService(name, QDBusConnectionInterface::DontQueueService,
                                          QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        Message = QStringLiteral("cannot claim the name ") + name +
                  QStringLiteral(" on the session bus: ") + reply.error().message();
        return Outcome::Failed;
    }
    if (reply.value() != QDBusConnectionInterface::ServiceRegistered) {
        Message =
            QStringLiteral("the automation server is already running: another process owns ") +
            name + QStringLiteral(" on the session bus");
        return Outcome::NameTaken;
    }
    // The bus connection itself announces its loss by this signal.
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(BusLost()));
    // From here on calls arrive; the objects they create refresh and end
    // the process through this display.
    TheMainWindow().SetDisplay(*installed_);
    return Outcome::Serving;
}

void AutomationServer::BusLost() {
    factory_->ReleaseAll();
    // Without any object the process ends here all the same.
    EndProcessAfterReply(bus_);
}

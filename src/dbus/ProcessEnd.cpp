#include "dbus/ProcessEnd.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QMetaObject>
#include <cstdio>
#include <cstdlib>

#include "dbus/BusNames.h"

void EndProcessAfterReply(const QDBusConnection& Bus) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [Bus]() {
            QDBusConnection bus(Bus);
            // The bus daemon answers in the order of our messages: once it
            // has answered this, it holds every reply we sent before.
            if (bus.isConnected())
                bus.unregisterService(QString::fromLatin1(AztrueBus::kServiceName));
            std::fflush(nullptr);
            std::_Exit(0);
        },
        Qt::QueuedConnection);
}

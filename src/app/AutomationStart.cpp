#include "app/AutomationStart.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QString>
#include <cstdio>

#include "dbus/AutomationServer.h"

int RunAutomation(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    AutomationServer server(QDBusConnection::sessionBus());
    QString message;
    if (server.Publish(message) != AutomationServer::Outcome::Serving) {
        std::fprintf(stderr, "aztrue: %s\n", qPrintable(message));
        return 1;
    }
    // The process ends from inside the loop, when an object ends.
    return app.exec();
}

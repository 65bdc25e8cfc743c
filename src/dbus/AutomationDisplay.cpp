#include "dbus/AutomationDisplay.h"

#include <QCoreApplication>

#include "dbus/ProcessEnd.h"

AutomationDisplay::AutomationDisplay(const QDBusConnection& Bus) : bus_(Bus) {}

void AutomationDisplay::ProcessPendingEvents() {
    QCoreApplication::processEvents();
}

void AutomationDisplay::DisposeAll() {
    EndProcessAfterReply(bus_);
}

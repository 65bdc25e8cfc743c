// The automation server of one process: the factory published on a bus
// connection under the well-known name, and the display that lets the
// model's chain serve pending events and end the process.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <memory>

#include "dbus/AutomationDisplay.h"

class FactoryService;

class AutomationServer : public QObject {
    Q_OBJECT

  public:
    explicit AutomationServer(const QDBusConnection& Bus);
    ~AutomationServer() override;
    AutomationServer(const AutomationServer&) = delete;
    AutomationServer& operator=(const AutomationServer&) = delete;

    // Installs Display in the main window object at Publish instead of the
    // window-less display of this server; Display must outlive the server.
    void UseDisplay(DisplayRefresh& Display) { installed_ = &Display; }

    enum class Outcome { Serving, NameTaken, Failed };
    // Installs the display in the main window object, publishes the
    // factory, then claims the well-known name, so that the first call let
    // through by the name finds the factory. On anything but Serving,
    // Message says what went wrong.
    Outcome Publish(QString& Message);

  private slots:
    // The connection to the bus is gone, and with it every client: all
    // objects are released and the process ends.
    void BusLost();

  private:
    QDBusConnection bus_;
    AutomationDisplay display_;
    DisplayRefresh* installed_ = &display_;
    std::unique_ptr<FactoryService> factory_;
};

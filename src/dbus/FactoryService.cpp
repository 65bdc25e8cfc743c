#include "dbus/FactoryService.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QMetaObject>
#include <vector>

#include "StatisticsAdaptor.h"
#include "cAztrueAdaptor.h"
#include "dbus/BusNames.h"
#include "dbus/PropertiesAdaptor.h"
#include "dbus/cAztrueService.h"

FactoryService::FactoryService(const QDBusConnection& Bus, QObject* Parent)
    : QObject(Parent), bus_(Bus) {
    creators_.setConnection(bus_);
    creators_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&creators_, &QDBusServiceWatcher::serviceUnregistered, this,
            &FactoryService::CreatorGone);
}

QDBusObjectPath FactoryService::CreateObject() {
    const QString path =
        QString::fromLatin1(AztrueBus::kObjectPathPrefix) + QString::number(created_ + 1);
    auto* object = new cAztrueService(this);
    // The object's interface, the property interface that guards its
    // writes, and the statistics interface.
    new PropertiesAdaptor(object, new cAztrueAdaptor(object));
    new StatisticsAdaptor(object);
    if (!bus_.registerObject(path, object, QDBusConnection::ExportAdaptors)) {
        // Cannot happen while paths are unique; the creation has run all the
        // same, so the object is ended like any released one.
        sendErrorReply(QDBusError::Failed, QStringLiteral("cannot publish an object at ") + path);
        object->deleteLater();
        return {};
    }
    ++created_;
    connect(object, &cAztrueService::ReleaseRequested, this, &FactoryService::ReleaseObject);
    const QString creator = calledFromDBus() ? message().service() : QString();
    objects_[path] = Published{object, creator};
    if (!creator.isEmpty()) WatchCreator(creator);
    return QDBusObjectPath(path);
}

void FactoryService::WatchCreator(const QString& Creator) {
    if (creators_.watchedServices().contains(Creator)) return;
    creators_.addWatchedService(Creator);
    // The creator may have left before the watch was in place; the bus
    // daemon answers this after it has taken the watch, so nothing is missed.
    const QDBusReply<bool> present = bus_.interface()->isServiceRegistered(Creator);
    if (present.isValid() && !present.value()) {
        QMetaObject::invokeMethod(
            this, [this, Creator]() { CreatorGone(Creator); }, Qt::QueuedConnection);
    }
}

void FactoryService::CreatorGone(const QString& Creator) {
    creators_.removeWatchedService(Creator);
    std::vector<cAztrueService*> theirs;
    for (const auto& [path, published] : objects_) {
        if (published.creator == Creator) theirs.push_back(published.object);
    }
    for (cAztrueService* object : theirs) ReleaseObject(object);
}

void FactoryService::ReleaseAll() {
    while (!objects_.empty()) ReleaseObject(objects_.begin()->second.object);
}

void FactoryService::ReleaseObject(cAztrueService* Object) {
    for (auto it = objects_.begin(); it != objects_.end(); ++it) {
        if (it->second.object != Object) continue;
        // No call reaches the object from now on; it ends (its termination
        // and the end of the process) after the reply to this call.
        bus_.unregisterObject(it->first);
        objects_.erase(it);
        Object->deleteLater();
        return;
    }
}

// The creator of automation objects at /com/brightfold/AZTSERVR. Each
// CreateObject runs the creation of a cAztrue and publishes it at the next
// numbered path. An object ends when its client calls Release or when the
// bus connection that created it goes away; the end of an object ends the
// process.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <map>

class cAztrueService;

class FactoryService : public QObject, protected QDBusContext {
    Q_OBJECT

  public:
    explicit FactoryService(const QDBusConnection& Bus, QObject* Parent = nullptr);

    // Publishes a new object and returns its path; the caller's connection
    // is watched from now on.
    QDBusObjectPath CreateObject();
    // Releases every object, as when all their clients have gone.
    void ReleaseAll();

  private:
    struct Published {
        cAztrueService* object = nullptr;
        QString creator;  // unique bus name of the creating connection
    };

    void WatchCreator(const QString& Creator);
    void CreatorGone(const QString& Creator);
    // Takes the object off the bus at once and ends it once the current
    // call has been answered.
    void ReleaseObject(cAztrueService* Object);

    QDBusConnection bus_;
    QDBusServiceWatcher creators_;
    int created_ = 0;
    std::map<QString, Published> objects_;  // by object path
};

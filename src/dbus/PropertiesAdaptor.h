// The standard property interface, org.freedesktop.DBus.Properties, of an
// automation object, served by the object itself instead of by Qt: a write
// must have exactly the property's declared type (Qt would convert an int32
// into a 16-bit integer or a double without a word) and a double must be a
// finite number. A refused write gets the standard error and reaches
// nothing of the model; an accepted one runs what the property's Set runs.
// The properties, their types and access are those of the generated
// adaptor, that is, of the interface description.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusError>
#include <QDBusVariant>
#include <QString>
#include <QVariantMap>

class cAztrueService;

class PropertiesAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.DBus.Properties")
    // The bus lists this standard interface on every object already.
    Q_CLASSINFO("D-Bus Introspection", " ")

  public:
    // Interface is the adaptor of the object's own interface, whose
    // properties are served.
    PropertiesAdaptor(cAztrueService* Object, QObject* Interface);

  public slots:
    QDBusVariant Get(const QString& interface_name, const QString& property_name);
    QVariantMap GetAll(const QString& interface_name);
    void Set(const QString& interface_name, const QString& property_name,
             const QDBusVariant& value);

  private:
    // The index of the property in the interface's adaptor, or -1 after an
    // error reply for an unknown interface or property.
    int FindProperty(const QString& InterfaceName, const QString& PropertyName);
    bool KnownInterface(const QString& InterfaceName);
    void Refuse(QDBusError::ErrorType Type, const QString& Message);

    cAztrueService* object_;
    QObject* interface_;
};

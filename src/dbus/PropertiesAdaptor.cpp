#include "dbus/PropertiesAdaptor.h"

#include <QDBusError>
#include <QDBusMetaType>
#include <QMetaProperty>
#include <cmath>

#include "dbus/BusNames.h"
#include "dbus/cAztrueService.h"

namespace {

// The D-Bus type of a value or property, as its signature.
QString Signature(QMetaType Type) {
    const char* signature = QDBusMetaType::typeToSignature(Type);
    return signature ? QString::fromLatin1(signature) : QStringLiteral("?");
}

}  // namespace

PropertiesAdaptor::PropertiesAdaptor(cAztrueService* Object, QObject* Interface)
    : QDBusAbstractAdaptor(Object), object_(Object), interface_(Interface) {}

void PropertiesAdaptor::Refuse(QDBusError::ErrorType Type, const QString& Message) {
    object_->RefuseCall(Type, Message);
}

// An empty name asks for the property in whichever interface has it.
bool PropertiesAdaptor::KnownInterface(const QString& InterfaceName) {
    if (InterfaceName.isEmpty() || InterfaceName == QLatin1String(AztrueBus::kObjectInterface))
        return true;
    Refuse(QDBusError::UnknownInterface,
           QStringLiteral("No interface '%1' with properties on this object").arg(InterfaceName));
    return false;
}

int PropertiesAdaptor::FindProperty(const QString& InterfaceName, const QString& PropertyName) {
    if (InterfaceName == QLatin1String(AztrueBus::kStatisticsInterface)) {
        Refuse(
            QDBusError::UnknownProperty,
            QStringLiteral("No property '%1' in interface '%2'").arg(PropertyName, InterfaceName));
        return -1;
    }
    if (!KnownInterface(InterfaceName)) return -1;
    const QMetaObject* meta = interface_->metaObject();
    const int index = meta->indexOfProperty(PropertyName.toUtf8().constData());
    // Below the offset stand the properties of QObject itself, not ours.
    if (index < meta->propertyOffset()) {
        Refuse(QDBusError::UnknownProperty,
               QStringLiteral("No property '%1' in interface '%2'")
                   .arg(PropertyName, QLatin1String(AztrueBus::kObjectInterface)));
        return -1;
    }
    return index;
}

QDBusVariant PropertiesAdaptor::Get(const QString& interface_name, const QString& property_name) {
    const int index = FindProperty(interface_name, property_name);
    if (index < 0) return {};
    return QDBusVariant(interface_->metaObject()->property(index).read(interface_));
}

QVariantMap PropertiesAdaptor::GetAll(const QString& interface_name) {
    QVariantMap all;
    // The statistics interface has methods only.
    if (interface_name == QLatin1String(AztrueBus::kStatisticsInterface)) return all;
    if (!KnownInterface(interface_name)) return all;
    const QMetaObject* meta = interface_->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        all.insert(QString::fromLatin1(property.name()), property.read(interface_));
    }
    return all;
}

void PropertiesAdaptor::Set(const QString& interface_name, const QString& property_name,
                            const QDBusVariant& value) {
    const int index = FindProperty(interface_name, property_name);
    if (index < 0) return;
    const QMetaProperty property = interface_->metaObject()->property(index);
    if (!property.isWritable()) {
        Refuse(QDBusError::PropertyReadOnly,
               QStringLiteral("Property '%1' is read-only").arg(property_name));
        return;
    }
    const QVariant v = value.variant();
    if (v.metaType() != property.metaType()) {
        Refuse(QDBusError::InvalidArgs,
               QStringLiteral("Property '%1' has the type '%2'; a value of type '%3' was given")
                   .arg(property_name, Signature(property.metaType()), Signature(v.metaType())));
        return;
    }
    if (v.metaType() == QMetaType::fromType<double>() && !std::isfinite(v.toDouble())) {
        Refuse(QDBusError::InvalidArgs,
               QStringLiteral("Property '%1' must be a finite number, not %2")
                   .arg(property_name, QString::number(v.toDouble())));
        return;
    }
    property.write(interface_, v);
}

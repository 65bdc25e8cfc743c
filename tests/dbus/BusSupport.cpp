#include "BusSupport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QXmlStreamReader>

namespace bustest {

std::string Text(const QVariantList& Values) {
    QStringList parts;
    for (const QVariant& v : Values)
        parts << (v.metaType() == QMetaType::fromType<double>()
                      ? QString::number(v.toDouble(), 'g', 17)
                      : v.toString());
    return ("(" + parts.join(QStringLiteral(", ")) + ")").toStdString();
}

std::vector<Member> InterfaceMembers(const QString& Xml, const QString& Interface) {
    std::vector<Member> members;
    QXmlStreamReader xml(Xml);
    bool inside = false;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::EndElement && xml.name() == u"interface")
            inside = false;
        if (!xml.isStartElement()) continue;
        const auto a = [&](const char* key) { return xml.attributes().value(key).toString(); };
        if (xml.name() == u"interface") inside = a("name") == Interface;
        if (!inside) continue;
        if (xml.name() == u"property")
            members.push_back({a("name"), a("type"), a("access"), {}, {}});
        if (xml.name() == u"method") members.push_back({a("name"), {}, {}, {}, {}});
        // An argument of a method is "in" unless it says otherwise.
        if (xml.name() == u"arg" && !members.empty())
            (a("direction") == u"out" ? members.back().out : members.back().in)
                .push_back(a("type") + QLatin1Char(' ') + a("name"));
    }
    return members;
}

QString DescriptionFile(const QString& Interface) {
    QFile f(QStringLiteral(AZTRUE_SOURCE_DIR "/src/dbus/") + Interface + QStringLiteral(".xml"));
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

QString Types(const QStringList& Args) {
    QString types;
    for (const QString& a : Args) types += a.section(QLatin1Char(' '), 0, 0);
    return types;
}

QVariantList ArgsOfTypes(const QStringList& Args) {
    QVariantList values;
    for (const QChar type : Types(Args))
        values << (type == u'd'   ? QVariant(0.25)
                   : type == u'n' ? N(1)
                   : type == u'b' ? QVariant(true)
                                  : QVariant(QString()));
    return values;
}

ServerProcess::ServerProcess(QString Documents, const QProcessEnvironment& Extra,
                             const QDBusConnection& Bus)
    : bus_(Bus) {
    if (Documents.isEmpty()) Documents = qEnvironmentVariable("XDG_DOCUMENTS_DIR");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DOCUMENTS_DIR"), Documents);
    env.insert(Extra);
    process_.setProcessEnvironment(env);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    QElapsedTimer clock;
    clock.start();
    while (process_.waitForStarted(kPatience) && clock.elapsed() < kPatience) {
        const QString owner =
            bus_.interface()->serviceOwner(QString::fromLatin1(AztrueBus::kServiceName)).value();
        if (!owner.isEmpty()) {
            name_ = owner;
            return;
        }
        if (!Running()) break;
        QThread::msleep(10);
    }
    failure_ = QStringLiteral("the server did not claim the name; ") + process_.errorString();
}

ServerProcess::~ServerProcess() {
    if (!Running()) return;
    process_.kill();
    process_.waitForFinished(kPatience);
}

bool ServerProcess::EndsCleanly() {
    if (Running() && !process_.waitForFinished(kPatience)) return false;
    return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

QDBusMessage ServerProcess::Call(const QString& Path, const QString& Member,
                                 const QVariantList& Args, const QString& Interface) const {
    QDBusMessage call = QDBusMessage::createMethodCall(name_, Path, Interface, Member);
    call.setArguments(Args);
    return bus_.call(call, QDBus::Block, kPatience);
}

QString ServerProcess::CreateObject() const {
    const QDBusMessage reply =
        Call(QString::fromLatin1(AztrueBus::kFactoryPath), QStringLiteral("CreateObject"), {},
             QString::fromLatin1(AztrueBus::kFactoryInterface));
    return qvariant_cast<QDBusObjectPath>(reply.arguments().value(0)).path();
}

QVariant ServerProcess::Get(const QString& Path, const QString& Property) const {
    const QDBusMessage reply = Call(Path, QStringLiteral("Get"), {kObject, Property}, kProperties);
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    return qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant();
}

QDBusMessage ServerProcess::Set(const QString& Path, const QString& Property,
                                const QVariant& Value) const {
    return Call(Path, QStringLiteral("Set"),
                {kObject, Property, QVariant::fromValue(QDBusVariant(Value))}, kProperties);
}

}  // namespace bustest

// The tests run with a Qt application object, which Qt's bus connections
// need, and a documents folder of their own, so that a trace log marker of
// the user's never turns a log on.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir documents;
    qputenv("XDG_DOCUMENTS_DIR", documents.path().toUtf8());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#include "BusSupport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

namespace bustest {

std::string Text(const QVariantList& Values) {
    QStringList parts;
    for (const QVariant& v : Values)
        parts << (v.metaType() == QMetaType::fromType<double>()
                      ? QString::number(v.toDouble(), 'g', 17)
                      : v.toString());
    return ("(" + parts.join(QStringLiteral(", ")) + ")").toStdString();
}

ServerProcess::ServerProcess(QString Documents, const QProcessEnvironment& Extra,
                             const QDBusConnection& Bus)
    : bus_(Bus) {
    if (Documents.isEmpty()) Documents = qEnvironmentVariable("XDG_DOCUMENTS_DIR");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    // The test's own folder by default, so that no marker of the user's
    // turns a trace log on.
    env.insert(QStringLiteral("XDG_DOCUMENTS_DIR"), Documents);
    env.insert(Extra);
    process_.setProcessEnvironment(env);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    QElapsedTimer clock;
    clock.start();
    while (process_.waitForStarted(kPatience) && Running() && clock.elapsed() < kPatience) {
        name_ = bus_.interface()->serviceOwner(QString::fromLatin1(AztrueBus::kServiceName));
        if (Started()) return;
        QThread::msleep(10);
    }
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

// Qt's bus connections need an application object.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir documents;
    qputenv("XDG_DOCUMENTS_DIR", documents.path().toUtf8());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

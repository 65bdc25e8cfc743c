// The interface descriptions in the repository are the contract: what an
// object and the factory introspect is the same, member for member, and
// every member answers with the types it declares.
#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDBusVariant>

#include "BusSupport.h"

namespace {

using namespace bustest;

std::string Line(const Member& m) {
    const QString line = m.type.isEmpty() ? m.name + QStringLiteral(" (") + m.in.join(u", ") +
                                                QStringLiteral(") -> (") + m.out.join(u", ") + u')'
                                          : m.name + u' ' + m.type + u' ' + m.access;
    return line.toStdString();
}

TEST(Interface, IntrospectionIsTheDescriptionAndEveryMemberAnswersWithItsTypes) {
    ServerProcess server;
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    const QString path = server.CreateObject();
    ASSERT_EQ(path, QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/1"));
    const QString factory = QString::fromLatin1(AztrueBus::kFactoryInterface);
    const struct {
        QString path, interface;
        size_t count;
    } kInterfaces[] = {{QString::fromLatin1(AztrueBus::kFactoryPath), factory, 1},
                       {path, kObject, 61},
                       {path, kStatistics, 3}};
    for (const auto& i : kInterfaces) {
        const QDBusMessage xml = server.Call(i.path, QStringLiteral("Introspect"), {},
                                             QStringLiteral("org.freedesktop.DBus.Introspectable"));
        const std::vector<Member> onTheBus =
            InterfaceMembers(xml.arguments().value(0).toString(), i.interface);
        const std::vector<Member> described =
            InterfaceMembers(DescriptionFile(i.interface), i.interface);
        ASSERT_EQ(described.size(), i.count) << i.interface.toStdString();
        ASSERT_EQ(onTheBus.size(), described.size()) << i.interface.toStdString();
        for (size_t k = 0; k < described.size(); ++k)
            EXPECT_EQ(Line(onTheBus[k]), Line(described[k])) << i.interface.toStdString();
        if (i.interface == factory) continue;
        for (const Member& m : described) {
            if (!m.type.isEmpty()) {
                // A property reads with its type; a writable one takes it back.
                const QVariant value = server.Get(path, m.name);
                EXPECT_STREQ(QDBusMetaType::typeToSignature(value.metaType()),
                             m.type.toLatin1().constData())
                    << m.name.toStdString();
                if (m.access == u"readwrite") {
                    EXPECT_EQ(server.Set(path, m.name, value).type(), QDBusMessage::ReplyMessage)
                        << m.name.toStdString();
                }
                continue;
            }
            // The members that end the process come last, below.
            if (m.name == u"Dispose" || m.name == u"Release") continue;
            const QDBusMessage reply = server.Call(path, m.name, ArgsOfTypes(m.in), i.interface);
            EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage)
                << m.name.toStdString() << ": " << reply.errorMessage().toStdString();
            EXPECT_EQ(reply.signature(), Types(m.out)) << m.name.toStdString();
        }
    }
    // Dispose answers before the process ends.
    EXPECT_EQ(server.Call(path, QStringLiteral("Dispose")).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(server.EndsCleanly());
}

}  // namespace

#include "InterfaceDescription.h"

#include <QFile>
#include <QXmlStreamReader>

namespace bustest {

namespace {

std::string Types(const std::vector<std::string>& args) {
    std::string types;
    for (const std::string& a : args) types += a.substr(0, a.find(' '));
    return types;
}

std::string Joined(const std::vector<std::string>& args) {
    std::string text;
    for (const std::string& a : args) text += (text.empty() ? "" : ", ") + a;
    return "(" + text + ")";
}

}  // namespace

std::string Member::InTypes() const {
    return Types(inArgs);
}
std::string Member::OutTypes() const {
    return Types(outArgs);
}

std::string Member::Line() const {
    if (kind == "property") return kind + " " + name + " " + type + " " + access;
    return kind + " " + name + " " + Joined(inArgs) + " -> " + Joined(outArgs);
}

std::vector<Member> InterfaceMembers(const QString& Xml, const QString& InterfaceName) {
    std::vector<Member> members;
    QXmlStreamReader xml(Xml);
    bool inside = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const QXmlStreamAttributes a = xml.attributes();
            const auto text = [&](const char* key) {
                return a.value(QLatin1String(key)).toString().toStdString();
            };
            if (xml.name() == QLatin1String("interface")) {
                inside = a.value(QLatin1String("name")) == InterfaceName;
            } else if (inside && xml.name() == QLatin1String("property")) {
                members.push_back({"property", text("name"), text("type"), text("access"), {}, {}});
            } else if (inside && xml.name() == QLatin1String("method")) {
                members.push_back({"method", text("name"), "", "", {}, {}});
            } else if (inside && xml.name() == QLatin1String("arg") && !members.empty()) {
                const std::string arg = text("type") + " " + text("name");
                // A method's argument is "in" unless it says otherwise.
                if (text("direction") == "out")
                    members.back().outArgs.push_back(arg);
                else
                    members.back().inArgs.push_back(arg);
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("interface")) {
            inside = false;
        }
    }
    return members;
}

QString FileText(const QString& FileName) {
    QFile f(FileName);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

}  // namespace bustest

// The members of one interface in an introspection text, in their order,
// each as one line of text that holds its kind, name, types and access:
//   "property Version s read"
//   "method GetErrors () -> (d MaxErrSel, d RMSErrSel, d MaxErrAll, d RMSErrAll)"
#pragma once

#include <QString>
#include <string>
#include <vector>

namespace bustest {

struct Member {
    std::string kind;  // "property" or "method"
    std::string name;
    std::string type;                  // of a property
    std::string access;                // of a property: "read" or "readwrite"
    std::vector<std::string> inArgs;   // "d LST"
    std::vector<std::string> outArgs;  // "d ThetaEnc"
    std::string InTypes() const;
    std::string OutTypes() const;
    std::string Line() const;
};

// The members of InterfaceName in Xml; empty if the interface is missing.
std::vector<Member> InterfaceMembers(const QString& Xml, const QString& InterfaceName);

// The whole text of a file.
QString FileText(const QString& FileName);

}  // namespace bustest

#include "windows/FileDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QStringList>
#include <vector>

namespace {

// Longest path the chooser hands back, as the fixed 256-character name
// buffer with its closing NUL allows.
constexpr size_t kNameBufferSize = 256;

// A filter pair as Qt applies it: the description, then the patterns in
// brackets, "*.*" standing for every file as it does on the desktop the
// files come from. The chooser hides that bracket (HideNameFilterDetails),
// so the operator reads the description exactly as given.
QString QtFilter(const std::string& Description, const std::string& Pattern) {
    QStringList patterns;
    for (const QString& p : QString::fromStdString(Pattern).split(';', Qt::SkipEmptyParts)) {
        const QString t = p.trimmed();
        patterns << (t == QStringLiteral("*.*") ? QStringLiteral("*") : t);
    }
    return QString::fromStdString(Description) + QStringLiteral(" (") + patterns.join(' ') +
           QStringLiteral(")");
}

QStringList QtFilters(const std::string& Filter) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start < Filter.size()) {
        const size_t nul = Filter.find('\0', start);
        if (nul == std::string::npos) {
            parts.push_back(Filter.substr(start));
            break;
        }
        parts.push_back(Filter.substr(start, nul - start));
        start = nul + 1;
    }
    QStringList out;
    for (size_t i = 0; i + 1 < parts.size(); i += 2) out << QtFilter(parts[i], parts[i + 1]);
    return out;
}

}  // namespace

std::string MakeFilter(const std::string& Prefix, const std::string& Description,
                       const std::string& Pattern) {
    std::string s = Prefix + Description;
    s.push_back('\0');
    s += Pattern;
    s.push_back('\0');
    return s;
}

std::string CutAtNull(const std::string& Text) {
    const size_t nul = Text.find('\0');
    return nul == std::string::npos ? Text : Text.substr(0, nul);
}

std::string ShowFileDialog(FileDialogArgs& Args) {
    std::string name = Args.FileName;
    name.resize(kNameBufferSize, '\0');
    name = CutAtNull(name);

    QFileDialog dlg(Args.Owner, QString::fromStdString(Args.Title));
    dlg.setOption(QFileDialog::DontUseNativeDialog, true);
    dlg.setOption(QFileDialog::DontConfirmOverwrite, true);
    dlg.setOption(QFileDialog::ReadOnly, false);
    dlg.setOption(QFileDialog::HideNameFilterDetails, true);
    dlg.setAcceptMode(Args.OpenDialog ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    // No test that the file exists: any name typed is handed back.
    dlg.setFileMode(QFileDialog::AnyFile);
    dlg.setDirectory(Args.InitialDir.empty() ? QDir::currentPath()
                                             : QString::fromStdString(Args.InitialDir));
    const QStringList filters = QtFilters(Args.Filter);
    if (!filters.isEmpty()) {
        dlg.setNameFilters(filters);
        const int index =
            Args.FilterIndex >= 1 && Args.FilterIndex <= filters.size() ? Args.FilterIndex - 1 : 0;
        dlg.selectNameFilter(filters[index]);
    }
    if (!Args.DefaultExt.empty()) dlg.setDefaultSuffix(QString::fromStdString(Args.DefaultExt));
    if (!name.empty()) dlg.selectFile(QString::fromStdString(name));

    if (dlg.exec() != QDialog::Accepted) return {};
    const QStringList chosen = dlg.selectedFiles();
    if (chosen.isEmpty()) return {};
    const std::string path = QDir::toNativeSeparators(chosen.front()).toStdString();
    if (path.size() >= kNameBufferSize) return {};
    // Qt reports no flags of its own; the caller's flags come back as they were.
    return path;
}

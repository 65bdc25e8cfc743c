// Runs the registered test classes in one QApplication, or only the one named
// by AZTRUE_TEST_CLASS; the exit status counts the classes with a failure.
#include "windows/WindowsTestSupport.h"

std::vector<TestFactory>& RegisteredTests() {
    static std::vector<TestFactory> tests;
    return tests;
}

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Aztrue"));
    const QByteArray only = qgetenv("AZTRUE_TEST_CLASS");
    int failed = 0;
    for (const TestFactory& make : RegisteredTests()) {
        std::unique_ptr<QObject> test = make();
        if (!only.isEmpty() && only != test->metaObject()->className()) continue;
        if (QTest::qExec(test.get(), argc, argv) != 0) ++failed;
    }
    return failed;
}

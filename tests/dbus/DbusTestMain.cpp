// The D-Bus tests run with a Qt application object, which the bus
// connections of Qt need, and with a documents folder of their own, so that
// a trace log marker of the user's never turns the log of the in-process
// objects on.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir documents;
    qputenv("XDG_DOCUMENTS_DIR", documents.path().toUtf8());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

// Qt's bus connections need an application object; servers get our own documents folder.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir documents;
    qputenv("XDG_DOCUMENTS_DIR", documents.path().toUtf8());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

// fTest, the Test Log window of the developers' Test menu: one list box that
// only grows, with the lines of the checks and of the routines they run.
#pragma once

#include <QWidget>
#include <string>

class QListWidget;

class fTest : public QWidget {
    Q_OBJECT
  public:
    explicit fTest(QWidget* parent = nullptr);

    // Adds Line (UTF-8) at the end of the list and keeps it in view.
    void AddLine(const std::string& Line);

    QListWidget* List = nullptr;
};

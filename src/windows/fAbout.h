// The About window: a small picture and two credit lines.
#pragma once

#include <QDialog>
#include <string>

class fAbout : public QDialog {
    Q_OBJECT
  public:
    fAbout(const std::string& Version, QWidget* parent = nullptr);
};

// Small pieces that the windows share for building their controls: names
// of control arrays, labels, frames and text colours.
#pragma once

#include <QPushButton>
#include <QString>

class QGroupBox;
class QLabel;
class QWidget;

// Qt object name of member Index of a control array: "chkEnable_3".
QString IndexedName(const char* Name, int Index);

// A label; Name, if given, becomes its object name.
QLabel* MakeLabel(const QString& Text, QWidget* Parent, const QString& Name = QString());

// A frame with its caption on the frame line, or a plain frame for an
// empty caption.
QGroupBox* MakeFrame(const QString& Caption, QWidget* Parent);

// Style sheet of a window's frames: captions sit on the frame line, as on
// the classic desktop, so that the tables fit the fixed window sizes.
QString FrameStyleSheet();

// Text colour of a label or check box, as a colour of cPicture.
void SetTextColor(QWidget* Control, long Color);

// A push button whose caption wraps onto a second line where it is too long
// for the button's width, as captions of the classic desktop did.
class WrapButton : public QPushButton {
  public:
    WrapButton(const QString& Caption, QWidget* Parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* Event) override;
};

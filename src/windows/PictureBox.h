// A picture control: a sunken frame round a cPicture, with a black
// background, that reports a press of any mouse button in picture pixels.
// Square unless made with a width and a height.
// A double-click is one press: its second press is not reported.
#pragma once

#include <QFrame>
#include <functional>

#include "windows/Picture.h"

class PictureBox : public QFrame {
    Q_OBJECT
  public:
    // Border of the control on each side, in pixels; the picture fills the
    // rest of OuterSize.
    static constexpr int kBorder = 2;

    PictureBox(int OuterSize, QWidget* parent = nullptr);
    PictureBox(int OuterWidth, int OuterHeight, QWidget* parent = nullptr);

    // A new outer size; the picture takes the rest, cleared.
    void SetOuterSize(int OuterWidth, int OuterHeight);

    cPicture& Picture() { return picture_; }

    // Called with the position of a mouse press, in pixels of the picture.
    std::function<void(double X, double Y)> OnMouseDown;
    // Called with the position of the mouse as it moves over the control:
    // with a button pressed, or always once mouse tracking is on.
    std::function<void(double X, double Y)> OnMouseMove;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    cPicture picture_;
};

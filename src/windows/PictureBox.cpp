#include "windows/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>

PictureBox::PictureBox(int OuterSize, QWidget* parent) : PictureBox(OuterSize, OuterSize, parent) {}

PictureBox::PictureBox(int OuterWidth, int OuterHeight, QWidget* parent)
    : QFrame(parent), picture_(OuterWidth - 2 * kBorder, OuterHeight - 2 * kBorder) {
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(kBorder);
    setFixedSize(OuterWidth, OuterHeight);
}

void PictureBox::SetOuterSize(int OuterWidth, int OuterHeight) {
    picture_.SetSize(OuterWidth - 2 * kBorder, OuterHeight - 2 * kBorder);
    setFixedSize(OuterWidth, OuterHeight);
}

void PictureBox::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter p(this);
    p.drawImage(contentsRect().topLeft(), picture_.Image());
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    const QPointF pos = event->position() - QPointF(contentsRect().topLeft());
    if (OnMouseDown) OnMouseDown(pos.x(), pos.y());
    event->accept();
}

// The window system hands the second press of a double-click over as a
// double-click event, which QWidget would pass on as one more press. A plot
// toggles a point at each press, so that press would take the first one
// back.
void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    const QPointF pos = event->position() - QPointF(contentsRect().topLeft());
    if (OnMouseMove) OnMouseMove(pos.x(), pos.y());
    event->accept();
}

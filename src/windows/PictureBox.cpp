#include "windows/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>

PictureBox::PictureBox(int OuterSize, QWidget* parent)
    : QFrame(parent), picture_(OuterSize - 2 * kBorder, OuterSize - 2 * kBorder) {
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(kBorder);
    setFixedSize(OuterSize, OuterSize);
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

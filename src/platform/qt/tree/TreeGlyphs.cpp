#include "platform/qt/tree/TreeGlyphs.h"

#include <QPainterPath>

#include <algorithm>

namespace platform::qt {

namespace {

/// Paints in a square of 16 units, whatever the size on screen.
class Canvas {
public:
    Canvas(QPainter& painter, const QRectF& square, const QColor& color) : painter_(painter) {
        const qreal side = std::min(square.width(), square.height());
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.translate(square.center().x() - side / 2, square.center().y() - side / 2);
        painter_.scale(side / 16, side / 16);
        painter_.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.setBrush(Qt::NoBrush);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() { painter_.restore(); }

    QPainter* operator->() { return &painter_; }

private:
    QPainter& painter_;
};

} // namespace

void drawChevron(QPainter& painter, const QRectF& square, bool open, const QColor& color) {
    Canvas canvas(painter, square, color);
    const QPointF right[] = {{6, 4}, {10, 8}, {6, 12}};
    const QPointF down[] = {{4, 6}, {8, 10}, {12, 6}};
    canvas->drawPolyline(open ? down : right, 3);
}

void drawLock(QPainter& painter, const QRectF& square, const QColor& color) {
    Canvas canvas(painter, square, color);
    QPainterPath shackle;
    shackle.moveTo(5, 7.5);
    shackle.lineTo(5, 5.5);
    shackle.arcTo(QRectF(5, 2.5, 6, 6), 180, -180);
    shackle.lineTo(11, 7.5);
    canvas->drawPath(shackle);
    canvas->setBrush(color);
    canvas->drawRoundedRect(QRectF(3.5, 7.5, 9, 6), 1, 1);
}

void drawCheckBox(QPainter& painter, const QRectF& square, bool checked, const QColor& line, const QColor& fill,
                  const QColor& mark) {
    Canvas canvas(painter, square, line);
    canvas->setBrush(fill);
    canvas->drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2, 2);
    if (!checked)
        return;
    canvas->setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF tick[] = {{4.5, 8.2}, {7, 10.8}, {11.5, 5.4}};
    canvas->drawPolyline(tick, 3);
}

void drawCalendar(QPainter& painter, const QRectF& square, const QColor& color) {
    Canvas canvas(painter, square, color);
    canvas->drawRoundedRect(QRectF(2.5, 3.5, 11, 10), 1.5, 1.5);
    canvas->drawLine(QPointF(2.5, 6.5), QPointF(13.5, 6.5));
    canvas->drawLine(QPointF(5.5, 2), QPointF(5.5, 4.5));
    canvas->drawLine(QPointF(10.5, 2), QPointF(10.5, 4.5));
    canvas->setBrush(color);
    canvas->setPen(Qt::NoPen);
    for (const auto& day : {QPointF(5.5, 9), QPointF(8, 9), QPointF(10.5, 9), QPointF(5.5, 11.3), QPointF(8, 11.3)})
        canvas->drawEllipse(day, 0.8, 0.8);
}

void drawGroup(QPainter& painter, const QRectF& square, const QColor& color) {
    Canvas canvas(painter, square, color);
    QPainterPath folder;
    folder.moveTo(2, 12.5);
    folder.lineTo(2, 4);
    folder.lineTo(6.2, 4);
    folder.lineTo(7.8, 5.8);
    folder.lineTo(14, 5.8);
    folder.lineTo(14, 12.5);
    folder.closeSubpath();
    canvas->drawPath(folder);
}

void drawSchema(QPainter& painter, const QRectF& square, const QColor& color, bool filled) {
    Canvas canvas(painter, square, color);
    const QPointF trunk[] = {{4.5, 6}, {4.5, 12}, {9, 12}};
    canvas->drawPolyline(trunk, 3);
    canvas->drawLine(QPointF(4.5, 8.2), QPointF(9, 8.2));
    if (filled)
        canvas->setBrush(color);
    canvas->drawRoundedRect(QRectF(2, 2, 5, 3.6), 0.8, 0.8);
    canvas->drawRoundedRect(QRectF(9, 6.6, 5, 3.2), 0.8, 0.8);
    canvas->drawRoundedRect(QRectF(9, 10.8, 5, 3.2), 0.8, 0.8);
}

} // namespace platform::qt

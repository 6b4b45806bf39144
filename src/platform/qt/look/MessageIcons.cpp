#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/Glyphs.h"

#include <QIconEngine>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>

namespace platform::qt {

namespace {

/// The sign on a grid of 32 by 32: a stroke with a dot, a hook with a dot, or a cross.
void paintSign(QPainter& painter, MessageSign sign) {
    const auto dot = [&](double y) { painter.drawLine(QPointF(16.0, y), QPointF(16.0, y + 0.01)); };
    switch (sign) {
    case MessageSign::information:
        dot(9.5);
        painter.drawLine(QPointF(16.0, 14.5), QPointF(16.0, 22.5));
        break;
    case MessageSign::warning:
        painter.drawLine(QPointF(16.0, 9.0), QPointF(16.0, 17.5));
        dot(22.5);
        break;
    case MessageSign::question: {
        QPainterPath hook(QPointF(12.0, 12.6));
        hook.cubicTo(12.0, 7.2, 20.2, 7.4, 20.0, 12.4);
        hook.cubicTo(19.9, 15.4, 16.0, 15.4, 16.0, 18.6);
        painter.drawPath(hook);
        dot(23.4);
        break;
    }
    case MessageSign::critical:
        painter.drawLine(QPointF(11.0, 11.0), QPointF(21.0, 21.0));
        painter.drawLine(QPointF(21.0, 11.0), QPointF(11.0, 21.0));
        break;
    }
}

/// Draws itself at the size that is asked for, in the theme of the moment.
class MessageEngine : public QIconEngine {
public:
    explicit MessageEngine(MessageSign sign) : sign_(sign) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const ThemeColors& c = Appearance::instance().colors();
        const bool danger = sign_ == MessageSign::warning || sign_ == MessageSign::critical;
        const double side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(side / 2.0, side / 2.0));
        painter->scale(side / 32.0, side / 32.0);
        painter->setPen(Qt::NoPen);
        painter->setBrush(danger ? c.danger : c.accent);
        painter->drawEllipse(QRectF(1.0, 1.0, 30.0, 30.0));
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(danger ? c.dangerText : c.accentText, 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        paintSign(*painter, sign_);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new MessageEngine(sign_); }

private:
    MessageSign sign_;
};

} // namespace

QIcon messageIcon(MessageSign sign) {
    return QIcon(new MessageEngine(sign));
}

} // namespace platform::qt

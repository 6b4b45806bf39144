#include "host/windows/AppIcon.h"

#include "platform/qt/look/Appearance.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace host {

namespace {

QPixmap picture(int size) {
    const auto& colors = platform::qt::Appearance::colorsOf(platform::qt::ThemeKind::light);
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.accent);
    painter.drawRoundedRect(QRectF(1, 1, 30, 30), 7, 7);
    painter.setPen(QPen(colors.accentText, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath branches;
    branches.moveTo(9, 10);
    branches.lineTo(9, 23);
    branches.lineTo(14, 23);
    branches.moveTo(9, 16.5);
    branches.lineTo(24, 16.5);
    branches.moveTo(20.5, 13);
    branches.lineTo(24, 16.5);
    branches.lineTo(20.5, 20);
    painter.drawPath(branches);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.accentText);
    painter.drawEllipse(QPointF(9, 9), 3, 3);
    painter.drawEllipse(QPointF(16, 23), 2.5, 2.5);
    return pixmap;
}

} // namespace

QIcon applicationIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(picture(size));
    return icon;
}

} // namespace host

#include "platform/qt/look/Glyphs.h"

#include "platform/qt/look/Appearance.h"

#include <QIconEngine>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>
#include <initializer_list>

namespace platform::qt {

namespace {

constexpr double grid = 16.0;

void line(QPainterPath& path, std::initializer_list<QPointF> points) {
    bool begun = false;
    for (const QPointF& point : points) {
        if (begun)
            path.lineTo(point);
        else
            path.moveTo(point);
        begun = true;
    }
}

void tree(QPainterPath& path) {
    path.addRect(1.5, 2.0, 4.0, 3.0);
    line(path, {{3.5, 5.0}, {3.5, 12.5}, {6.0, 12.5}});
    line(path, {{3.5, 8.5}, {6.0, 8.5}});
}

void arrowRight(QPainterPath& path, double y) {
    line(path, {{7.5, y}, {14.0, y}});
    line(path, {{11.2, y - 2.8}, {14.0, y}, {11.2, y + 2.8}});
}

void panel(QPainterPath& path, double dividerX) {
    path.addRoundedRect(1.5, 2.5, 13.0, 11.0, 1.5, 1.5);
    line(path, {{dividerX, 2.5}, {dividerX, 13.5}});
}

void chevron(QPainterPath& path, double x, double direction) {
    line(path, {{x - direction * 2.0, 4.0}, {x + direction * 2.0, 8.0}, {x - direction * 2.0, 12.0}});
}

QPainterPath pathOf(Glyph glyph) {
    QPainterPath path;
    switch (glyph) {
    case Glyph::none:
        break;
    case Glyph::moveStructure:
        tree(path);
        arrowRight(path, 10.5);
        break;
    case Glyph::moveValidity:
        path.addRoundedRect(1.5, 3.0, 9.0, 10.5, 1.2, 1.2);
        line(path, {{1.5, 6.0}, {10.5, 6.0}});
        line(path, {{4.0, 1.5}, {4.0, 4.0}});
        line(path, {{8.0, 1.5}, {8.0, 4.0}});
        arrowRight(path, 9.8);
        break;
    case Glyph::parameters:
        line(path, {{1.5, 4.0}, {8.5, 4.0}});
        line(path, {{12.5, 4.0}, {14.5, 4.0}});
        path.addEllipse(QPointF(10.5, 4.0), 2.0, 2.0);
        line(path, {{1.5, 11.5}, {3.5, 11.5}});
        line(path, {{7.5, 11.5}, {14.5, 11.5}});
        path.addEllipse(QPointF(5.5, 11.5), 2.0, 2.0);
        break;
    case Glyph::panelLeft:
        panel(path, 6.0);
        break;
    case Glyph::panelRight:
        panel(path, 10.0);
        break;
    case Glyph::search:
        path.addEllipse(QPointF(6.8, 6.8), 4.6, 4.6);
        line(path, {{10.2, 10.2}, {14.2, 14.2}});
        break;
    case Glyph::levels:
        line(path, {{1.5, 3.5}, {14.5, 3.5}});
        line(path, {{4.5, 8.0}, {14.5, 8.0}});
        line(path, {{7.5, 12.5}, {14.5, 12.5}});
        break;
    case Glyph::chevronDown:
        line(path, {{4.0, 6.0}, {8.0, 10.0}, {12.0, 6.0}});
        break;
    case Glyph::list:
        for (const double x : {3.5, 8.0, 12.5})
            path.addEllipse(QPointF(x, 8.0), 0.6, 0.6);
        break;
    case Glyph::first:
        chevron(path, 9.5, -1.0);
        line(path, {{4.5, 4.0}, {4.5, 12.0}});
        break;
    case Glyph::previous:
        chevron(path, 8.0, -1.0);
        break;
    case Glyph::next:
        chevron(path, 8.0, 1.0);
        break;
    case Glyph::last:
        chevron(path, 6.5, 1.0);
        line(path, {{11.5, 4.0}, {11.5, 12.0}});
        break;
    case Glyph::save:
        path.addRoundedRect(2.0, 2.0, 12.0, 12.0, 1.5, 1.5);
        path.addRect(5.0, 9.0, 6.0, 5.0);
        line(path, {{5.0, 2.0}, {5.0, 5.5}, {10.5, 5.5}, {10.5, 2.0}});
        break;
    case Glyph::undo:
        line(path, {{5.5, 2.5}, {2.5, 5.5}, {5.5, 8.5}});
        path.moveTo(2.5, 5.5);
        path.lineTo(9.5, 5.5);
        path.arcTo(QRectF(5.5, 5.5, 8.0, 8.0), 90.0, -180.0);
        path.lineTo(6.0, 13.5);
        break;
    case Glyph::add:
        line(path, {{8.0, 3.0}, {8.0, 13.0}});
        line(path, {{3.0, 8.0}, {13.0, 8.0}});
        break;
    case Glyph::remove:
        line(path, {{3.0, 8.0}, {13.0, 8.0}});
        break;
    }
    return path;
}

/// Asks for the colours when it draws, so that a change of theme needs no new icons.
class GlyphEngine : public QIconEngine {
public:
    explicit GlyphEngine(Glyph glyph) : glyph_(glyph) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const ThemeColors& colors = Appearance::instance().colors();
        const QColor color = mode == QIcon::Disabled   ? colors.textDisabled
                             : mode == QIcon::Selected ? colors.selectionText
                                                       : colors.text;
        paintGlyph(*painter, glyph_, rect, color);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new GlyphEngine(glyph_); }

private:
    Glyph glyph_;
};

} // namespace

Glyph glyphOf(contract::Icon icon) {
    switch (icon) {
    case contract::Icon::none:
        return Glyph::none;
    case contract::Icon::moveStructure:
        return Glyph::moveStructure;
    case contract::Icon::moveValidity:
        return Glyph::moveValidity;
    case contract::Icon::parameters:
        return Glyph::parameters;
    case contract::Icon::panelLeft:
        return Glyph::panelLeft;
    case contract::Icon::panelRight:
        return Glyph::panelRight;
    case contract::Icon::search:
        return Glyph::search;
    case contract::Icon::levels:
        return Glyph::levels;
    }
    return Glyph::none;
}

void paintGlyph(QPainter& painter, Glyph glyph, const QRectF& rect, const QColor& color) {
    const double side = std::min(rect.width(), rect.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center().x() - side / 2.0, rect.center().y() - side / 2.0);
    painter.scale(side / grid, side / grid);
    painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(pathOf(glyph));
    painter.restore();
}

QIcon glyphIcon(Glyph glyph) {
    return QIcon(new GlyphEngine(glyph));
}

} // namespace platform::qt

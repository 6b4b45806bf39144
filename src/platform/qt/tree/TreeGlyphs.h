#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace platform::qt {

/// The small vector marks of the lists, all with the same line weight. Each is drawn centred in its square.

/// The arrow of a node with children: down when open, else right.
void drawChevron(QPainter& painter, const QRectF& square, bool open, const QColor& color);
void drawLock(QPainter& painter, const QRectF& square, const QColor& color);
void drawCheckBox(QPainter& painter, const QRectF& square, bool checked, const QColor& line, const QColor& fill,
                  const QColor& mark);
void drawCalendar(QPainter& painter, const QRectF& square, const QColor& color);
/// A folder, for a group of types.
void drawGroup(QPainter& painter, const QRectF& square, const QColor& color);
/// Boxes joined by lines, for a type; filled when it is the open one.
void drawSchema(QPainter& painter, const QRectF& square, const QColor& color, bool filled);

} // namespace platform::qt

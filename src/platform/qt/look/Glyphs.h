#pragma once

#include "contract/Controls.h"

#include <QColor>
#include <QIcon>
#include <QPainter>

#include <cstdint>

namespace platform::qt {

/// The pictures of the program, drawn with one pen on a grid of 16 by 16.
enum class Glyph : std::uint8_t {
    none,
    moveStructure,
    moveValidity,
    parameters,
    panelLeft,
    panelRight,
    search,
    levels,
    chevronDown,
    list,
    first,
    previous,
    next,
    last,
    save,
    undo,
    add,
    remove
};

Glyph glyphOf(contract::Icon icon);

/// Draws the picture into the largest square in the middle of the rectangle.
void paintGlyph(QPainter& painter, Glyph glyph, const QRectF& rect, const QColor& color);

/// An icon that draws itself at any size in the theme's text colours of the moment.
QIcon glyphIcon(Glyph glyph);

/// What a message box shows beside its text.
enum class MessageSign : std::uint8_t { information, question, warning, critical };

/// A disc in the accent or, for what went wrong, in the danger colour of the moment, with its sign.
QIcon messageIcon(MessageSign sign);

} // namespace platform::qt

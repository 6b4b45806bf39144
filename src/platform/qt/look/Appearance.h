#pragma once

#include "contract/Control.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QString>

#include <optional>
#include <string_view>

namespace platform::qt {

enum class ThemeKind { light, dark };

/// The semantic colours of a theme; every text colour has a contrast of at least 4.5 : 1 on its background.
struct ThemeColors {
    QColor window, surface, surfaceAlternate, text, textMuted, textDisabled, line, lineStrong;
    QColor accent, accentText, accentSoft, accentSoftText; ///< soft: the focused row of a tree without the keyboard
    QColor selection, selectionText;                       ///< the focused row of a tree
    QColor header, headerText, field, fieldText, locked, lockedText, link, danger, dangerText, focusRing;
    QColor fieldFocus; ///< the field that has the keyboard, under fieldText
};

/// The look of the whole program: theme, zoom and what follows from them.
class Appearance : public QObject {
    Q_OBJECT
public:
    static Appearance& instance();

    /// Fusion style, palette, style sheet, fonts ("Tahoma" falls back to a face that the machine has); to be called
    /// once the application exists and after every change.
    void apply();

    ThemeKind theme() const { return theme_; }
    void setTheme(ThemeKind theme);
    /// Font size in points: 8, 10, 12 or 14.
    int zoom() const { return zoom_; }
    void setZoom(int points);

    const ThemeColors& colors() const;
    static const ThemeColors& colorsOf(ThemeKind theme);
    /// A colour of the grids by its theme name ("GridHeaderColor", ...); nothing for an unknown name.
    std::optional<contract::Color> gridColor(std::string_view name) const;

    QFont font() const;
    /// Height of a row of a tree or list in pixels: 1.8 times the font size.
    int rowHeight() const;
    /// Twips to pixels, at 96 dots an inch (the device's own scaling is Qt's).
    static int pixels(contract::Twips twips);
    static contract::Twips twips(int pixels);

signals:
    void changed();

private:
    ThemeKind theme_ = ThemeKind::light;
    int zoom_ = 10;
};

} // namespace platform::qt

#pragma once

#include "contract/TreeList.h"
#include "platform/qt/look/Appearance.h"

#include <QColor>

#include <array>
#include <optional>
#include <string_view>

namespace platform::qt {

/// A colour that a form gives to a list. A form reads the colours of the theme once and hands them on as plain numbers;
/// one that was a colour of the theme's grids when it was set therefore follows a later change of the theme.
class ThemedColor {
public:
    /// preferred: the theme name that is meant when several have that colour.
    void set(contract::Color color, std::string_view preferred);
    bool isSet() const { return color_.has_value(); }
    QColor resolve(const QColor& fallback) const;

private:
    std::optional<contract::Color> color_;
    std::string_view name_; // empty: a colour of no theme
};

/// The colours a tree is drawn with.
struct TreePalette {
    QColor surface, text, textMuted, textDisabled, line, lineStrong;
    QColor selection, selectionText;
    QColor header, headerText, group, groupText;
    QColor locked, lockedText, link, accent, accentText;
};

/// The colours set for a tree, in front of those of the theme.
class TreeColors {
public:
    void set(contract::TreeColor property, contract::Color color);
    void setHeader(contract::Color background, contract::Color text);
    void setColumn(contract::Color background, contract::Color text);
    TreePalette palette() const;

private:
    std::array<ThemedColor, contract::treeColorCount> properties_;
    ThemedColor headerBackground_, headerText_, columnBackground_, columnText_;
};

QColor toQColor(contract::Color color);

} // namespace platform::qt

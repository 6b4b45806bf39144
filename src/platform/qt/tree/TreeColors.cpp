#include "platform/qt/tree/TreeColors.h"

#include <algorithm>

namespace platform::qt {

using contract::TreeColor;

namespace {

constexpr std::string_view header = "GridHeaderColor";
constexpr std::string_view headerFont = "GridHeaderFontColor";
constexpr std::string_view font = "GridFontColor";

constexpr std::array themeNames{header,
                                font,
                                std::string_view("GridBorderColor"),
                                std::string_view("GridFooterColor"),
                                headerFont,
                                std::string_view("GridHideSelectionColor"),
                                std::string_view("GridHighLightColor"),
                                std::string_view("GridHighLightFontColor")};

/// The theme name that each colour property of a tree is usually given.
constexpr std::array<std::string_view, contract::treeColorCount> usualNames{header,
                                                                            font,
                                                                            "GridBorderColor",
                                                                            "GridFooterColor",
                                                                            headerFont,
                                                                            "GridHideSelectionColor",
                                                                            font,
                                                                            "GridHighLightColor",
                                                                            "GridHighLightFontColor",
                                                                            font,
                                                                            header,
                                                                            headerFont};

QColor mixed(const QColor& base, const QColor& tint, qreal share) {
    const auto channel = [&](int low, int high) { return qRound(low + (high - low) * share); };
    return {channel(base.red(), tint.red()), channel(base.green(), tint.green()), channel(base.blue(), tint.blue())};
}

} // namespace

QColor toQColor(contract::Color color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
            static_cast<int>((color >> 16) & 0xFF)};
}

void ThemedColor::set(contract::Color color, std::string_view preferred) {
    const auto isColor = [&](std::string_view name) { return Appearance::instance().gridColor(name) == color; };
    color_ = color;
    const auto found = isColor(preferred) ? std::find(themeNames.begin(), themeNames.end(), preferred)
                                          : std::find_if(themeNames.begin(), themeNames.end(), isColor);
    name_ = found == themeNames.end() ? std::string_view() : *found;
}

QColor ThemedColor::resolve(const QColor& fallback) const {
    if (!color_)
        return fallback;
    const auto themed = name_.empty() ? std::nullopt : Appearance::instance().gridColor(name_);
    return toQColor(themed.value_or(*color_));
}

void TreeColors::set(TreeColor property, contract::Color color) {
    const auto at = static_cast<std::size_t>(property);
    properties_[at].set(color, usualNames[at]);
}

void TreeColors::setHeader(contract::Color background, contract::Color text) {
    headerBackground_.set(background, header);
    headerText_.set(text, headerFont);
}

void TreeColors::setColumn(contract::Color background, contract::Color text) {
    columnBackground_.set(background, header);
    columnText_.set(text, font);
}

TreePalette TreeColors::palette() const {
    const auto& theme = Appearance::instance().colors();
    const auto property = [&](TreeColor which, const QColor& fallback) {
        return properties_[static_cast<std::size_t>(which)].resolve(fallback);
    };
    TreePalette palette;
    // Columns are usually given the header's colour. Only a breath of it is laid over the surface: text stands best on
    // the surface, and the header has to stay apart from the rows.
    palette.surface = mixed(theme.surface, columnBackground_.resolve(theme.surface), 0.2);
    palette.text = columnText_.resolve(property(TreeColor::text, theme.text));
    palette.textMuted = theme.textMuted;
    palette.textDisabled = theme.textDisabled;
    palette.line = theme.line;
    palette.lineStrong = property(TreeColor::border, theme.lineStrong);
    // The row that a move would take is as strong without the keyboard as with it: the colours for a hidden selection
    // are not used.
    palette.selection = property(TreeColor::highLight, theme.selection);
    palette.selectionText = property(TreeColor::highLightText, theme.selectionText);
    palette.header = headerBackground_.resolve(property(TreeColor::header, theme.header));
    palette.headerText = headerText_.resolve(property(TreeColor::headerText, theme.headerText));
    palette.group = property(TreeColor::group, palette.header);
    palette.groupText = property(TreeColor::groupText, palette.headerText);
    palette.locked = theme.locked;
    palette.lockedText = theme.lockedText;
    palette.link = theme.link;
    palette.accent = theme.accent;
    palette.accentText = theme.accentText;
    return palette;
}

} // namespace platform::qt

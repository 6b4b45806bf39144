#include "platform/qt/look/Appearance.h"

#include <array>
#include <utility>

namespace platform::qt {

namespace {

// The four classic colours of the form, as its people have known them for years.
const QColor classicSky(0xE2, 0xFA, 0xFE);
const QColor classicYellow(0xFF, 0xFF, 0x80);
const QColor classicCream(0xFF, 0xFF, 0xC0);
const QColor classicNavy(0x00, 0x00, 0x80);

ThemeColors lightColors() {
    ThemeColors c;
    c.window = QColor(0xF3, 0xF5, 0xF8);
    c.surface = QColor(0xFF, 0xFF, 0xFF);
    c.surfaceAlternate = QColor(0xF8, 0xFA, 0xFC);
    c.text = QColor(0x1A, 0x1E, 0x26);
    c.textMuted = QColor(0x52, 0x5B, 0x67);
    c.textDisabled = QColor(0x62, 0x6B, 0x77);
    c.line = QColor(0xD6, 0xDC, 0xE4);
    c.lineStrong = QColor(0x82, 0x8C, 0x99);
    c.accent = classicNavy;
    c.accentText = QColor(0xFF, 0xFF, 0xFF);
    c.accentSoft = classicYellow;
    c.accentSoftText = c.text;
    c.selection = classicNavy;
    c.selectionText = classicCream;
    c.header = classicSky;
    c.headerText = classicNavy;
    c.field = c.surface;
    c.fieldText = c.text;
    c.fieldFocus = classicCream;
    c.locked = QColor(0xEC, 0xEF, 0xF3);
    c.lockedText = c.textMuted;
    c.link = QColor(0x1B, 0x44, 0xB8);
    c.danger = QColor(0xB3, 0x26, 0x1E);
    c.dangerText = QColor(0xFF, 0xFF, 0xFF);
    c.focusRing = QColor(0x1F, 0x6F, 0xEB);
    return c;
}

ThemeColors darkColors() {
    ThemeColors c;
    c.window = QColor(0x1A, 0x1D, 0x23);
    c.surface = QColor(0x20, 0x24, 0x2B);
    c.surfaceAlternate = QColor(0x25, 0x2A, 0x32);
    c.text = QColor(0xE8, 0xEB, 0xEF);
    c.textMuted = QColor(0xAC, 0xB5, 0xC0);
    c.textDisabled = QColor(0x96, 0x9F, 0xAB);
    c.line = QColor(0x38, 0x3F, 0x4A);
    c.lineStrong = QColor(0x74, 0x7F, 0x8E);
    c.accent = QColor(0x93, 0xB8, 0xFF);
    c.accentText = QColor(0x10, 0x18, 0x29);
    c.accentSoft = QColor(0x3A, 0x4D, 0x78);
    c.accentSoftText = QColor(0xF2, 0xF5, 0xFA);
    c.selection = QColor(0x93, 0xB8, 0xFF);
    c.selectionText = QColor(0x10, 0x18, 0x29);
    c.header = QColor(0x2A, 0x31, 0x3D);
    c.headerText = QColor(0xCB, 0xD9, 0xF2);
    c.field = QColor(0x16, 0x19, 0x1E);
    c.fieldText = c.text;
    c.fieldFocus = QColor(0x10, 0x13, 0x18);
    c.locked = QColor(0x2A, 0x2F, 0x37);
    c.lockedText = c.textMuted;
    c.link = QColor(0x9F, 0xC1, 0xFF);
    c.danger = QColor(0xFF, 0x8A, 0x80);
    c.dangerText = QColor(0x24, 0x0B, 0x09);
    c.focusRing = QColor(0x6E, 0xA8, 0xFE);
    return c;
}

contract::Color number(const QColor& color) {
    return static_cast<contract::Color>(color.red()) | static_cast<contract::Color>(color.green()) << 8U |
           static_cast<contract::Color>(color.blue()) << 16U;
}

} // namespace

const ThemeColors& Appearance::colorsOf(ThemeKind theme) {
    static const ThemeColors light = lightColors();
    static const ThemeColors dark = darkColors();
    return theme == ThemeKind::light ? light : dark;
}

std::optional<contract::Color> Appearance::gridColor(std::string_view name) const {
    const ThemeColors& c = colors();
    // GridFontColor is written on all but the highlight, and on the highlight's own text colour in the detail grids.
    const std::array<std::pair<std::string_view, QColor>, 8> names{{{"GridHeaderColor", c.header},
                                                                    {"GridFontColor", c.text},
                                                                    {"GridBorderColor", c.line},
                                                                    {"GridFooterColor", c.surfaceAlternate},
                                                                    {"GridHeaderFontColor", c.headerText},
                                                                    {"GridHideSelectionColor", c.accentSoft},
                                                                    {"GridHighLightColor", c.selection},
                                                                    {"GridHighLightFontColor", c.selectionText}}};
    for (const auto& [known, color] : names)
        if (known == name)
            return number(color);
    return std::nullopt;
}

} // namespace platform::qt

#include "platform/qt/look/Appearance.h"

#include "platform/qt/look/PlainStyle.h"
#include "platform/qt/look/PlainText.h"
#include "platform/shared/ResizeScaler.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPalette>
#include <QPointer>

#include <cmath>

namespace platform::qt {

namespace {

constexpr double twipsPerPixel = 15.0;

/// The face that stands in for the classic one, the first of these that the machine has.
QString installedFace() {
    const QStringList installed = QFontDatabase::families();
    const QStringList wanted{QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("Open Sans"),
                             QStringLiteral("DejaVu Sans")};
    for (const QString& face : wanted)
        if (installed.contains(face))
            return face;
    return QApplication::font().family();
}

QPalette paletteOf(const ThemeColors& c) {
    QPalette palette;
    palette.setColor(QPalette::Window, c.window);
    palette.setColor(QPalette::WindowText, c.text);
    palette.setColor(QPalette::Base, c.surface);
    palette.setColor(QPalette::AlternateBase, c.surfaceAlternate);
    palette.setColor(QPalette::Text, c.text);
    palette.setColor(QPalette::PlaceholderText, c.textMuted);
    palette.setColor(QPalette::Button, c.surface);
    palette.setColor(QPalette::ButtonText, c.text);
    palette.setColor(QPalette::BrightText, c.danger);
    palette.setColor(QPalette::ToolTipBase, c.surface);
    palette.setColor(QPalette::ToolTipText, c.text);
    palette.setColor(QPalette::Highlight, c.selection);
    palette.setColor(QPalette::HighlightedText, c.selectionText);
    palette.setColor(QPalette::Link, c.link);
    palette.setColor(QPalette::LinkVisited, c.link);
    palette.setColor(QPalette::Light, c.surface);
    palette.setColor(QPalette::Midlight, c.surfaceAlternate);
    palette.setColor(QPalette::Mid, c.line);
    palette.setColor(QPalette::Dark, c.lineStrong);
    palette.setColor(QPalette::Shadow, c.lineStrong);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.textDisabled);
    palette.setColor(QPalette::Disabled, QPalette::Base, c.locked);
    palette.setColor(QPalette::Disabled, QPalette::Button, c.locked);
    return palette;
}

/// What the style does not draw itself.
QString styleSheetOf(const ThemeColors& c) {
    const auto n = [](const QColor& color) { return color.name(); };
    return QStringLiteral("QToolTip { background: %1; color: %2; border: 1px solid %3; padding: 3px 5px; }"
                          "QMenu { background: %1; color: %2; border: 1px solid %3; padding: 4px 0; }"
                          "QMenu::item { padding: 5px 26px 5px 22px; }"
                          "QMenu::item:selected { background: %4; color: %5; }"
                          "QMenu::item:disabled { color: %6; background: transparent; }"
                          "QMenu::separator { height: 1px; background: %7; margin: 4px 0; }"
                          "QMenuBar { background: %8; color: %2; padding: 2px 4px; border-bottom: 1px solid %7; }"
                          "QMenuBar::item { background: transparent; padding: 4px 9px; border-radius: 3px; }"
                          "QMenuBar::item:selected, QMenuBar::item:pressed { background: %4; color: %5; }")
               .arg(n(c.surface), n(c.text), n(c.lineStrong), n(c.selection), n(c.selectionText), n(c.textDisabled),
                    n(c.line), n(c.window)) +
           QStringLiteral("QStatusBar { background: %1; color: %2; border-top: 1px solid %3; }"
                          "QStatusBar::item { border: none; }"
                          "QScrollBar:vertical { background: %4; width: 13px; margin: 0; }"
                          "QScrollBar:horizontal { background: %4; height: 13px; margin: 0; }"
                          "QScrollBar::handle { background: %5; border: 3px solid %4; border-radius: 6px; }"
                          "QScrollBar::handle:vertical { min-height: 30px; }"
                          "QScrollBar::handle:horizontal { min-width: 30px; }"
                          "QScrollBar::handle:hover { background: %2; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
               .arg(n(c.window), n(c.textMuted), n(c.line), n(c.surfaceAlternate), n(c.lineStrong));
}

void refresh(Appearance& appearance) {
    // A maximised document that takes a new style sheet passes the keyboard on to its next control.
    const QPointer<QWidget> focused(qApp != nullptr ? QApplication::focusWidget() : nullptr);
    if (qApp != nullptr)
        appearance.apply();
    emit appearance.changed();
    if (QWidget* before = focused.data(); before != nullptr && before->isVisible())
        before->setFocus(Qt::OtherFocusReason);
}

} // namespace

Appearance& Appearance::instance() {
    static Appearance appearance;
    return appearance;
}

void Appearance::apply() {
    static const bool prepared = [] {
        QFont::insertSubstitution(QStringLiteral("Tahoma"), installedFace());
        QApplication::setStyle(new PlainStyle);
        return true;
    }();
    static_cast<void>(prepared);
    keepTextsPlain();
    QApplication::setPalette(paletteOf(colors()));
    QApplication::setFont(font());
    qApp->setStyleSheet(styleSheetOf(colors()));
}

void Appearance::setTheme(ThemeKind theme) {
    if (theme == theme_)
        return;
    theme_ = theme;
    refresh(*this);
}

void Appearance::setZoom(int points) {
    if (points == zoom_ || !shared::isZoom(points))
        return;
    zoom_ = points;
    refresh(*this);
}

const ThemeColors& Appearance::colors() const {
    return colorsOf(theme_);
}

QFont Appearance::font() const {
    // Named outright: a machine that has the classic face would show each row a little lower than the others do.
    static const QString face = installedFace();
    QFont font(face, zoom_);
    return font;
}

int Appearance::rowHeight() const {
    constexpr double rowsToType = 1.8;
    return static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * rowsToType));
}

int Appearance::pixels(contract::Twips twips) {
    return static_cast<int>(std::lround(twips / twipsPerPixel));
}

contract::Twips Appearance::twips(int pixels) {
    return pixels * 15;
}

} // namespace platform::qt

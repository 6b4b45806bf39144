#include "platform/qt/look/FlatButton.h"

#include "platform/qt/forms/CaptionedControl.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/PlainText.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPainter>
#include <QShortcutEvent>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr double radius = 4.0;
constexpr int margin = 6;
constexpr int gap = 5;

} // namespace

/// How caption and pictures share the width, in pixels.
struct FlatButton::Content {
    QString caption; ///< as it fits
    int captionWidth = 0;
    int glyphSide = 0;
    int chevronSide = 0;
    bool cut = false;
};

FlatButton::FlatButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
}

void FlatButton::setGlyph(Glyph glyph) {
    glyph_ = glyph;
    update();
}

void FlatButton::setPrimary(bool primary) {
    primary_ = primary;
    update();
}

void FlatButton::setOpensList(bool opens) {
    opensList_ = opens;
    update();
}

FlatButton::Content FlatButton::content() const {
    Content c;
    const int side = std::min(QFontInfo(font()).pixelSize() + 3, std::max(height() - 6, 0));
    c.glyphSide = glyph_ == Glyph::none ? 0 : side;
    c.chevronSide = opensList_ ? side * 3 / 4 : 0;
    const int taken = 2 * margin + (c.glyphSide > 0 ? c.glyphSide + gap : 0) + (c.chevronSide > 0 ? c.chevronSide : 0);
    const int room = width() - taken;
    const QString whole = text();
    if (whole.isEmpty())
        return c;
    const int wanted = fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, whole).width();
    c.cut = wanted > room;
    constexpr int worthReading = 3;
    if (c.cut && c.glyphSide > 0 && room < worthReading * fontMetrics().averageCharWidth())
        return c;
    c.caption =
        c.cut ? fontMetrics().elidedText(whole, Qt::ElideRight, std::max(room, 0), Qt::TextShowMnemonic) : whole;
    c.captionWidth = std::min(wanted, std::max(room, 0));
    return c;
}

QString FlatButton::hint() const {
    // What was cut off can be read by resting the mouse on it.
    QString text = toolTip();
    if (text.isEmpty() && content().cut)
        text = spoken(this->text());
    const auto keys = QKeySequence::mnemonic(this->text());
    if (!text.isEmpty() && !keys.isEmpty())
        text += QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
    return text;
}

bool FlatButton::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        if (const QString text = hint(); !text.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), letters(text), this);
            return true;
        }
    }
    // Qt would press the button now and click it a tenth of a second later, when something else may have the keyboard.
    if (event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
        click();
        return true;
    }
    return QPushButton::event(event);
}

void FlatButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QPushButton::keyPressEvent(event);
        return;
    }
    event->accept();
    click();
}

void FlatButton::paintPlate(QPainter& painter) const {
    const ThemeColors& c = Appearance::instance().colors();
    const bool hovered = isEnabled() && underMouse();
    const bool tool = text().isEmpty() && !primary_;
    const QRectF plate = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor fill = isEnabled() ? c.surface : c.locked;
    QColor edge = isEnabled() ? c.lineStrong : c.line;
    if (primary_ && isEnabled()) {
        const QColor under = c.surface;
        const auto mixed = [&](double part) {
            return QColor::fromRgbF(static_cast<float>(c.accent.redF() * part + under.redF() * (1 - part)),
                                    static_cast<float>(c.accent.greenF() * part + under.greenF() * (1 - part)),
                                    static_cast<float>(c.accent.blueF() * part + under.blueF() * (1 - part)));
        };
        fill = isDown() ? mixed(0.82) : hovered ? mixed(0.9) : c.accent;
        edge = fill;
    } else if (isDown()) {
        fill = c.line;
    } else if (hovered) {
        fill = c.header;
    }
    if (!tool || hovered || isDown()) {
        painter.setPen(edge);
        painter.setBrush(fill);
        painter.drawRoundedRect(plate, radius, radius);
    }
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(c.focusRing, 2.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
    if (primary_) {
        painter.setPen(QPen(c.accentText, 1.0));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), radius - 1.5, radius - 1.5);
    }
}

void FlatButton::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPlate(painter);

    const Content parts = content();
    const QColor ink = !isEnabled() ? c.textDisabled : primary_ ? c.accentText : c.text;
    const int captionPart = parts.caption.isEmpty() ? 0 : parts.captionWidth + (parts.glyphSide > 0 ? gap : 0);
    const int whole = parts.glyphSide + captionPart + parts.chevronSide;
    int x = std::max((width() - whole) / 2, std::min(margin, (width() - parts.glyphSide) / 2));
    if (parts.glyphSide > 0) {
        paintGlyph(painter, glyph_, QRectF(x, (height() - parts.glyphSide) / 2.0, parts.glyphSide, parts.glyphSide),
                   ink);
        x += parts.glyphSide + gap;
    }
    if (!parts.caption.isEmpty()) {
        painter.setPen(ink);
        painter.drawText(QRect(x, 0, parts.captionWidth + 2, height()),
                         Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic | Qt::TextSingleLine, parts.caption);
        x += parts.captionWidth + 2;
    }
    if (parts.chevronSide > 0)
        paintGlyph(painter, Glyph::chevronDown,
                   QRectF(x, (height() - parts.chevronSide) / 2.0, parts.chevronSide, parts.chevronSide), ink);
}

} // namespace platform::qt

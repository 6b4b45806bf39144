#include "platform/qt/look/PlainStyle.h"

#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/Glyphs.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr double fieldRadius = 3.0;
constexpr int textMargin = 5;

const ThemeColors& theme() {
    return Appearance::instance().colors();
}

/// Pixels.
int typeHeight() {
    return QFontInfo(Appearance::instance().font()).pixelSize();
}

enum class WindowButton { minimise, maximise, restore, close };

void drawWindowButton(QPainter& painter, const QRect& rect, WindowButton button, bool hovered, bool pressed) {
    if (!rect.isValid())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const bool warns = button == WindowButton::close && (hovered || pressed);
    if (hovered || pressed) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(warns ? theme().danger : pressed ? theme().lineStrong : theme().line);
        painter.drawRoundedRect(rect, fieldRadius, fieldRadius);
    }
    painter.setPen(QPen(warns ? theme().dangerText : theme().text, 1.2));
    painter.setBrush(Qt::NoBrush);
    const double half = std::min(rect.width(), rect.height()) * 0.24;
    const QPointF c = QRectF(rect).center();
    const QRectF square(c.x() - half, c.y() - half, 2 * half, 2 * half);
    switch (button) {
    case WindowButton::minimise:
        painter.drawLine(square.bottomLeft(), square.bottomRight());
        break;
    case WindowButton::maximise:
        painter.drawRect(square);
        break;
    case WindowButton::restore: {
        painter.drawRect(square.adjusted(0, half * 0.6, -half * 0.6, 0));
        QPainterPath behind(QPointF(square.left() + half * 0.6, square.top() + half * 0.6));
        behind.lineTo(square.left() + half * 0.6, square.top());
        behind.lineTo(square.right(), square.top());
        behind.lineTo(square.right(), square.bottom() - half * 0.6);
        behind.lineTo(square.right() - half * 0.6, square.bottom() - half * 0.6);
        painter.drawPath(behind);
        break;
    }
    case WindowButton::close:
        painter.drawLine(square.topLeft(), square.bottomRight());
        painter.drawLine(square.topRight(), square.bottomLeft());
        break;
    }
    painter.restore();
}

bool isFieldWithButtons(const QWidget* widget) {
    return qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

void drawArrow(QPainter& painter, const QRect& rect, bool up, bool enabled) {
    const double half = typeHeight() / 4.0;
    const double rise = up ? -half / 2.0 : half / 2.0;
    const QPointF c = QRectF(rect).center();
    const QPointF arrow[] = {{c.x() - half, c.y() - rise}, {c.x(), c.y() + rise}, {c.x() + half, c.y() - rise}};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(enabled ? theme().text : theme().textDisabled, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(arrow, 3);
    painter.restore();
}

} // namespace

PlainStyle::PlainStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {
}

int PlainStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_MdiSubWindowFrameWidth:
        return 4;
    case PM_DefaultFrameWidth:
        // Lists, trees and grids keep room for the mark of the keyboard's focus.
        if (qobject_cast<const QAbstractItemView*>(widget) != nullptr)
            return 2;
        return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_FocusFrameHMargin:
        // Beside the texts in lists, one pixel less than it is; headings stand in line with them.
        if (qobject_cast<const QAbstractItemView*>(widget) != nullptr)
            return textMargin - 1;
        return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_HeaderMargin:
        return textMargin;
    case PM_TitleBarHeight:
        return QFontMetrics(Appearance::instance().font()).height() + 10;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_LineEditIconSize:
        return std::max(typeHeight() + 2, 14);
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int PlainStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    // One click on a field of dates or codes marks it; a person expects the list of a combo box below it, not over it.
    if (hint == SH_ComboBox_Popup)
        return 0;
    // Document windows have square corners.
    if (hint == SH_WindowFrame_Mask)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QIcon PlainStyle::standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const {
    switch (standard) {
    case SP_MessageBoxInformation:
        return messageIcon(MessageSign::information);
    case SP_MessageBoxWarning:
        return messageIcon(MessageSign::warning);
    case SP_MessageBoxCritical:
        return messageIcon(MessageSign::critical);
    case SP_MessageBoxQuestion:
        return messageIcon(MessageSign::question);
    default:
        return QProxyStyle::standardIcon(standard, option, widget);
    }
}

QRect PlainStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    constexpr int beside = 3;
    if (element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0)
        return rect.adjusted(beside, 0, -beside, 0);
    return rect;
}

void PlainStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (element) {
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        // Within a field with buttons, that field is all there is.
        if (widget != nullptr && isFieldWithButtons(widget->parentWidget()))
            return;
        if (frame != nullptr && frame->lineWidth <= 0) {
            painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
            return;
        }
        const auto* edit = qobject_cast<const QLineEdit*>(widget);
        drawField(*option, *painter, edit != nullptr && edit->isReadOnly());
        return;
    }
    case PE_FrameLineEdit:
        return; // drawn with the panel
    case PE_Frame:
        if (qobject_cast<const QAbstractItemView*>(widget) == nullptr)
            break;
        drawViewFrame(*option, *painter, widget->hasFocus());
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawCheckBox(*option, *painter);
        return;
    case PE_IndicatorRadioButton:
        drawRadioButton(*option, *painter);
        return;
    case PE_FrameFocusRect: {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(theme().focusRing, 1.6));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), fieldRadius, fieldRadius);
        painter->restore();
        return;
    }
    case PE_FrameWindow: {
        const bool active = option->state.testFlag(State_Active);
        painter->save();
        painter->setPen(active ? theme().lineStrong : theme().line);
        painter->setBrush(theme().window);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    }
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void PlainStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    if (control == CC_TitleBar) {
        if (const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option)) {
            drawTitleBar(*bar, *painter, widget);
            return;
        }
    }
    if (control == CC_MdiControls) {
        drawMdiControls(*option, *painter, widget);
        return;
    }
    if (control == CC_ComboBox) {
        const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (box != nullptr && box->editable) {
            drawComboField(*box, *painter, widget);
            return;
        }
    }
    if (control == CC_SpinBox) {
        if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option)) {
            drawSpinField(*box, *painter, widget);
            return;
        }
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void PlainStyle::drawViewFrame(const QStyleOption& option, QPainter& painter, bool focused) const {
    const ThemeColors& c = theme();
    const bool enabled = option.state.testFlag(State_Enabled);
    painter.save();
    painter.setBrush(Qt::NoBrush);
    const QRect outer = option.rect;
    const auto edge = [&](const QRect& rect, const QColor& color) {
        painter.setPen(color);
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    };
    edge(outer, focused ? c.focusRing : enabled ? c.lineStrong : c.line);
    edge(outer.adjusted(1, 1, -1, -1), focused ? c.focusRing : c.surface);
    painter.restore();
}

void PlainStyle::drawField(const QStyleOption& option, QPainter& painter, bool readOnly) const {
    const ThemeColors& c = theme();
    const bool enabled = option.state.testFlag(State_Enabled);
    const bool focused = enabled && option.state.testFlag(State_HasFocus);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(focused ? c.focusRing : enabled && !readOnly ? c.lineStrong : c.line, focused ? 2.0 : 1.0));
    painter.setBrush(!enabled || readOnly ? c.locked : focused ? c.fieldFocus : c.field);
    const double inset = focused ? 1.0 : 0.5;
    painter.drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), fieldRadius, fieldRadius);
    painter.restore();
}

void PlainStyle::drawCheckBox(const QStyleOption& option, QPainter& painter) const {
    const ThemeColors& c = theme();
    const bool enabled = option.state.testFlag(State_Enabled);
    const bool on = option.state.testFlag(State_On);
    const bool partly = option.state.testFlag(State_NoChange);
    const double side = std::min(option.rect.width(), option.rect.height()) - 1.0;
    const QPointF center = QRectF(option.rect).center();
    const QRectF box(center.x() - side / 2.0, center.y() - side / 2.0, side, side);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const bool filled = on || partly;
    // The surface of a check box keeps its own colours on a selected row too, with a line that holds it apart.
    painter.setPen(QPen(enabled ? (filled ? c.accentText : c.lineStrong) : c.lineStrong, 1.0));
    painter.setBrush(!enabled ? c.locked : filled ? c.accent : c.field);
    painter.drawRoundedRect(box, 2.5, 2.5);
    painter.setPen(
        QPen(enabled ? c.accentText : c.textDisabled, side / 8.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (on) {
        QPainterPath tick(box.topLeft() + QPointF(side * 0.24, side * 0.53));
        tick.lineTo(box.topLeft() + QPointF(side * 0.43, side * 0.71));
        tick.lineTo(box.topLeft() + QPointF(side * 0.77, side * 0.31));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
    } else if (partly) {
        painter.drawLine(box.center() - QPointF(side * 0.24, 0), box.center() + QPointF(side * 0.24, 0));
    }
    painter.restore();
}

void PlainStyle::drawRadioButton(const QStyleOption& option, QPainter& painter) const {
    const ThemeColors& c = theme();
    const bool enabled = option.state.testFlag(State_Enabled);
    const bool on = option.state.testFlag(State_On);
    // The ring's outer edge lies on the pixels' own, or it would be a shadow only.
    constexpr double line = 1.5;
    const double radius = (std::min(option.rect.width(), option.rect.height()) - line) / 2.0;
    const QPointF center = QRectF(option.rect).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(enabled && on ? c.accent : c.lineStrong, line));
    painter.setBrush(enabled ? c.field : c.locked);
    painter.drawEllipse(center, radius, radius);
    if (on) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(enabled ? c.accent : c.textDisabled);
        painter.drawEllipse(center, radius * 0.5, radius * 0.5);
    }
    painter.restore();
}

void PlainStyle::drawComboField(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const {
    drawField(option, painter, false);
    drawArrow(painter, subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget), false,
              option.state.testFlag(State_Enabled));
}

void PlainStyle::drawSpinField(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) const {
    drawField(option, painter, false);
    const bool enabled = option.state.testFlag(State_Enabled);
    const auto arrow = [&](SubControl part, bool up, QAbstractSpinBox::StepEnabledFlag step) {
        drawArrow(painter, subControlRect(CC_SpinBox, &option, part, widget), up,
                  enabled && option.stepEnabled.testFlag(step));
    };
    arrow(SC_SpinBoxUp, true, QAbstractSpinBox::StepUpEnabled);
    arrow(SC_SpinBoxDown, false, QAbstractSpinBox::StepDownEnabled);
}

void PlainStyle::drawTitleBar(const QStyleOptionTitleBar& option, QPainter& painter, const QWidget* widget) const {
    const ThemeColors& c = theme();
    const bool active = (option.titleBarState & State_Active) != 0;
    const bool minimised = (option.titleBarState & Qt::WindowMinimized) != 0;
    const bool maximised = (option.titleBarState & Qt::WindowMaximized) != 0;
    painter.save();
    painter.setPen(active ? c.lineStrong : c.line);
    painter.setBrush(active ? c.header : c.window);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));

    if (option.subControls.testFlag(SC_TitleBarLabel)) {
        QRect label = subControlRect(CC_TitleBar, &option, SC_TitleBarLabel, widget);
        label.setLeft(option.rect.left() + 10);
        painter.setPen(active ? c.headerText : c.textMuted);
        QFont font = painter.font();
        font.setBold(true);
        painter.setFont(font);
        painter.drawText(label, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(option.text, Qt::ElideRight, label.width()));
    }

    const auto button = [&](SubControl part, WindowButton kind, bool offered) {
        if (!offered || !option.subControls.testFlag(part))
            return;
        const bool here = option.activeSubControls.testFlag(part);
        drawWindowButton(painter, subControlRect(CC_TitleBar, &option, part, widget), kind,
                         here && option.state.testFlag(State_MouseOver), here && option.state.testFlag(State_Sunken));
    };
    const bool canMinimise = option.titleBarFlags.testFlag(Qt::WindowMinimizeButtonHint);
    const bool canMaximise = option.titleBarFlags.testFlag(Qt::WindowMaximizeButtonHint);
    button(SC_TitleBarMinButton, WindowButton::minimise, canMinimise && !minimised);
    button(SC_TitleBarMaxButton, WindowButton::maximise, canMaximise && !maximised);
    button(SC_TitleBarNormalButton, WindowButton::restore, (canMinimise && minimised) || (canMaximise && maximised));
    button(SC_TitleBarCloseButton, WindowButton::close, option.titleBarFlags.testFlag(Qt::WindowSystemMenuHint));
    painter.restore();
}

void PlainStyle::drawMdiControls(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    const auto button = [&](SubControl part, WindowButton kind) {
        if (!option.subControls.testFlag(part))
            return;
        const bool here = option.activeSubControls.testFlag(part);
        drawWindowButton(painter, subControlRect(CC_MdiControls, &option, part, widget), kind,
                         here && option.state.testFlag(State_MouseOver), here && option.state.testFlag(State_Sunken));
    };
    button(SC_MdiMinButton, WindowButton::minimise);
    button(SC_MdiNormalButton, WindowButton::restore);
    button(SC_MdiCloseButton, WindowButton::close);
}

} // namespace platform::qt

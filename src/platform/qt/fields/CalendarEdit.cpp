#include "platform/qt/fields/CalendarEdit.h"

#include "contract/TypedDate.h"
#include "platform/qt/fields/FieldNote.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/tree/TreeGlyphs.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFrame>
#include <QIcon>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace platform::qt {

using contract::Date;

namespace {

std::optional<Date> dateOf(const QString& text) {
    return Date::parse(text.toStdString());
}

/// The date that a short way of typing stands for.
std::optional<Date> shortDateOf(const QString& text) {
    static const QRegularExpression digits(QStringLiteral(R"(^\s*(\d{2})(\d{2})(\d{4}|\d{2})\s*$)"));
    static const QRegularExpression parts(QStringLiteral(R"(^\s*(\d{1,2})[/.\-](\d{1,2})[/.\-](\d{4}|\d{2})\s*$)"));
    auto match = digits.match(text);
    if (!match.hasMatch())
        match = parts.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const int year = match.captured(3).toInt();
    const auto date = Date::of(match.captured(3).size() == 2 ? 2000 + year : year, match.captured(2).toInt(),
                               match.captured(1).toInt());
    return contract::typedOver(date, std::nullopt);
}

/// Of a long text the beginning.
QString shownPart(const QString& typed) {
    constexpr qsizetype longest = 30;
    return typed.size() <= longest ? typed : typed.left(longest) + QChar(0x2026);
}

QIcon calendarIcon(const QColor& color) {
    QPixmap image(32, 32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawCalendar(painter, QRectF(0, 0, 32, 32), color);
    return QIcon(image);
}

} // namespace

CalendarEdit::CalendarEdit(QWidget* parent) : QLineEdit(parent) {
    button_ = addAction(QIcon(), QLineEdit::TrailingPosition);
    button_->setText(tr("Apri il calendario"));
    button_->setToolTip(tr("Apri il calendario (F4)"));
    connect(button_, &QAction::triggered, this, &CalendarEdit::openCalendar);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        setError({}); // said again, if need be, when it is typed to the end
        if (!isModified())
            stood_ = text;
        emit changed(text);
    });
    connect(&Appearance::instance(), &Appearance::changed, this, &CalendarEdit::refreshLook);
    refreshLook();
}

void CalendarEdit::refreshLook() {
    button_->setIcon(calendarIcon(Appearance::instance().colors().textMuted));
}

bool CalendarEdit::hasValidDate() const {
    // What the program has set may lie before the days that can be typed.
    const auto stood = dateOf(stood_);
    return contract::typedOver(dateOf(text()), stood).has_value();
}

void CalendarEdit::complete() {
    if (!isModified() || hasValidDate())
        return;
    const QString typed = text().trimmed();
    const auto date = shortDateOf(typed);
    if (date || typed.isEmpty())
        setText(date ? QString::fromStdString(date->text()) : QString());
    else
        setError(QStringLiteral("%1 non è una data").arg(shownPart(typed)));
}

void CalendarEdit::setError(const QString& sentence) {
    if (sentence == error_)
        return;
    if (error_.isEmpty())
        description_ = accessibleDescription();
    error_ = sentence;
    if (note_)
        note_->say(sentence);
    else
        QMetaObject::invokeMethod(this, &CalendarEdit::showNote, Qt::QueuedConnection);
    setAccessibleDescription(sentence.isEmpty() ? description_ : sentence);
    update();
}

/// Not at once: a field also loses the keyboard while its window goes.
void CalendarEdit::showNote() {
    if (note_ || error_.isEmpty())
        return;
    note_ = new FieldNote(this);
    note_->say(error_);
}

void CalendarEdit::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (error_.isEmpty())
        return;
    QPainter painter(this);
    painter.setPen(QPen(Appearance::instance().colors().danger, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

QSize CalendarEdit::sizeHint() const {
    const int side = fontMetrics().height() + 12;
    return {fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 ")) + side + 12, side};
}

void CalendarEdit::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_F4:
        if (event->modifiers() == Qt::NoModifier)
            return openCalendar();
        break;
    case Qt::Key_Down:
        if (event->modifiers() == Qt::AltModifier)
            return openCalendar();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        complete();
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void CalendarEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        complete();
    QLineEdit::focusOutEvent(event);
}

void CalendarEdit::openCalendar() {
    if (isReadOnly() || !isEnabled() || popup_)
        return;
    auto* frame = new QFrame(this, Qt::Popup);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    frame->setFrameShape(QFrame::StyledPanel);
    popup_ = frame;
    auto* calendar = new QCalendarWidget(frame);
    calendar->setLocale(QLocale(QLocale::Italian, QLocale::Italy));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setGridVisible(false);
    calendar->setFont(Appearance::instance().font());
    const auto& colors = Appearance::instance().colors();
    QTextCharFormat heads;
    heads.setForeground(colors.textMuted);
    heads.setBackground(colors.surface);
    calendar->setHeaderTextFormat(heads);
    // Sundays are days like the others here: red means danger in this program.
    QTextCharFormat day;
    day.setForeground(colors.text);
    calendar->setWeekdayTextFormat(Qt::Saturday, day);
    calendar->setWeekdayTextFormat(Qt::Sunday, day);
    calendar->setStyleSheet(QStringLiteral("QWidget#qt_calendar_navigationbar { background: %1; }"
                                           "QToolButton { background: transparent; border: none; color: %2; "
                                           "padding: 4px 8px; font-weight: bold; }"
                                           "QToolButton::menu-indicator { image: none; }")
                                .arg(colors.header.name(), colors.headerText.name()));
    const auto button = [&](const char* name, bool next) {
        QPixmap image(32, 32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        if (!next) {
            painter.translate(32, 0);
            painter.scale(-1, 1);
        }
        drawChevron(painter, QRectF(0, 0, 32, 32), false, colors.headerText);
        painter.end();
        if (auto* tool = calendar->findChild<QToolButton*>(QLatin1String(name)))
            tool->setIcon(QIcon(image));
    };
    button("qt_calendar_prevmonth", false);
    button("qt_calendar_nextmonth", true);
    calendar->setMinimumDate(QDate(1900, 1, 1));
    calendar->setMaximumDate(QDate(9999, 12, 31));
    const auto date = dateOf(text()).value_or(Date::today());
    calendar->setSelectedDate(QDate(date.year(), date.month(), date.day()));
    const auto choose = [this, frame](QDate chosen) {
        setText(chosen.toString(QStringLiteral("dd/MM/yyyy")));
        frame->close();
        setFocus(Qt::OtherFocusReason);
    };
    connect(calendar, &QCalendarWidget::clicked, this, choose);
    connect(calendar, &QCalendarWidget::activated, this, choose);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(calendar);
    frame->adjustSize();
    QPoint corner = mapToGlobal(QPoint(0, height()));
    const QRect room = screen()->availableGeometry();
    corner.setX(std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() - frame->width())));
    if (corner.y() + frame->height() > room.bottom())
        corner.setY(mapToGlobal(QPoint(0, 0)).y() - frame->height());
    frame->move(corner);
    frame->show();
    calendar->setFocus(Qt::PopupFocusReason);
}

} // namespace platform::qt

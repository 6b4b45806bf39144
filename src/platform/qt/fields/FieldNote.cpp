#include "platform/qt/fields/FieldNote.h"

#include "platform/qt/look/Appearance.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int beside = 6; // left and right of the sentence
constexpr int apart = 3;  // from the field

} // namespace

FieldNote::FieldNote(QWidget* field) : QLabel(field->window()), field_(field) {
    setObjectName(field->objectName() + QStringLiteral(".note"));
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    watch();
    connect(field, &QObject::destroyed, this, [this] {
        hide();
        deleteLater();
    });
}

/// The field moves with everything in which it stands.
void FieldNote::watch() {
    for (QWidget* around = field_; around != nullptr; around = around->parentWidget()) {
        around->installEventFilter(this);
        if (around->isWindow())
            break;
    }
}

void FieldNote::say(const QString& sentence) {
    setText(sentence);
    place();
}

QSize FieldNote::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * beside, fontMetrics().height() + 4};
}

void FieldNote::place() {
    // A cell's editor may have been scrolled out of its tree.
    const QWidget* shown = field_.data();
    if (shown == nullptr || text().isEmpty() || !shown->isVisible() || shown->visibleRegion().isEmpty())
        return hide();
    const QRect room = window()->rect();
    const QRect field(shown->mapTo(window(), QPoint(0, 0)), shown->size());
    setFont(shown->font());
    const QSize size = sizeHint().boundedTo(room.size());
    QPoint corner(field.right() + 1 + apart, field.top() + (field.height() - size.height()) / 2);
    if (corner.x() + size.width() > room.width()) {
        corner = {std::clamp(field.left(), 0, room.width() - size.width()), field.bottom() + 1 + apart};
        if (corner.y() + size.height() > room.height())
            corner.setY(std::max(field.top() - apart - size.height(), 0));
    }
    setGeometry(QRect(corner, size));
    show();
    raise();
}

void FieldNote::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(c.danger);
    painter.drawRoundedRect(rect(), 3, 3);
    painter.setPen(c.dangerText);
    painter.drawText(rect().adjusted(beside, 0, -beside, 0), static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft),
                     fontMetrics().elidedText(text(), Qt::ElideRight, width() - 2 * beside));
}

bool FieldNote::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        if (!text().isEmpty())
            place();
        break;
    default:
        break;
    }
    return QLabel::eventFilter(watched, event);
}

} // namespace platform::qt

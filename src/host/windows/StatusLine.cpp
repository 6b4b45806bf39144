#include "host/windows/StatusLine.h"

#include "host/services/Text.h"
#include "host/windows/WorkBar.h"

#include <QEvent>
#include <QHBoxLayout>

#include <algorithm>

namespace host {

namespace {

constexpr int margin = 6; ///< pixels beside a text

QLabel* newLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(margin, 0, margin, 0);
    return label;
}

int widthOf(const QLabel& label, const QString& text) {
    return label.fontMetrics().horizontalAdvance(text) + 2 * margin;
}

} // namespace

StatusLine::StatusLine(QWidget* parent)
    : QWidget(parent), shown_(newLabel(this)), context_(newLabel(this)), cancel_(newCancelButton(this)) {
    setObjectName(QLatin1String(name));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(shown_, 1);
    row->addWidget(cancel_);
    row->addWidget(context_);
    // As high as the line, which never grows: the window below it would be laid out anew.
    cancel_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    cancel_->hide();
    // The line takes the window's width; its texts never ask for more.
    shown_->setMinimumWidth(1);
    context_->setMinimumWidth(1);
}

void StatusLine::setText(const QString& text) {
    text_ = text;
    shown_->setAccessibleName(text);
    arrange();
}

void StatusLine::setContext(const QString& text) {
    context_->setText(text);
    arrange();
}

void StatusLine::setNotice(const QString& text, const QString& toolTip) {
    if (notice_ == nullptr) {
        notice_ = newLabel(this);
        notice_->setObjectName(QStringLiteral("avviso"));
        QFont font = notice_->font();
        font.setBold(true);
        notice_->setFont(font);
        static_cast<QHBoxLayout*>(layout())->insertWidget(1, notice_);
    }
    notice_->setText(text.isEmpty() ? QString() : QStringLiteral("⚠ ") + text);
    notice_->setAccessibleName(toolTip);
    notice_->setToolTip(plainToolTip(toolTip));
    notice_->setVisible(!text.isEmpty());
    arrange();
}

void StatusLine::arrange() {
    const int notice = notice_ == nullptr || notice_->text().isEmpty() ? 0 : widthOf(*notice_, notice_->text());
    const int button = cancel_->isHidden() ? 0 : cancel_->sizeHint().width();
    const bool both = widthOf(*shown_, text_) + notice + button + widthOf(*context_, context_->text()) <= width();
    context_->setVisible(both);
    const int room = std::max(0, width() - notice - button - 2 * margin);
    const QString elided = both ? text_ : shown_->fontMetrics().elidedText(text_, Qt::ElideRight, room);
    shown_->setText(elided);
    shown_->setToolTip(elided == text_ ? QString() : text_);
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

// A label whose font has changed asks for a new layout.
bool StatusLine::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest)
        arrange();
    return handled;
}

} // namespace host

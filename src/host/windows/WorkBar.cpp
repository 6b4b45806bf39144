#include "host/windows/WorkBar.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace host {

QAbstractButton* newCancelButton(QWidget* parent) {
    auto* button = new QPushButton(QStringLiteral("Annulla"), parent);
    button->setObjectName(QStringLiteral("CMD_ANNULLA_LAVORO"));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    button->setToolTip(QStringLiteral("Annulla il lavoro in corso (Esc)"));
    return button;
}

WorkBar::WorkBar(QWidget& window) : QFrame(&window), text_(new QLabel(this)), button_(newCancelButton(this)) {
    setObjectName(QStringLiteral("lavoro"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    text_->setTextFormat(Qt::PlainText);
    text_->setMinimumWidth(1);
    auto* row = new QHBoxLayout(this);
    row->addWidget(text_, 1);
    row->addWidget(button_);
    const int height = sizeHint().height();
    setGeometry(0, window.height() - height, window.width(), height);
    show();
    raise();
    row->activate();
}

void WorkBar::setText(const QString& text) {
    text_->setText(text);
    text_->setAccessibleName(text);
}

} // namespace host

#include "platform/qt/forms/FormArea.h"

#include <QKeyEvent>
#include <QPointer>

namespace platform::qt {

FormArea::FormArea(QWidget* parent) : QWidget(parent) {
}

void FormArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit resized();
}

void FormArea::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        event->accept();
        emit enterPressed();
    } else if (plain && event->key() == Qt::Key_Escape) {
        event->accept();
        emit escapePressed();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace platform::qt

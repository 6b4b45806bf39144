#include "platform/qt/fields/FieldWidgets.h"

#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/Glyphs.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QStyleOption>
#include <QStylePainter>
#include <QWheelEvent>

namespace platform::qt {

namespace {

constexpr int enter = 13;

int characterOf(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return enter;
    const auto characters = event.text().toUcs4();
    return characters.isEmpty() ? 0 : static_cast<int>(characters.first());
}

} // namespace

TextEdit::TextEdit(QWidget* parent) : QLineEdit(parent) {
}

void TextEdit::keyPressEvent(QKeyEvent* event) {
    const QPointer<QWidget> alive(this);
    // Delete has a character of its own on some systems only; it types none.
    if (const int code = characterOf(*event); code > 0 && event->key() != Qt::Key_Delete)
        emit characterPressed(code);
    if (alive)
        QLineEdit::keyPressEvent(event);
}

LookupEdit::LookupEdit(QWidget* parent) : TextEdit(parent) {
    auto* list = addAction(glyphIcon(Glyph::list), TrailingPosition);
    list->setText(QStringLiteral("Apri l'elenco"));
    list->setToolTip(QStringLiteral("Apri l'elenco (F1)"));
    connect(list, &QAction::triggered, this, &LookupEdit::listWanted);
}

void LookupEdit::keyPressEvent(QKeyEvent* event) {
    const bool f1 = event->key() == Qt::Key_F1 && (event->modifiers() & ~Qt::ControlModifier) == Qt::NoModifier;
    const bool f4 = event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier;
    if (f1 || f4) {
        event->accept();
        emit listWanted();
        return;
    }
    TextEdit::keyPressEvent(event);
}

void LookupEdit::focusOutEvent(QFocusEvent* event) {
    const QPointer<QWidget> alive(this);
    TextEdit::focusOutEvent(event);
    // A list or another program in front is no leaving.
    const auto reason = event->reason();
    if (alive && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        emit left();
}

PlainComboBox::PlainComboBox(QWidget* parent) : QComboBox(parent) {
    setAttribute(Qt::WA_Hover);
}

void PlainComboBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void PlainComboBox::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    painter.drawPrimitive(QStyle::PE_PanelLineEdit, frame);

    const int side = QFontInfo(font()).pixelSize();
    constexpr int margin = 6;
    const QRect caption = rect().adjusted(margin, 0, -(side + 2 * margin), 0);
    painter.setPen(isEnabled() ? c.fieldText : c.textDisabled);
    painter.drawText(caption, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(currentText(), Qt::ElideRight, caption.width()));
    paintGlyph(painter, Glyph::chevronDown, QRectF(width() - side - margin, (height() - side) / 2.0, side, side),
               isEnabled() ? c.text : c.textDisabled);
}

} // namespace platform::qt

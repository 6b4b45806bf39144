#include "platform/qt/fields/FieldControls.h"

#include "platform/qt/fields/CalendarEdit.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/InputEvents.h"

#include <QAbstractItemView>
#include <QJsonArray>
#include <QSignalBlocker>
#include <QStyleOption>

#include <cmath>

namespace platform::qt {

namespace {

QString refusedValue(const std::string& name, const char* wanted) {
    return QStringLiteral("il campo \"%1\" vuole %2").arg(text(name), QString::fromUtf8(wanted));
}

QString typeInto(QLineEdit* edit, const std::string& name, const QJsonValue& value) {
    if (!value.isString())
        return refusedValue(name, "un testo");
    if (QString reason = input::obstacle(edit); !reason.isEmpty())
        return reason;
    if (edit->isReadOnly())
        return QStringLiteral("il campo \"%1\" è in sola lettura").arg(text(name));
    input::enter(edit);
    input::replaceText(edit, value.toString());
    return {};
}

} // namespace

template <class Interface>
TextFieldBase<Interface>::TextFieldBase(std::string_view name, TextEdit* edit)
    : CaptionedControl<Interface>(name, edit), line_(edit) {
    QObject::connect(edit, &TextEdit::characterPressed, &context_,
                     [this](int code) { guarded([this, code] { contract::fire(this->KeyPress, code); }); });
    QObject::connect(edit, &QLineEdit::textChanged, &context_, [this] { guarded([this] { tellEdited(); }); });
}

template <class Interface> std::string TextFieldBase<Interface>::text() const {
    return this->widget_ ? line_->text().toStdString() : std::string();
}

template <class Interface> void TextFieldBase<Interface>::setText(std::string_view value) {
    if (this->widget_)
        line_->setText(qt::text(value));
}

template <class Interface> void TextFieldBase<Interface>::setPlaceholder(std::string_view value) {
    if (this->widget_)
        line_->setPlaceholderText(qt::text(value));
}

template <class Interface> QJsonObject TextFieldBase<Interface>::read() const {
    return {{QStringLiteral("value"), qt::text(text())}, {QStringLiteral("error"), QString()}};
}

template <class Interface> QString TextFieldBase<Interface>::set(const QJsonValue& value) {
    return typeInto(line_, this->name_, value);
}

template class TextFieldBase<contract::TextField>;
template class TextFieldBase<contract::LookupField>;

TextFieldControl::TextFieldControl(std::string_view name, QWidget* parent) : TextFieldBase(name, new TextEdit(parent)) {
}

LookupFieldControl::LookupFieldControl(std::string_view name, QWidget* parent)
    : LookupFieldControl(name, new LookupEdit(parent)) {
}

LookupFieldControl::LookupFieldControl(std::string_view name, LookupEdit* lookup) : TextFieldBase(name, lookup) {
    QObject::connect(lookup, &LookupEdit::listWanted, &context_,
                     [this] { guarded([this] { contract::fire(Lookup); }); });
    QObject::connect(lookup, &QLineEdit::editingFinished, &context_, [this] { guarded([this] { decode(); }); });
    QObject::connect(lookup, &LookupEdit::left, &context_, [this] { guarded([this] { decode(); }); });
}

void LookupFieldControl::setText(std::string_view value) {
    TextFieldBase::setText(value);
    decode();
}

void LookupFieldControl::decode() {
    const QString code = qt::text(text());
    if (code == decoded_)
        return;
    decoded_ = code;
    contract::fire(Decode);
}

QString LookupFieldControl::click() {
    if (QString reason = input::obstacle(widget_); !reason.isEmpty())
        return reason;
    // The button within the field.
    const auto buttons = line_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* button : buttons)
        if (button->inherits("QToolButton") && button->isVisibleTo(line_)) {
            input::click(button, button->rect().center());
            return {};
        }
    return QStringLiteral("il campo \"%1\" non ha un elenco").arg(qt::text(name_));
}

QString LookupFieldControl::set(const QJsonValue& value) {
    // A code is a number; a script may well write it as one.
    const QJsonValue typed = value.isDouble() && value.toDouble() == std::floor(value.toDouble())
                                 ? QJsonValue(QString::number(value.toInteger()))
                                 : value;
    if (QString reason = TextFieldBase::set(typed); !reason.isEmpty())
        return reason;
    input::leave(line_);
    return {};
}

DateFieldControl::DateFieldControl(std::string_view name, QWidget* parent)
    : DateFieldControl(name, new CalendarEdit(parent)) {
}

DateFieldControl::DateFieldControl(std::string_view name, CalendarEdit* line) : QtControl(name, line), line_(line) {
    QObject::connect(line, &QLineEdit::textChanged, &context_, [this] {
        guarded([this] {
            tellEdited();
            contract::fire(Change);
        });
    });
}

std::string DateFieldControl::text() const {
    return widget_ ? line_->text().toStdString() : std::string();
}

void DateFieldControl::setText(std::string_view value) {
    if (widget_)
        line_->setText(qt::text(value));
}

bool DateFieldControl::hasValidDate() const {
    // Who asks wants to know of what is typed as if it were left; a key or a mnemonic leaves the keyboard in the field.
    if (widget_)
        line_->complete();
    return widget_ && line_->hasValidDate();
}

void DateFieldControl::setFocus() {
    QtControl::setFocus();
    if (widget_)
        line_->selectAll();
}

QJsonObject DateFieldControl::read() const {
    return {{QStringLiteral("value"), qt::text(text())},
            {QStringLiteral("error"), widget_ ? line_->error() : QString()}};
}

QString DateFieldControl::set(const QJsonValue& value) {
    if (QString reason = typeInto(line_, name_, value); !reason.isEmpty())
        return reason;
    // Whether it is a date is seen when the field is left.
    input::leave(line_);
    return {};
}

ComboBoxControl::ComboBoxControl(std::string_view name, QWidget* parent)
    : ComboBoxControl(name, new PlainComboBox(parent)) {
}

ComboBoxControl::ComboBoxControl(std::string_view name, PlainComboBox* box) : QtControl(name, box), box_(box) {
    box->view()->setAccessibleName(QStringLiteral("Voci"));
    QObject::connect(box_, &QComboBox::currentIndexChanged, &context_, [this] { guarded([this] { changed(); }); });
}

void ComboBoxControl::addItem(std::string_view item) {
    if (!widget_)
        return;
    // The first item would become the chosen one by itself.
    const QSignalBlocker quiet(box_);
    box_->addItem(qt::text(item));
    box_->setCurrentIndex(position_);
}

int ComboBoxControl::itemCount() const {
    return widget_ ? box_->count() : 0;
}

int ComboBoxControl::position() const {
    return position_;
}

void ComboBoxControl::setPosition(int position) {
    if (!widget_)
        return;
    {
        const QSignalBlocker quiet(box_);
        box_->setCurrentIndex(position < 0 || position >= box_->count() ? -1 : position);
    }
    changed();
}

void ComboBoxControl::changed() {
    const int now = box_->currentIndex();
    if (now == position_)
        return;
    position_ = now;
    tellEdited();
    contract::fire(Change);
}

QJsonObject ComboBoxControl::read() const {
    QJsonArray items;
    for (int i = 0; i < itemCount(); ++i)
        items.append(box_->itemText(i));
    return {{QStringLiteral("value"), position_}, {QStringLiteral("items"), items}};
}

QString ComboBoxControl::set(const QJsonValue& value) {
    const int wanted = value.toInt(-1);
    if (!value.isDouble() || value.toDouble() != wanted || wanted < 0 || wanted >= itemCount())
        return refusedValue(name_, "la posizione di una sua voce, contata da 0");
    if (QString reason = input::obstacle(widget_); !reason.isEmpty())
        return reason;
    const QPointer<QWidget> alive(widget_);
    input::click(box_, box_->rect().center());
    if (!alive)
        return {};
    QAbstractItemView* list = box_->view();
    if (!list->isVisible())
        box_->showPopup();
    list->setCurrentIndex(box_->model()->index(wanted, box_->modelColumn(), box_->rootModelIndex()));
    input::press(list, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    if (alive && list->isVisible())
        box_->hidePopup();
    return {};
}

CheckBoxControl::CheckBoxControl(std::string_view name, QWidget* parent)
    : CheckBoxControl(name, new QCheckBox(parent)) {
}

CheckBoxControl::CheckBoxControl(std::string_view name, QCheckBox* box) : CaptionedControl(name, box), box_(box) {
    QObject::connect(box_, &QCheckBox::toggled, &context_, [this] { guarded([this] { tellEdited(); }); });
}

bool CheckBoxControl::checked() const {
    return widget_ && box_->isChecked();
}

void CheckBoxControl::setChecked(bool checked) {
    if (widget_)
        box_->setChecked(checked);
}

void CheckBoxControl::showCaption(const QString& caption) {
    box_->setText(caption);
}

QJsonObject CheckBoxControl::read() const {
    QJsonObject members = CaptionedControl::read();
    members.insert(QStringLiteral("value"), checked());
    return members;
}

QString CheckBoxControl::click() {
    if (QString reason = input::obstacle(widget_); !reason.isEmpty())
        return reason;
    QStyleOptionButton option;
    option.initFrom(box_);
    const QRect mark = box_->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box_);
    input::click(box_, mark.center());
    return {};
}

QString CheckBoxControl::set(const QJsonValue& value) {
    if (!value.isBool())
        return refusedValue(name_, "vero o falso");
    if (value.toBool() == checked())
        return input::obstacle(widget_);
    return click();
}

} // namespace platform::qt

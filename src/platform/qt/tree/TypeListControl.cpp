#include "platform/qt/tree/TypeListControl.h"

#include "contract/RuntimeError.h"
#include "platform/qt/forms/InputEvents.h"

#include <QJsonArray>

#include <string>

namespace platform::qt {

using contract::RuntimeError;
using contract::TypeEntry;

namespace {

constexpr int indexOutOfBounds = 35600;
constexpr int elementNotFound = 35601;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

} // namespace

TypeListControl::TypeListControl(std::string_view name, QWidget* parent)
    : QtControl(name, new TypeListView(parent)), view_(static_cast<TypeListView*>(widget_.data())) {
    view_->setAccessibleName(view_->objectName());
    view_->chosen = [this] { contract::fire(Click); };
}

TypeListControl::~TypeListControl() {
    if (widget_)
        view_->chosen = nullptr;
}

void TypeListControl::clear() {
    view_->selectRow(-1);
    view_->entries().clear();
}

void TypeListControl::add(const TypeEntry& entry) {
    view_->entries().add(entry);
}

std::size_t TypeListControl::count() const {
    return static_cast<std::size_t>(view_->entries().count());
}

int TypeListControl::rowAt(std::size_t position) const {
    if (position < 1 || position > count())
        throw RuntimeError(indexOutOfBounds, "L'elenco \"" + name_ + "\" non ha la voce " + std::to_string(position) +
                                                 ": ne ha " + std::to_string(count()) + ".");
    return static_cast<int>(position) - 1;
}

TypeEntry TypeListControl::entry(std::size_t position) const {
    return view_->entries().entry(rowAt(position));
}

TypeEntry TypeListControl::entry(std::string_view key) const {
    const int row = view_->entries().find(key);
    if (row < 0)
        throw RuntimeError(elementNotFound,
                           "L'elenco \"" + name_ + "\" non ha la voce di chiave \"" + std::string(key) + "\".");
    return view_->entries().entry(row);
}

void TypeListControl::refresh() {
    view_->viewport()->update();
}

std::optional<TypeEntry> TypeListControl::selected() const {
    const int row = view_->selectedRow();
    return row < 0 ? std::nullopt : std::optional(view_->entries().entry(row));
}

void TypeListControl::select(std::size_t position) {
    view_->selectRow(rowAt(position));
}

QJsonObject TypeListControl::read() const {
    QJsonArray entries;
    for (int row = 0; row < view_->entries().count(); ++row) {
        const auto& entry = view_->entries().entry(row);
        entries.append(QJsonObject{
            {"key", text(entry.key)},
            {"text", text(entry.text)},
            {"parent", entry.parent.empty() ? QJsonValue(QJsonValue::Null) : QJsonValue(text(entry.parent))},
            {"image", text(entry.image)},
            {"selected_image", text(entry.selectedImage)}});
    }
    const auto chosen = selected();
    return QJsonObject{{"entries", entries},
                       {"selected", chosen ? QJsonValue(text(chosen->key)) : QJsonValue(QJsonValue::Null)},
                       {"tooltip", text(toolTip_)}};
}

QString TypeListControl::select(const QString& key) {
    if (QString reason = input::obstacle(view_); !reason.isEmpty())
        return reason;
    const int row = view_->entries().find(key.toStdString());
    if (row < 0)
        return QStringLiteral("l'elenco \"%1\" non ha la voce \"%2\"").arg(view_->objectName(), key);
    const QModelIndex index = view_->entries().index(row);
    view_->scrollTo(index);
    const QRect entry = view_->visualRect(index) & view_->viewport()->rect();
    if (entry.isEmpty())
        return QStringLiteral("l'elenco \"%1\" è troppo piccolo per mostrare la voce").arg(view_->objectName());
    input::enter(view_);
    input::click(view_->viewport(), entry.center());
    return {};
}

QString TypeListControl::key(int code, Qt::KeyboardModifiers modifiers) {
    QString reason = Scriptable::key(code, modifiers);
    if (reason.isEmpty())
        settle();
    return reason;
}

void TypeListControl::settle() {
    view_->settle();
}

} // namespace platform::qt

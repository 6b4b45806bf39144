#include "platform/qt/tree/TreeModel.h"

#include "contract/RuntimeError.h"
#include "contract/TypedDate.h"
#include "platform/qt/forms/CaptionedControl.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace platform::qt {

using contract::RuntimeError;
using contract::TreeColumnKind;
using contract::Value;

void TreeModel::addColumn(const contract::TreeColumn& column) {
    const int position = static_cast<int>(columns_.size());
    beginInsertColumns({}, position, position);
    columns_.push_back(column);
    locked_.push_back(false);
    texts_.emplace_back();
    fields_.push_back(-1);
    if (records_ && !column.field.empty())
        fields_.back() = static_cast<int>(records_->rows().find(column.field).value_or(static_cast<std::size_t>(-1)));
    endInsertColumns();
}

int TreeModel::findColumn(std::string_view name) const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [&](const auto& column) { return column.name == name; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int TreeModel::findKind(TreeColumnKind kind) const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [&](const auto& column) { return column.kind == kind; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int TreeModel::firstVisible() const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [](const auto& column) { return column.visible; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int TreeModel::digits(int column) const {
    const int field = column < 0 ? -1 : fields_[static_cast<std::size_t>(column)];
    std::int64_t highest = 0;
    if (field >= 0) {
        const auto& cells = records_->rows().column(static_cast<std::size_t>(field));
        for (std::size_t at = 0; at < records_->RecordCount(); ++at)
            highest = std::max(highest, cells.integer(at).value_or(0));
    }
    return static_cast<int>(std::to_string(highest).size());
}

void TreeModel::setLocked(std::size_t position, bool locked) {
    locked_[position] = locked;
}

bool TreeModel::editable(int position) const {
    const auto at = static_cast<std::size_t>(position);
    return columns_[at].kind == TreeColumnKind::date && columns_[at].editable && !locked_[at] && fields_[at] >= 0;
}

void TreeModel::bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField,
                     std::string_view parentField) {
    beginResetModel();
    forgetBinding();
    try {
        if (!records)
            throw RuntimeError(RuntimeError::objectNotSet, "Albero: manca il gruppo di record da mostrare.");
        keyField_ = records->FieldIndex(keyField);
        nodes_.build(*records, keyField, parentField);
    } catch (...) {
        nodes_.clear();
        endResetModel();
        throw;
    }
    records_ = std::move(records);
    for (std::size_t at = 0; at < columns_.size(); ++at)
        if (!columns_[at].field.empty())
            if (const auto field = records_->rows().find(columns_[at].field))
                fields_[at] = static_cast<int>(*field);
    marks_.assign(records_->RecordCount(), false);
    openAll();
    endResetModel();
}

void TreeModel::clearNodes() {
    beginResetModel();
    nodes_.clear();
    openAll();
    endResetModel();
}

void TreeModel::unbind() {
    beginResetModel();
    forgetBinding();
    endResetModel();
}

void TreeModel::forgetBinding() {
    nodes_.clear();
    openAll();
    records_.reset();
    marks_.clear();
    std::fill(fields_.begin(), fields_.end(), -1);
    for (auto& texts : texts_)
        texts.clear();
}

/// As deep as bind() opens.
void TreeModel::openAll() {
    open_.assign(nodes_.size(), false);
    bool deeper = false;
    for (std::int32_t at = 0; at < count(); ++at) {
        const bool near = nodes_.level(at) + 1 < contract::TreeList::levelsOpened;
        open_[static_cast<std::size_t>(at)] = near && !isLeaf(at);
        deeper = deeper || (!near && !isLeaf(at));
    }
    shown_.clear();
    allShown_ = true;
    if (deeper)
        findShown();
}

void TreeModel::findShown() {
    shown_.clear();
    for (std::int32_t at = 0; at < count(); at = isLeaf(at) || isOpen(at) ? at + 1 : nodes_.subtreeEnd(at))
        shown_.push_back(at);
    allShown_ = static_cast<std::int32_t>(shown_.size()) == count();
    if (allShown_)
        shown_.clear();
    shown_.shrink_to_fit();
}

void TreeModel::setOpen(std::int32_t position, bool open) {
    open_[static_cast<std::size_t>(position)] = open && !isLeaf(position);
}

void TreeModel::layOut() {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    findShown();
    QModelIndexList after;
    for (const auto& index : before)
        after.append(at(position(index), index.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

std::int32_t TreeModel::shownRow(std::int32_t position) const {
    if (allShown_)
        return hasPosition(position) ? position : -1;
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), position);
    return found != shown_.end() && *found == position ? static_cast<std::int32_t>(found - shown_.begin()) : -1;
}

bool TreeModel::isShown(std::int32_t position) const {
    return shownRow(position) >= 0;
}

std::int32_t TreeModel::lastShown() const {
    return allShown_ ? count() - 1 : shown_.back();
}

std::int64_t TreeModel::key(std::int32_t position) const {
    return records_->rows().column(keyField_).integer(row(position)).value_or(0);
}

QModelIndex TreeModel::at(std::int32_t position, int column) const {
    const auto row = shownRow(position);
    return row < 0 ? QModelIndex() : createIndex(row, column, static_cast<quintptr>(position));
}

Value TreeModel::value(std::int32_t position, int column) const {
    if (const int field = fields_[static_cast<std::size_t>(column)]; field >= 0)
        return records_->rows().column(static_cast<std::size_t>(field)).value(row(position));
    if (this->column(column).kind == TreeColumnKind::check || this->column(column).kind == TreeColumnKind::state)
        return Value(text(position, column).toStdString());
    return {};
}

void TreeModel::setValue(std::int32_t position, int column, const Value& value) {
    if (const int field = fields_[static_cast<std::size_t>(column)]; field >= 0)
        records_->SetValue(row(position), static_cast<std::size_t>(field), value);
    else if (this->column(column).kind == TreeColumnKind::check)
        marks_[row(position)] = value.text() == this->column(column).checkedValue;
}

QString TreeModel::text(std::int32_t position, int column) const {
    const auto at = static_cast<std::size_t>(column);
    switch (columns_[at].kind) {
    case TreeColumnKind::check:
        return checked(position) ? QString::fromStdString(columns_[at].checkedValue) : QStringLiteral("False");
    case TreeColumnKind::state:
        return texts_[at].value(row(position));
    default:
        break;
    }
    if (fields_[at] < 0)
        return {};
    const auto& cells = records_->rows().column(static_cast<std::size_t>(fields_[at]));
    if (cells.storage() == contract::Column::Storage::text) {
        const auto characters = cells.text(row(position));
        if (!characters.empty())
            return qt::text(characters);
    }
    return QString::fromStdString(cells.value(row(position)).text());
}

QString TreeModel::drawnText(std::int32_t position, int column) const {
    return brief(text(position, column));
}

bool TreeModel::checked(std::int32_t position) const {
    return marks_[row(position)];
}

void TreeModel::fetchTexts(int column, const std::vector<std::int32_t>& positions) {
    const auto& provider = this->column(column).texts;
    auto& known = texts_[static_cast<std::size_t>(column)];
    std::vector<std::size_t> missing;
    for (const auto position : positions)
        if (!known.contains(row(position)))
            missing.push_back(row(position));
    if (missing.empty() || !provider)
        return;
    // Marked as known first: a provider that fails is not asked again at every repaint.
    for (const auto wanted : missing)
        known.insert(wanted, {});
    try {
        const auto answers = provider(missing);
        for (std::size_t at = 0; at < std::min(answers.size(), missing.size()); ++at)
            known.insert(missing[at], QString::fromStdString(answers[at]));
    } catch (const std::exception& error) {
        qWarning("%s: %s", this->column(column).name.c_str(), error.what());
    }
}

void TreeModel::forgetTexts(int column) {
    texts_[static_cast<std::size_t>(column)].clear();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= columnCount() || parent.isValid() || row >= shownCount())
        return {};
    const auto position = allShown_ ? row : shown_[static_cast<std::size_t>(row)];
    return createIndex(row, column, static_cast<quintptr>(position));
}

QModelIndex TreeModel::parent(const QModelIndex&) const {
    return {};
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shownCount();
}

int TreeModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    return !parent.isValid() && count() > 0;
}

/// What an assistive tool is told of a node's place, which no row of a list shows.
QString TreeModel::spokenPlace(std::int32_t position) const {
    QString place = QStringLiteral("livello %1").arg(nodes_.level(position) + 1);
    if (!isLeaf(position))
        place += isOpen(position) ? QStringLiteral(", aperto") : QStringLiteral(", chiuso");
    return place;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const bool check = column(index.column()).kind == TreeColumnKind::check;
    switch (role) {
    case Qt::DisplayRole:
        return check ? QVariant() : QVariant(drawnText(position(index), index.column()));
    case Qt::EditRole:
        return check ? QVariant() : QVariant(text(position(index), index.column()));
    case Qt::CheckStateRole:
        return check ? QVariant(checked(position(index)) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole:
        return headerData(index.column(), Qt::Horizontal, role);
    case Qt::AccessibleDescriptionRole:
        return spokenPlace(position(index));
    default:
        return {};
    }
}

bool TreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid())
        return false;
    if (role == Qt::CheckStateRole)
        return mark(position(index), index.column(), value.toInt() == Qt::Checked);
    if (role != Qt::EditRole || !editable(index.column()))
        return false;
    const auto typed = value.toString().toStdString();
    const auto stood = this->value(position(index), index.column()).date();
    const auto date = contract::typedOver(contract::Date::parse(typed), stood);
    if (!date && !value.toString().isEmpty())
        return false;
    setValue(position(index), index.column(), date ? Value(*date) : Value::null());
    emit dataChanged(index, index);
    return true;
}

bool TreeModel::mark(std::int32_t position, int column, bool checked) {
    if (this->column(column).kind != TreeColumnKind::check || locked_[static_cast<std::size_t>(column)])
        return false;
    marks_[row(position)] = checked;
    if (const QModelIndex changed = at(position, column); changed.isValid())
        emit dataChanged(changed, changed);
    return true;
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromStdString(column(section).caption);
    if (role == Qt::TextAlignmentRole) {
        switch (column(section).kind) {
        case TreeColumnKind::code:
            // Behind the branches it stands where they end, so that its place tells its level.
            return QVariant((section == firstVisible() ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        case TreeColumnKind::date:
        case TreeColumnKind::check:
            return QVariant(Qt::AlignCenter);
        default:
            return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
        }
    }
    return {};
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (editable(index.column()))
        flags |= Qt::ItemIsEditable;
    if (column(index.column()).kind == TreeColumnKind::check && !locked(static_cast<std::size_t>(index.column())))
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace platform::qt

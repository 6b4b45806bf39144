#pragma once

#include "contract/TreeList.h"
#include "platform/shared/TreeIndex.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::qt {

/// A record set as Qt's item views see it: an index over its rows, no object a node. The internal id of an index is the
/// node's position in display order.
///
/// To the views it is a list: the rows on offer are the nodes whose ancestors are all open, one below the other, and no
/// row has a parent. Which nodes are open is known here, and the depth is drawn by the view. So nothing goes down level
/// by level, and a chain of a million nodes costs what a million nodes beside each other do.
class TreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    using QAbstractItemModel::QAbstractItemModel;

    void addColumn(const contract::TreeColumn& column);
    const std::vector<contract::TreeColumn>& columns() const { return columns_; }
    const contract::TreeColumn& column(int position) const { return columns_[static_cast<std::size_t>(position)]; }
    /// Position of the column of that name, exact case; -1 for none.
    int findColumn(std::string_view name) const;
    /// Position of the first column of that kind; -1 for none.
    int findKind(contract::TreeColumnKind kind) const;

    /// Position of the first visible column; -1 for none.
    int firstVisible() const;
    /// Digits of the highest number of a column's field; 1 where it has none.
    int digits(int column) const;

    void setLocked(std::size_t position, bool locked);
    bool locked(std::size_t position) const { return locked_[position]; }
    /// Whether the cells of a column open an editor: a date column, editable and not locked.
    bool editable(int position) const;

    /// Throws RuntimeError 91 without a record set, and as TreeIndex::build(); the model has no nodes then. Marks and
    /// the texts of state columns are forgotten.
    void bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField, std::string_view parentField);
    void clearNodes();
    void unbind();
    const std::shared_ptr<contract::Recordset>& records() const { return records_; }

    const shared::TreeIndex& nodes() const { return nodes_; }
    std::int32_t count() const { return static_cast<std::int32_t>(nodes_.size()); }
    bool hasPosition(std::int32_t position) const { return position >= 0 && position < count(); }
    bool isLeaf(std::int32_t position) const { return nodes_.subtreeEnd(position) == position + 1; }
    bool isOpen(std::int32_t position) const { return open_[static_cast<std::size_t>(position)]; }
    /// What hangs below an open node is on offer from the next layOut() on. A node without children never opens.
    void setOpen(std::int32_t position, bool open);
    /// Offers the rows of the nodes that are shown now; linear in the nodes.
    void layOut();
    /// Whether the node was on offer at the last layOut().
    bool isShown(std::int32_t position) const;
    /// The last node on offer; -1 without nodes.
    std::int32_t lastShown() const;
    /// 0 for a row without a key.
    std::int64_t key(std::int32_t position) const;

    /// The model index of a node; the invalid one for a position that does not exist or is not on offer.
    QModelIndex at(std::int32_t position, int column = 0) const;
    /// -1 for the invalid index.
    static std::int32_t position(const QModelIndex& index) {
        return index.isValid() ? static_cast<std::int32_t>(index.internalId()) : -1;
    }

    contract::Value value(std::int32_t position, int column) const;
    /// Cells that are bound to no field hold a check mark or nothing that could be written. Tells no view: a view looks
    /// every changed index up, and a walk that marks a whole tree would take the square of its nodes.
    void setValue(std::int32_t position, int column, const contract::Value& value);
    /// What the cell shows; of a state column only what was fetched.
    QString text(std::int32_t position, int column) const;
    /// The same as it is drawn: the beginning of a very long text.
    QString drawnText(std::int32_t position, int column) const;
    bool checked(std::int32_t position) const;

    /// Asks for the texts of a state column that are still missing for these nodes, in one call. A provider that fails
    /// leaves the cells empty.
    void fetchTexts(int column, const std::vector<std::int32_t>& positions);
    void forgetTexts(int column);

    // QAbstractItemModel

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    /// Always the invalid one.
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Qt::EditRole: "dd/mm/yyyy" or empty for null. Qt::CheckStateRole: the mark.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::size_t row(std::int32_t position) const { return static_cast<std::size_t>(nodes_.row(position)); }
    void forgetBinding();
    void openAll();
    void findShown();
    QString spokenPlace(std::int32_t position) const;
    /// Row on offer of a position; -1 for none.
    std::int32_t shownRow(std::int32_t position) const;
    std::int32_t shownCount() const { return allShown_ ? count() : static_cast<std::int32_t>(shown_.size()); }
    bool mark(std::int32_t position, int column, bool checked);

    std::vector<contract::TreeColumn> columns_;
    std::vector<bool> locked_;
    std::vector<int> fields_; // by column; -1 for none
    std::vector<QHash<std::size_t, QString>> texts_;
    std::shared_ptr<contract::Recordset> records_;
    std::size_t keyField_ = 0;
    shared::TreeIndex nodes_;
    std::vector<bool> marks_;         // by row
    std::vector<bool> open_;          // by position
    bool allShown_ = true;            // every node is on offer
    std::vector<std::int32_t> shown_; // positions on offer in display order, where not all are
};

} // namespace platform::qt

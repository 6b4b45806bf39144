#pragma once

#include "contract/Controls.h"

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <QTimer>

#include <functional>
#include <string_view>
#include <vector>

namespace platform::qt {

/// The entries of a type list in display order: each parent's in the order in which they came, below their parent.
class TypeListModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    void clear();
    /// Throws as TypeList::add().
    void add(const contract::TypeEntry& entry);
    int count() const { return static_cast<int>(entries_.size()); }
    const contract::TypeEntry& entry(int row) const { return entries_[static_cast<std::size_t>(row)]; }
    int level(int row) const { return levels_[static_cast<std::size_t>(row)]; }
    /// -1 for none.
    int find(std::string_view key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<contract::TypeEntry> entries_;
    std::vector<int> levels_;
};

/// Draws an entry: its image, its text, a group a little stronger than its types.
class TypeListDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    TypeListDelegate(const TypeListModel& model, QWidget& list)
        : QStyledItemDelegate(&list), model_(model), list_(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const TypeListModel& model_;
    QWidget& list_;
};

/// The widget of a type list. The mouse chooses on the click; arrows and letters move the selection, which counts as
/// chosen once it rests; Enter and Space choose at once.
class TypeListView : public QListView {
    Q_OBJECT
public:
    static constexpr int restMilliseconds = 250;

    explicit TypeListView(QWidget* parent);

    TypeListModel& entries() const { return model_; }
    /// Selects without a word to anyone.
    void selectRow(int row);
    int selectedRow() const { return currentIndex().isValid() ? currentIndex().row() : -1; }
    /// Does not wait for the selection to rest.
    void settle();
    void refreshLook();

    std::function<void()> chosen;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void choose();

    TypeListModel& model_;
    QTimer rest_;
    int pressedRow_ = -1;
};

} // namespace platform::qt

#pragma once

#include "platform/qt/tree/TreeColors.h"
#include "platform/qt/tree/TreeModel.h"

#include <QTreeView>

#include <optional>
#include <string>
#include <vector>

namespace platform::qt {

class CalendarEdit;
class TreeDelegate;
class TreeHeader;

/// What a tree's widget tells of the user.
class TreeViewListener {
public:
    TreeViewListener() = default;
    TreeViewListener(const TreeViewListener&) = delete;
    TreeViewListener& operator=(const TreeViewListener&) = delete;
    virtual ~TreeViewListener() = default;

    virtual void currentMoved(const QModelIndex& current, const QModelIndex& previous) = 0;
    /// Between the two, moves of the focus wait to be told.
    virtual void inputBegins() = 0;
    virtual void inputEnds(bool byKey) = 0;
    /// Tells what moved before.
    virtual void flushFocus() = 0;
    /// A press is beginning at that point of the viewport, and nothing has moved yet: until pressEnds() what stands
    /// there now is what the press is told for.
    virtual void pressBegins(QPoint point) = 0;
    virtual void pressEnds() = 0;
    /// Point in the viewport.
    virtual void pressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint point) = 0;
    virtual void linkClicked(std::int32_t position, int column) = 0;
    virtual void checkToggled(std::int32_t position, bool checked) = 0;
    virtual void cellEdited(std::int32_t position) = 0;
    /// The user would have edited a cell of a locked column.
    virtual void cellLocked(std::int32_t position, int column) = 0;
    virtual void toggleExpanded(std::int32_t position) = 0;
    /// Plus opens, minus closes, an asterisk opens all that hangs below.
    virtual void expandByKey(std::int32_t position, int key) = 0;
};

/// The widget of a tree list: Qt's tree view, with the drawing, the mouse and the keys of this program's lists.
class TreeView : public QTreeView {
    Q_OBJECT
public:
    explicit TreeView(QWidget* parent);

    void setListener(TreeViewListener* listener) { listener_ = listener; }
    TreeModel& nodes() const { return model_; }

    TreeColors& colors() { return colors_; }
    const TreePalette& palette() const { return palette_; }
    TreeHeader& bands() const { return *header_; }
    /// Takes colours, fonts and measures from the program's look again.
    void refreshLook();
    void setFontName(const QString& name);
    void setEmptyText(const QString& text);
    void setScrollTipColumn(const std::string& column) { scrollTipColumn_ = column; }

    // Columns

    void columnAdded(int column);
    /// Column in which the branches stand; the first visible one, -1 for none.
    int treeColumn() const { return firstVisible_; }
    /// Levels below the top one, and digits of the longest code: the first column gets room for both.
    void setDepth(int levels, int digits);
    /// Widths that the user gave, by column, in pixels at 8 points; 0 for those that are as the form wants them. Of a
    /// list that is too short the others.
    const std::vector<double>& userWidths() const { return userWidths_; }
    void setUserWidths(const std::vector<double>& widths);
    /// Room on either side of a column's texts, in pixels.
    int inset(int column) const;
    /// Fits the widths: those of the form at this zoom, those of the user, the rest to the last text column.
    void layoutColumns();

    // Geometry, in pixels of the viewport

    /// The shown node of the row at that height; -1 for none.
    std::int32_t positionAt(int y) const;
    /// The whole cell, branches included; empty when the row is not laid out.
    QRect cellRect(std::int32_t position, int column) const;
    /// Without branches and margins.
    QRect contentRect(std::int32_t position, int column) const;
    QRect buttonRect(std::int32_t position) const;
    QRect checkRect(std::int32_t position, int column) const;
    /// Of the text that acts as a link; empty without one.
    QRect linkRect(std::int32_t position, int column) const;
    /// Lower edge of the last row; 0 without rows.
    int rowsBottom() const;

    bool isOpen(std::int32_t position) const { return model_.isOpen(position); }
    /// Scrolls so that the row stands that many rows below the upper edge, as far as the tree reaches.
    void scrollRowTo(std::int32_t position, int rows);
    /// Shows what is open now.
    void layOutNodes();

    /// Asks for the texts of unbound columns that the rows on screen lack.
    void fetchVisibleTexts();
    /// The node's place: its ancestors and itself, one below the other; of a very deep one the nearest and the first.
    QString path(std::int32_t position) const;
    std::vector<std::int32_t> visiblePositions() const;

    // Nodes that are moved by hand (NodeDrag)

    /// Whether a press at that point of the viewport takes hold of a row, not of its button or its check box.
    bool takesHold(QPoint point) const;
    /// Frames the row on which a node would be dropped; -1 for none.
    void setDropMark(std::int32_t position);
    /// Marks the node that was cut, by its key; nothing for none. A new content has none.
    void setCutMark(std::optional<std::int64_t> key);
    std::optional<std::int64_t> cutMark() const { return cutMark_; }
    /// Opens a closed node as its button does; its row stays at its height.
    void openBranch(std::int32_t position);
    /// Code and texts of a node, in one line.
    QString nameOf(std::int32_t position) const;

    /// Opens the editor of the focused cell, if it has one.
    bool editFocused();
    /// Of a cell that is open; nothing when none is.
    QWidget* openEditor() const;
    /// The open editor if what was typed there is no date; it keeps the keyboard until that is mended or given up.
    CalendarEdit* mistypedEditor() const;
    /// The sentence that stands at the open editor; empty where there is none.
    QString editError() const;
    /// Moves the focus to the row, in the column that has it.
    void focusPosition(std::int32_t position);

    bool rowFocused(std::int32_t position) const { return TreeModel::position(currentIndex()) == position; }
    /// Whether the mouse stands on that cell's link, and a click would open it.
    bool linkPointed(std::int32_t position, int column) const {
        return hovered_.position == position && hovered_.column == column && linkOpens(hovered_, hoverModifiers_);
    }

    /// The cursor is the focused cell: a menu that the keyboard asks for opens there.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void keyboardSearch(const QString& search) override;
    /// New content: what was pointed at, pressed or edited in the old one is gone.
    void reset() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    static constexpr int leastDigits = 4;

    enum class Part { none, row, button, check, link };
    struct Place {
        std::int32_t position = -1;
        int column = -1;
        Part part = Part::none;
        friend bool operator==(const Place&, const Place&) = default;
    };

    Place placeAt(QPoint point) const;
    /// A link opens on purpose: on the row that has the focus already, or with Ctrl.
    bool linkOpens(const Place& place, Qt::KeyboardModifiers modifiers) const {
        return place.part == Part::link && (rowFocused(place.position) || modifiers.testFlag(Qt::ControlModifier));
    }
    void hover(const Place& place, Qt::KeyboardModifiers modifiers);
    void showPointer();
    void hoverKey(const QKeyEvent& event, bool down);
    void focusPressed(const Place& place, Qt::MouseButton button);
    void press(Place place, const QMouseEvent& event);
    void toggleCheck(std::int32_t position);
    void moveColumn(int step);
    bool pressedKey(QKeyEvent* event);
    void pressMenuKey(Qt::KeyboardModifiers modifiers);
    std::int32_t findText(int column) const;
    bool typeIntoCell(QKeyEvent* event);
    void showScrollTip();
    /// Levels whose branches the first column has room for beside a code; deeper ones stand at its last.
    int levelsDrawn() const;
    int indent(std::int32_t position) const;
    int codeWidth() const;
    void paintMarks(QPainter& painter, const QRect& row, std::int32_t position) const;
    int preferredWidth(int column) const;
    /// What a column can do without while its text and its caption still stand in full, in pixels.
    int spareWidth(int column) const;
    /// Of the column that takes the room that is left; there must be one.
    int leastStretched() const;
    /// Makes the column of the branches that much narrower, in pixels, as far as they still read as branches.
    void closeBranches(int lacking);

    TreeModel& model_;
    TreeViewListener* listener_ = nullptr;
    TreeHeader* header_;
    TreeDelegate* delegate_;
    TreeColors colors_;
    TreePalette palette_;
    QString fontName_;
    QString emptyText_;
    std::string scrollTipColumn_;
    int depth_ = 0;
    int digits_ = leastDigits;
    int firstVisible_ = -1;
    int stretchColumn_ = -1;
    std::vector<double> userWidths_; // pixels at 8 points; 0: as the form wants it
    bool fitting_ = false;
    Place hovered_;
    Qt::KeyboardModifiers hoverModifiers_;
    Place pressed_;
    QPoint pressedAt_;
    unsigned contents_ = 0; // counts what the tree was filled with
    QString searched_;
    qint64 searchedAt_ = 0;
    std::int32_t editing_ = -1;
    std::int32_t edited_ = -1;
    std::int32_t dropMark_ = -1;
    std::optional<std::int64_t> cutMark_;
};

} // namespace platform::qt

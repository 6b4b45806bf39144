#pragma once

#include "contract/Control.h"
#include "contract/Recordset.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

/// A node of a tree by its position in display order, counted from 0: the order in which the tree would show its nodes
/// if everything were expanded. Valid until the tree is bound, cleared or unbound.
struct Node {
    std::int32_t position = -1; ///< -1: no node

    explicit operator bool() const { return position >= 0; }
    friend auto operator<=>(const Node&, const Node&) = default;
};

enum class TreeColumnKind : std::uint8_t {
    text,
    code,  ///< aligned right
    date,  ///< "dd/mm/yyyy", centred, edited with a date editor where the tree is editable
    check, ///< a check box whose cell text is the checked value or "False"; bound to no field
    state  ///< the description of a state; bound to no field
};

struct TreeColumn {
    std::string name;
    std::string caption;
    std::string field; ///< empty: bound to no field
    TreeColumnKind kind = TreeColumnKind::text;
    bool visible = true;
    bool editable = false;
    bool link = false;          ///< its cells look and behave as links
    Twips width = 1500;         ///< at 8 points
    std::string checkedValue{}; ///< TreeColumnKind::check
    /// TreeColumnKind::state: the texts of these rows of the record set, in their order. Asked for the rows on screen
    /// only, and kept until the tree is bound again or refreshColumn() is called.
    std::function<std::vector<std::string>(const std::vector<std::size_t>& rows)> texts{};
};

/// The colour properties of a tree, in its own order.
enum class TreeColor : std::uint8_t {
    header,
    headerText,
    border,
    footer,
    footerText,
    hideSelection,
    hideSelectionText,
    highLight,
    highLightText,
    text,
    group,
    groupText
};
constexpr std::size_t treeColorCount = 12;

enum class HitCode : std::uint8_t { nowhere, header, cell, button, check, right, below };

struct TreeHit {
    std::string column; ///< name, empty for none
    std::string band;   ///< caption, empty for none
    Node node;
    HitCode code = HitCode::nowhere;
};

/// A tree list bound to a record set by a key and a parent field.
///
/// The record set's cursor and the focused node move together. A row whose parent is null or not among the rows is a
/// top-level node; rows on a cycle, and all that hang from them, are no nodes. A record set that is not empty but all
/// on cycles gives a tree without nodes, whose record set stands at its end.
class TreeList : public Control {
public:
    /// Levels that bind() shows: what is deeper could not be told apart by its branches.
    static constexpr int levelsOpened = 200;

    // Set-up

    virtual void setBandCaption(std::string_view caption) = 0;
    virtual void addColumn(const TreeColumn& column) = 0;
    virtual const std::vector<TreeColumn>& columns() const = 0;
    /// Column whose text the tip beside the vertical scroll bar shows while it is dragged.
    virtual void setScrollTipColumn(std::string_view column) = 0;
    virtual void setFontName(std::string_view name) = 0;
    virtual void setColor(TreeColor property, Color color) = 0;
    /// Of the band and of the column headers.
    virtual void setHeaderColors(Color background, Color text) = 0;
    virtual void setColumnColors(Color background, Color text) = 0;
    /// Shown in the place of the nodes while there are none.
    virtual void setEmptyText(std::string_view text) = 0;

    // Data

    /// Binds, expanded down to levelsOpened, with the focus on the node of focusKey if it exists, else on the first
    /// one, and raises the focus events. Column widths that the user changed stay.
    virtual void bind(std::shared_ptr<Recordset> records, std::string_view keyField, std::string_view parentField,
                      std::optional<std::int64_t> focusKey = std::nullopt) = 0;
    /// Removes the nodes and raises the focus events; the binding stays.
    virtual void clearNodes() = 0;
    /// Takes the record set away.
    virtual void unbind() = 0;
    virtual std::shared_ptr<Recordset> records() const = 0;

    // Nodes

    virtual std::size_t nodeCount() const = 0;
    virtual Node firstNode() const = 0;
    /// The node after this one in display order, whatever is expanded; none after the last.
    virtual Node next(Node node) const = 0;
    /// 0 for a top-level node.
    virtual int level(Node node) const = 0;
    virtual Node parent(Node node) const = 0;
    virtual Node byKey(std::int64_t key) const = 0;
    virtual std::int64_t key(Node node) const = 0;
    /// Row of the node in the record set, counted from 0.
    virtual std::size_t row(Node node) const = 0;
    /// How many nodes hang below it; linear in them.
    virtual std::size_t descendants(Node node) const = 0;

    virtual Node focused() const = 0;
    /// Ancestors are expanded, the row is brought into view, the cursor moves, the focus events are raised. For the
    /// node that is focused already only the cursor comes back; no node leaves the focus where it is.
    virtual void setFocused(Node node) = 0;
    virtual void makeVisible(Node node) = 0;
    /// The same for a cell: its column is brought into view too. Throws as value().
    virtual void makeVisible(Node node, std::string_view column) = 0;
    /// Column of the focused cell, empty for none.
    virtual std::string focusedColumn() const = 0;
    virtual void setFocusedColumn(std::string_view column) = 0;

    /// Throws RuntimeError 3265 for a column that the tree does not carry.
    virtual contract::Value value(Node node, std::string_view column) const = 0;
    /// Writes the cell, and through the binding its record. Raises no event. Throws as value().
    virtual void setValue(Node node, std::string_view column, const contract::Value& value) = 0;
    /// Field to which a column is bound. Throws as value().
    virtual std::string fieldOf(std::string_view column) const = 0;

    /// False for a node from which nothing hangs.
    virtual bool expanded(Node node) const = 0;
    /// Closing a node that hides the focused one moves the focus to the node that is still shown.
    virtual void setExpanded(Node node, bool expanded) = 0;
    /// Expansions between the two are laid out once, at the last endUpdate. They nest.
    virtual void beginUpdate() = 0;
    virtual void endUpdate() = 0;

    /// By position counted from 0, hidden columns included. Throws RuntimeError 3265 outside the bounds.
    virtual void setColumnLocked(std::size_t position, bool locked) = 0;
    virtual bool columnLocked(std::size_t position) const = 0;
    /// Asks for the texts of an unbound column again, for the rows on screen.
    virtual void refreshColumn(std::string_view column) = 0;

    // Screen

    /// Position in display order of the uppermost row on screen; 0 without nodes.
    virtual std::int32_t topRow() const = 0;
    /// Scrolls so that this row, or the nearest that is shown, is uppermost, as far as the tree reaches.
    virtual void setTopRow(std::int32_t position) = 0;
    /// Point in twips from the tree's upper left corner.
    virtual TreeHit hitTest(Twips x, Twips y) const = 0;
    /// What is seen of a cell, relative to the tree; nothing when the row is not on screen or the column hidden.
    virtual std::optional<Rect> cell(Node node, std::string_view column) const = 0;
    virtual void update() = 0;

    // Events

    Event<>
        OnChangeNode; ///< the focused node changed (queued key repeats count once), or the tree was bound or cleared
    Event<> OnChangeNodeEx;                            ///< the same, once the focus has come to rest
    Event<MouseButton, int, Twips, Twips> OnMouseDown; ///< button, shift state, position
    Event<Node, const std::string&> OnHyperLink;       ///< node, column name
    Event<Node> OnEdited;                              ///< the user left a cell's editor; its value is in the cell
    Event<Node> OnChangedColumn;                       ///< the focused column changed
    Event<Node, const std::string&> OnLocked;          ///< the user would have edited a cell of this locked column
    Event<Node, int> OnCheckChanged;                   ///< node, new state: 1 checked
    Event<> OnViewMoved; ///< cells stand elsewhere on screen: scrolled, opened or closed, other widths
};

} // namespace contract

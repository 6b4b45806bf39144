#pragma once

#include "contract/TreeList.h"
#include "platform/headless/HeadlessControl.h"
#include "platform/shared/TreeIndex.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// A tree list without a screen, over the same index as the real one.
///
/// Its geometry: two head rows (band, column headers), then the rows that are shown from topRow() on, each rowHeight
/// high; visible columns side by side at their widths.
class HeadlessTree : public HeadlessControl<contract::TreeList> {
public:
    static constexpr contract::Twips rowHeight = 270;

    using HeadlessControl::HeadlessControl;

    void setBandCaption(std::string_view caption) override { bandCaption_ = caption; }
    void addColumn(const contract::TreeColumn& column) override;
    const std::vector<contract::TreeColumn>& columns() const override { return columns_; }
    void setScrollTipColumn(std::string_view column) override { scrollTipColumn_ = column; }
    void setFontName(std::string_view name) override { fontName_ = name; }
    void setColor(contract::TreeColor property, contract::Color color) override;
    void setHeaderColors(contract::Color background, contract::Color text) override;
    void setColumnColors(contract::Color background, contract::Color text) override;
    void setEmptyText(std::string_view text) override { emptyText_ = text; }

    void bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField, std::string_view parentField,
              std::optional<std::int64_t> focusKey) override;
    void clearNodes() override;
    void unbind() override;
    std::shared_ptr<contract::Recordset> records() const override { return records_; }

    std::size_t nodeCount() const override { return index_.size(); }
    contract::Node firstNode() const override;
    contract::Node next(contract::Node node) const override;
    int level(contract::Node node) const override { return index_.level(node.position); }
    contract::Node parent(contract::Node node) const override { return {index_.parent(node.position)}; }
    contract::Node byKey(std::int64_t key) const override { return {index_.find(key)}; }
    std::int64_t key(contract::Node node) const override;
    std::size_t row(contract::Node node) const override;
    std::size_t descendants(contract::Node node) const override;

    contract::Node focused() const override { return focused_; }
    void setFocused(contract::Node node) override;
    void makeVisible(contract::Node node) override;
    void makeVisible(contract::Node node, std::string_view column) override;
    std::string focusedColumn() const override { return focusedColumn_; }
    void setFocusedColumn(std::string_view column) override;

    contract::Value value(contract::Node node, std::string_view column) const override;
    void setValue(contract::Node node, std::string_view column, const contract::Value& value) override;
    std::string fieldOf(std::string_view column) const override;

    bool expanded(contract::Node node) const override;
    void setExpanded(contract::Node node, bool expanded) override;
    void beginUpdate() override { ++updates_; }
    void endUpdate() override;

    void setColumnLocked(std::size_t position, bool locked) override;
    bool columnLocked(std::size_t position) const override;
    void refreshColumn(std::string_view column) override;

    std::int32_t topRow() const override;
    void setTopRow(std::int32_t position) override;
    contract::TreeHit hitTest(contract::Twips x, contract::Twips y) const override;
    std::optional<contract::Rect> cell(contract::Node node, std::string_view column) const override;
    void update() override { ++drawings_; }

    // What was set

    const std::string& bandCaption() const { return bandCaption_; }
    const std::string& scrollTipColumn() const { return scrollTipColumn_; }
    const std::string& fontName() const { return fontName_; }
    const std::string& emptyText() const { return emptyText_; }
    std::optional<contract::Color> color(contract::TreeColor property) const;
    std::optional<std::array<contract::Color, 2>> headerColors() const { return headerColors_; }
    std::optional<std::array<contract::Color, 2>> columnColors() const { return columnColors_; }
    /// How often expansions were laid out, and the tree drawn anew on demand.
    int layouts() const { return layouts_; }
    int drawings() const { return drawings_; }
    /// Rows that fit on the screen under the heads, at least 1; 20 at first.
    std::int32_t screenRows() const { return screenRows_; }
    void setScreenRows(std::int32_t rows) { screenRows_ = rows < 1 ? 1 : rows; }
    /// Positions of the nodes that the expansions show, in display order.
    std::vector<std::int32_t> shown() const;

    /// What drawing does: asks for the texts of state columns for the rows on screen that were not asked for yet.
    void draw();

    // User

    /// Moves the focus as the arrow keys do.
    bool focusNode(contract::Node node);
    /// The same to a node of that key, and to a column; false when there is none.
    bool focusKey(std::int64_t key, std::string_view column = {});
    /// Moves through these nodes faster than the events are processed, as a held arrow key does.
    void focusThrough(const std::vector<contract::Node>& nodes);
    /// The focus has come to rest.
    void settle();

    /// Presses a mouse button over a cell; without a node, below the last one.
    bool pressMouse(contract::MouseButton button, contract::Node node, std::string_view column, int shift = 0);
    /// Presses and releases the left button over a link, with Ctrl held.
    bool clickLink(contract::Node node, std::string_view column);
    /// Gives the cell of the check column a state by the keyboard; nothing happens when it has it.
    bool check(contract::Node node, bool checked);
    /// Opens a cell's editor, types the text (empty clears the cell) and leaves it. False, with nothing typed, where
    /// the column is locked or not editable; false with the cell as it was for a text that is no date.
    bool editCell(contract::Node node, std::string_view column, std::string_view text);
    bool columnEditable(std::string_view column) const;

private:
    std::size_t columnIndex(std::string_view column) const;
    const contract::TreeColumn& columnOf(std::string_view column) const { return columns_[columnIndex(column)]; }
    void moveFocus(contract::Node node);
    void focusChanged();
    /// The focus changed together with what is shown, and has come to rest.
    void focusSettled();
    void syncCursor();
    void expandAncestors(contract::Node node);
    void laidOut();
    std::int32_t shownPosition(std::int32_t position) const;
    void scrollTo(std::int32_t position);
    std::string checkText(std::size_t column, std::size_t row) const;
    const std::string& stateText(std::size_t column, std::size_t row) const;
    std::vector<std::size_t> rowsOnScreen() const;
    void askStates(std::size_t column);

    std::string bandCaption_;
    std::string scrollTipColumn_;
    std::string fontName_;
    std::string emptyText_;
    std::vector<contract::TreeColumn> columns_;
    std::vector<bool> locked_;
    std::map<contract::TreeColor, contract::Color> colors_;
    std::optional<std::array<contract::Color, 2>> headerColors_;
    std::optional<std::array<contract::Color, 2>> columnColors_;

    std::shared_ptr<contract::Recordset> records_;
    std::size_t keyField_ = 0;
    shared::TreeIndex index_;
    std::vector<bool> expanded_; // by position
    contract::Node focused_;
    std::string focusedColumn_;
    std::int32_t topRow_ = 0;
    std::int32_t screenRows_ = 20;
    bool resting_ = true; // OnChangeNodeEx was raised for the last change
    int updates_ = 0;
    bool layoutDue_ = false;
    int layouts_ = 0;
    int drawings_ = 0;

    using Cells = std::map<std::size_t, std::string>; // by row
    std::map<std::size_t, Cells> checks_;             // by column
    mutable std::map<std::size_t, Cells> states_;     // by column
};

} // namespace platform::headless

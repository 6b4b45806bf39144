#pragma once

#include "contract/TreeList.h"
#include "platform/qt/forms/QtControl.h"
#include "platform/qt/tree/TreeFocusEvents.h"
#include "platform/qt/tree/TreeView.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::qt {

/// The tree list over Qt's tree view. Costs no object a node: the widget shows an index over the record set.
class TreeListControl : public QtControl<contract::TreeList>, private TreeViewListener {
public:
    TreeListControl(std::string_view name, QWidget* parent);
    ~TreeListControl() override;

    // contract::TreeList: set-up
    void setBandCaption(std::string_view caption) override;
    void addColumn(const contract::TreeColumn& column) override;
    const std::vector<contract::TreeColumn>& columns() const override;
    void setScrollTipColumn(std::string_view column) override;
    void setFontName(std::string_view name) override;
    void setColor(contract::TreeColor property, contract::Color color) override;
    void setHeaderColors(contract::Color background, contract::Color text) override;
    void setColumnColors(contract::Color background, contract::Color text) override;
    void setEmptyText(std::string_view text) override;

    // contract::TreeList: data
    void bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField, std::string_view parentField,
              std::optional<std::int64_t> focusKey = std::nullopt) override;
    void clearNodes() override;
    void unbind() override;
    std::shared_ptr<contract::Recordset> records() const override;

    // contract::TreeList: nodes
    std::size_t nodeCount() const override;
    contract::Node firstNode() const override;
    contract::Node next(contract::Node node) const override;
    int level(contract::Node node) const override;
    contract::Node parent(contract::Node node) const override;
    contract::Node byKey(std::int64_t key) const override;
    std::int64_t key(contract::Node node) const override;
    std::size_t row(contract::Node node) const override;
    std::size_t descendants(contract::Node node) const override;

    contract::Node focused() const override;
    void setFocused(contract::Node node) override;
    void makeVisible(contract::Node node) override;
    void makeVisible(contract::Node node, std::string_view column) override;
    std::string focusedColumn() const override;
    void setFocusedColumn(std::string_view column) override;

    contract::Value value(contract::Node node, std::string_view column) const override;
    void setValue(contract::Node node, std::string_view column, const contract::Value& value) override;
    std::string fieldOf(std::string_view column) const override;

    bool expanded(contract::Node node) const override;
    void setExpanded(contract::Node node, bool expanded) override;
    void beginUpdate() override;
    void endUpdate() override;

    void setColumnLocked(std::size_t position, bool locked) override;
    bool columnLocked(std::size_t position) const override;
    void refreshColumn(std::string_view column) override;

    // contract::TreeList: screen
    std::int32_t topRow() const override;
    void setTopRow(std::int32_t position) override;
    contract::TreeHit hitTest(contract::Twips x, contract::Twips y) const override;
    std::optional<contract::Rect> cell(contract::Node node, std::string_view column) const override;
    void update() override;

    TreeView& view() const { return *view_; }
    /// Asks for the texts of unbound columns that are still missing, of all nodes in one call a column.
    void fetchAllTexts();

    /// Widths that the user gave to columns, by their names, in pixels at 8 points.
    std::map<QString, double> columnWidths() const;
    /// Gives these columns their widths and takes the user's from the others.
    void setColumnWidths(const std::map<QString, double>& widths);

    // Scriptable
    QJsonObject read() const override;
    QString key(int code, Qt::KeyboardModifiers modifiers) override;
    QString focusNode(qint64 id, const std::optional<QString>& column) override;
    QString mouse(const std::optional<qint64>& id, const QString& column, Qt::MouseButton button) override;
    QString hyperlink(qint64 id, const QString& column) override;
    QString check(qint64 id, int state) override;
    QString edit(qint64 id, const QString& column, const QString& value, bool& editable) override;
    void settle() override;

private:
    // TreeViewListener
    void currentMoved(const QModelIndex& current, const QModelIndex& previous) override;
    void inputBegins() override;
    void inputEnds(bool byKey) override;
    void flushFocus() override;
    void pressBegins(QPoint point) override;
    void pressEnds() override { aim_.reset(); }
    void pressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint point) override;
    void linkClicked(std::int32_t position, int column) override;
    void checkToggled(std::int32_t position, bool checked) override;
    void cellEdited(std::int32_t position) override;
    void cellLocked(std::int32_t position, int column) override;
    void toggleExpanded(std::int32_t position) override;
    void expandByKey(std::int32_t position, int key) override;

    /// The rows that were aimed at are gone.
    void forgetAim() {
        if (aim_)
            aim_->hit = {};
    }
    contract::TreeHit hitAt(contract::Twips x, contract::Twips y) const;
    /// Throws RuntimeError 3265.
    int columnNamed(std::string_view name) const;
    /// Throws RuntimeError 5 for a node that the tree does not have.
    std::int32_t checkedPosition(contract::Node node) const;
    void focusRow(std::int32_t position, std::optional<int> column = std::nullopt);
    /// The node itself when it is shown, else its closed ancestor that is.
    std::int32_t nearestShown(std::int32_t position) const;
    void openAncestors(std::int32_t position);
    /// Brings a cell into view, closed ancestors opened.
    void showCell(std::int32_t position, int column);
    void connectView();
    void viewMoved();
    void applyExpansions();
    void moveRecordsToFocus();
    contract::HitCode hitCode(QPoint point, std::int32_t position, int column) const;

    /// Position of a node by its id, brought into view with its column; sets the reason when there is none.
    std::int32_t locate(qint64 id, const QString& column, int& columnAt, QString& reason);

    TreeView* view_;   // belongs to its parent widget; with it ends the use of the control
    TreeModel* model_; // belongs to the view
    TreeFocusEvents focus_;
    bool changed_ = false; // what is open, since it was laid out last
    int updates_ = 0;
    bool rebinding_ = false;
    /// What stood at a point when the mouse went down there.
    struct Aim {
        contract::Twips x;
        contract::Twips y;
        contract::TreeHit hit;
    };
    std::optional<Aim> aim_;
};

} // namespace platform::qt

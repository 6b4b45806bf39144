#pragma once

#include "component/ControlliGuasti.h"
#include "platform/headless/HeadlessTree.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace prove {

/// A tree that tells of its calls.
class AlberoGuasto : public Guasto<platform::headless::HeadlessTree> {
public:
    using Guasto::Guasto;

    void setBandCaption(std::string_view caption) override {
        const ChiamataControllo chiamata(name(), "setBandCaption");
        HeadlessTree::setBandCaption(caption);
    }
    void addColumn(const contract::TreeColumn& column) override {
        const ChiamataControllo chiamata(name(), std::string("addColumn(") + column.name + ")");
        HeadlessTree::addColumn(column);
    }
    void setScrollTipColumn(std::string_view column) override {
        const ChiamataControllo chiamata(name(), "setScrollTipColumn");
        HeadlessTree::setScrollTipColumn(column);
    }
    void setFontName(std::string_view name) override {
        const ChiamataControllo chiamata(this->name(), "setFontName");
        HeadlessTree::setFontName(name);
    }
    void setColor(contract::TreeColor property, contract::Color color) override {
        const ChiamataControllo chiamata(name(),
                                         std::string("setColor(") + std::to_string(static_cast<int>(property)) + ")");
        HeadlessTree::setColor(property, color);
    }
    void setHeaderColors(contract::Color background, contract::Color text) override {
        const ChiamataControllo chiamata(name(), "setHeaderColors");
        HeadlessTree::setHeaderColors(background, text);
    }
    void setColumnColors(contract::Color background, contract::Color text) override {
        const ChiamataControllo chiamata(name(), "setColumnColors");
        HeadlessTree::setColumnColors(background, text);
    }
    void setEmptyText(std::string_view text) override {
        const ChiamataControllo chiamata(name(), "setEmptyText");
        HeadlessTree::setEmptyText(text);
    }
    void bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField, std::string_view parentField,
              std::optional<std::int64_t> focusKey) override {
        const ChiamataControllo chiamata(name(), "bind");
        HeadlessTree::bind(std::move(records), keyField, parentField, focusKey);
    }
    void clearNodes() override {
        const ChiamataControllo chiamata(name(), "clearNodes");
        HeadlessTree::clearNodes();
    }
    void unbind() override {
        const ChiamataControllo chiamata(name(), "unbind");
        HeadlessTree::unbind();
    }
    void setFocused(contract::Node node) override {
        const ChiamataControllo chiamata(name(), std::string("setFocused(") + std::to_string(node.position) + ")");
        HeadlessTree::setFocused(node);
    }
    void makeVisible(contract::Node node) override {
        const ChiamataControllo chiamata(name(), std::string("makeVisible(") + std::to_string(node.position) + ")");
        HeadlessTree::makeVisible(node);
    }
    void makeVisible(contract::Node node, std::string_view column) override {
        const ChiamataControllo chiamata(name(), std::string("makeVisible(") + std::to_string(node.position) + ")");
        HeadlessTree::makeVisible(node, column);
    }
    contract::Value value(contract::Node node, std::string_view column) const override {
        const ChiamataControllo chiamata(name(), std::string("value(") + std::string(column) + ")");
        return HeadlessTree::value(node, column);
    }
    void setValue(contract::Node node, std::string_view column, const contract::Value& value) override {
        const ChiamataControllo chiamata(name(), std::string("setValue(") + std::to_string(node.position) + " " +
                                                     std::string(column) + ")");
        HeadlessTree::setValue(node, column, value);
    }
    void setExpanded(contract::Node node, bool expanded) override {
        const ChiamataControllo chiamata(name(), std::string("setExpanded(") + std::to_string(node.position) + ")");
        HeadlessTree::setExpanded(node, expanded);
    }
    void beginUpdate() override {
        const ChiamataControllo chiamata(name(), "beginUpdate");
        HeadlessTree::beginUpdate();
    }
    void endUpdate() override {
        const ChiamataControllo chiamata(name(), "endUpdate");
        HeadlessTree::endUpdate();
    }
    void setColumnLocked(std::size_t position, bool locked) override {
        const ChiamataControllo chiamata(name(), "setColumnLocked");
        HeadlessTree::setColumnLocked(position, locked);
    }
    void refreshColumn(std::string_view column) override {
        const ChiamataControllo chiamata(name(), "refreshColumn");
        HeadlessTree::refreshColumn(column);
    }
    void setTopRow(std::int32_t position) override {
        const ChiamataControllo chiamata(name(), "setTopRow");
        HeadlessTree::setTopRow(position);
    }
    contract::TreeHit hitTest(contract::Twips x, contract::Twips y) const override {
        const ChiamataControllo chiamata(name(), "hitTest");
        return HeadlessTree::hitTest(x, y);
    }
    void update() override {
        const ChiamataControllo chiamata(name(), "update");
        HeadlessTree::update();
    }

    void ascolta() {
        avvolgi(OnChangeNode);
        avvolgi(OnChangeNodeEx);
        avvolgi(OnMouseDown);
        avvolgi(OnHyperLink);
        avvolgi(OnEdited);
        avvolgi(OnChangedColumn);
        avvolgi(OnCheckChanged);
        avvolgi(OnLocked);
        avvolgi(OnViewMoved);
    }
};

} // namespace prove

#pragma once

#include "contract/Controls.h"
#include "platform/headless/HeadlessControl.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

// Controls without a screen. What a user can do stands under "User": it raises the events that the widget would raise,
// and answers false, without an event, when the control is hidden or disabled or what was asked is not there.

class HeadlessLabel : public HeadlessCaptioned<contract::Label> {
public:
    using HeadlessCaptioned::HeadlessCaptioned;
};

template <class Interface> class HeadlessFrameOf : public HeadlessCaptioned<Interface> {
public:
    using HeadlessCaptioned<Interface>::HeadlessCaptioned;

    contract::Twips contentTop() const override { return contentTop_; }
    void setContentTop(contract::Twips top) override { contentTop_ = top; }

private:
    contract::Twips contentTop_ = 0;
};

using HeadlessFrame = HeadlessFrameOf<contract::Frame>;
using HeadlessGroupBox = HeadlessFrameOf<contract::GroupBox>;
using HeadlessBackdrop = HeadlessControl<contract::Backdrop>;

class HeadlessButton : public HeadlessCaptioned<contract::Button> {
public:
    using HeadlessCaptioned::HeadlessCaptioned;

    void setIcon(contract::Icon icon) override { icon_ = icon; }
    void setPrimary(bool primary) override { primary_ = primary; }
    contract::Icon icon() const { return icon_; }
    bool primary() const { return primary_; }

    // User

    bool click();

private:
    contract::Icon icon_ = contract::Icon::none;
    bool primary_ = false;
};

class HeadlessMenuButton : public HeadlessCaptioned<contract::MenuButton> {
public:
    using HeadlessCaptioned::HeadlessCaptioned;

    void addItem(std::string_view key, std::string_view caption) override;
    std::vector<std::string> itemKeys() const override;
    /// Throws RuntimeError 3265 when there is no such item.
    const std::string& itemCaption(std::string_view key) const;

    // User

    bool choose(std::string_view key);

private:
    std::vector<std::pair<std::string, std::string>> items_;
};

/// A text field, for the interface of a plain one and of those that extend it.
template <class Interface> class HeadlessTextFieldOf : public HeadlessCaptioned<Interface> {
public:
    using HeadlessCaptioned<Interface>::HeadlessCaptioned;

    std::string text() const override { return text_; }
    void setText(std::string_view text) override { text_ = text; }
    void setPlaceholder(std::string_view text) override { placeholder_ = text; }
    const std::string& placeholder() const { return placeholder_; }

    /// Told after each change by the user; a data-entry frame's.
    std::function<void()> touched;

    // User

    /// Replaces the text.
    bool type(std::string_view text) {
        if (!this->usable())
            return false;
        this->setFocus();
        setText(text);
        if (touched)
            touched();
        return true;
    }
    /// Presses a key; 13 is Enter.
    bool press(int code) {
        if (!this->usable())
            return false;
        this->setFocus();
        contract::fire(this->KeyPress, code);
        return true;
    }

private:
    std::string text_;
    std::string placeholder_;
};

using HeadlessTextField = HeadlessTextFieldOf<contract::TextField>;

class HeadlessPopupMenu : public contract::PopupMenu {
public:
    explicit HeadlessPopupMenu(std::string_view name) : name_(name) {}

    const std::string& name() const override { return name_; }
    void addItem(const contract::PopupItem& item) override;
    /// Throws RuntimeError 3265 when there is no such item.
    void setItemEnabled(std::string_view item, bool enabled) override;
    void showAtMouse() override { open_ = true; }

    std::vector<contract::PopupItem> items() const;
    bool itemEnabled(std::string_view item) const;
    bool isOpen() const { return open_; }

    // User

    /// Chooses an item of the open menu, which closes first.
    bool choose(std::string_view item);
    void dismiss() { open_ = false; }

private:
    struct Entry {
        contract::PopupItem item;
        bool enabled = true;
    };
    Entry& entry(std::string_view item);

    std::string name_;
    std::vector<Entry> entries_;
    bool open_ = false;
};

class HeadlessDetailGrid : public HeadlessControl<contract::DetailGrid> {
public:
    using HeadlessControl::HeadlessControl;

    void clear() override { rows_.clear(); }
    void setRowCount(std::size_t rows) override { rows_.resize(rows); }
    std::size_t rowCount() const override { return rows_.size(); }
    void setCell(std::size_t row, std::size_t column, std::string_view text) override;
    std::string cell(std::size_t row, std::size_t column) const override;
    void setRowHeight(std::size_t row, contract::Twips height) override;
    void setColumnWidth(std::size_t column, contract::Twips width) override;

    void setFontName(std::string_view name) override { fontName_ = name; }
    void setHighLightColor(contract::Color color) override { highLight_ = color; }
    void setTextColor(contract::Color color) override { text_ = color; }
    void setFixedColor(contract::Color color) override { fixed_ = color; }

    contract::Twips rowHeight(std::size_t row) const;
    contract::Twips columnWidth(std::size_t column) const;
    const std::string& fontName() const { return fontName_; }
    std::optional<contract::Color> highLightColor() const { return highLight_; }
    std::optional<contract::Color> textColor() const { return text_; }
    std::optional<contract::Color> fixedColor() const { return fixed_; }

private:
    struct Row {
        std::array<std::string, 2> cells;
        contract::Twips height = 0;
    };
    Row& at(std::size_t row, std::size_t column);

    std::vector<Row> rows_;
    std::array<contract::Twips, 2> widths_{};
    std::string fontName_;
    std::optional<contract::Color> highLight_;
    std::optional<contract::Color> text_;
    std::optional<contract::Color> fixed_;
};

class HeadlessSplitter : public HeadlessControl<contract::Splitter> {
public:
    using HeadlessControl::HeadlessControl;

    void setUp(const Settings& settings) override;
    const Settings& settings() const override { return settings_; }
    void setBar(const contract::Rect& bar) override { bar_ = bar; }
    const contract::Rect& bar() const { return bar_; }

    double share() const override { return share_; }
    /// Kept within [0, 100].
    void setShare(double percent) override;

    // User

    bool drag(double percent);

private:
    Settings settings_;
    contract::Rect bar_;
    double share_ = 50;
};

} // namespace platform::headless

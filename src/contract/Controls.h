#pragma once

#include "contract/Control.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

/// A control that shows a caption. "&" marks the mnemonic of the letter after it.
class Captioned : public Control {
public:
    virtual std::string caption() const = 0;
    virtual void setCaption(std::string_view caption) = 0;
};

class Label : public Captioned {
public:
    /// Drawn as the title of the part of the form that it heads.
    virtual void setHeading(bool heading) { static_cast<void>(heading); }
};

/// A panel in which other controls stand. With a caption it draws none itself; a GroupBox does.
class Frame : public Captioned {
public:
    /// Vertical position, from the frame's upper edge, at which the content under its heads begins; 0 at first.
    virtual Twips contentTop() const = 0;
    virtual void setContentTop(Twips top) = 0;
};

/// A frame with a visible caption and border.
class GroupBox : public Frame {};

/// A plain surface behind other controls.
class Backdrop : public Control {};

/// Vector images that buttons may show, by what the button does.
enum class Icon : std::uint8_t { none, moveStructure, moveValidity, parameters, panelLeft, panelRight, search, levels };

class Button : public Captioned {
public:
    virtual void setIcon(Icon icon) = 0;
    /// One of the buttons that the form is there for: drawn with the accent colour.
    virtual void setPrimary(bool primary) = 0;

    Event<> ButtonClick;
};

/// A button that opens a list of items.
class MenuButton : public Captioned {
public:
    /// Items stand in the order in which they were added; keys are unique (RuntimeError 457 otherwise).
    virtual void addItem(std::string_view key, std::string_view caption) = 0;
    virtual std::vector<std::string> itemKeys() const = 0;

    /// Key of the item chosen.
    Event<const std::string&> MenuClick;
};

/// One line of text.
class TextField : public Captioned {
public:
    virtual std::string text() const = 0;
    virtual void setText(std::string_view text) = 0;
    /// Shown greyed in the empty field.
    virtual void setPlaceholder(std::string_view text) = 0;

    /// Character code of a key pressed in the field; 13 is Enter.
    Event<int> KeyPress;
};

struct PopupItem {
    std::string name;
    std::string caption;
};

/// A context menu.
class PopupMenu {
public:
    PopupMenu() = default;
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;
    virtual ~PopupMenu() = default;

    virtual const std::string& name() const = 0;
    virtual void addItem(const PopupItem& item) = 0;
    virtual void setItemEnabled(std::string_view item, bool enabled) = 0;
    /// Opens at the mouse, or at the focused cell when the keyboard asked for it; does not wait for the choice.
    virtual void showAtMouse() = 0;

    /// Name of the item chosen.
    Event<const std::string&> Click;
};

/// An entry of a type list.
struct TypeEntry {
    std::string key;
    std::string text;
    std::string parent; ///< key of the entry above, empty for none
    std::string image;
    std::string selectedImage;
};

/// A small tree of texts with images, all of it open.
class TypeList : public Control {
public:
    virtual void clear() = 0;
    /// Entries of one parent keep the order in which they were added. Throws RuntimeError 457 for a key that exists,
    /// RuntimeError 35601 for a parent that does not.
    virtual void add(const TypeEntry& entry) = 0;
    /// In the order in which they were added.
    virtual std::size_t count() const = 0;
    /// By position counted from 1, in display order. Throws RuntimeError 35600 outside [1, count()].
    virtual TypeEntry entry(std::size_t position) const = 0;
    /// Throws RuntimeError 35601 when there is none.
    virtual TypeEntry entry(std::string_view key) const = 0;
    virtual void refresh() = 0;

    virtual std::optional<TypeEntry> selected() const = 0;
    /// By position counted from 1, in display order; raises no event. Throws RuntimeError 35600 outside the bounds.
    virtual void select(std::size_t position) = 0;

    /// The user clicked an entry or chose one with the keyboard; it is the selected one.
    Event<> Click;
};

/// A grid of texts in two columns: names left (fixed), values right.
class DetailGrid : public Control {
public:
    virtual void clear() = 0; ///< empties the cells and removes the rows
    virtual void setRowCount(std::size_t rows) = 0;
    virtual std::size_t rowCount() const = 0;
    /// Row from 0, column 0 or 1. Throws RuntimeError 30009 outside the bounds.
    virtual void setCell(std::size_t row, std::size_t column, std::string_view text) = 0;
    virtual std::string cell(std::size_t row, std::size_t column) const = 0;
    virtual void setRowHeight(std::size_t row, Twips height) = 0;
    virtual void setColumnWidth(std::size_t column, Twips width) = 0;

    virtual void setFontName(std::string_view name) = 0;
    virtual void setHighLightColor(Color color) = 0;
    virtual void setTextColor(Color color) = 0;
    virtual void setFixedColor(Color color) = 0;
};

/// A bar between two panes of which it says how they share their room; the form's layout places the panes.
class Splitter : public Control {
public:
    struct Settings {
        std::string firstPane;   ///< control name
        std::string secondPane;  ///< control name
        Twips firstLimit = 0;    ///< least size of the first pane
        Twips secondLimit = 0;   ///< least size of the second pane
        int start = 50;          ///< share of the first pane, in percent of the room of both
        bool liveDrag = false;   ///< the panes follow while the bar is dragged
        bool sideBySide = false; ///< the panes stand side by side; otherwise one above the other
        bool locked = false;     ///< the bar can not be moved
        bool keepShare = true;   ///< the share stays when the room grows or shrinks
        Color barColor = 0;
        Twips barSize = 0;
    };

    virtual void setUp(const Settings& settings) = 0;
    virtual const Settings& settings() const = 0;

    /// bounds() is the area of both panes; this is where in it the bar is drawn, set by the form's layout.
    virtual void setBar(const Rect& bar) = 0;

    /// Share of the first pane in percent [0, 100].
    virtual double share() const = 0;
    virtual void setShare(double percent) = 0;

    /// The user moved the bar: share() has changed.
    Event<> Move;
};

/// Scales the registered controls with their form, and everything with the zoom.
///
/// A mode code is a sum: 1 the width follows the form's width, 2 the left edge follows the form's width, 4 the top
/// edge follows the form's height, 8 the height follows the form's height. The form's own layout runs afterwards.
class ResizeControl : public Control {
public:
    /// Takes the form's present size as the one to scale from, then raises Setup.
    virtual void setUp() = 0;
    virtual void registerControl(Control& control, int mode) = 0;
    /// Mode of a registered control, nothing for one that is not.
    virtual std::optional<int> mode(std::string_view control) const = 0;

    /// Font size in points: 8, 10, 12 or 14.
    virtual int zoom() const = 0;
    virtual void setZoom(int points) = 0;
    /// A measure made for 8 points, at the zoom.
    virtual Twips scaled(Twips measure) const = 0;

    Event<> Setup;       ///< the moment to register controls
    Event<> AfterResize; ///< the form's size or the zoom changed
};

/// The host's container in which a form stands.
class MdiContainer : public Control {
public:
    virtual void place(const Rect& bounds) = 0;
    /// 0 normal, 1 minimised, 2 maximised.
    virtual void setWindowState(int state) = 0;
    virtual int windowState() const = 0;

    Event<> FormLoad;
};

} // namespace contract

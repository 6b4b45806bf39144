#pragma once

#include "component/Guasti.h"
#include "platform/headless/HeadlessDataFrame.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HeadlessTypeList.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

// The controls without a screen, which tell the recorder of every call that does something; what only reads is told of
// where it can fail. Their listeners run as the component's.

/// One call of a control: told of when it begins, the control's own business until it ends.
class ChiamataControllo {
public:
    ChiamataControllo(const std::string& controllo, std::string_view operazione) {
        if (auto* guasti = Guasti::corrente())
            guasti->chiamata(controllo + "." + std::string(operazione));
        tratto_.emplace(false);
    }

private:
    std::optional<Guasti::Tratto> tratto_;
};

template <class... Argomenti> void avvolgi(contract::Event<Argomenti...>& evento) {
    if (evento)
        evento = [ascolta = evento](Argomenti... argomenti) {
            const Guasti::Tratto tratto(true);
            ascolta(argomenti...);
        };
}

/// What every control offers.
template <class Base> class Guasto : public Base {
public:
    using Base::Base;

    void setBounds(const contract::Rect& bounds) override {
        const ChiamataControllo chiamata(this->name(), "setBounds");
        Base::setBounds(bounds);
    }
    void setVisible(bool visible) override {
        const ChiamataControllo chiamata(this->name(), visible ? "setVisible(true)" : "setVisible(false)");
        Base::setVisible(visible);
    }
    void setEnabled(bool enabled) override {
        const ChiamataControllo chiamata(this->name(), "setEnabled");
        Base::setEnabled(enabled);
    }
    void setFocus() override {
        const ChiamataControllo chiamata(this->name(), "setFocus");
        Base::setFocus();
    }
};

/// The same with a caption.
template <class Base> class GuastoTitolato : public Guasto<Base> {
public:
    using Guasto<Base>::Guasto;

    void setCaption(std::string_view caption) override {
        const ChiamataControllo chiamata(this->name(), "setCaption");
        Base::setCaption(caption);
    }
};

class CorniceGuasta : public GuastoTitolato<platform::headless::HeadlessFrame> {
public:
    using GuastoTitolato::GuastoTitolato;

    void setContentTop(contract::Twips top) override {
        const ChiamataControllo chiamata(name(), "setContentTop");
        platform::headless::HeadlessFrame::setContentTop(top);
    }
};

class PulsanteGuasto : public GuastoTitolato<platform::headless::HeadlessButton> {
public:
    using GuastoTitolato::GuastoTitolato;

    void ascolta() { avvolgi(ButtonClick); }
};

class MenuGuasto : public GuastoTitolato<platform::headless::HeadlessMenuButton> {
public:
    using GuastoTitolato::GuastoTitolato;

    void addItem(std::string_view key, std::string_view caption) override {
        const ChiamataControllo chiamata(name(), std::string("addItem(") + std::string(key) + ")");
        HeadlessMenuButton::addItem(key, caption);
    }

    void ascolta() { avvolgi(MenuClick); }
};

class TestoGuasto : public GuastoTitolato<platform::headless::HeadlessTextField> {
public:
    using GuastoTitolato::GuastoTitolato;

    std::string text() const override {
        const ChiamataControllo chiamata(name(), "text");
        return platform::headless::HeadlessTextField::text();
    }
    void setText(std::string_view text) override {
        const ChiamataControllo chiamata(name(), "setText");
        platform::headless::HeadlessTextField::setText(text);
    }

    void ascolta() { avvolgi(KeyPress); }
};

class RicercaGuasta : public GuastoTitolato<platform::headless::HeadlessLookupField> {
public:
    using GuastoTitolato::GuastoTitolato;

    void setText(std::string_view text) override {
        const ChiamataControllo chiamata(name(), "setText");
        HeadlessLookupField::setText(text);
    }

    void ascolta() {
        avvolgi(Lookup);
        avvolgi(Decode);
    }
};

class DataGuasta : public Guasto<platform::headless::HeadlessDateField> {
public:
    using Guasto::Guasto;

    std::string text() const override {
        const ChiamataControllo chiamata(name(), "text");
        return HeadlessDateField::text();
    }
    void setText(std::string_view text) override {
        const ChiamataControllo chiamata(name(), "setText");
        HeadlessDateField::setText(text);
    }
    bool hasValidDate() const override {
        const ChiamataControllo chiamata(name(), "hasValidDate");
        return HeadlessDateField::hasValidDate();
    }
};

class ComboGuasta : public Guasto<platform::headless::HeadlessComboBox> {
public:
    using Guasto::Guasto;

    void addItem(std::string_view text) override {
        const ChiamataControllo chiamata(name(), std::string("addItem(") + std::string(text) + ")");
        HeadlessComboBox::addItem(text);
    }

    void ascolta() { avvolgi(Change); }
};

class TipiGuasti : public Guasto<platform::headless::HeadlessTypeList> {
public:
    using Guasto::Guasto;

    void clear() override {
        const ChiamataControllo chiamata(name(), "clear");
        HeadlessTypeList::clear();
    }
    void add(const contract::TypeEntry& entry) override {
        const ChiamataControllo chiamata(name(), std::string("add(") + entry.key + ")");
        HeadlessTypeList::add(entry);
    }
    void refresh() override {
        const ChiamataControllo chiamata(name(), "refresh");
        HeadlessTypeList::refresh();
    }
    std::optional<contract::TypeEntry> selected() const override {
        const ChiamataControllo chiamata(name(), "selected");
        return HeadlessTypeList::selected();
    }
    void select(std::size_t position) override {
        const ChiamataControllo chiamata(name(), "select(2)");
        HeadlessTypeList::select(position);
    }

    void ascolta() { avvolgi(Click); }
};

class GrigliaGuasta : public Guasto<platform::headless::HeadlessDetailGrid> {
public:
    using Guasto::Guasto;

    void clear() override {
        const ChiamataControllo chiamata(name(), "clear");
        HeadlessDetailGrid::clear();
    }
    void setRowCount(std::size_t rows) override {
        const ChiamataControllo chiamata(name(), "setRowCount");
        HeadlessDetailGrid::setRowCount(rows);
    }
    void setCell(std::size_t row, std::size_t column, std::string_view text) override {
        const ChiamataControllo chiamata(name(), std::string("setCell(") + std::to_string(row) + " " +
                                                     std::to_string(column) + ")");
        HeadlessDetailGrid::setCell(row, column, text);
    }
    void setRowHeight(std::size_t row, contract::Twips height) override {
        const ChiamataControllo chiamata(name(), std::string("setRowHeight(") + std::to_string(row) + ")");
        HeadlessDetailGrid::setRowHeight(row, height);
    }
    void setColumnWidth(std::size_t column, contract::Twips width) override {
        const ChiamataControllo chiamata(name(), "setColumnWidth");
        HeadlessDetailGrid::setColumnWidth(column, width);
    }
    void setFontName(std::string_view name) override {
        const ChiamataControllo chiamata(this->name(), "setFontName");
        HeadlessDetailGrid::setFontName(name);
    }
    void setHighLightColor(contract::Color color) override {
        const ChiamataControllo chiamata(name(), "setHighLightColor");
        HeadlessDetailGrid::setHighLightColor(color);
    }
    void setTextColor(contract::Color color) override {
        const ChiamataControllo chiamata(name(), "setTextColor");
        HeadlessDetailGrid::setTextColor(color);
    }
    void setFixedColor(contract::Color color) override {
        const ChiamataControllo chiamata(name(), "setFixedColor");
        HeadlessDetailGrid::setFixedColor(color);
    }
};

class DivisorioGuasto : public Guasto<platform::headless::HeadlessSplitter> {
public:
    using Guasto::Guasto;

    void setUp(const Settings& settings) override {
        const ChiamataControllo chiamata(name(), "setUp");
        HeadlessSplitter::setUp(settings);
    }
    void setBar(const contract::Rect& bar) override {
        const ChiamataControllo chiamata(name(), "setBar");
        HeadlessSplitter::setBar(bar);
    }
    void setShare(double percent) override {
        const ChiamataControllo chiamata(name(), "setShare");
        HeadlessSplitter::setShare(percent);
    }

    void ascolta() { avvolgi(Move); }
};

class AdattatoreGuasto : public Guasto<platform::headless::HeadlessResizeControl> {
public:
    using Guasto::Guasto;

    void setUp() override {
        const ChiamataControllo chiamata(name(), "setUp");
        HeadlessResizeControl::setUp();
    }
    void registerControl(contract::Control& control, int mode) override {
        const ChiamataControllo chiamata(name(), std::string("registerControl(") + control.name() + ")");
        HeadlessResizeControl::registerControl(control, mode);
    }
    void setZoom(int points) override {
        const ChiamataControllo chiamata(name(), "setZoom");
        HeadlessResizeControl::setZoom(points);
    }

    void ascolta() {
        avvolgi(Setup);
        avvolgi(AfterResize);
    }
};

class ContenitoreGuasto : public Guasto<platform::headless::HeadlessMdiContainer> {
public:
    using Guasto::Guasto;

    void place(const contract::Rect& bounds) override {
        const ChiamataControllo chiamata(name(), "place");
        HeadlessMdiContainer::place(bounds);
    }
    void setWindowState(int state) override {
        const ChiamataControllo chiamata(name(), "setWindowState");
        HeadlessMdiContainer::setWindowState(state);
    }

    void ascolta() { avvolgi(FormLoad); }
};

class FrameGuasto : public GuastoTitolato<platform::headless::HeadlessDataFrame> {
public:
    using GuastoTitolato::GuastoTitolato;

    void bindField(contract::DateField& control, std::string_view field) override {
        const ChiamataControllo chiamata(name(), std::string("bindField(") + std::string(field) + ")");
        HeadlessDataFrame::bindField(control, field);
    }
    void bindField(contract::ComboBox& control, std::string_view field) override {
        const ChiamataControllo chiamata(name(), std::string("bindField(") + std::string(field) + ")");
        HeadlessDataFrame::bindField(control, field);
    }
    void bindField(contract::CheckBox& control, std::string_view field) override {
        const ChiamataControllo chiamata(name(), std::string("bindField(") + std::string(field) + ")");
        HeadlessDataFrame::bindField(control, field);
    }
    void bindField(contract::TextField& control, std::string_view field) override {
        const ChiamataControllo chiamata(name(), std::string("bindField(") + std::string(field) + ")");
        HeadlessDataFrame::bindField(control, field);
    }
    void setTable(std::string_view table, const std::vector<std::string>& keyColumns) override {
        const ChiamataControllo chiamata(name(), "setTable");
        HeadlessDataFrame::setTable(table, keyColumns);
    }
    void setDefault(std::string_view field, const contract::Value& value) override {
        const ChiamataControllo chiamata(name(), std::string("setDefault(") + std::string(field) + ")");
        HeadlessDataFrame::setDefault(field, value);
    }
    void setRecordValue(std::string_view field, const contract::Value& value) override {
        const ChiamataControllo chiamata(name(), "setRecordValue");
        HeadlessDataFrame::setRecordValue(field, value);
    }
    void show() override {
        const ChiamataControllo chiamata(name(), "show");
        HeadlessDataFrame::show();
    }

    void ascolta() {
        avvolgi(BeforeUpdate);
        avvolgi(ChangeStatus);
    }
};

class NavigatoreGuasto : public Guasto<platform::headless::HeadlessGridNavigator> {
public:
    using Guasto::Guasto;

    void bind(contract::DataFrame& frame) override {
        const ChiamataControllo chiamata(name(), "bind");
        HeadlessGridNavigator::bind(frame);
    }
    void setAllowInsert(bool allowed) override {
        const ChiamataControllo chiamata(name(), allowed ? "setAllowInsert(true)" : "setAllowInsert(false)");
        HeadlessGridNavigator::setAllowInsert(allowed);
    }
    void setAllowDelete(bool allowed) override {
        const ChiamataControllo chiamata(name(), allowed ? "setAllowDelete(true)" : "setAllowDelete(false)");
        HeadlessGridNavigator::setAllowDelete(allowed);
    }
    void setAskBeforeMove(bool ask) override {
        const ChiamataControllo chiamata(name(), "setAskBeforeMove");
        HeadlessGridNavigator::setAskBeforeMove(ask);
    }
    void release() override {
        const ChiamataControllo chiamata(name(), "release");
        HeadlessGridNavigator::release();
    }
};

class StatoGuasto : public GuastoTitolato<platform::headless::HeadlessWorkflowField> {
public:
    using GuastoTitolato::GuastoTitolato;

    void setObject(std::shared_ptr<contract::WorkflowState> object) override {
        const ChiamataControllo chiamata(name(), "setObject");
        HeadlessWorkflowField::setObject(std::move(object));
    }
    void setValue(std::string_view guid) override {
        const ChiamataControllo chiamata(name(), "setValue");
        HeadlessWorkflowField::setValue(guid);
    }
    void sendKeys(std::string_view keys) override {
        const ChiamataControllo chiamata(name(), "sendKeys");
        HeadlessWorkflowField::sendKeys(keys);
    }
    bool stateChosen() const override {
        const ChiamataControllo chiamata(name(), "stateChosen");
        return HeadlessWorkflowField::stateChosen();
    }

    void ascolta() { avvolgi(AfterItem); }
};

class PopupGuasto : public platform::headless::HeadlessPopupMenu {
public:
    using HeadlessPopupMenu::HeadlessPopupMenu;

    void showAtMouse() override {
        const ChiamataControllo chiamata(name(), "showAtMouse");
        HeadlessPopupMenu::showAtMouse();
    }

    void ascolta() { avvolgi(Click); }
};

} // namespace prove

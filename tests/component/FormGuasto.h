#pragma once

#include "component/AlberoGuasto.h"
#include "component/ControlliGuasti.h"
#include "platform/headless/HeadlessForm.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace prove {

/// A form of such controls.
class FormGuasto : public platform::headless::HeadlessForm {
public:
    using HeadlessForm::HeadlessForm;

    void setBounds(const contract::Rect& bounds) override {
        const ChiamataControllo chiamata(name(), "setBounds");
        HeadlessForm::setBounds(bounds);
    }
    void show(bool modal) override {
        if (auto* guasti = Guasti::corrente())
            guasti->costruisce(false);
        const ChiamataControllo chiamata(name(), "show");
        for (const auto& ascolto : ascolti_)
            ascolto();
        ascolti_.clear();
        avvolgi(Load);
        avvolgi(Activate);
        avvolgi(QueryUnload);
        avvolgi(Unload);
        HeadlessForm::show(modal);
    }
    bool unload() override {
        const ChiamataControllo chiamata(name(), "unload");
        return HeadlessForm::unload();
    }
    void lockUpdate(bool locked) override {
        const ChiamataControllo chiamata(name(), locked ? "lockUpdate(true)" : "lockUpdate(false)");
        HeadlessForm::lockUpdate(locked);
    }
    void processEvents() override {
        const ChiamataControllo chiamata(name(), "processEvents");
        HeadlessForm::processEvents();
    }

    contract::Frame& addFrame(std::string_view name, contract::Control* parent) override {
        return add<CorniceGuasta>(name, parent);
    }
    contract::GroupBox& addGroupBox(std::string_view name, contract::Control* parent) override {
        return add<GuastoTitolato<platform::headless::HeadlessGroupBox>>(name, parent);
    }
    contract::Backdrop& addBackdrop(std::string_view name, contract::Control* parent) override {
        return add<Guasto<platform::headless::HeadlessBackdrop>>(name, parent);
    }
    contract::Label& addLabel(std::string_view name, contract::Control* parent) override {
        return add<GuastoTitolato<platform::headless::HeadlessLabel>>(name, parent);
    }
    contract::Button& addButton(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<PulsanteGuasto>(name, parent));
    }
    contract::MenuButton& addMenuButton(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<MenuGuasto>(name, parent));
    }
    contract::TextField& addTextField(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<TestoGuasto>(name, parent));
    }
    contract::DateField& addDateField(std::string_view name, contract::Control* parent) override {
        return add<DataGuasta>(name, parent);
    }
    contract::ComboBox& addComboBox(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<ComboGuasta>(name, parent));
    }
    contract::LookupField& addLookupField(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<RicercaGuasta>(name, parent));
    }
    contract::TypeList& addTypeList(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<TipiGuasti>(name, parent));
    }
    contract::TreeList& addTreeList(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<AlberoGuasto>(name, parent));
    }
    contract::DetailGrid& addDetailGrid(std::string_view name, contract::Control* parent) override {
        return add<GrigliaGuasta>(name, parent);
    }
    contract::Splitter& addSplitter(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<DivisorioGuasto>(name, parent));
    }
    contract::DataFrame& addDataFrame(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<FrameGuasto>(name, parent, factory().sharedJournal()));
    }
    contract::GridNavigator& addGridNavigator(std::string_view name, contract::Control* parent) override {
        return add<NavigatoreGuasto>(name, parent);
    }
    contract::WorkflowStateField& addWorkflowStateField(std::string_view name, contract::Control* parent) override {
        return ascoltato(add<StatoGuasto>(name, parent));
    }
    contract::ResizeControl& addResizeControl(std::string_view name) override {
        return useResizeControl(ascoltato(add<AdattatoreGuasto>(name, nullptr, *this, factory().zoom())));
    }
    contract::MdiContainer& addMdiContainer(std::string_view name) override {
        return useMdiContainer(ascoltato(add<ContenitoreGuasto>(name, nullptr, *this)));
    }
    contract::PopupMenu& addPopupMenu(std::string_view name) override {
        auto menu = std::make_unique<PopupGuasto>(name);
        ascoltato(*menu);
        return addMenu(std::move(menu));
    }

private:
    template <class Controllo> Controllo& ascoltato(Controllo& controllo) {
        ascolti_.emplace_back([&controllo] { controllo.ascolta(); });
        return controllo;
    }

    std::vector<std::function<void()>> ascolti_; // done when the form is shown, with its listeners in their places
};

/// Makes such forms.
class FabbricaGuasta : public platform::headless::HeadlessFactory {
public:
    using HeadlessFactory::HeadlessFactory;

    std::unique_ptr<contract::Form> newDocumentForm(std::string_view name) override {
        return std::make_unique<FormGuasto>(name, false, *this);
    }
    std::unique_ptr<contract::Form> newDialog(std::string_view name) override {
        if (auto* guasti = Guasti::corrente())
            guasti->costruisce(true);
        return std::make_unique<FormGuasto>(name, true, *this);
    }
};

} // namespace prove

#pragma once

#include "component/plugin/AnteprimaPlugin.h"
#include "component/plugin/ClasseConfronto.h"
#include "component/plugin/ClasseVerifica.h"
#include "component/plugin/ElenchiPlugin.h"
#include "component/plugin/PortaRegistro.h"
#include "contract/Cinterface.h"
#include "contract/Host.h"
#include "contract/MoveSettings.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qz {

class FRMQZ_COPIADISTINTA;

/// The component's public class: the host creates it, sets its context through the properties and asks it to show or
/// close the main form. No member throws; errors are swallowed and a member then gives its default.
class CLSQZ_COPIADISTINTA : public contract::PluginClass,
                            public contract::Cinterface,
                            public contract::ActiveNavigator,
                            public contract::MoveSettings,
                            public ClasseVerifica,
                            public ClasseConfronto,
                            public AnteprimaPlugin,
                            public ElenchiPlugin,
                            public PortaRegistro {
public:
    CLSQZ_COPIADISTINTA();
    ~CLSQZ_COPIADISTINTA() override;

    contract::Cinterface& plugin() override { return *this; }
    contract::ActiveNavigator& navigator() override { return *this; }

    contract::Cinterface* ActiveDll() const override { return activeDll_; }
    void ActiveDll(contract::Cinterface* object) override { activeDll_ = object; }
    std::shared_ptr<contract::ActiveFrame> ActiveFrame() const override { return activeFrame_; }
    void ActiveFrame(std::shared_ptr<contract::ActiveFrame> object) override { activeFrame_ = std::move(object); }
    std::shared_ptr<contract::Navigator> ActiveNavigator() const override { return navigatore(); }
    void ActiveNavigator(std::shared_ptr<contract::Navigator> object) override { navigatore(std::move(object)); }
    bool CanDelete() const override { return canDelete_; }
    void CanDelete(bool value) override { canDelete_ = value; }
    bool CanInsert() const override { return canInsert_; }
    void CanInsert(bool value) override { canInsert_ = value; }
    bool CanQbe() const override { return canQbe_; }
    void CanQbe(bool value) override { canQbe_ = value; }
    bool CanUpdate() const override { return canUpdate_; }
    void CanUpdate(bool value) override { canUpdate_ = value; }
    contract::Value Caption() const override { return caption_; }
    void Caption(const contract::Value& value) override { caption_ = value; }
    std::shared_ptr<contract::ClsGlobal> ClsGlobal() const override { return clsGlobal_; }
    void ClsGlobal(std::shared_ptr<contract::ClsGlobal> object) override { clsGlobal_ = std::move(object); }
    std::shared_ptr<contract::Connection> Connection() const override { return connection_; }
    void Connection(std::shared_ptr<contract::Connection> object) override { connection_ = std::move(object); }
    std::shared_ptr<contract::HostObject> Cwindow() const override { return finestra(); }
    contract::Value Filtro() const override { return {}; }
    void Filtro(const contract::Value&) override {}
    std::int32_t hwndParent() const override { return hwndParent_; }
    void hwndParent(std::int32_t value) override { hwndParent_ = value; }
    bool IsCalled() const override { return isCalled_; }
    void IsCalled(bool value) override { isCalled_ = value; }
    contract::Value MenuModulo() const override { return menuModulo_; }
    void MenuModulo(const contract::Value& value) override { menuModulo_ = value; }
    contract::Value MenuPadre() const override { return menuPadre_; }
    void MenuPadre(const contract::Value& value) override { menuPadre_ = value; }
    contract::Value MenuProg() const override { return menuProg_; }
    void MenuProg(const contract::Value& value) override { menuProg_ = value; }
    std::int16_t ProgramMode() const override { return programMode_; }
    void ProgramMode(std::int32_t value) override { programMode_ = static_cast<std::int16_t>(value); }
    std::shared_ptr<contract::StatusBar> StatusBar() const override { return statusBar_; }
    void StatusBar(std::shared_ptr<contract::StatusBar> object) override { statusBar_ = std::move(object); }
    bool WindowModal() const override { return windowModal_; }
    void WindowModal(bool value) override { windowModal_ = value; }
    std::int16_t WindowState() const override { return windowState_; }
    void WindowState(std::int16_t value) override { windowState_ = value; }
    contract::Value Top() const override { return top_; }
    void Top(std::int32_t value) override { top_ = value; }
    contract::Value Left() const override { return left_; }
    void Left(std::int32_t value) override { left_ = value; }
    bool IsActive() const override { return isActive_; }
    void IsActive(bool value) override { isActive_ = value; }
    std::shared_ptr<contract::HostObject> ClsVoceMenu() const override { return clsVoceMenu_; }
    void ClsVoceMenu(std::shared_ptr<contract::HostObject> object) override { clsVoceMenu_ = std::move(object); }

    std::int32_t NodiPerBlocchi() const override { return nodiPerBlocchi_; }
    void NodiPerBlocchi(std::int32_t value) override;

    contract::Value ShowForm() override;
    contract::Value CloseForm() override;
    contract::Value TransferData(const contract::Value& data) override;

    void BeforeExportToOffice(std::shared_ptr<contract::HostObject> model) override;
    void InitializeLayoutObjectModel(std::shared_ptr<contract::LayoutObjectModel> model) override;
    void InitializeScriptObjectModel(std::shared_ptr<contract::ScriptObjectModel> model) override;

    /// The host window object of the class; nothing in the component sets one.
    std::shared_ptr<contract::HostObject> finestra() const { return finestra_; }
    virtual void finestra(std::shared_ptr<contract::HostObject> object) { finestra_ = std::move(object); }
    std::shared_ptr<contract::Navigator> navigatore() const { return navigatore_; }
    virtual void navigatore(std::shared_ptr<contract::Navigator> object) { navigatore_ = std::move(object); }

    void DestroyClass() override;
    /// The end of the class's life: releases everything, and shows the error that the release could not show itself.
    /// Destruction calls it.
    void Class_Terminate() noexcept;
    std::vector<std::pair<std::string, contract::Value>> state() const override;
    bool menuCommand(std::string_view name) override;
    void companyChanged() override;

    /// The main form, for tests; nothing before ShowForm().
    FRMQZ_COPIADISTINTA* form() const override { return form_.get(); }

protected:
    contract::Cinterface& contesto() override { return *this; }
    void registroCambiato() override;

private:
    bool attivo() const;
    void rilascia();
    /// Throws RuntimeError 91 without a log class: it is the main form's.
    void mostraErrore(const std::exception& errore, std::string_view luogo) const;

    std::shared_ptr<contract::StatusBar> statusBar_;
    std::shared_ptr<contract::ActiveFrame> activeFrame_;
    contract::Cinterface* activeDll_ = nullptr;
    std::shared_ptr<contract::HostObject> clsVoceMenu_;
    std::shared_ptr<contract::ClsGlobal> clsGlobal_;
    std::shared_ptr<contract::HostObject> finestra_;
    std::shared_ptr<contract::Navigator> navigatore_;
    std::shared_ptr<contract::Connection> connection_;
    std::unique_ptr<FRMQZ_COPIADISTINTA> form_;

    contract::Value caption_;
    contract::Value menuModulo_;
    contract::Value menuPadre_;
    contract::Value menuProg_;
    std::int32_t hwndParent_ = 0;
    std::int32_t top_ = 0;
    std::int32_t left_ = 0;
    std::int32_t nodiPerBlocchi_ = 100;
    std::int16_t programMode_ = 0;
    std::int16_t windowState_ = 0;
    bool canDelete_ = false;
    bool canInsert_ = false;
    bool canQbe_ = false;
    bool canUpdate_ = false;
    bool isCalled_ = false;
    bool isActive_ = false;
    bool windowModal_ = false;
};

/// How many objects of the class exist.
int oggettiVivi();

/// Where an error at the end of the class's life happened, as its message says it.
inline constexpr std::string_view luogoDestroyClass = " nel metodo DestroyClass della classe principale";
inline constexpr std::string_view luogoTerminate = " nel Terminate della classe principale";

/// The message of an error at the end of the class's life. An error without a number of its own counts as number 5.
std::string testoErroreFinale(const std::exception& errore, std::string_view luogo);

} // namespace qz

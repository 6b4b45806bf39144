#pragma once

#include "contract/Cinterface.h"
#include "contract/Host.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace platform::headless {

/// A plug-in interface that only stores: what a form talks to where no plug-in class stands behind it.
class HostInterface : public contract::Cinterface {
public:
    contract::Cinterface* ActiveDll() const override { return dll_ ? dll_ : const_cast<HostInterface*>(this); }
    void ActiveDll(contract::Cinterface* object) override { dll_ = object; }
    std::shared_ptr<contract::ActiveFrame> ActiveFrame() const override { return frame_; }
    void ActiveFrame(std::shared_ptr<contract::ActiveFrame> object) override { frame_ = std::move(object); }
    std::shared_ptr<contract::Navigator> ActiveNavigator() const override { return navigator_; }
    void ActiveNavigator(std::shared_ptr<contract::Navigator> object) override { navigator_ = std::move(object); }
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
    std::shared_ptr<contract::ClsGlobal> ClsGlobal() const override { return global_; }
    void ClsGlobal(std::shared_ptr<contract::ClsGlobal> object) override { global_ = std::move(object); }
    std::shared_ptr<contract::Connection> Connection() const override { return connection_; }
    void Connection(std::shared_ptr<contract::Connection> object) override { connection_ = std::move(object); }
    std::shared_ptr<contract::HostObject> Cwindow() const override { return {}; }
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
    std::shared_ptr<contract::HostObject> ClsVoceMenu() const override { return menuEntry_; }
    void ClsVoceMenu(std::shared_ptr<contract::HostObject> object) override { menuEntry_ = std::move(object); }

    contract::Value ShowForm() override { return {}; }
    contract::Value CloseForm() override { return false; }
    contract::Value TransferData(const contract::Value&) override { return {}; }

    /// Positions that no plug-in class would give: empty ones, texts.
    void setLeftTop(contract::Value left, contract::Value top) {
        left_ = std::move(left);
        top_ = std::move(top);
    }

private:
    contract::Cinterface* dll_ = nullptr;
    std::shared_ptr<contract::ActiveFrame> frame_;
    std::shared_ptr<contract::Navigator> navigator_;
    std::shared_ptr<contract::ClsGlobal> global_;
    std::shared_ptr<contract::Connection> connection_;
    std::shared_ptr<contract::StatusBar> statusBar_;
    std::shared_ptr<contract::HostObject> menuEntry_;
    contract::Value caption_;
    contract::Value menuModulo_;
    contract::Value menuPadre_;
    contract::Value menuProg_;
    contract::Value top_ = std::int32_t{0};
    contract::Value left_ = std::int32_t{0};
    std::int32_t hwndParent_ = 0;
    std::int16_t programMode_ = 0;
    std::int16_t windowState_ = 0;
    bool canDelete_ = false;
    bool canInsert_ = false;
    bool canQbe_ = false;
    bool canUpdate_ = false;
    bool isCalled_ = false;
    bool windowModal_ = false;
    bool isActive_ = false;
};

} // namespace platform::headless

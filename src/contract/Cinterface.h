#pragma once

#include "contract/Connection.h"
#include "contract/Value.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace contract {

class ActiveFrame;
class ClsGlobal;
class HostObject;
class LayoutObjectModel;
class Navigator;
class ScriptObjectModel;
class StatusBar;

/// The plug-in contract: the context that a host hands over, and what it asks of a plug-in.
///
/// No member ever throws. Numbers start at 0, booleans false, values empty, objects empty.
class Cinterface {
public:
    Cinterface() = default;
    Cinterface(const Cinterface&) = delete;
    Cinterface& operator=(const Cinterface&) = delete;
    virtual ~Cinterface() = default;

    /// The interface the form talks to: the class itself from its creation on, unless the host replaces it.
    virtual Cinterface* ActiveDll() const = 0;
    virtual void ActiveDll(Cinterface* object) = 0;
    virtual std::shared_ptr<contract::ActiveFrame> ActiveFrame() const = 0;
    virtual void ActiveFrame(std::shared_ptr<contract::ActiveFrame> object) = 0;
    virtual std::shared_ptr<Navigator> ActiveNavigator() const = 0;
    virtual void ActiveNavigator(std::shared_ptr<Navigator> object) = 0;
    virtual bool CanDelete() const = 0;
    virtual void CanDelete(bool value) = 0;
    virtual bool CanInsert() const = 0;
    virtual void CanInsert(bool value) = 0;
    virtual bool CanQbe() const = 0;
    virtual void CanQbe(bool value) = 0;
    virtual bool CanUpdate() const = 0;
    virtual void CanUpdate(bool value) = 0;
    virtual Value Caption() const = 0;
    virtual void Caption(const Value& value) = 0;
    virtual std::shared_ptr<contract::ClsGlobal> ClsGlobal() const = 0;
    virtual void ClsGlobal(std::shared_ptr<contract::ClsGlobal> object) = 0;
    virtual std::shared_ptr<contract::Connection> Connection() const = 0;
    virtual void Connection(std::shared_ptr<contract::Connection> object) = 0;
    virtual std::shared_ptr<HostObject> Cwindow() const = 0;
    /// Always empty: filtering is not supported.
    virtual Value Filtro() const = 0;
    /// Discards the value.
    virtual void Filtro(const Value& value) = 0;
    virtual std::int32_t hwndParent() const = 0;
    virtual void hwndParent(std::int32_t value) = 0;
    virtual bool IsCalled() const = 0;
    virtual void IsCalled(bool value) = 0;
    virtual Value MenuModulo() const = 0;
    virtual void MenuModulo(const Value& value) = 0;
    virtual Value MenuPadre() const = 0;
    virtual void MenuPadre(const Value& value) = 0;
    virtual Value MenuProg() const = 0;
    virtual void MenuProg(const Value& value) = 0;
    virtual std::int16_t ProgramMode() const = 0;
    /// Narrowed to 16 bits, the lower ones.
    virtual void ProgramMode(std::int32_t value) = 0;
    virtual std::shared_ptr<contract::StatusBar> StatusBar() const = 0;
    virtual void StatusBar(std::shared_ptr<contract::StatusBar> object) = 0;
    virtual bool WindowModal() const = 0;
    virtual void WindowModal(bool value) = 0;
    virtual std::int16_t WindowState() const = 0;
    virtual void WindowState(std::int16_t value) = 0;
    /// A 32-bit integer, in twips.
    virtual Value Top() const = 0;
    virtual void Top(std::int32_t value) = 0;
    /// A 32-bit integer, in twips.
    virtual Value Left() const = 0;
    virtual void Left(std::int32_t value) = 0;
    virtual bool IsActive() const = 0;
    /// Whether the navigator's hooks do anything.
    virtual void IsActive(bool value) = 0;
    virtual std::shared_ptr<HostObject> ClsVoceMenu() const = 0;
    virtual void ClsVoceMenu(std::shared_ptr<HostObject> object) = 0;

    /// Creates and shows the main form. Always empty.
    virtual Value ShowForm() = 0;
    /// Unloads the main form. A boolean: whether it went.
    virtual Value CloseForm() = 0;
    /// Passes data on to the listeners of DataTransfer. Always empty.
    virtual Value TransferData(const Value& data) = 0;
};

/// The hooks that the host's navigator calls. They do nothing while Cinterface::IsActive() is false, and never throw.
class ActiveNavigator {
public:
    ActiveNavigator() = default;
    ActiveNavigator(const ActiveNavigator&) = delete;
    ActiveNavigator& operator=(const ActiveNavigator&) = delete;
    virtual ~ActiveNavigator() = default;

    virtual void BeforeExportToOffice(std::shared_ptr<HostObject> model) = 0;
    virtual void InitializeLayoutObjectModel(std::shared_ptr<LayoutObjectModel> model) = 0;
    virtual void InitializeScriptObjectModel(std::shared_ptr<ScriptObjectModel> model) = 0;
};

/// A plug-in class as its host holds it.
class PluginClass {
public:
    PluginClass() = default;
    PluginClass(const PluginClass&) = delete;
    PluginClass& operator=(const PluginClass&) = delete;
    virtual ~PluginClass() = default;

    virtual Cinterface& plugin() = 0;
    virtual ActiveNavigator& navigator() = 0;
    /// Releases everything; harmless when called again. Destruction calls it too.
    virtual void DestroyClass() = 0;
    /// The main form's shared state, for support and tests: names and values in a fixed order; dates are dates or null.
    virtual std::vector<std::pair<std::string, Value>> state() const = 0;
    /// Runs a command of the host's menu bar on the main form ("mnuDettagli"); false when there is none of that name.
    virtual bool menuCommand(std::string_view name) = 0;
    /// The host changed the working company: the form says so and closes.
    virtual void companyChanged() = 0;

    /// Raised by TransferData with its argument.
    std::function<void(const Value&)> DataTransfer;
};

} // namespace contract

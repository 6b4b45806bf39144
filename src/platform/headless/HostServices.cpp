#include "platform/headless/HostServices.h"

#include "platform/headless/HostLog.h"

#include <utility>

namespace platform::headless {

using contract::RuntimeError;

namespace {

/// What all of the host's objects share.
template <class Interface> class HostPart : public Interface {
public:
    explicit HostPart(std::shared_ptr<HostState> state) : state_(std::move(state)) {}

protected:
    void call(std::string_view operation, std::initializer_list<std::string> arguments = {}) const {
        state_->journal->call(operation, arguments);
    }
    HostState& state() const { return *state_; }
    const std::shared_ptr<HostState>& shared() const { return state_; }

private:
    std::shared_ptr<HostState> state_;
};

class Connections : public HostPart<contract::ConnectionService> {
public:
    using HostPart::HostPart;
    std::string ConnectionString() const override {
        call("ConnectionService.ConnectionString");
        return state().connectionString;
    }
};

class Companies : public HostPart<contract::CompanyService> {
public:
    using HostPart::HostPart;
    contract::Value Company() const override {
        call("CompanyService.Company");
        return state().company;
    }
};

class Users : public HostPart<contract::UserService> {
public:
    using HostPart::HostPart;
    std::string UserCode() const override {
        call("UserService.UserCode");
        return state().user;
    }
    std::string GroupCode() const override {
        call("UserService.GroupCode");
        return state().group;
    }
};

class Scripts : public HostPart<contract::ScriptService> {
public:
    using HostPart::HostPart;
    void setCanClose(bool canClose) override {
        call("ScriptService.setCanClose", {canClose ? "true" : "false"});
        state().scriptCanClose = canClose;
    }
};

class Provider : public HostPart<contract::ConnectionProvider> {
public:
    using HostPart::HostPart;
    ~Provider() override { state().journal->note("~ConnectionProvider"); }
    std::shared_ptr<contract::Connection> newConnection() override {
        call("ConnectionProvider.newConnection");
        return state().makeConnection();
    }
};

class FrameHandler : public contract::VirtualFrameHandler {
public:
    FrameHandler(std::shared_ptr<HostState> state, int number) : state_(std::move(state)), number_(number) {}
    ~FrameHandler() override { state_->journal->note("~VirtualFrameHandler " + std::to_string(number_)); }
    bool closeQuery(bool ask) override {
        state_->journal->call("VirtualFrameHandler.closeQuery", {std::to_string(number_), ask ? "true" : "false"});
        return !state_->frameRefusesClose;
    }
    void close() override { state_->journal->call("VirtualFrameHandler.close", {std::to_string(number_)}); }

private:
    std::shared_ptr<HostState> state_;
    int number_;
};

class Frames : public HostPart<contract::VirtualFrame> {
public:
    using HostPart::HostPart;
    ~Frames() override { state().journal->note("~VirtualFrame"); }
    std::shared_ptr<contract::Recordset> newRecordset() override {
        call("VirtualFrame.newRecordset");
        return std::make_shared<contract::Recordset>();
    }
    std::shared_ptr<contract::VirtualFrameHandler> newFieldList() override {
        call("VirtualFrame.newFieldList");
        return std::make_shared<FrameHandler>(shared(), ++handlers_);
    }

private:
    int handlers_ = 0;
};

class Colors : public HostPart<contract::Theme> {
public:
    using HostPart::HostPart;
    contract::Color color(std::string_view name) const override {
        call("Theme.color", {std::string(name)});
        const auto color = state().colors.find(name);
        if (color == state().colors.end())
            throw RuntimeError(RuntimeError::invalidCall, "Il tema non ha un colore " + std::string(name) + ".");
        return color->second;
    }
};

class Link : public HostPart<contract::AccountLink> {
public:
    using HostPart::HostPart;
    ~Link() override { state().journal->note("~AccountLink"); }
    void setInterface(contract::Cinterface* host) override { call("AccountLink.setInterface", {host ? "host" : ""}); }
    void setAccountCode(std::int64_t code) override { call("AccountLink.setAccountCode", {std::to_string(code)}); }
    void linkCustomer() override { call("AccountLink.linkCustomer"); }
    void linkSupplier() override { call("AccountLink.linkSupplier"); }
};

class Parameters : public contract::ParameterObject {
public:
    explicit Parameters(std::shared_ptr<HostState> state) : state_(std::move(state)) {}
    ~Parameters() override { state_->journal->note("~ParameterObject"); }

private:
    std::shared_ptr<HostState> state_;
};

class LayoutModel : public HostPart<contract::LayoutObjectModel> {
public:
    using HostPart::HostPart;
    void registerForm(std::string_view name, contract::Form*& form) override {
        call("LayoutModel.registerForm", {std::string(name), form ? form->name() : std::string()});
        state().layoutForms[std::string(name)] = form;
    }
};

class ScriptModel : public HostPart<contract::ScriptObjectModel> {
public:
    using HostPart::HostPart;
    void registerForm(std::string_view name, contract::Form*& form) override {
        call("ScriptModel.registerForm", {std::string(name), form ? form->name() : std::string()});
        state().scriptForms[std::string(name)] = form;
    }
    void registerObject(std::string_view name, std::shared_ptr<contract::HostObject> object) override {
        call("ScriptModel.registerObject", {std::string(name), object ? "object" : ""});
    }
    void runFormEvent(std::string_view event) override { call("ScriptModel.runFormEvent", {std::string(event)}); }
    bool close() override {
        call("ScriptModel.close");
        return state().scriptRefusesClose;
    }
};

class RecordNavigator : public HostPart<contract::Navigator> {
public:
    explicit RecordNavigator(const std::shared_ptr<HostState>& state)
        : HostPart(state), script_(newScriptModel(state)), layout_(newLayoutModel(state)) {}
    ~RecordNavigator() override { state().journal->note("~Navigator"); }
    void setStatus(int status) override { call("Navigator.setStatus", {std::to_string(status)}); }
    void refreshState() override { call("Navigator.refreshState"); }
    std::shared_ptr<contract::ScriptObjectModel> script() const override {
        return state().hasScriptModel ? script_ : nullptr;
    }
    std::shared_ptr<contract::LayoutObjectModel> layout() const override {
        return state().hasLayoutModel ? layout_ : nullptr;
    }
    void releaseObjectModels() override { call("Navigator.releaseObjectModels"); }

private:
    std::shared_ptr<contract::ScriptObjectModel> script_;
    std::shared_ptr<contract::LayoutObjectModel> layout_;
};

class Frame : public HostPart<contract::ActiveFrame> {
public:
    using HostPart::HostPart;
    ~Frame() override { state().journal->note("~ActiveFrame"); }
    std::string Name() const override {
        call("ActiveFrame.Name");
        return state().frameName;
    }
    int Status() const override {
        call("ActiveFrame.Status");
        return state().frameStatus;
    }
};

class Bar : public HostPart<contract::StatusBar> {
public:
    using HostPart::HostPart;
    ~Bar() override { state().journal->note("~StatusBar"); }
    void setText(std::string_view text) override {
        call("StatusBar.setText", {std::string(text)});
        state().statusText = text;
    }
};

class PlainObject : public contract::HostObject {
public:
    PlainObject(std::shared_ptr<HostState> state, std::string name)
        : state_(std::move(state)), name_(std::move(name)) {}
    ~PlainObject() override { state_->journal->note("~" + name_); }

private:
    std::shared_ptr<HostState> state_;
    std::string name_;
};

} // namespace

std::shared_ptr<contract::ConnectionService> HostGlobal::connectionService() {
    state_->journal->call("ClsGlobal.connectionService");
    return std::make_shared<Connections>(state_);
}

std::shared_ptr<contract::CompanyService> HostGlobal::companyService() {
    state_->journal->call("ClsGlobal.companyService");
    return std::make_shared<Companies>(state_);
}

std::shared_ptr<contract::UserService> HostGlobal::userService() {
    return std::make_shared<Users>(state_);
}

std::shared_ptr<contract::ScriptService> HostGlobal::scriptService() {
    state_->journal->call("ClsGlobal.scriptService");
    return std::make_shared<Scripts>(state_);
}

std::shared_ptr<contract::LogClass> HostGlobal::newLogClass() {
    state_->journal->call("ClsGlobal.newLogClass");
    return std::make_shared<HostLog>(state_);
}

std::shared_ptr<contract::ConnectionProvider> HostGlobal::newConnectionProvider() {
    state_->journal->call("ClsGlobal.newConnectionProvider");
    return std::make_shared<Provider>(state_);
}

std::shared_ptr<contract::VirtualFrame> HostGlobal::newVirtualFrame() {
    state_->journal->call("ClsGlobal.newVirtualFrame");
    return std::make_shared<Frames>(state_);
}

std::shared_ptr<contract::Theme> HostGlobal::newTheme() {
    state_->journal->call("ClsGlobal.newTheme");
    return state_->hasTheme ? std::make_shared<Colors>(state_) : nullptr;
}

std::shared_ptr<contract::WorkflowState> HostGlobal::newWorkflowState() {
    state_->journal->call("ClsGlobal.newWorkflowState");
    return std::make_shared<HostWorkflow>(state_->journal, state_->workflow);
}

std::shared_ptr<contract::ParameterObject> HostGlobal::newParameterObject() {
    state_->journal->call("ClsGlobal.newParameterObject");
    return std::make_shared<Parameters>(state_);
}

std::shared_ptr<contract::AccountLink> HostGlobal::newAccountLink() {
    state_->journal->call("ClsGlobal.newAccountLink");
    return std::make_shared<Link>(state_);
}

void HostGlobal::openProgram(std::string_view program, const contract::ParameterObject& parameters) {
    state_->journal->call("ClsGlobal.openProgram",
                          {std::string(program), parameters.flag ? "true" : "false",
                           std::to_string(parameters.accountKind), std::to_string(parameters.accountCode),
                           std::to_string(parameters.company)});
}

std::optional<std::int64_t> HostGlobal::IDLookup(const contract::LookupRequest& request, contract::Connection&) {
    state_->journal->call("ClsGlobal.IDLookup", {request.name, request.title, request.statement.text()});
    state_->lookup = request;
    if (state_->choices.empty())
        return std::nullopt;
    const auto choice = state_->choices.front();
    state_->choices.pop_front();
    return choice;
}

void HostGlobal::applyProgramMode(contract::Form& form, int mode) {
    state_->journal->call("ClsGlobal.applyProgramMode", {form.name(), std::to_string(mode)});
}

std::shared_ptr<contract::Navigator> newNavigator(const std::shared_ptr<HostState>& state) {
    return std::make_shared<RecordNavigator>(state);
}

std::shared_ptr<contract::ActiveFrame> newActiveFrame(std::shared_ptr<HostState> state) {
    return std::make_shared<Frame>(std::move(state));
}

std::shared_ptr<contract::StatusBar> newStatusBar(std::shared_ptr<HostState> state) {
    return std::make_shared<Bar>(std::move(state));
}

std::shared_ptr<contract::LayoutObjectModel> newLayoutModel(std::shared_ptr<HostState> state) {
    return std::make_shared<LayoutModel>(std::move(state));
}

std::shared_ptr<contract::ScriptObjectModel> newScriptModel(std::shared_ptr<HostState> state) {
    return std::make_shared<ScriptModel>(std::move(state));
}

std::shared_ptr<contract::HostObject> newHostObject(std::shared_ptr<HostState> state, std::string name) {
    return std::make_shared<PlainObject>(std::move(state), std::move(name));
}

} // namespace platform::headless

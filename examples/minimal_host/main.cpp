// The least that a host has to be: it loads the component, gives it a context, shows its form, does what a user would,
// and takes everything down again. Its controls have no screen and its database is a handful of prepared answers.
#include "contract/EntryPoints.h"
#include "contract/Host.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/ScriptedConnection.h"

#include <dlfcn.h>

#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using platform::headless::rows;
using platform::headless::ScriptedConnection;

class Settings : public contract::ConnectionService, public contract::CompanyService, public contract::UserService {
public:
    std::string ConnectionString() const override { return "prepared answers"; }
    contract::Value Company() const override { return 1; }
    std::string UserCode() const override { return "ADMIN"; }
    std::string GroupCode() const override { return "ADMIN"; }
};

class Log : public contract::LogClass {
public:
    void setInterface(contract::Cinterface*) override {}
    void vbError(const contract::RuntimeError& error) override { reason_ = error.description(); }
    void ADOError(const contract::ErrorList&) override {}
    int ShowError(std::string_view, std::string_view, std::string_view procedure, int) override {
        std::cout << "error in " << procedure << ": " << reason_ << '\n';
        return contract::message::answerAbort;
    }
    int ShowMessage(std::string_view title, std::string_view text, int) override {
        std::cout << title << ": " << text << '\n';
        return contract::message::answerOk;
    }

private:
    std::string reason_;
};

class Status : public contract::StatusBar {
public:
    void setText(std::string_view text) override { std::cout << "status: " << text << '\n'; }
};

class Handler : public contract::VirtualFrameHandler {
public:
    bool closeQuery(bool) override { return true; }
    void close() override {}
};

class Frames : public contract::VirtualFrame {
public:
    std::shared_ptr<contract::Recordset> newRecordset() override { return std::make_shared<contract::Recordset>(); }
    std::shared_ptr<contract::VirtualFrameHandler> newFieldList() override { return std::make_shared<Handler>(); }
};

class Connections : public contract::ConnectionProvider {
public:
    std::shared_ptr<contract::Connection> newConnection() override {
        auto connection = std::make_shared<ScriptedConnection>();
        connection->answer("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 1   AND QZ01_INDTIPOSOGG = 0",
                           rows({"QZ01_ID", "QZ01_CODICE", "QZ01_DESCR"}, {{7, "AG", "Agenti"}}));
        const auto start = contract::Date::parse("01/01/2020").value();
        const auto end = contract::Date::parse("31/12/2099").value();
        connection->answer(" SELECT QZ02_ID,",
                           rows({"QZ02_ID", "RagioneSociale", "QZ02_IDPARENT_QZ02", "QZ02_CLIFOR_CG44",
                                 "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_GUID"},
                                {{1, "Agenzia Nord", contract::Value::null(), 100, start, end, "G1"},
                                 {2, "Bar Sport", 1, 101, start, end, "G2"},
                                 {3, "Agenzia Sud", contract::Value::null(), 200, start, end, "G3"}}));
        return connection;
    }
};

// What a host does not have it leaves empty: this one has no scripts, themes, workflow states, programs or lookups.
class Global : public contract::ClsGlobal {
public:
    const std::shared_ptr<platform::headless::HeadlessFactory> factory =
        std::make_shared<platform::headless::HeadlessFactory>();

    std::shared_ptr<contract::ConnectionService> connectionService() override { return settings_; }
    std::shared_ptr<contract::CompanyService> companyService() override { return settings_; }
    std::shared_ptr<contract::UserService> userService() override { return settings_; }
    std::shared_ptr<contract::ScriptService> scriptService() override { return {}; }
    std::shared_ptr<contract::ControlFactory> controls() override { return factory; }
    std::shared_ptr<contract::LogClass> newLogClass() override { return std::make_shared<Log>(); }
    std::shared_ptr<contract::ConnectionProvider> newConnectionProvider() override {
        return std::make_shared<Connections>();
    }
    std::shared_ptr<contract::VirtualFrame> newVirtualFrame() override { return std::make_shared<Frames>(); }
    std::shared_ptr<contract::Theme> newTheme() override { return {}; }
    std::shared_ptr<contract::WorkflowState> newWorkflowState() override { return {}; }
    std::shared_ptr<contract::ParameterObject> newParameterObject() override { return {}; }
    std::shared_ptr<contract::AccountLink> newAccountLink() override { return {}; }
    void openProgram(std::string_view, const contract::ParameterObject&) override {}
    std::optional<std::int64_t> IDLookup(const contract::LookupRequest&, contract::Connection&) override { return {}; }
    void applyProgramMode(contract::Form&, int) override {}

private:
    std::shared_ptr<Settings> settings_ = std::make_shared<Settings>();
};

template <class Function> Function* entry(void* library, const char* name) {
    void* symbol = dlsym(library, name);
    if (symbol == nullptr)
        throw std::runtime_error(std::string("the component has no ") + name);
    return reinterpret_cast<Function*>(symbol);
}

void work(void* library) {
    if (entry<contract::ContractVersionFunction>(library, "ContractVersion")() != contract::contractVersion)
        throw std::runtime_error("the component is of another version of the contract");
    auto* factory = entry<contract::DllGetClassObjectFunction>(library, "DllGetClassObject")(
        contract::copiaDistintaClassId); // the library's own, nothing for another class
    const std::unique_ptr<contract::PluginClass> component = factory->createInstance();
    const auto global = std::make_shared<Global>();
    contract::Cinterface& plugin = component->plugin();
    plugin.ClsGlobal(global);
    plugin.StatusBar(std::make_shared<Status>());
    plugin.Caption("Manutenzione distinte");
    plugin.IsActive(true);
    plugin.ShowForm();
    auto& form = *global->factory->form("FRMQZ_COPIADISTINTA");
    for (const auto& [name, node] : {std::pair("TRW_ELEMDISTINTAORIG", 2), std::pair("TRW_ELEMDISTINTADEST", 3)}) {
        auto& tree = form.control<platform::headless::HeadlessTree>(name);
        tree.focusKey(node); // as the arrow keys do
        tree.settle();
    }
    std::cout << "closed: " << plugin.CloseForm().text() << '\n';
    component->DestroyClass();
}

} // namespace

int main(int argc, char** argv) {
    void* library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (library == nullptr) {
        std::cerr << (argc == 2 ? dlerror() : "minimal_host COMPONENT") << '\n';
        return 1;
    }
    work(library);
    std::cout << "objects left: " << entry<contract::DllCanUnloadNowFunction>(library, "DllCanUnloadNow")() << '\n';
}

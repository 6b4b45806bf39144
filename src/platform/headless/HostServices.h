#pragma once

#include "contract/Host.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostJournal.h"
#include "platform/headless/HostWorkflow.h"
#include "platform/headless/ScriptedConnection.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// A message box or an error display that was shown.
struct ShownMessage {
    std::string title; ///< message box: title; error display: the form's caption
    std::string text;  ///< message box: text; error display: the error's description
    int style = 0;
    int answer = 0;
    std::string procedure{};              ///< error display
    int number = 0;                       ///< error display
    contract::ErrorList databaseErrors{}; ///< error display
    std::string detail{};                 ///< message box: what it is about; not compared
    friend bool operator==(const ShownMessage& a, const ShownMessage& b) {
        return a.title == b.title && a.text == b.text && a.style == b.style && a.answer == b.answer;
    }
};

/// Everything about a host that a test can set and look at; shared by the host's services.
struct HostState {
    HostState() = default;
    HostState(const HostState&) = delete;
    HostState& operator=(const HostState&) = delete;

    std::shared_ptr<HostJournal> journal = std::make_shared<HostJournal>();
    std::shared_ptr<HeadlessFactory> controls = std::make_shared<HeadlessFactory>(journal);
    std::shared_ptr<WorkflowStore> workflow = std::make_shared<WorkflowStore>();

    contract::Value company = 1;
    std::string user = "ADMIN";
    std::string group = "ADMIN";
    std::string connectionString = "scripted";
    /// Makes the connections that the provider hands out.
    std::function<std::shared_ptr<contract::Connection>()> makeConnection = [this] {
        return std::make_shared<ScriptedConnection>(journal);
    };

    /// Answers to the next message boxes and error displays. Without one, questions are answered 7 (no), error displays
    /// 3 (abort), others 1.
    std::deque<int> answers;
    /// Gives the answers to error displays; without it they come from the answers above.
    std::function<int()> errorAnswer;
    std::vector<ShownMessage> messages;
    std::vector<ShownMessage> errors;

    int frameStatus = 0;
    std::string frameName = "Frame1";
    bool frameRefusesClose = false;
    bool scriptRefusesClose = false;
    bool hasScriptModel = true;
    bool hasLayoutModel = true;
    bool hasTheme = true;
    std::map<std::string, contract::Color, std::less<>> colors{
        {"GridHeaderColor", 0x010101},        {"GridFontColor", 0x020202},       {"GridBorderColor", 0x030303},
        {"GridFooterColor", 0x040404},        {"GridHeaderFontColor", 0x050505}, {"GridHideSelectionColor", 0x060606},
        {"GridHighLightFontColor", 0x070707}, {"GridHighLightColor", 0x080808}};
    /// Codes chosen in the next lookups; nothing leaves the list.
    std::deque<std::optional<std::int64_t>> choices;

    // What the component told

    std::map<std::string, contract::Form*> layoutForms;
    std::map<std::string, contract::Form*> scriptForms;
    std::optional<bool> scriptCanClose;
    std::string statusText;
    std::optional<contract::LookupRequest> lookup;
};

/// The host's shared context over a HostState, from which every other service comes.
class HostGlobal : public contract::ClsGlobal {
public:
    explicit HostGlobal(std::shared_ptr<HostState> state) : state_(std::move(state)) {}
    ~HostGlobal() override { state_->journal->note("~ClsGlobal"); }

    std::shared_ptr<contract::ConnectionService> connectionService() override;
    std::shared_ptr<contract::CompanyService> companyService() override;
    std::shared_ptr<contract::UserService> userService() override;
    std::shared_ptr<contract::ScriptService> scriptService() override;

    std::shared_ptr<contract::ControlFactory> controls() override { return state_->controls; }
    std::shared_ptr<contract::LogClass> newLogClass() override;
    std::shared_ptr<contract::ConnectionProvider> newConnectionProvider() override;
    std::shared_ptr<contract::VirtualFrame> newVirtualFrame() override;
    std::shared_ptr<contract::Theme> newTheme() override;
    std::shared_ptr<contract::WorkflowState> newWorkflowState() override;
    std::shared_ptr<contract::ParameterObject> newParameterObject() override;
    std::shared_ptr<contract::AccountLink> newAccountLink() override;

    void openProgram(std::string_view program, const contract::ParameterObject& parameters) override;
    std::optional<std::int64_t> IDLookup(const contract::LookupRequest& request,
                                         contract::Connection& connection) override;
    void applyProgramMode(contract::Form& form, int mode) override;

private:
    std::shared_ptr<HostState> state_;
};

/// The host's objects that a class is handed beside its global context.
std::shared_ptr<contract::Navigator> newNavigator(const std::shared_ptr<HostState>& state);
std::shared_ptr<contract::ActiveFrame> newActiveFrame(std::shared_ptr<HostState> state);
std::shared_ptr<contract::StatusBar> newStatusBar(std::shared_ptr<HostState> state);
std::shared_ptr<contract::LayoutObjectModel> newLayoutModel(std::shared_ptr<HostState> state);
std::shared_ptr<contract::ScriptObjectModel> newScriptModel(std::shared_ptr<HostState> state);
/// An object that only notes its end, as "~name".
std::shared_ptr<contract::HostObject> newHostObject(std::shared_ptr<HostState> state, std::string name);

} // namespace platform::headless

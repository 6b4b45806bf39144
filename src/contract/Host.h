#pragma once

#include "contract/Cinterface.h"
#include "contract/Control.h"
#include "contract/Form.h"
#include "contract/RuntimeError.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

/// An object of the host that a plug-in only keeps and hands back.
class HostObject {
public:
    HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;
};

class StatusBar : public HostObject {
public:
    /// What the commands at hand would do, or what the last one did.
    virtual void setText(std::string_view text) = 0;
};

/// The host frame in which a plug-in runs.
class ActiveFrame : public HostObject {
public:
    virtual std::string Name() const = 0;
    virtual int Status() const = 0;
};

/// Styles of message boxes and codes of the buttons pressed.
namespace message {
constexpr int ok = 0;
constexpr int yesNo = 4;
constexpr int critical = 16;
constexpr int exclamation = 48;
constexpr int information = 64;
/// Critical icon, abort, retry and ignore, the second one default, system-modal.
constexpr int errorDisplay = 4370;
constexpr int answerOk = 1;
constexpr int answerAbort = 3;
constexpr int answerRetry = 4;
constexpr int answerIgnore = 5;
constexpr int answerYes = 6;
constexpr int answerNo = 7;
} // namespace message

/// Shows and records messages and errors; each form makes its own.
class LogClass : public HostObject {
public:
    virtual void setInterface(Cinterface* host) = 0;
    /// Hands the current run-time error over.
    virtual void vbError(const RuntimeError& error) = 0;
    /// Hands the database's errors over. They count for the next ShowError only.
    virtual void ADOError(const ErrorList& errors) = 0;
    /// Shows and records the error; the code of the button pressed.
    virtual int ShowError(std::string_view application, std::string_view caption, std::string_view procedure,
                          int style) = 0;
    /// Says what the next box of ShowMessage is about, to be shown smaller below its text; it counts for that box only.
    /// A host that has no place for it need not implement this.
    virtual void setDetail(std::string_view detail) { static_cast<void>(detail); }
    /// Shows a plain message box; the code of the button pressed.
    virtual int ShowMessage(std::string_view title, std::string_view text, int style) = 0;
};

/// The object model through which layouts know a plug-in's forms.
class LayoutObjectModel : public HostObject {
public:
    /// The form is passed by reference and may be replaced.
    virtual void registerForm(std::string_view name, Form*& form) = 0;
};

/// The object model through which scripts know a plug-in's forms and objects.
class ScriptObjectModel : public HostObject {
public:
    /// The form is passed by reference and may be replaced.
    virtual void registerForm(std::string_view name, Form*& form) = 0;
    virtual void registerObject(std::string_view name, std::shared_ptr<HostObject> object) = 0;
    /// "tsOpen", "tsClose"
    virtual void runFormEvent(std::string_view event) = 0;
    /// True refuses the close.
    virtual bool close() = 0;
};

/// The host's navigator: the bar of record buttons, with the object models.
class Navigator : public HostObject {
public:
    virtual void setStatus(int status) = 0;
    /// Takes the state of the form's frame anew.
    virtual void refreshState() = 0;
    /// Nothing when the host has none.
    virtual std::shared_ptr<ScriptObjectModel> script() const = 0;
    virtual std::shared_ptr<LayoutObjectModel> layout() const = 0;
    virtual void releaseObjectModels() = 0;
};

class Theme : public HostObject {
public:
    /// Throws RuntimeError 5 for a name that the theme does not have.
    virtual Color color(std::string_view name) const = 0;
};

/// Gives forms their record sets and the handlers of their data-entry frames.
class VirtualFrame : public HostObject {
public:
    virtual std::shared_ptr<Recordset> newRecordset() = 0;
    virtual std::shared_ptr<VirtualFrameHandler> newFieldList() = 0;
};

class ConnectionProvider : public HostObject {
public:
    /// A connection that is not open yet.
    virtual std::shared_ptr<Connection> newConnection() = 0;
};

/// Parameters with which a host program is opened.
class ParameterObject : public HostObject {
public:
    bool flag = false;
    std::int16_t accountKind = 0;
    std::int64_t accountCode = 0;
    std::int64_t company = 0;
};

/// Shows and sets the registry entry of an account.
class AccountLink : public HostObject {
public:
    virtual void setInterface(Cinterface* host) = 0;
    virtual void setAccountCode(std::int64_t code) = 0;
    virtual void linkCustomer() = 0;
    virtual void linkSupplier() = 0;
};

/// What a lookup shows, and its columns' titles.
struct LookupRequest {
    std::string name;
    std::string title;
    Statement statement;
    std::vector<std::string> columnTitles;
};

class ConnectionService : public HostObject {
public:
    virtual std::string ConnectionString() const = 0;
};

class CompanyService : public HostObject {
public:
    /// The working company's number.
    virtual Value Company() const = 0;
};

class UserService : public HostObject {
public:
    virtual std::string UserCode() const = 0;
    virtual std::string GroupCode() const = 0;
};

/// The host's script service, with its global object.
class ScriptService : public HostObject {
public:
    virtual void setCanClose(bool canClose) = 0;
};

/// The host's shared context: its services, and the makers of its objects.
class ClsGlobal : public HostObject {
public:
    virtual std::shared_ptr<ConnectionService> connectionService() = 0;
    virtual std::shared_ptr<CompanyService> companyService() = 0;
    virtual std::shared_ptr<UserService> userService() = 0;
    virtual std::shared_ptr<ScriptService> scriptService() = 0;

    virtual std::shared_ptr<ControlFactory> controls() = 0;
    virtual std::shared_ptr<LogClass> newLogClass() = 0;
    virtual std::shared_ptr<ConnectionProvider> newConnectionProvider() = 0;
    virtual std::shared_ptr<VirtualFrame> newVirtualFrame() = 0;
    /// Nothing when the host has no themes. Throws when it cannot be made.
    virtual std::shared_ptr<Theme> newTheme() = 0;
    virtual std::shared_ptr<WorkflowState> newWorkflowState() = 0;
    virtual std::shared_ptr<ParameterObject> newParameterObject() = 0;
    virtual std::shared_ptr<AccountLink> newAccountLink() = 0;

    /// Opens a host program: "SchedaClienti", "SchedaFornitori".
    virtual void openProgram(std::string_view program, const ParameterObject& parameters) = 0;
    /// Shows a list to choose from; the code of the row chosen, nothing when it was left. The statement runs on the
    /// connection given.
    virtual std::optional<std::int64_t> IDLookup(const LookupRequest& request, Connection& connection) = 0;
    /// Applies a program mode to a form's host controls.
    virtual void applyProgramMode(Form& form, int mode) = 0;
};

} // namespace contract

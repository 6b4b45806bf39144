#pragma once

#include "contract/Host.h"
#include "host/services/HostContext.h"
#include "host/services/HostWorkflowState.h"

#include <QMdiArea>

#include <memory>

namespace host {

/// The host's shared context as components see it.
class HostGlobal : public contract::ClsGlobal {
public:
    HostGlobal(std::shared_ptr<HostContext> context, std::shared_ptr<contract::ControlFactory> controls);

    std::shared_ptr<contract::ConnectionService> connectionService() override { return connection_; }
    std::shared_ptr<contract::CompanyService> companyService() override { return company_; }
    std::shared_ptr<contract::UserService> userService() override { return user_; }
    std::shared_ptr<contract::ScriptService> scriptService() override { return script_; }

    std::shared_ptr<contract::ControlFactory> controls() override { return controls_; }
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

    /// The list of workflow states for the state field: the state chosen, which is then selected in the workflow object
    /// made last.
    std::optional<std::int64_t> chooseState();

private:
    std::shared_ptr<HostContext> context_;
    std::shared_ptr<contract::ControlFactory> controls_;
    std::shared_ptr<contract::ConnectionService> connection_;
    std::shared_ptr<contract::CompanyService> company_;
    std::shared_ptr<contract::UserService> user_;
    std::shared_ptr<contract::ScriptService> script_;
    std::weak_ptr<HostWorkflowState> workflow_;
};

} // namespace host

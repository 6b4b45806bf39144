#include "host/services/HostGlobal.h"

#include "contract/Form.h"
#include "host/services/HostServices.h"
#include "host/services/Text.h"
#include "host/windows/AccountWindow.h"
#include "host/windows/LookupWindow.h"

namespace host {

namespace {

const QString service = QStringLiteral("ClsGlobal");

} // namespace

HostGlobal::HostGlobal(std::shared_ptr<HostContext> context, std::shared_ptr<contract::ControlFactory> controls)
    : context_(std::move(context)), controls_(std::move(controls)),
      connection_(std::make_shared<HostConnectionService>(context_)),
      company_(std::make_shared<HostCompanyService>(context_)), user_(std::make_shared<HostUserService>(context_)),
      script_(std::make_shared<HostScriptService>(context_)) {
}

std::shared_ptr<contract::LogClass> HostGlobal::newLogClass() {
    return std::make_shared<HostLogClass>(context_);
}

std::shared_ptr<contract::ConnectionProvider> HostGlobal::newConnectionProvider() {
    return std::make_shared<HostConnectionProvider>(context_);
}

std::shared_ptr<contract::VirtualFrame> HostGlobal::newVirtualFrame() {
    return std::make_shared<HostVirtualFrame>(context_);
}

std::shared_ptr<contract::Theme> HostGlobal::newTheme() {
    return std::make_shared<HostTheme>();
}

std::shared_ptr<contract::WorkflowState> HostGlobal::newWorkflowState() {
    auto state = std::make_shared<HostWorkflowState>(context_);
    workflow_ = state;
    return state;
}

std::shared_ptr<contract::ParameterObject> HostGlobal::newParameterObject() {
    return std::make_shared<contract::ParameterObject>();
}

std::shared_ptr<contract::AccountLink> HostGlobal::newAccountLink() {
    return std::make_shared<HostAccountLink>(context_);
}

void HostGlobal::openProgram(std::string_view program, const contract::ParameterObject& parameters) {
    context_->journal.record(service, QStringLiteral("openProgram"),
                             {{QStringLiteral("program"), toQt(program)},
                              {QStringLiteral("flag"), parameters.flag},
                              {QStringLiteral("accountKind"), parameters.accountKind},
                              {QStringLiteral("accountCode"), static_cast<qint64>(parameters.accountCode)},
                              {QStringLiteral("company"), static_cast<qint64>(parameters.company)}});
    AccountWindow::showCard(*context_, toQt(program),
                            {parameters.company, parameters.accountKind, parameters.accountCode});
}

std::optional<std::int64_t> HostGlobal::IDLookup(const contract::LookupRequest& request,
                                                 contract::Connection& connection) {
    const auto chosen = LookupWindow::choose(*context_, request, connection);
    context_->journal.record(
        service, QStringLiteral("IDLookup"),
        {{QStringLiteral("name"), toQt(request.name)},
         {QStringLiteral("title"), toQt(request.title)},
         {QStringLiteral("result"), chosen ? QJsonValue(static_cast<qint64>(*chosen)) : QJsonValue(QJsonValue::Null)}});
    return chosen;
}

void HostGlobal::applyProgramMode(contract::Form& form, int mode) {
    // Every mode of this host leaves the controls as the form made them: what a user may do is decided by the
    // permissions.
    context_->journal.record(service, QStringLiteral("applyProgramMode"),
                             {{QStringLiteral("form"), toQt(form.name())}, {QStringLiteral("mode"), mode}});
}

std::optional<std::int64_t> HostGlobal::chooseState() {
    const contract::LookupRequest request{
        "lkp_Stati",
        "Stati",
        contract::Statement("SELECT WF02_ID, WF02_DESCR FROM WF02_STATI ORDER BY WF02_ID"),
        {"Codice", "Descrizione"}};
    const auto chosen = LookupWindow::choose(*context_, request, *context_->connection);
    if (const auto workflow = workflow_.lock(); workflow && chosen)
        workflow->select(*chosen);
    return chosen;
}

} // namespace host

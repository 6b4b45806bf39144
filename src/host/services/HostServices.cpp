#include "host/services/HostServices.h"

#include "contract/Recordset.h"
#include "host/database/CommandWaits.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/TracingConnection.h"
#include "host/windows/AccountLinkWindow.h"
#include "host/windows/AccountWindow.h"
#include "platform/qt/forms/CaptionedControl.h"
#include "platform/qt/look/Appearance.h"
#include "platform/shared/LongWork.h"

#include <utility>

namespace host {

void HostScriptService::setCanClose(bool canClose) {
    context_->journal.record(QStringLiteral("ScriptService"), QStringLiteral("setCanClose"),
                             {{QStringLiteral("value"), canClose}});
    canClose_ = canClose;
}

void HostStatusBar::setText(std::string_view text) {
    if (context_->statusText)
        context_->statusText(platform::qt::brief(toQt(text)));
}

void HostStatusBar::reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total) {
    platform::shared::LongWork::instance().reached(what, done, total);
}

void HostStatusBar::counts(std::string_view unit) {
    platform::shared::LongWork::instance().counts(unit);
}

int HostLogClass::ShowError(std::string_view application, std::string_view caption, std::string_view procedure,
                            int style) {
    const contract::RuntimeError error = error_.value_or(contract::RuntimeError(0, ""));
    const int answer = context_->dialogs.showError(caption, procedure, error, records_, style);
    context_->logError({application, caption, procedure, error, records_, answer});
    // Who has it tried again waits again.
    if (answer == contract::message::answerRetry)
        CommandWaits::commandBegins();
    // A later error that came from no database must not show this one's records.
    records_.clear();
    error_.reset();
    return answer;
}

int HostLogClass::ShowMessage(std::string_view title, std::string_view text, int style) {
    return context_->dialogs.showMessage(title, text, style, std::exchange(detail_, {}));
}

contract::Color HostTheme::color(std::string_view name) const {
    if (const auto color = platform::qt::Appearance::instance().gridColor(name))
        return *color;
    throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                 "Il tema non ha un colore \"" + std::string(name) + "\".");
}

namespace {

/// The host keeps nothing of its own to be saved in the frames of the distinte: only its settings refuse a close.
class FrameHandler : public contract::VirtualFrameHandler {
public:
    explicit FrameHandler(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}

    bool closeQuery(bool ask) override {
        const bool refused = context_->refuseClose == RefuseClose::frame;
        // Only the next close is refused.
        if (refused && ask)
            context_->refuseClose = RefuseClose::nobody;
        context_->journal.record(QStringLiteral("VirtualFrameHandler"), QStringLiteral("closeQuery"),
                                 {{QStringLiteral("ask"), ask}, {QStringLiteral("result"), !refused}});
        return !refused;
    }

    void close() override { context_->journal.record(QStringLiteral("VirtualFrameHandler"), QStringLiteral("close")); }

private:
    std::shared_ptr<HostContext> context_;
};

} // namespace

std::shared_ptr<contract::Recordset> HostVirtualFrame::newRecordset() {
    return std::make_shared<contract::Recordset>();
}

std::shared_ptr<contract::VirtualFrameHandler> HostVirtualFrame::newFieldList() {
    return std::make_shared<FrameHandler>(context_);
}

std::shared_ptr<TracingConnection> newFormConnection(const std::shared_ptr<HostContext>& context) {
    // The connection is traced into the context, so it holds on to it.
    struct Held : TracingConnection {
        explicit Held(std::shared_ptr<HostContext> owner)
            : TracingConnection(host::newConnection(owner->connectionString), owner->trace), context(std::move(owner)) {
        }
        std::shared_ptr<HostContext> context;
    };
    auto connection = std::make_shared<Held>(context);
    connection->beforeWriting = [held = connection.get()] {
        if (held->context->states)
            held->context->states->prepare();
    };
    context->formConnections.add(connection);
    return connection;
}

std::shared_ptr<contract::Connection> HostConnectionProvider::newConnection() {
    return newFormConnection(context_);
}

void HostAccountLink::linkCustomer() {
    link(QStringLiteral("linkCustomer"), 0);
}
void HostAccountLink::linkSupplier() {
    link(QStringLiteral("linkSupplier"), 1);
}

void HostAccountLink::link(const QString& operation, int kind) {
    context_->journal.record(QStringLiteral("AccountLink"), operation,
                             {{QStringLiteral("accountCode"), static_cast<qint64>(code_)}});
    AccountLinkWindow::show(*context_, {context_->company, kind, code_});
}

} // namespace host

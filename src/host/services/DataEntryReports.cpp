#include "host/services/DataEntryReports.h"

#include "host/services/ErrorReport.h"
#include "host/services/HostGlobal.h"
#include "platform/qt/fields/DataEntryHooks.h"

namespace host {

void connectDataEntry(const std::shared_ptr<HostContext>& context, const std::weak_ptr<HostGlobal>& global) {
    auto& hooks = platform::qt::DataEntryHooks::instance();
    hooks.showMessage = [context](const QString& title, const QString& text, int style) {
        const QString about = QStringLiteral("%1, azienda %2").arg(title).arg(context->company);
        return context->dialogs.showMessage(title.toStdString(), text.toStdString(), style, about.toStdString());
    };
    hooks.showError = [context](const contract::RuntimeError& error, const contract::ErrorList& records) {
        reportError(*context, "Salvataggio", error, records);
    };
    hooks.saved = [context] {
        if (context->statusText)
            context->statusText(QStringLiteral("Modifiche salvate."));
    };
    hooks.chooseState = [global] {
        const auto held = global.lock();
        return held ? held->chooseState() : std::nullopt;
    };
    hooks.showStatesError = [context](const contract::RuntimeError& error) {
        reportError(*context, "Stati", error, context->connection->Errors());
    };
}

} // namespace host

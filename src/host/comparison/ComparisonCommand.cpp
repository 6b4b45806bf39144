#include "host/comparison/ComparisonCommand.h"

#include "contract/RuntimeError.h"
#include "host/comparison/ComparisonWindow.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/windows/NodePlace.h"
#include "host/windows/Prompts.h"

#include <QAction>

#include <algorithm>

namespace host {

namespace {

using contract::RuntimeError;

contract::ComparedDistinta shownOn(const HostSession& session, FormSide side,
                                   const std::vector<contract::ComparedDistinta>& distinte) {
    const auto id = shownType(session, side);
    const auto found =
        std::find_if(distinte.begin(), distinte.end(), [&](const auto& distinta) { return distinta.id == id; });
    if (found == distinte.end())
        throw RuntimeError(RuntimeError::invalidCall, "Servono due distinte, una a sinistra e una a destra.");
    return *found;
}

void show(HostSession& session, FormSide side, std::int64_t type, const std::optional<std::int64_t>& node) {
    if (!node)
        return;
    if (const QString reason = showNode(session, side, type, *node); !reason.isEmpty())
        emit session.statusText(QStringLiteral("Il nodo %1 non si può mostrare: %2.").arg(*node).arg(reason));
}

} // namespace

std::shared_ptr<const contract::ComparisonReport> showComparison(HostSession& session, QWidget* window,
                                                                 std::optional<contract::Date> day) {
    if (!session.formOpen())
        throw RuntimeError(RuntimeError::objectNotSet, "Il programma non è aperto.");
    const auto component = session.newClass();
    if (!component)
        throw RuntimeError(RuntimeError::objectNotSet, "Il componente non si lascia creare.");
    Comparisons comparisons(*component, session.connection(), session.company());
    const auto distinte = comparisons.distinte();
    const auto left = shownOn(session, FormSide::origin, distinte);
    const auto right = shownOn(session, FormSide::destination, distinte);
    ComparisonWindow shown(comparisons, left, right, day.value_or(contract::Date::today()), window);
    shown.refresh();
    shown.run();
    if (const auto& wanted = shown.wanted()) {
        show(session, FormSide::origin, left.id, wanted->left);
        show(session, FormSide::destination, right.id, wanted->right);
    }
    return shown.report();
}

void addComparisonCommands(QMenu& menu, const ToolContext& context) {
    auto* compare = menu.addAction(QStringLiteral("Con&fronta le due distinte…"));
    compare->setObjectName(QStringLiteral("mnuConfronta"));
    QObject::connect(compare, &QAction::triggered, context.window, [context] {
        auto* session = context.session();
        if (session == nullptr)
            return;
        try {
            showComparison(*session, context.window, std::nullopt);
        } catch (const RuntimeError& error) {
            tell(QMessageBox::Warning, QStringLiteral("Confronto di due distinte"), toQt(error.description()),
                 context.window);
        }
    });
}

} // namespace host

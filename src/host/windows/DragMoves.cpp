#include "host/windows/DragMoves.h"

#include "host/tables/DistintaList.h"
#include "platform/qt/tree/NodeDrag.h"

#include <optional>
#include <utility>

namespace host {

using platform::qt::FormWindow;
using platform::qt::NodeDrag;
using platform::qt::TreeListControl;

namespace {

bool hasFocus(const TreeListControl& tree, std::int64_t key) {
    const auto focused = tree.focused();
    return focused && tree.key(focused) == key;
}

/// The reason why nothing could be done; empty when the move's button was clicked.
QString move(FormWindow& form, const NodeDrag::Drop& drop) {
    auto* origin = treeOf(form, Side::origin);
    auto* destination = treeOf(form, Side::destination);
    if (QString reason = origin->focusNode(drop.node, std::nullopt); !reason.isEmpty())
        return reason;
    if (QString reason = destination->focusNode(drop.onto, std::nullopt); !reason.isEmpty())
        return reason;
    // A focus that something held back would move another node.
    if (!hasFocus(*origin, drop.node) || !hasFocus(*destination, drop.onto))
        return QStringLiteral("il nodo non si è lasciato scegliere");
    auto* button = form.control(drop.other ? QStringLiteral("CMD_SPOSTAVALID") : QStringLiteral("CMD_SPOSTASTRU"));
    return button != nullptr ? button->click() : QStringLiteral("il programma non ha questo comando");
}

} // namespace

void letNodesBeDragged(FormWindow& form, std::function<void(const QString&)> hint) {
    auto* origin = treeOf(form, Side::origin);
    auto* destination = treeOf(form, Side::destination);
    if (origin == nullptr || destination == nullptr)
        return;
    auto* drag = new NodeDrag(origin->view(), destination->view());
    drag->told = hint;
    drag->dropped = [&form, hint = std::move(hint)](const NodeDrag::Drop& drop) {
        if (const QString reason = move(form, drop); !reason.isEmpty())
            hint(QStringLiteral("Spostamento non eseguito: %1.").arg(reason));
    };
}

} // namespace host

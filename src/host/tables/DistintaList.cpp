#include "host/tables/DistintaList.h"

#include "contract/Controls.h"
#include "host/services/Text.h"
#include "host/tables/ShownRows.h"

namespace host {

using platform::qt::FormWindow;
using platform::qt::TreeListControl;

namespace {

/// By the chosen entry of the side's list: the caption above the form's tree follows the other side in some cases.
QString titleOf(const FormWindow& form, Side side) {
    const QString name = side == Side::origin ? QStringLiteral("TRW_DISTINTEORIG") : QStringLiteral("TRW_DISTINTEDEST");
    const auto* types = dynamic_cast<const contract::TypeList*>(form.contractControl(name));
    const auto chosen = types != nullptr ? types->selected() : std::nullopt;
    return chosen ? QStringLiteral("Distinta %1").arg(toQt(chosen->text).trimmed()) : QStringLiteral("Distinta");
}

} // namespace

TreeListControl* treeOf(FormWindow& form, Side side) {
    return dynamic_cast<TreeListControl*>(form.control(side == Side::origin ? QStringLiteral("TRW_ELEMDISTINTAORIG")
                                                                            : QStringLiteral("TRW_ELEMDISTINTADEST")));
}

TitledTable distintaList(FormWindow& form, Side side, TreeTable::Rows rows, std::int64_t company) {
    auto* tree = treeOf(form, side);
    if (tree == nullptr)
        return {std::make_shared<ShownRows>(nullptr, std::vector<std::size_t>{}), {}};
    auto table = std::make_shared<TreeTable>(*tree, rows);
    QString detail = QStringLiteral("Azienda %1 – righe: %2").arg(company).arg(table->rowCount());
    if (table->rowCount() < tree->nodeCount())
        detail += QStringLiteral(" di %1, i rami chiusi senza ciò che contengono").arg(tree->nodeCount());
    return {std::move(table), {titleOf(form, side), detail}};
}

} // namespace host

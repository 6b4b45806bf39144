#include "host/windows/AccountLinkWindow.h"

#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/script/WidgetControls.h"
#include "host/services/Text.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/ListTable.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

namespace host {

using contract::Snapshot;
using contract::Statement;

namespace {

constexpr double headingScale = 1.3;

QString kindName(std::int64_t kind) {
    return kind == 1 ? QStringLiteral("Fornitore") : QStringLiteral("Cliente");
}

QLabel* plainLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QTableWidget* accountsTable(const RegistryLink& link, QWidget* parent) {
    auto* table = new QTableWidget(parent);
    setUpList(*table, {{QStringLiteral("Azienda"), Qt::AlignRight},
                       {QStringLiteral("Conto")},
                       {QStringLiteral("Codice"), Qt::AlignRight}});
    table->setAccessibleName(QStringLiteral("Conti collegati alla stessa anagrafica"));
    table->setRowCount(static_cast<int>(link.accounts.size()));
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            setCell(*table, row, column, link.accounts[static_cast<std::size_t>(row)].value(column));
    fitColumns(*table, 1);
    return table;
}

} // namespace

RegistryLink readRegistryLink(contract::Connection& connection, const AccountKey& key) {
    RegistryLink link;
    Snapshot rows;
    Statement account("SELECT CG44_CODICE_CG16 FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = ");
    account.number(key.company) << " AND CG44_TIPOCF = ";
    account.number(key.kind) << " AND CG44_CLIFOR = ";
    account.number(key.code);
    readAgainWhenLost(connection, account, rows);
    link.found = rows.rowCount() > 0;
    if (!link.found || !(link.entry = rows.column(0).integer(0)))
        return link;

    Statement entry("SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CITTA, CG16_PROV, CG16_TEL1NUM, CG16_FAXNUM FROM "
                    "CG16_ANAGGEN WHERE CG16_CODICE = ");
    entry.number(*link.entry);
    readAgainWhenLost(connection, entry, rows);
    link.entryFound = rows.rowCount() > 0;
    if (link.entryFound) {
        const auto cell = [&](std::size_t column) { return toQt(rows.column(column).text(0)).trimmed(); };
        link.name = cell(0);
        const std::pair<QString, QString> values[] = {
            {QStringLiteral("Ragione sociale"), cell(0)},
            {QStringLiteral("Indirizzo"), cell(1)},
            {QStringLiteral("Città"), cell(3).isEmpty() ? cell(2) : QStringLiteral("%1 (%2)").arg(cell(2), cell(3))},
            {QStringLiteral("Telefono"), cell(4)},
            {QStringLiteral("Fax"), cell(5)}};
        for (const auto& value : values)
            if (!value.second.isEmpty())
                link.values.push_back(value);
    }

    Statement others("SELECT CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR FROM CG44_CLIFOR WHERE CG44_CODICE_CG16 = ");
    others.number(*link.entry) << " ORDER BY CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR";
    readAgainWhenLost(connection, others, rows);
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        link.accounts.push_back({QString::number(rows.column(0).integer(row).value_or(0)),
                                 kindName(rows.column(1).integer(row).value_or(0)),
                                 QString::number(rows.column(2).integer(row).value_or(0))});
    return link;
}

AccountLinkWindow::AccountLinkWindow(const AccountKey& key, const RegistryLink& link, QWidget* parent)
    : HostWindow(QStringLiteral("CollegamentoAnagrafica"), QStringLiteral("Collegamento ad anagrafica"), parent) {
    auto* layout = new QVBoxLayout(this);
    QString title = QStringLiteral("%1 %2").arg(kindName(key.kind)).arg(key.code);
    if (!link.name.isEmpty())
        title += QStringLiteral(" – ") + link.name;
    auto* head = plainLabel(title, this);
    QFont font = head->font();
    font.setPointSizeF(font.pointSizeF() * headingScale);
    font.setBold(true);
    head->setFont(font);
    layout->addWidget(head);

    QString state;
    if (!link.found)
        state = QStringLiteral("Il conto non esiste nell'azienda di lavoro.");
    else if (!link.entry)
        state = QStringLiteral("Il conto non è collegato all'anagrafica generale.");
    else if (!link.entryFound)
        state = QStringLiteral("Il conto è collegato all'anagrafica generale %1, che non esiste.").arg(*link.entry);
    else
        state = QStringLiteral("Il conto è collegato all'anagrafica generale %1:").arg(*link.entry);
    auto* linked = plainLabel(state, this);
    layout->addWidget(linked);
    auto* form = new QFormLayout;
    form->setContentsMargins(12, 0, 0, 8);
    form->setHorizontalSpacing(16);
    for (const auto& [name, text] : link.values)
        form->addRow(name, plainLabel(text, this));
    layout->addLayout(form);

    auto* caption = new QLabel(QStringLiteral("Conti collegati alla stessa anagrafica"), this);
    auto* table = accountsTable(link, this);
    caption->setVisible(link.entry.has_value());
    table->setVisible(link.entry.has_value());
    layout->addWidget(caption);
    layout->addWidget(table, 1);
    auto* buttons = new QDialogButtonBox(this);
    auto* close = dialogButton(QStringLiteral("&Chiudi"), buttons, true);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    close->setDefault(true);
    layout->addWidget(buttons);
    resizeForType({560, 460});
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    addControl(QStringLiteral("LBL_CONTO"), std::make_unique<LabelControl>(head));
    addControl(QStringLiteral("LBL_COLLEGAMENTO"), std::make_unique<LabelControl>(linked));
    addControl(QStringLiteral("GRD_CONTI"), std::make_unique<TableControl>(table));
    addControl(QStringLiteral("CMD_CHIUDI"), std::make_unique<ButtonControl>(close));
}

void AccountLinkWindow::show(HostContext& context, const AccountKey& key) {
    AccountLinkWindow window(key, readRegistryLink(*context.connection, key), context.window);
    window.run();
}

} // namespace host

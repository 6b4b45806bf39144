#include "host/AccountWindow.h"

#include "host/DialogButtons.h"
#include "host/WidgetControls.h"
#include "plugin/contract/RuntimeError.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QScrollArea>
#include <QVBoxLayout>

namespace host {

namespace {

QLabel* heading(const AccountKey& key, const AccountSheet& sheet, QWidget* parent) {
    const QString kind = key.kind == 1 ? QStringLiteral("Fornitore") : QStringLiteral("Cliente");
    QString text = QStringLiteral("%1 %2").arg(kind).arg(key.code);
    if (!sheet.name.isEmpty())
        text += QStringLiteral(" – ") + sheet.name;
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QWidget* groups(const AccountSheet& sheet, QWidget* parent) {
    auto* box = new QWidget(parent);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    for (const auto& group : sheet.groups) {
        auto* title = new QLabel(group.title, box);
        QFont font = title->font();
        font.setBold(true);
        title->setFont(font);
        column->addWidget(title);
        auto* form = new QFormLayout;
        form->setContentsMargins(12, 0, 0, 8);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        for (const auto& [name, text] : group.values) {
            auto* value = new QLabel(text, box);
            value->setTextFormat(Qt::PlainText);
            value->setWordWrap(true);
            value->setTextInteractionFlags(Qt::TextSelectableByMouse);
            if (name.isEmpty())
                form->addRow(value);
            else
                form->addRow(name, value);
        }
        column->addLayout(form);
    }
    if (!sheet.found)
        column->addWidget(new QLabel(QStringLiteral("Il conto non esiste nell'azienda di lavoro."), box));
    column->addStretch();
    auto* area = new QScrollArea(parent);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(box);
    return area;
}

QTableWidget* links(const AccountSheet& sheet, QWidget* parent) {
    auto* table = new QTableWidget(static_cast<int>(sheet.links.size()), 4, parent);
    table->setHorizontalHeaderLabels({QStringLiteral("Distinta"), QStringLiteral("Sotto"),
                                      QStringLiteral("Data inizio"), QStringLiteral("Data fine")});
    table->setAccessibleName(QStringLiteral("Distinte in cui il conto compare"));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(platform::qt::Appearance::instance().rowHeight());
    table->horizontalHeader()->setHighlightSections(false);
    for (std::size_t row = 0; row < sheet.links.size(); ++row) {
        for (int column = 0; column < 4; ++column) {
            auto* item = new QTableWidgetItem(sheet.links[row].value(column));
            if (column >= 2)
                item->setTextAlignment(Qt::AlignCenter);
            table->setItem(static_cast<int>(row), column, item);
        }
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    return table;
}

} // namespace

AccountWindow::AccountWindow(const QString& name, const QString& title, const AccountKey& key,
                             const AccountSheet& sheet, QWidget* parent)
    : HostWindow(name, title, parent) {
    auto* layout = new QVBoxLayout(this);
    auto* head = heading(key, sheet, this);
    auto* table = links(sheet, this);
    auto* caption = new QLabel(sheet.links.empty() ? QStringLiteral("Il conto non compare in nessuna distinta.")
                                                   : QStringLiteral("Distinte in cui il conto compare"),
                               this);
    auto* buttons = new QDialogButtonBox(this);
    auto* close = dialogButton(QStringLiteral("&Chiudi"), buttons, true);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    close->setDefault(true);
    layout->addWidget(head);
    layout->addWidget(groups(sheet, this), 3);
    layout->addWidget(caption);
    layout->addWidget(table, 2);
    layout->addWidget(buttons);
    resize(640, 620);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    addControl(QStringLiteral("LBL_CONTO"), std::make_unique<LabelControl>(head));
    addControl(QStringLiteral("GRD_DISTINTE"), std::make_unique<TableControl>(table));
    addControl(QStringLiteral("CMD_CHIUDI"), std::make_unique<ButtonControl>(close));
}

void AccountWindow::showCard(HostContext& context, const QString& program, const AccountKey& key) {
    QString title;
    if (program == QLatin1String("SchedaClienti"))
        title = QStringLiteral("Scheda cliente");
    else if (program == QLatin1String("SchedaFornitori"))
        title = QStringLiteral("Scheda fornitore");
    else
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il programma \"" + program.toStdString() + "\" non esiste.");
    AccountWindow window(program, title, key, readAccount(*context.connection, key), context.window);
    window.run();
}

void AccountWindow::showLink(HostContext& context, const AccountKey& key) {
    AccountWindow window(QStringLiteral("CollegamentoAnagrafica"), QStringLiteral("Collegamento ad anagrafica"), key,
                         readAccount(*context.connection, key), context.window);
    window.run();
}

} // namespace host

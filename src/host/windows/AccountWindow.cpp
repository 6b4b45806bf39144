#include "host/windows/AccountWindow.h"

#include "contract/RuntimeError.h"
#include "host/script/WidgetControls.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/ListTable.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QResizeEvent>
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

/// As high as what it holds, with a scroll bar where there is less room.
class FittingArea : public QScrollArea {
public:
    using QScrollArea::QScrollArea;
    QSize sizeHint() const override {
        const auto* held = widget();
        const int height = held->hasHeightForWidth() ? held->heightForWidth(width()) : held->sizeHint().height();
        return {QScrollArea::sizeHint().width(), height};
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        if (event->size().width() != event->oldSize().width())
            updateGeometry();
    }
};

QLabel* groupTitle(const QString& text, bool first, QWidget* parent) {
    auto* title = new QLabel(text, parent);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    title->setContentsMargins(0, first ? 0 : 8, 0, 0);
    return title;
}

// One form for all groups: their values stand in one column.
QWidget* groups(const AccountSheet& sheet, QWidget* parent) {
    auto* box = new QWidget(parent);
    auto* form = new QFormLayout(box);
    form->setContentsMargins(0, 0, 0, 8);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setHorizontalSpacing(16);
    constexpr QMargins indent(12, 0, 0, 0);
    for (const auto& group : sheet.groups) {
        form->addRow(groupTitle(group.title, form->rowCount() == 0, box));
        for (const auto& [name, text] : group.values) {
            auto* value = new QLabel(text, box);
            value->setTextFormat(Qt::PlainText);
            value->setWordWrap(true);
            value->setTextInteractionFlags(Qt::TextSelectableByMouse);
            if (name.isEmpty()) {
                value->setContentsMargins(indent);
                form->addRow(value);
                continue;
            }
            auto* label = new QLabel(name, box);
            label->setContentsMargins(indent);
            form->addRow(label, value);
        }
    }
    if (!sheet.found)
        form->addRow(new QLabel(QStringLiteral("Il conto non esiste nell'azienda di lavoro."), box));
    auto* area = new FittingArea(parent);
    area->setObjectName(QStringLiteral("dati"));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(box);
    area->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    return area;
}

QTableWidget* links(const AccountSheet& sheet, QWidget* parent) {
    auto* table = new QTableWidget(parent);
    setUpList(*table, {{QStringLiteral("Distinta")},
                       {QStringLiteral("Sotto")},
                       {QStringLiteral("Data inizio"), Qt::AlignHCenter},
                       {QStringLiteral("Data fine"), Qt::AlignHCenter}});
    table->setAccessibleName(QStringLiteral("Distinte in cui il conto compare"));
    table->setRowCount(static_cast<int>(sheet.links.size()));
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            setCell(*table, row, column, sheet.links[static_cast<std::size_t>(row)].value(column));
    fitColumns(*table, 1);
    constexpr int leastRows = 4; // with the header
    table->setMinimumHeight(leastRows * platform::qt::Appearance::instance().rowHeight());
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
    layout->addWidget(groups(sheet, this));
    layout->addWidget(caption);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    resizeForType({640, 620});
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

} // namespace host

#include "host/windows/ListWindow.h"

#include "host/script/ViewControl.h"
#include "host/script/WidgetControls.h"
#include "host/tables/ShownRows.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/ExportWindow.h"
#include "host/windows/PrintWindow.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace host {

using platform::qt::Appearance;

namespace {

constexpr int widestColumn = 320; ///< pixels at ten points that a column takes at most by itself
constexpr QSize usualSize(900, 560);

/// A list of whole rows in which Enter is a double click.
class RowsView : public QTableView {
public:
    using QTableView::QTableView;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid())
            emit activated(currentIndex());
        else
            QTableView::keyPressEvent(event);
    }
};

} // namespace

ListWindow::ListWindow(const QString& name, const QString& title, QWidget* parent)
    : HostWindow(name, title, parent), choices_(new QHBoxLayout), filters_(new QHBoxLayout), details_(new QVBoxLayout),
      buttons_(new QHBoxLayout), heading_(new QLabel(this)), filter_(new QLineEdit(this)), view_(new RowsView(this)),
      model_(new TableModel(this)) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    heading_->setTextFormat(Qt::PlainText);
    heading_->setWordWrap(true);
    heading_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* label = new QLabel(QStringLiteral("&Filtro:"), this);
    label->setBuddy(filter_);
    filter_->setPlaceholderText(QStringLiteral("testo in una colonna qualsiasi"));
    filter_->setAccessibleName(QStringLiteral("Filtro"));
    filter_->setClearButtonEnabled(true);
    filters_->addWidget(label);
    filters_->addWidget(filter_, 1);

    view_->setModel(model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setShowGrid(false);
    view_->setTabKeyNavigation(false);
    view_->setWordWrap(false);
    view_->verticalHeader()->hide();
    // One height for all: a hundred thousand rows are laid out at once.
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(Appearance::instance().rowHeight());
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setStretchLastSection(true);

    auto* close = dialogButton(QStringLiteral("&Chiudi"), this);
    close->setAutoDefault(false);
    buttons_->addStretch(1);
    addExportButtons();
    buttons_->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choices_);
    layout->addWidget(heading_);
    layout->addLayout(filters_);
    layout->addWidget(view_, 1);
    layout->addLayout(details_);
    layout->addLayout(buttons_);
    resizeForType(usualSize);

    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(filter_, &QLineEdit::textChanged, this, &ListWindow::applyFilters);
    const auto activate = [this](const QModelIndex& index) { emit rowActivated(model_->tableRow(index.row())); };
    connect(view_, &QTableView::doubleClicked, this, activate);
    connect(static_cast<RowsView*>(view_), &QAbstractItemView::activated, this, activate);
    connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ListWindow::rowFocused);

    addControl(QStringLiteral("LBL_TITOLO"), std::make_unique<LabelControl>(heading_));
    addControl(QStringLiteral("TXT_FILTRO"), std::make_unique<FieldControl>(filter_));
    addControl(QStringLiteral("GRD_RIGHE"), std::make_unique<ViewControl>(view_));
    addControl(QStringLiteral("CMD_CHIUDI"), std::make_unique<ButtonControl>(close));
}

void ListWindow::setHeading(const QString& text) {
    heading_->setText(text);
}

void ListWindow::setTable(std::shared_ptr<const Table> table) {
    model_->setTable(std::move(table));
    applyFilters();
    fitColumns();
}

std::shared_ptr<const Table> ListWindow::shownTable() const {
    if (!table())
        return std::make_shared<ShownRows>(nullptr, std::vector<std::size_t>{});
    std::vector<std::size_t> rows;
    for (int shown = 0; shown < model_->rowCount(); ++shown)
        rows.push_back(model_->tableRow(shown));
    return std::make_shared<ShownRows>(table(), std::move(rows));
}

void ListWindow::addExportButtons() {
    const auto shown = [this] { return TitledTable{shownTable(), {windowTitle(), heading()}}; };
    auto* write = dialogButton(QStringLiteral("&Esporta…"), this);
    auto* print = dialogButton(QStringLiteral("S&tampa…"), this);
    for (auto* button : {write, print}) {
        button->setAutoDefault(false);
        buttons_->addWidget(button);
    }
    connect(write, &QPushButton::clicked, this, [this, shown] { ExportWindow(shown, this).run(); });
    connect(print, &QPushButton::clicked, this, [this, shown] { PrintWindow(shown, this).run(); });
    addControl(QStringLiteral("CMD_ESPORTA"), std::make_unique<ButtonControl>(write));
    addControl(QStringLiteral("CMD_STAMPA"), std::make_unique<ButtonControl>(print));
}

void ListWindow::setRowFilter(std::function<bool(std::size_t)> accepts) {
    accepts_ = std::move(accepts);
    applyFilters();
}

void ListWindow::applyFilters() {
    const QString wanted = filter_->text().trimmed();
    const auto current = currentRow();
    const auto holds = [&](std::size_t row) {
        const auto& table = *model_->table();
        for (std::size_t column = 0; column < table.columns().size(); ++column)
            if (cellText(table, row, column).contains(wanted, Qt::CaseInsensitive))
                return true;
        return false;
    };
    if (wanted.isEmpty())
        model_->setFilter(accepts_);
    else
        model_->setFilter([&](std::size_t row) { return (!accepts_ || accepts_(row)) && holds(row); });
    if (current)
        setCurrentRow(*current);
    emit rowFocused();
}

void ListWindow::fitColumns() {
    view_->resizeColumnsToContents();
    const int widest = widestColumn * Appearance::instance().zoom() / 10;
    for (int column = 0; column < model_->columnCount(); ++column)
        view_->setColumnWidth(column, std::min(view_->columnWidth(column) + 12, widest));
}

std::optional<std::size_t> ListWindow::currentRow() const {
    const QModelIndex index = view_->currentIndex();
    if (!index.isValid())
        return {};
    return model_->tableRow(index.row());
}

void ListWindow::setCurrentRow(std::size_t row) {
    if (const auto shown = model_->shownRow(row))
        view_->setCurrentIndex(model_->index(*shown, 0));
}

QPushButton* ListWindow::addButton(const QString& name, const QString& caption, bool primary) {
    auto* button = dialogButton(caption, this, primary);
    button->setAutoDefault(false);
    // All of its caption, whatever the type's size.
    constexpr int around = 36;
    const QString shown = QString(caption).remove(QLatin1Char('&'));
    button->setMinimumWidth(std::max(button->minimumWidth(), button->fontMetrics().horizontalAdvance(shown) + around));
    // Before the stretch that keeps the others at the right.
    buttons_->insertWidget(ownButtons_++, button);
    addControl(name, std::make_unique<ButtonControl>(button));
    return button;
}

void ListWindow::setListName(const QString& name) {
    view_->setAccessibleName(name);
}

} // namespace host

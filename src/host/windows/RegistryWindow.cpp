#include "host/windows/RegistryWindow.h"

#include "contract/Host.h"
#include "contract/RuntimeError.h"
#include "host/script/ViewControl.h"
#include "host/script/WidgetControls.h"
#include "host/services/Text.h"
#include "host/windows/UndoWindow.h"
#include "host/windows/WorkProgress.h"

#include <QHeaderView>

#include <algorithm>

namespace host {

using platform::qt::Appearance;

namespace {

const QString title = QStringLiteral("Registro degli spostamenti");
constexpr int rowsShown = 7; ///< of an operation, at first

QString counted(std::size_t operations) {
    if (operations == 0)
        return QStringLiteral("Nessuna operazione: qui compaiono gli spostamenti e le modifiche delle date.");
    return operations == 1 ? QStringLiteral("Una operazione") : QStringLiteral("%1 operazioni").arg(operations);
}

} // namespace

RegistryWindow::RegistryWindow(HostSession& session, QWidget* parent)
    : ListWindow(QStringLiteral("RegistroSpostamenti"), title, parent), session_(session) {
    setListName(QStringLiteral("Operazioni, dalla più recente"));
    makeFilters();
    makeDetails();
    undo_ = addButton(QStringLiteral("CMD_ANNULLA_OPERAZIONE"), QStringLiteral("&Annulla l'operazione…"), true);
    connect(undo_, &QPushButton::clicked, this, &RegistryWindow::askToTakeBack);
    connect(this, &ListWindow::rowFocused, this, &RegistryWindow::showRows);
    load();
}

void RegistryWindow::makeFilters() {
    const auto add = [this](QLineEdit* field, const QString& caption, const QString& name, int letters) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        field->setAccessibleName(QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        field->setMaximumWidth(field->fontMetrics().averageCharWidth() * letters + 40);
        filters().addWidget(label);
        filters().addWidget(field);
        addControl(name, std::make_unique<FieldControl>(field));
        connect(field, &QLineEdit::textChanged, this, &RegistryWindow::filterChanged);
    };
    user_ = new QLineEdit(this);
    day_ = new platform::qt::CalendarEdit(this);
    account_ = new QLineEdit(this);
    add(user_, QStringLiteral("&Utente:"), QStringLiteral("TXT_UTENTE"), 12);
    add(day_, QStringLiteral("&Giorno:"), QStringLiteral("TXT_GIORNO"), 12);
    add(account_, QStringLiteral("C&onto:"), QStringLiteral("TXT_CONTO"), 10);
}

void RegistryWindow::makeDetails() {
    rowsHeading_ = new QLabel(this);
    rowsHeading_->setTextFormat(Qt::PlainText);
    rowsHeading_->setWordWrap(true);
    rowsView_ = new QTableView(this);
    rowsModel_ = new TableModel(this);
    rowsView_->setModel(rowsModel_);
    rowsView_->setAccessibleName(QStringLiteral("Righe dell'operazione"));
    rowsView_->setSelectionBehavior(QAbstractItemView::SelectRows);
    rowsView_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rowsView_->setShowGrid(false);
    rowsView_->setTabKeyNavigation(false);
    rowsView_->setWordWrap(false);
    rowsView_->verticalHeader()->hide();
    rowsView_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    rowsView_->verticalHeader()->setDefaultSectionSize(Appearance::instance().rowHeight());
    rowsView_->horizontalHeader()->setHighlightSections(false);
    rowsView_->horizontalHeader()->setStretchLastSection(true);
    rowsView_->setMinimumHeight(Appearance::instance().rowHeight() * rowsShown);
    details().addWidget(rowsHeading_);
    details().addWidget(rowsView_);
    addControl(QStringLiteral("LBL_DETTAGLIO"), std::make_unique<LabelControl>(rowsHeading_));
    addControl(QStringLiteral("GRD_DETTAGLIO"), std::make_unique<ViewControl>(rowsView_));
}

contract::OperationFilter RegistryWindow::filter() const {
    contract::OperationFilter filter;
    filter.user = user_->text().trimmed().toStdString();
    filter.day = contract::Date::parse(day_->text().toStdString());
    bool whole = false;
    if (const qint64 account = account_->text().trimmed().toLongLong(&whole); whole)
        filter.account = account;
    return filter;
}

void RegistryWindow::load() {
    operations_ = std::make_shared<OperationsTable>(session_.registry()->Operations(filter()));
    shown_.reset();
    setHeading(counted(operations_->rowCount()));
    setTable(operations_);
    if (operations_->rowCount() > 0)
        setCurrentRow(0);
    showRows();
}

const std::vector<contract::Operation>& RegistryWindow::operations() const {
    return operations_->operations();
}

const contract::Operation* RegistryWindow::current() const {
    const auto row = currentRow();
    return row && *row < operations().size() ? &operations()[*row] : nullptr;
}

bool RegistryWindow::choose(std::int64_t operation) {
    const auto& all = operations();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.id == operation; });
    if (found == all.end())
        return false;
    setCurrentRow(static_cast<std::size_t>(found - all.begin()));
    showRows();
    return shown_ == operation;
}

const std::vector<contract::OperationRow>& RegistryWindow::rows() const {
    return rows_->rows();
}

void RegistryWindow::showRows() {
    guarded([this] {
        const auto* operation = current();
        undo_->setEnabled(operation != nullptr && !operation->undoneBy);
        const auto wanted = operation != nullptr ? std::optional(operation->id) : std::nullopt;
        if (rows_ && shown_ == wanted)
            return;
        auto* registry = session_.registry();
        std::vector<contract::OperationRow> rows;
        if (operation != nullptr)
            rows = registry->OperationRows(operation->id);
        rows_ = std::make_shared<OperationRowsTable>(
            std::move(rows), [registry](std::string_view column) { return registry->ColumnCaption(column); });
        shown_ = wanted;
        rowsHeading_->setText(operation == nullptr ? QString() : toQt(operation->description));
        rowsModel_->setTable(rows_);
        rowsView_->resizeColumnsToContents();
    });
}

void RegistryWindow::filterChanged() {
    // A day or an account that is typed only in part filters nothing yet.
    guarded([this] { load(); });
}

contract::Undoing RegistryWindow::takeBack(std::int64_t operation) {
    // The trees are read again as a part of it: once it is kept nothing of it is given up.
    const WorkProgress progress;
    auto outcome = session_.registry()->Undo(operation);
    if (outcome.undone)
        session_.chooseMenuEntry(QStringLiteral("mnuAggiorna"));
    load();
    return outcome;
}

void RegistryWindow::askToTakeBack() {
    guarded([this] {
        const auto* focused = current();
        if (focused == nullptr)
            return;
        const contract::Operation operation = *focused;
        auto* registry = session_.registry();
        const ColumnCaptions captions = [registry](std::string_view column) { return registry->ColumnCaption(column); };
        UndoWindow window(operation, registry->PreviewUndo(operation.id), captions, this);
        window.run();
        if (!window.confirmed())
            return;
        const auto outcome = takeBack(operation.id);
        if (outcome.undone) {
            setHeading(QStringLiteral("L'operazione %1 è stata annullata.").arg(operation.id));
            return;
        }
        // Somebody was quicker.
        UndoWindow(operation, outcome, captions, this).run();
    });
}

template <class Action> void RegistryWindow::guarded(Action action) {
    try {
        action();
    } catch (const contract::RuntimeError& error) {
        session_.dialogs().showMessage(title.toStdString(), error.description(), contract::message::critical);
    } catch (const contract::Cancelled& cancelled) {
        setHeading(QString::fromUtf8(cancelled.what()));
        session_.say(heading());
    }
}

} // namespace host

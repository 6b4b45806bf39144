#include "host/windows/LookupWindow.h"

#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/script/WidgetControls.h"
#include "host/services/Text.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/ListTable.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace host {

namespace {

class ListControl : public TableControl {
public:
    ListControl(LookupWindow& window, QTableWidget* list) : TableControl(list), window_(window) {}
    QString chooseItem(const QString& code) override { return window_.pick(code); }

private:
    LookupWindow& window_;
};

} // namespace

std::optional<std::int64_t> LookupWindow::choose(HostContext& context, const contract::LookupRequest& request,
                                                 contract::Connection& connection) {
    contract::Snapshot rows;
    readAgainWhenLost(connection, request.statement, rows);
    LookupWindow window(request, rows, context.window);
    window.run();
    return window.chosen();
}

LookupWindow::LookupWindow(const contract::LookupRequest& request, const contract::Snapshot& rows, QWidget* parent)
    : HostWindow(toQt(request.name), toQt(request.title), parent), search_(new QLineEdit(this)),
      list_(new QTableWidget(this)) {
    search_->setPlaceholderText(QStringLiteral("Cerca nell'elenco"));
    search_->setAccessibleName(QStringLiteral("Cerca nell'elenco"));
    search_->setClearButtonEnabled(true);
    list_->setAccessibleName(windowTitle());
    const std::size_t count = rows.columnCount();
    std::vector<ListColumn> columns;
    for (std::size_t i = 0; i < count; ++i)
        columns.push_back({toQt(i < request.columnTitles.size() ? request.columnTitles[i] : rows.fields()[i].name),
                           i == 0 ? Qt::AlignRight : Qt::AlignLeft});
    setUpList(*list_, columns);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->horizontalHeader()->setStretchLastSection(true);
    fill(rows, count);

    auto* buttons = new QDialogButtonBox(this);
    accept_ = dialogButton(QStringLiteral("&Scegli"), buttons, true);
    auto* cancel = dialogButton(QStringLiteral("&Annulla"), buttons);
    buttons->addButton(accept_, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    accept_->setDefault(true);
    accept_->setEnabled(list_->rowCount() > 0);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search_);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    resizeForType({440, 380});

    connect(search_, &QLineEdit::textChanged, this, &LookupWindow::search);
    connect(search_, &QLineEdit::returnPressed, this, &LookupWindow::confirm);
    connect(list_, &QTableWidget::cellActivated, this, &LookupWindow::confirm);
    connect(accept_, &QPushButton::clicked, this, &LookupWindow::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    addControl(QStringLiteral("TXT_CERCA"), std::make_unique<FieldControl>(search_));
    addControl(QStringLiteral("GRD_ELENCO"), std::make_unique<TableControl>(list_));
    addControl(QStringLiteral("CMD_SCEGLI"), std::make_unique<ButtonControl>(accept_));
    addControl(QStringLiteral("CMD_ANNULLA"), std::make_unique<ButtonControl>(cancel));
    // A script's "choose" addresses the list by the window's name.
    addControl(formName(), std::make_unique<ListControl>(*this, list_));
    list_->installEventFilter(this);
    list_->setFocus();
}

// The list's own search looks into the column of codes alone.
bool LookupWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != list_ || event->type() != QEvent::KeyPress)
        return HostWindow::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const QString letters = key->text();
    const bool command = (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    if (command || letters.isEmpty() || !letters[0].isPrint() || (letters[0].isSpace() && typed_.isEmpty()))
        return HostWindow::eventFilter(watched, event);
    if (!sinceTyped_.isValid() || sinceTyped_.elapsed() > QApplication::keyboardInputInterval())
        typed_.clear();
    sinceTyped_.start();
    typed_ += letters;
    // The same letter again goes on to the next row.
    const bool again = typed_.size() > 1 && typed_.count(typed_[0]) == typed_.size();
    const QString wanted = again ? typed_.left(1) : typed_;
    const int rows = list_->rowCount();
    const int from = std::max(list_->currentRow(), 0) + (again || typed_.size() == 1 ? 1 : 0);
    for (int step = 0; step < rows; ++step) {
        const int row = (from + step) % rows;
        if (list_->isRowHidden(row))
            continue;
        for (int column = 0; column < list_->columnCount(); ++column)
            if (list_->item(row, column)->text().startsWith(wanted, Qt::CaseInsensitive)) {
                list_->setCurrentCell(row, 0);
                return true;
            }
    }
    return true;
}

void LookupWindow::fill(const contract::Snapshot& rows, std::size_t columns) {
    list_->setRowCount(static_cast<int>(rows.rowCount()));
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        for (std::size_t column = 0; column < columns; ++column)
            setCell(*list_, static_cast<int>(row), static_cast<int>(column),
                    toQt(rows.column(column).value(row).text()));
    }
    if (list_->rowCount() > 0)
        list_->setCurrentCell(0, 0);
}

void LookupWindow::search(const QString& text) {
    int first = -1;
    for (int row = 0; row < list_->rowCount(); ++row) {
        bool found = text.trimmed().isEmpty();
        for (int column = 0; column < list_->columnCount() && !found; ++column)
            found = list_->item(row, column)->text().contains(text.trimmed(), Qt::CaseInsensitive);
        list_->setRowHidden(row, !found);
        if (found && first < 0)
            first = row;
    }
    list_->setCurrentCell(first, first < 0 ? -1 : 0);
    accept_->setEnabled(first >= 0);
}

QString LookupWindow::pick(const QString& code) {
    for (int row = 0; row < list_->rowCount(); ++row) {
        if (list_->item(row, 0)->text() != code)
            continue;
        search_->clear();
        list_->setCurrentCell(row, 0);
        confirm();
        return {};
    }
    return QStringLiteral("l'elenco \"%1\" non ha il codice %2").arg(windowTitle(), code);
}

void LookupWindow::confirm() {
    const int row = list_->currentRow();
    if (row < 0 || list_->isRowHidden(row))
        return;
    bool whole = false;
    const qint64 code = list_->item(row, 0)->text().toLongLong(&whole);
    if (!whole)
        return;
    chosen_ = code;
    accept();
}

} // namespace host

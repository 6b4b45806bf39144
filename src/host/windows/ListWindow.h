#pragma once

#include "host/tables/TableModel.h"
#include "host/windows/HostWindow.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <functional>
#include <memory>
#include <optional>

namespace host {

/// A window of the host's own around one table: a heading, a field that filters by text, the rows, and buttons below.
///
/// Scripts know them as LBL_TITOLO, TXT_FILTRO, GRD_RIGHE and CMD_CHIUDI, besides what a window adds. Of GRD_RIGHE they
/// read the rows that are shown; "select" with a key from 0 puts the focus on the row shown there, and the key Enter
/// does what a double click does. CMD_ESPORTA and CMD_STAMPA write and print the rows that are shown.
class ListWindow : public HostWindow {
    Q_OBJECT
public:
    ListWindow(const QString& name, const QString& title, QWidget* parent);

    /// What stands above the list: counts, or why it is empty.
    void setHeading(const QString& text);
    QString heading() const { return heading_->text(); }
    /// Shows another table. The filters stay.
    void setTable(std::shared_ptr<const Table> table);
    const std::shared_ptr<const Table>& table() const { return model_->table(); }
    /// Rows to be shown, besides what the text filter keeps back; every one where it is empty.
    void setRowFilter(std::function<bool(std::size_t)> accepts);
    /// The rows that are shown, as a table of their own.
    std::shared_ptr<const Table> shownTable() const;
    /// The table's row that has the focus.
    std::optional<std::size_t> currentRow() const;
    /// Puts the focus on a row of the table, if it is shown.
    void setCurrentRow(std::size_t row);

signals:
    void rowActivated(std::size_t row); ///< double click or Enter, of the table's rows
    void rowFocused();

protected:
    /// Above the heading, for what the user chooses (kind, day, company).
    QBoxLayout& choices() { return *choices_; }
    /// Beside the text filter.
    QBoxLayout& filters() { return *filters_; }
    /// Between the list and the buttons, for what belongs to one row.
    QBoxLayout& details() { return *details_; }
    /// A button at the left of the others, seen by scripts under that name. primary: the one that the window is there
    /// for.
    QPushButton* addButton(const QString& name, const QString& caption, bool primary = false);
    /// What the rows are, for a screen reader.
    void setListName(const QString& name);
    QTableView& view() { return *view_; }

private:
    void addExportButtons();
    void applyFilters();
    void fitColumns();

    QBoxLayout* choices_;
    QBoxLayout* filters_;
    QBoxLayout* details_;
    QBoxLayout* buttons_;
    int ownButtons_ = 0; ///< at the left
    QLabel* heading_;
    QLineEdit* filter_;
    QTableView* view_;
    TableModel* model_;
    std::function<bool(std::size_t)> accepts_;
};

} // namespace host

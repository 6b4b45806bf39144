#pragma once

#include "host/start/HostSession.h"
#include "host/tables/RegistryTables.h"
#include "host/tables/TableModel.h"
#include "host/windows/ListWindow.h"
#include "platform/qt/fields/CalendarEdit.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace host {

/// The registry of moves: its operations, newest first, the rows of the one that has the focus, and the way back.
///
/// Scripts know besides a list's controls TXT_UTENTE, TXT_GIORNO and TXT_CONTO (filters), GRD_DETTAGLIO (the rows of
/// the operation) and CMD_ANNULLA_OPERAZIONE.
class RegistryWindow : public ListWindow {
    Q_OBJECT
public:
    /// The session's registry is there and outlives the window. Throws RuntimeError where it can not be read.
    RegistryWindow(HostSession& session, QWidget* parent);

    /// Reads the operations again, by the filters.
    void load();
    const std::vector<contract::Operation>& operations() const;
    /// Puts the focus on an operation, and its rows into the list below; false where it is not among those shown.
    bool choose(std::int64_t operation);
    const std::vector<contract::OperationRow>& rows() const;

    /// What the button does once the user has said yes: takes the operation back and loads the trees again.
    contract::Undoing takeBack(std::int64_t operation);

private:
    void makeFilters();
    void makeDetails();
    void filterChanged();
    contract::OperationFilter filter() const;
    const contract::Operation* current() const;
    void showRows();
    void askToTakeBack();
    /// Runs what reads or writes the database; an error is told.
    template <class Action> void guarded(Action action);

    HostSession& session_;
    std::shared_ptr<const OperationsTable> operations_;
    std::shared_ptr<const OperationRowsTable> rows_;
    QLineEdit* user_ = nullptr;
    platform::qt::CalendarEdit* day_ = nullptr;
    QLineEdit* account_ = nullptr;
    QLabel* rowsHeading_ = nullptr;
    QTableView* rowsView_ = nullptr;
    TableModel* rowsModel_ = nullptr;
    QPushButton* undo_ = nullptr;
    std::optional<std::int64_t> shown_; ///< whose rows stand below
};

} // namespace host

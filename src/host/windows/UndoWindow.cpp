#include "host/windows/UndoWindow.h"

#include <memory>

namespace host {

namespace {

QString rowsText(std::size_t rows) {
    return rows == 1 ? QStringLiteral("Una riga torna com'era.")
                     : QStringLiteral("%1 righe tornano com'erano.").arg(rows);
}

} // namespace

UndoWindow::UndoWindow(const contract::Operation& operation, const contract::Undoing& preview,
                       const ColumnCaptions& captions, QWidget* parent)
    : ListWindow(QStringLiteral("AnnullaOperazione"), QStringLiteral("Annulla l'operazione %1").arg(operation.id),
                 parent) {
    if (preview.obstacles.empty()) {
        setHeading(
            QStringLiteral("Annullare l'operazione %1? %2").arg(operation.id).arg(rowsText(preview.rows.size())));
        setListName(QStringLiteral("Righe che tornano com'erano"));
        setTable(std::make_shared<OperationRowsTable>(preview.rows, captions));
        auto* yes = addButton(QStringLiteral("CMD_ANNULLA"), QStringLiteral("Annulla l'&operazione"), true);
        connect(yes, &QPushButton::clicked, this, &QDialog::accept);
    } else {
        setHeading(QStringLiteral("L'operazione %1 non si può annullare: quello che ha lasciato non è più com'era.")
                       .arg(operation.id));
        setListName(QStringLiteral("Righe che lo impediscono"));
        setTable(std::make_shared<ObstaclesTable>(preview.obstacles));
    }
}

} // namespace host

#include "host/windows/ErrorLogWindow.h"

#include "host/windows/DialogButtons.h"
#include "host/windows/ListTable.h"
#include "platform/qt/look/Appearance.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace host {

namespace {

QString text(const QJsonObject& entry, const char* member) {
    return entry.value(QLatin1String(member)).toString();
}

QString answerText(int answer) {
    switch (answer) {
    case 3:
        return QStringLiteral("Interrompi");
    case 4:
        return QStringLiteral("Riprova");
    case 5:
        return QStringLiteral("Ignora");
    default:
        return QString::number(answer);
    }
}

QString describe(const QJsonObject& entry) {
    QString all = QStringLiteral("%1\n\nErrore %2 nella procedura %3 di \"%4\" (%5)\nRisposta: %6\n")
                      .arg(text(entry, "description"))
                      .arg(entry.value(QStringLiteral("number")).toInt())
                      .arg(text(entry, "procedure"), text(entry, "caption"), text(entry, "application"),
                           answerText(entry.value(QStringLiteral("answer")).toInt()));
    const QJsonArray records = entry.value(QStringLiteral("records")).toArray();
    for (const auto& value : records) {
        const QJsonObject record = value.toObject();
        all += QStringLiteral("\nDatabase: [%1] %2 %3")
                   .arg(text(record, "state"))
                   .arg(record.value(QStringLiteral("number")).toInteger())
                   .arg(text(record, "description"));
    }
    return all;
}

} // namespace

ErrorLogWindow::ErrorLogWindow(const QString& file, QWidget* parent)
    : QDialog(parent), list_(new QTableWidget(this)), details_(new QPlainTextEdit(this)) {
    setWindowTitle(QStringLiteral("Registro degli errori"));
    setUpList(*list_, {{QStringLiteral("Ora")},
                       {QStringLiteral("Procedura")},
                       {QStringLiteral("Descrizione")},
                       {QStringLiteral("Risposta")}});
    list_->setAccessibleName(windowTitle());
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    details_->setReadOnly(true);
    details_->setAccessibleName(QStringLiteral("Dettaglio dell'errore"));

    auto* panes = new QSplitter(Qt::Vertical, this);
    panes->addWidget(list_);
    panes->addWidget(details_);
    panes->setStretchFactor(0, 3);
    panes->setStretchFactor(1, 2);
    auto* buttons = new QDialogButtonBox(this);
    auto* close = dialogButton(QStringLiteral("&Chiudi"), buttons, true);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QTableWidget::currentCellChanged, this, [this](int row) {
        const auto* item = list_->item(row, 0);
        details_->setPlainText(item != nullptr ? item->data(Qt::UserRole).toString() : QString());
    });
    auto* layout = new QVBoxLayout(this);
    auto* path = new QLabel(file, this);
    path->setTextFormat(Qt::PlainText);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(path);
    layout->addWidget(panes);
    layout->addWidget(buttons);
    resize(860, 560);
    load(file);
}

void ErrorLogWindow::load(const QString& path) {
    QFile file(path);
    QList<QJsonObject> entries;
    if (file.open(QIODevice::ReadOnly)) {
        while (!file.atEnd()) {
            const QJsonObject entry = QJsonDocument::fromJson(file.readLine()).object();
            if (!entry.isEmpty())
                entries.append(entry);
            if (entries.size() > mostEntries)
                entries.removeFirst();
        }
    }
    if (entries.isEmpty())
        details_->setPlainText(QStringLiteral("Nessun errore registrato."));
    list_->setRowCount(static_cast<int>(entries.size()));
    for (int row = 0; row < list_->rowCount(); ++row) {
        const QJsonObject& entry = entries[entries.size() - 1 - row];
        const auto time = QDateTime::fromString(text(entry, "time"), Qt::ISODateWithMs);
        setCell(*list_, row, 0, time.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")))
            ->setData(Qt::UserRole, describe(entry));
        setCell(*list_, row, 1, text(entry, "procedure"));
        setCell(*list_, row, 2, text(entry, "description").simplified());
        setCell(*list_, row, 3, answerText(entry.value(QStringLiteral("answer")).toInt()));
    }
    fitColumns(*list_, 2);
    if (list_->rowCount() > 0)
        list_->setCurrentCell(0, 0);
}

} // namespace host

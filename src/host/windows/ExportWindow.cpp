#include "host/windows/ExportWindow.h"

#include "host/script/ComboControl.h"
#include "host/script/WidgetControls.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/Prompts.h"
#include "platform/qt/forms/Session.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QStandardPaths>

#include <utility>

namespace host {

namespace {

const QString caption = QStringLiteral("Esporta");
const QString kinds =
    QStringLiteral("Foglio di calcolo (*.xlsx);;Testo separato da punti e virgola (*.csv);;Documento PDF (*.pdf)");
constexpr qsizetype longestName = 80;

/// Where the last file went; the user's documents at first.
QString& lastFolder() {
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder;
}

QString fileNameOf(const QString& title) {
    QString name;
    for (const QChar letter : title.simplified())
        name += letter.isLetterOrNumber() ? letter : QLatin1Char('-');
    while (name.contains(QStringLiteral("--")))
        name.replace(QStringLiteral("--"), QStringLiteral("-"));
    name.truncate(longestName);
    while (name.endsWith(QLatin1Char('-')))
        name.chop(1);
    return name.isEmpty() ? QStringLiteral("Elenco") : name;
}

bool unattended() {
    return platform::qt::Session::instance().unattended();
}

} // namespace

ExportWindow::ExportWindow(std::function<TitledTable()> make, QWidget* parent)
    : HostWindow(QStringLiteral("ESPORTA"), caption, parent), make_(std::move(make)), rows_(new QFormLayout),
      file_(new QLineEdit(this)), outcome_(new QLabel(this)) {
    constexpr int leastWidth = 420;
    file_->setMinimumWidth(leastWidth);
    file_->setText(proposal());
    file_->setToolTip(QStringLiteral("Il formato segue la fine del nome: .csv, .xlsx o .pdf"));
    auto* browseButton = dialogButton(QStringLiteral("S&foglia…"), this);
    browseButton->setAutoDefault(false);
    // The choice of a file waits for a person.
    browseButton->setEnabled(!unattended());
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(file_, 1);
    fileRow->addWidget(browseButton);
    auto* label = new QLabel(QStringLiteral("&Nome del file:"), this);
    label->setBuddy(file_);
    rows_->addRow(label, fileRow);
    outcome_->setTextFormat(Qt::PlainText);
    outcome_->setWordWrap(true);
    outcome_->setText(QStringLiteral("Il formato segue la fine del nome: .csv, .xlsx o .pdf"));

    auto* writeButton = dialogButton(QStringLiteral("&Esporta"), this, true);
    auto* cancel = dialogButton(QStringLiteral("&Annulla"), this);
    writeButton->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(writeButton);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addLayout(rows_);
    column->addWidget(outcome_);
    column->addLayout(buttons);

    connect(browseButton, &QPushButton::clicked, this, &ExportWindow::browse);
    connect(writeButton, &QPushButton::clicked, this, &ExportWindow::write);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    addControl(QStringLiteral("TXT_FILE"), std::make_unique<FieldControl>(file_));
    addControl(QStringLiteral("CMD_SFOGLIA"), std::make_unique<ButtonControl>(browseButton));
    addControl(QStringLiteral("LBL_ESITO"), std::make_unique<LabelControl>(outcome_));
    addControl(QStringLiteral("CMD_SCRIVI"), std::make_unique<ButtonControl>(writeButton));
    addControl(QStringLiteral("CMD_ANNULLA"), std::make_unique<ButtonControl>(cancel));
    file_->setFocus();
}

QComboBox* ExportWindow::addChoice(const QString& name, const QString& label, const QStringList& items, int chosen) {
    auto* combo = new QComboBox(this);
    combo->addItems(items);
    combo->setCurrentIndex(chosen);
    auto* text = new QLabel(label, this);
    text->setBuddy(combo);
    rows_->insertRow(choices_++, text, combo);
    addControl(name, std::make_unique<ComboControl>(combo));
    // Another list has another name, unless the user gave it one.
    connect(combo, &QComboBox::currentIndexChanged, this, [this] {
        if (!file_->isModified())
            file_->setText(proposal());
    });
    return combo;
}

QString ExportWindow::proposal() const {
    return QDir(lastFolder()).filePath(fileNameOf(make_().title.title) + QStringLiteral(".xlsx"));
}

void ExportWindow::browse() {
    QString kind;
    const QString chosen =
        QFileDialog::getSaveFileName(this, caption, file_->text(), kinds, &kind, QFileDialog::DontConfirmOverwrite);
    if (chosen.isEmpty())
        return;
    const QString ending = kind.contains(QLatin1String("csv"))   ? QStringLiteral(".csv")
                           : kind.contains(QLatin1String("pdf")) ? QStringLiteral(".pdf")
                                                                 : QStringLiteral(".xlsx");
    file_->setText(tableFormatOf(chosen) ? chosen : chosen + ending);
    file_->setModified(true);
}

void ExportWindow::write() {
    const QString file = file_->text().trimmed();
    if (file.isEmpty()) {
        outcome_->setText(QStringLiteral("Manca il nome del file."));
        return;
    }
    if (QFileInfo(file).isFile() && !unattended() &&
        !ask(caption, QStringLiteral("Il file «%1» esiste già. Sostituirlo?").arg(file), this))
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const TitledTable list = make_();
    const QString failure = writeTableFile(*list.table, list.title, file);
    QApplication::restoreOverrideCursor();
    if (!failure.isEmpty()) {
        outcome_->setText(failure);
        return;
    }
    lastFolder() = QFileInfo(file).absolutePath();
    written_ = QStringLiteral("Righe esportate: %1 in «%2».").arg(list.table->rowCount()).arg(file);
    accept();
}

} // namespace host

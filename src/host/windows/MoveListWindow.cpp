#include "host/windows/MoveListWindow.h"

#include "contract/RuntimeError.h"
#include "host/moves/MoveFile.h"
#include "host/script/WidgetControls.h"
#include "host/windows/DialogButtons.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>

namespace host {

namespace {

const QString title = QStringLiteral("Spostamenti da elenco");

} // namespace

MoveListWindow::MoveListWindow(contract::MoveLists& lists, const QString& file, QWidget* parent)
    : PlanWindow(QLatin1String(name), title, parent), lists_(lists), file_(new QLineEdit(file, this)),
      unreadable_("Leggere un file CSV o incollare un elenco: la prima riga nomina le colonne, conto e nuovo_padre.") {
    auto* label = new QLabel(QStringLiteral("Fil&e:"), this);
    label->setBuddy(file_);
    file_->setAccessibleName(QStringLiteral("File dell'elenco"));
    file_->setPlaceholderText(QStringLiteral("elenco.csv"));
    const auto button = [this](const char* control, const QString& caption) {
        auto* made = dialogButton(caption, this);
        made->setAutoDefault(false);
        addControl(QLatin1String(control), std::make_unique<ButtonControl>(made));
        return made;
    };
    auto* browse = button("CMD_SFOGLIA", QStringLiteral("Sfo&glia…"));
    auto* read = button("CMD_LEGGI", QStringLiteral("&Leggi"));
    auto* paste = button("CMD_INCOLLA", QStringLiteral("I&ncolla"));
    read->setToolTip(QStringLiteral("Legge il file, anche di nuovo dopo averlo corretto"));
    paste->setToolTip(QStringLiteral("Legge l'elenco dagli appunti"));
    choices().addWidget(label);
    choices().addWidget(file_, 1);
    for (auto* each : {browse, read, paste})
        choices().addWidget(each);
    addControl(QStringLiteral("TXT_FILE"), std::make_unique<FieldControl>(file_));
    orderTabs({file_, browse, read, paste});

    connect(browse, &QPushButton::clicked, this, &MoveListWindow::browse);
    connect(read, &QPushButton::clicked, this, &MoveListWindow::readFile);
    connect(file_, &QLineEdit::returnPressed, this, &MoveListWindow::readFile);
    connect(paste, &QPushButton::clicked, this, &MoveListWindow::paste);
    if (file.isEmpty())
        refresh();
    else
        readFile();
}

contract::MovePlan MoveListWindow::makePlan() {
    if (!unreadable_.empty())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall, unreadable_);
    return lists_.planList(lines_, contract::Unnamed::onScreen);
}

template <class Reading> void MoveListWindow::take(Reading&& reading) {
    lines_.clear();
    unreadable_.clear();
    try {
        lines_ = reading();
    } catch (const contract::RuntimeError& error) {
        unreadable_ = error.description();
    }
    refresh();
}

void MoveListWindow::browse() {
    const QString chosen = QFileDialog::getOpenFileName(this, title, file_->text(),
                                                        QStringLiteral("Elenchi (*.csv *.txt);;Tutti i file (*)"));
    if (chosen.isEmpty())
        return;
    file_->setText(chosen);
    readFile();
}

void MoveListWindow::readFile() {
    take([this] { return readMoveFile(file_->text()); });
}

void MoveListWindow::paste() {
    file_->clear();
    take([] { return readMoves(QGuiApplication::clipboard()->text().toStdString()); });
}

} // namespace host

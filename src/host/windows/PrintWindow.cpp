#include "host/windows/PrintWindow.h"

#include "host/script/ComboControl.h"
#include "host/script/WidgetControls.h"
#include "host/tables/TablePages.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/Prompts.h"
#include "platform/qt/forms/Session.h"

#include <QApplication>
#include <QPrintDialog>
#include <QVBoxLayout>

#include <utility>

namespace host {

namespace {

const QString caption = QStringLiteral("Stampa");
constexpr QSize usualSize(980, 720);

} // namespace

PrintWindow::PrintWindow(std::function<TitledTable()> make, QWidget* parent)
    : HostWindow(QStringLiteral("STAMPA"), caption, parent), make_(std::move(make)), printer_(QPrinter::HighResolution),
      choices_(new QHBoxLayout), pages_(new QPrintPreviewWidget(&printer_, this)), page_(new QLabel(this)),
      back_(dialogButton(QStringLiteral("&Precedente"), this)),
      forth_(dialogButton(QStringLiteral("S&uccessiva"), this)) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    pages_->setAccessibleName(QStringLiteral("Anteprima di stampa"));
    page_->setTextFormat(Qt::PlainText);
    auto* whole = dialogButton(QStringLiteral("Pagina &intera"), this);
    auto* width = dialogButton(QStringLiteral("&Larghezza"), this);
    auto* print = dialogButton(QStringLiteral("S&tampa…"), this, true);
    auto* close = dialogButton(QStringLiteral("&Chiudi"), this);
    // The choice of a printer waits for a person.
    print->setEnabled(!platform::qt::Session::instance().unattended());
    auto* buttons = new QHBoxLayout;
    for (QWidget* each : std::initializer_list<QWidget*>{back_, page_, forth_, whole, width})
        buttons->addWidget(each);
    buttons->addStretch(1);
    buttons->addWidget(print);
    buttons->addWidget(close);
    for (auto* button : {back_, forth_, static_cast<QPushButton*>(whole), static_cast<QPushButton*>(width),
                         static_cast<QPushButton*>(close)})
        button->setAutoDefault(false);
    choices_->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(choices_);
    column->addWidget(pages_, 1);
    column->addLayout(buttons);
    resizeForType(usualSize);
    pages_->fitInView();

    connect(pages_, &QPrintPreviewWidget::paintRequested, this, [this] { layOut(); });
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, &PrintWindow::showPage);
    connect(back_, &QPushButton::clicked, this, [this] { turn(-1); });
    connect(forth_, &QPushButton::clicked, this, [this] { turn(1); });
    connect(whole, &QPushButton::clicked, pages_, &QPrintPreviewWidget::fitInView);
    connect(width, &QPushButton::clicked, pages_, &QPrintPreviewWidget::fitToWidth);
    connect(print, &QPushButton::clicked, this, &PrintWindow::print);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    addControl(QStringLiteral("LBL_PAGINE"), std::make_unique<LabelControl>(page_));
    addControl(QStringLiteral("CMD_PRECEDENTE"), std::make_unique<ButtonControl>(back_));
    addControl(QStringLiteral("CMD_SUCCESSIVA"), std::make_unique<ButtonControl>(forth_));
    addControl(QStringLiteral("CMD_STAMPANTE"), std::make_unique<ButtonControl>(print));
    addControl(QStringLiteral("CMD_CHIUDI"), std::make_unique<ButtonControl>(close));
    pages_->updatePreview();
}

QComboBox* PrintWindow::addChoice(const QString& name, const QString& label, const QStringList& items, int chosen) {
    auto* combo = new QComboBox(this);
    combo->addItems(items);
    combo->setCurrentIndex(chosen);
    auto* text = new QLabel(label, this);
    text->setBuddy(combo);
    // Before the stretch.
    choices_->insertWidget(choices_->count() - 1, text);
    choices_->insertWidget(choices_->count() - 1, combo);
    addControl(name, std::make_unique<ComboControl>(combo));
    connect(combo, &QComboBox::currentIndexChanged, this, [this] {
        pages_->setCurrentPage(1);
        pages_->updatePreview();
    });
    return combo;
}

void PrintWindow::layOut() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const TitledTable list = make_();
    TablePages::setPage(*list.table, printer_);
    printTable(*list.table, list.title, printer_);
    QApplication::restoreOverrideCursor();
}

void PrintWindow::showPage() {
    const int current = pages_->currentPage();
    page_->setText(QStringLiteral("pagina %1 di %2").arg(current).arg(pages_->pageCount()));
    back_->setEnabled(current > 1);
    forth_->setEnabled(current < pages_->pageCount());
}

void PrintWindow::turn(int step) {
    pages_->setCurrentPage(pages_->currentPage() + step);
    showPage();
}

void PrintWindow::print() {
    QPrintDialog dialog(&printer_, this);
    dialog.setWindowTitle(caption);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dialog.setOption(QAbstractPrintDialog::PrintCollateCopies, false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const TitledTable list = make_();
    const bool printed = printTable(*list.table, list.title, printer_);
    QApplication::restoreOverrideCursor();
    if (!printed) {
        tell(QMessageBox::Critical, caption, QStringLiteral("La stampante non ha accettato la stampa."), this);
        return;
    }
    accept();
}

} // namespace host

#pragma once

#include "host/tables/TableFile.h"
#include "host/windows/HostWindow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QStringList>

#include <functional>

namespace host {

/// A list as it will stand on paper, page by page, and its printing.
///
/// Scripts know it as STAMPA with LBL_PAGINE ("pagina 1 di 3"), CMD_PRECEDENTE, CMD_SUCCESSIVA, CMD_STAMPANTE and
/// CMD_CHIUDI, besides the choices.
class PrintWindow : public HostWindow {
    Q_OBJECT
public:
    /// make: the list, asked for whenever its pages are laid out.
    PrintWindow(std::function<TitledTable()> make, QWidget* parent);

    /// A choice above the pages; seen by scripts under the name.
    QComboBox* addChoice(const QString& name, const QString& caption, const QStringList& items, int chosen);

private:
    void layOut();
    void showPage();
    void turn(int step);
    void print();

    std::function<TitledTable()> make_;
    QPrinter printer_;
    QHBoxLayout* choices_;
    QPrintPreviewWidget* pages_;
    QLabel* page_;
    QPushButton* back_;
    QPushButton* forth_;
};

} // namespace host

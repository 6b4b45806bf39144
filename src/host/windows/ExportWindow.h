#pragma once

#include "host/tables/TableFile.h"
#include "host/windows/HostWindow.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>

#include <functional>

namespace host {

/// Asks for a file and writes a list into it: CSV, XLSX or PDF by the ending. What can not be written is told in the
/// window, which stays.
///
/// Scripts know it as ESPORTA with TXT_FILE, CMD_SFOGLIA, LBL_ESITO, CMD_SCRIVI and CMD_ANNULLA, besides the choices.
class ExportWindow : public HostWindow {
    Q_OBJECT
public:
    /// make: the list, asked for when it is written, and at once for the name of the file.
    ExportWindow(std::function<TitledTable()> make, QWidget* parent);

    /// A choice above the file; seen by scripts under the name.
    QComboBox* addChoice(const QString& name, const QString& caption, const QStringList& items, int chosen);
    /// What was written, in a sentence; empty while nothing was.
    const QString& written() const { return written_; }

private:
    void browse();
    void write();
    QString proposal() const;

    std::function<TitledTable()> make_;
    QFormLayout* rows_;
    QLineEdit* file_;
    QLabel* outcome_;
    QString written_;
    int choices_ = 0;
};

} // namespace host

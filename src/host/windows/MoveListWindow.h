#pragma once

#include "contract/MoveLists.h"
#include "host/windows/PlanWindow.h"

#include <QLabel>

#include <vector>

namespace host {

/// A list of moves out of a file or the clipboard: what each line would do, before anything is done.
///
/// Scripts know TXT_FILE, CMD_SFOGLIA, CMD_LEGGI and CMD_INCOLLA besides a plan window's controls.
class MoveListWindow : public PlanWindow {
    Q_OBJECT
public:
    static constexpr const char* name = "SpostaElenco";

    /// With a file it is read at once. The lists must outlive the window.
    MoveListWindow(contract::MoveLists& lists, const QString& file, QWidget* parent);

    /// The lines as they were read last.
    const std::vector<contract::MoveLine>& lines() const { return lines_; }

protected:
    contract::MovePlan makePlan() override;
    bool hasLines() const override { return true; }

private:
    void browse();
    void readFile();
    void paste();
    /// Takes the lines that a reading gives, or says why it gives none.
    template <class Reading> void take(Reading&& reading);

    contract::MoveLists& lists_;
    QLineEdit* file_;
    std::vector<contract::MoveLine> lines_;
    std::string unreadable_; ///< why there are no lines; empty where there are
};

} // namespace host

#pragma once

#include "host/audit/Audits.h"
#include "host/windows/ListWindow.h"

#include <QComboBox>
#include <QLabel>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace host {

/// What an audit found: the findings, the most severe first; rule by rule with their counts to choose from; the
/// sentence and the remedy of the one that has the focus below.
///
/// Besides a list window's controls scripts know CMB_REGOLE (position 0 for all rules), LBL_RILIEVO, CMD_RIPETI and
/// CMD_MOSTRA.
class AuditWindow : public ListWindow {
    Q_OBJECT
public:
    /// audit: audits anew; may throw RuntimeError and contract::Cancelled.
    AuditWindow(std::int64_t company, std::function<AuditResult()> audit, QWidget* parent);

    /// Audits, and shows what was found.
    void refresh();
    /// No report where the audit failed or was given up.
    const AuditResult& result() const { return result_; }
    /// The finding whose node the user wants to see in its tree.
    const std::optional<contract::AuditFinding>& wanted() const { return wanted_; }

private:
    void fillRules();
    void filterRows();
    void focusFirst();
    void describeFocused();
    void leaveFor(std::size_t row);

    std::int64_t company_;
    std::function<AuditResult()> audit_;
    QComboBox* rules_;
    std::vector<std::size_t> choices_; ///< rules behind the choices from position 1
    QLabel* described_;
    QPushButton* show_;
    AuditResult result_;
    std::optional<contract::AuditFinding> wanted_;
};

} // namespace host

#include "host/audit/AuditWindow.h"

#include "contract/RuntimeError.h"
#include "host/audit/AuditTable.h"
#include "host/script/ComboControl.h"
#include "host/script/WidgetControls.h"
#include "host/services/Text.h"

#include <QGuiApplication>
#include <QSignalBlocker>

#include <utility>

namespace host {

AuditWindow::AuditWindow(std::int64_t company, std::function<AuditResult()> audit, QWidget* parent)
    : ListWindow(QStringLiteral("FRM_VERIFICA"), QStringLiteral("Verifica delle distinte"), parent), company_(company),
      audit_(std::move(audit)), rules_(new QComboBox(this)), described_(new QLabel(this)) {
    auto* again = addButton(QStringLiteral("CMD_RIPETI"), QStringLiteral("&Ripeti la verifica"));
    show_ = addButton(QStringLiteral("CMD_MOSTRA"), QStringLiteral("&Mostra il nodo"), true);
    auto* label = new QLabel(QStringLiteral("Re&gola:"), this);
    label->setBuddy(rules_);
    rules_->setAccessibleName(QStringLiteral("Regola"));
    rules_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    filters().addWidget(label);
    filters().addWidget(rules_);
    described_->setTextFormat(Qt::PlainText);
    described_->setWordWrap(true);
    described_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    details().addWidget(described_);
    setListName(QStringLiteral("Rilievi della verifica"));
    view().setToolTip(QStringLiteral("Invio o doppio clic: mostra il nodo nella sua distinta"));
    addControl(QStringLiteral("CMB_REGOLE"), std::make_unique<ComboControl>(rules_));
    addControl(QStringLiteral("LBL_RILIEVO"), std::make_unique<LabelControl>(described_));

    connect(again, &QPushButton::clicked, this, &AuditWindow::refresh);
    connect(rules_, &QComboBox::currentIndexChanged, this, &AuditWindow::filterRows);
    connect(this, &ListWindow::rowFocused, this, &AuditWindow::describeFocused);
    connect(this, &ListWindow::rowActivated, this, &AuditWindow::leaveFor);
    connect(show_, &QPushButton::clicked, this, [this] {
        if (const auto row = currentRow())
            leaveFor(*row);
    });
}

void AuditWindow::refresh() {
    AuditResult result;
    QString heading;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        result = audit_();
        heading = QStringLiteral("Azienda %1: %2.").arg(company_).arg(countsText(result));
    } catch (const contract::RuntimeError& error) {
        heading = QStringLiteral("La verifica non è riuscita: %1").arg(toQt(error.description()));
    } catch (const contract::Cancelled&) {
        heading = QStringLiteral("La verifica è stata annullata.");
    }
    QGuiApplication::restoreOverrideCursor();
    result_ = std::move(result);
    setHeading(heading);
    fillRules();
    setTable(result_.report ? std::make_shared<AuditTable>(result_) : nullptr);
    filterRows();
    describeFocused();
}

// A rule that was chosen stays chosen, as long as it has findings.
void AuditWindow::fillRules() {
    const int chosen = rules_->currentIndex();
    // One past the last rule for none.
    const std::size_t before = chosen > 0 ? choices_[static_cast<std::size_t>(chosen) - 1] : result_.rules.size();
    const QSignalBlocker quiet(rules_);
    rules_->clear();
    choices_.clear();
    rules_->addItem(QStringLiteral("Tutte le regole (%1)").arg(result_.report ? result_.report->size() : 0));
    if (!result_.report)
        return;
    const auto counts = result_.counts();
    for (std::size_t rule = 0; rule < counts.size(); ++rule) {
        if (counts[rule] == 0)
            continue;
        choices_.push_back(rule);
        rules_->addItem(QStringLiteral("%1 (%2)").arg(toQt(result_.rules[rule].title)).arg(counts[rule]));
        if (before == rule)
            rules_->setCurrentIndex(rules_->count() - 1);
    }
}

void AuditWindow::filterRows() {
    const int chosen = rules_->currentIndex();
    if (chosen <= 0) {
        setRowFilter({});
        focusFirst();
        return;
    }
    setRowFilter([report = result_.report, rule = choices_[static_cast<std::size_t>(chosen) - 1]](std::size_t row) {
        return report->rule(row) == rule;
    });
    focusFirst();
}

// Where the filters have taken the row away that had the focus.
void AuditWindow::focusFirst() {
    if (!currentRow() && view().model()->rowCount() > 0)
        view().setCurrentIndex(view().model()->index(0, 0));
}

void AuditWindow::describeFocused() {
    const auto row = result_.report ? currentRow() : std::nullopt;
    show_->setEnabled(row && result_.report->finding(*row).node);
    if (!row) {
        described_->clear();
        return;
    }
    const auto finding = result_.report->finding(*row);
    described_->setText(QStringLiteral("%1\n%2").arg(toQt(finding.text), toQt(result_.rules[finding.rule].remedy)));
}

void AuditWindow::leaveFor(std::size_t row) {
    auto finding = result_.report->finding(row);
    if (!finding.node || !finding.type)
        return;
    wanted_ = std::move(finding);
    accept();
}

} // namespace host

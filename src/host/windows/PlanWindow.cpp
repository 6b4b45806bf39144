#include "host/windows/PlanWindow.h"

#include "contract/RuntimeError.h"
#include "host/script/ChoiceControls.h"
#include "host/services/Text.h"
#include "host/tables/PlanTable.h"
#include "host/windows/WorkProgress.h"

#include <QGuiApplication>

#include <utility>

namespace host {

using contract::MoveOutcome;

PlanWindow::PlanWindow(const QString& name, const QString& title, QWidget* parent)
    : ListWindow(name, title, parent), onlyStaying_(new QCheckBox(QStringLiteral("Solo ciò che &resta"), this)),
      move_(addButton(QStringLiteral("CMD_SPOSTA"), QStringLiteral("&Sposta"), true)) {
    filters().addWidget(onlyStaying_);
    addControl(QStringLiteral("CHK_RESTA"), std::make_unique<CheckControl>(onlyStaying_));
    setListName(QStringLiteral("Nodi che lo spostamento tocca"));
    view().setToolTip(QStringLiteral("Invio o doppio clic: mostra il nodo nella sua distinta"));
    connect(onlyStaying_, &QCheckBox::toggled, this, &PlanWindow::filterRows);
    connect(move_, &QPushButton::clicked, this, &PlanWindow::leaveToMove);
    connect(this, &ListWindow::rowActivated, this, [this](std::size_t row) {
        nodeWanted_ = plan_->rows[row].id;
        if (nodeWanted_)
            accept();
    });
}

void PlanWindow::orderTabs(const QList<QWidget*>& above) {
    QList<QWidget*> all = above;
    all.append(control(QStringLiteral("TXT_FILTRO"))->widget());
    all.append(onlyStaying_);
    all.append(&view());
    all.append(move_);
    all.append(control(QStringLiteral("CMD_CHIUDI"))->widget());
    for (qsizetype i = 1; i < all.size(); ++i)
        setTabOrder(all[i - 1], all[i]);
    view().setFocus();
}

void PlanWindow::refresh() {
    QString failure;
    auto plan = ask(failure);
    showPlan(std::move(plan), failure, {});
}

std::unique_ptr<contract::MovePlan> PlanWindow::ask(QString& failure) {
    auto plan = std::make_unique<contract::MovePlan>();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    givenUp_ = false;
    try {
        const WorkProgress progress("nodi");
        *plan = makePlan();
    } catch (const contract::RuntimeError& error) {
        failure = toQt(error.description());
    } catch (const contract::Cancelled& cancelled) {
        givenUp_ = true;
        failure = QString::fromUtf8(cancelled.what());
    }
    QGuiApplication::restoreOverrideCursor();
    return plan;
}

void PlanWindow::showPlan(std::unique_ptr<contract::MovePlan> plan, const QString& failure, const QString& remark) {
    plan_ = std::move(plan);
    failure_ = failure;
    QString heading = remark;
    if (!failure_.isEmpty())
        heading = failure_;
    else if (!plan_->refused.empty())
        heading += refusalText();
    else
        heading += countsText(*plan_);
    setHeading(heading);
    move_->setEnabled(failure_.isEmpty() && plan_->refused.empty() && !plan_->rows.empty());
    setTable(std::make_shared<PlanTable>(plan_, hasLines()));
    filterRows();
}

QString PlanWindow::refusalText() const {
    constexpr qsizetype told = 5;
    QStringList lines = toQt(plan_->refused).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const auto left = lines.size() - told;
    if (left > 0) {
        lines.resize(told);
        lines.append(QStringLiteral("e altre %1: le mostra «Solo ciò che resta».").arg(left));
    }
    return QStringLiteral("Non si sposta nulla: %1").arg(lines.join(QLatin1Char('\n')));
}

void PlanWindow::filterRows() {
    if (!onlyStaying_->isChecked()) {
        setRowFilter({});
        return;
    }
    setRowFilter([plan = plan_](std::size_t row) {
        const auto outcome = plan->rows[row].outcome;
        return outcome == MoveOutcome::stays || outcome == MoveOutcome::refused;
    });
}

void PlanWindow::leaveToMove() {
    QString failure;
    auto now = ask(failure);
    if (failure.isEmpty() && *now == *plan_) {
        moveWanted_ = true;
        accept();
        return;
    }
    showPlan(std::move(now), failure,
             QStringLiteral("I dati sono cambiati da quando è stata fatta l'anteprima: ora è aggiornata. "
                            "Controllarla, poi scegliere di nuovo «Sposta».\n"));
}

} // namespace host

#pragma once

#include "contract/MovePreview.h"
#include "host/windows/ListWindow.h"

#include <QCheckBox>

#include <memory>

namespace host {

/// A window that shows what a move would do, before it does it: one row a node, and the button that moves.
///
/// Besides a list window's controls scripts know CHK_RESTA, which leaves only what stays, and CMD_SPOSTA.
class PlanWindow : public ListWindow {
    Q_OBJECT
public:
    PlanWindow(const QString& name, const QString& title, QWidget* parent);

    const contract::MovePlan& plan() const { return *plan_; }
    /// Why there is no plan; empty where there is one.
    const QString& failure() const { return failure_; }
    /// Whether the window was left to move what it showed.
    bool moveWanted() const { return moveWanted_; }
    /// The node that the user wants to see in its tree.
    std::optional<std::int64_t> nodeWanted() const { return nodeWanted_; }

    /// Asks for the plan anew and shows it.
    void refresh();

protected:
    /// The plan as of now. May throw RuntimeError.
    virtual contract::MovePlan makePlan() = 0;
    virtual bool hasLines() const { return false; }
    /// The order of the Tab key: what stands above the list, then the filters, the list and the buttons.
    void orderTabs(const QList<QWidget*>& above);

private:
    std::unique_ptr<contract::MovePlan> ask(QString& failure);
    void showPlan(std::unique_ptr<contract::MovePlan> plan, const QString& failure, const QString& remark);
    /// Why nothing is moved, of many reasons the first ones.
    QString refusalText() const;
    void filterRows();
    void leaveToMove();

    QCheckBox* onlyStaying_;
    QPushButton* move_;
    std::shared_ptr<const contract::MovePlan> plan_ = std::make_shared<contract::MovePlan>();
    QString failure_;
    bool moveWanted_ = false;
    std::optional<std::int64_t> nodeWanted_;
};

} // namespace host

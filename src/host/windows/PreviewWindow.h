#pragma once

#include "host/windows/PlanWindow.h"
#include "platform/qt/fields/CalendarEdit.h"

#include <QRadioButton>

#include <functional>

namespace host {

/// What a move of nodes of the form would do, of either kind and with any day.
///
/// Scripts know RDB_STRUTTURA, RDB_VALIDITA and TXT_DATA besides a plan window's controls.
class PreviewWindow : public PlanWindow {
    Q_OBJECT
public:
    /// Of the focused nodes.
    static constexpr const char* name = "AnteprimaSpostamento";
    /// Of the checked nodes.
    static constexpr const char* nameOfSelected = "SpostaSelezionati";

    using Planner = std::function<contract::MovePlan(const contract::MoveManner&)>;

    /// Shows the plan of that manner at once. withLines: the planner's rows bear the numbers of lines.
    PreviewWindow(const QString& windowName, const QString& title, Planner planner, const contract::MoveManner& manner,
                  bool withLines, QWidget* parent);

    /// As chosen in the window.
    contract::MoveManner manner() const;

protected:
    contract::MovePlan makePlan() override { return planner_(manner()); }
    bool hasLines() const override { return withLines_; }

private:
    Planner planner_;
    bool withLines_;
    QRadioButton* structure_;
    QRadioButton* validity_;
    platform::qt::CalendarEdit* day_;
};

} // namespace host

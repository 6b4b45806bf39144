#pragma once

#include "host/windows/PlanWindow.h"
#include "platform/qt/fields/CalendarEdit.h"

#include <QRadioButton>

namespace host {

/// What a move of the form's focused nodes would do, of either kind and with any day.
///
/// Scripts know RDB_STRUTTURA, RDB_VALIDITA and TXT_DATA besides a plan window's controls.
class PreviewWindow : public PlanWindow {
    Q_OBJECT
public:
    static constexpr const char* name = "AnteprimaSpostamento";

    /// Shows the plan of that manner at once. The preview must outlive the window.
    PreviewWindow(contract::MovePreview& preview, const contract::MoveManner& manner, QWidget* parent);

    /// As chosen in the window.
    contract::MoveManner manner() const;

protected:
    contract::MovePlan makePlan() override { return preview_.plan(manner()); }

private:
    contract::MovePreview& preview_;
    QRadioButton* structure_;
    QRadioButton* validity_;
    platform::qt::CalendarEdit* day_;
};

} // namespace host

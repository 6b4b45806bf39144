#pragma once

#include "host/comparison/Comparisons.h"
#include "host/windows/ListWindow.h"
#include "platform/qt/fields/CalendarEdit.h"

#include <QComboBox>

#include <memory>
#include <optional>

namespace host {

/// The two distinte of the form on a day: what differs, or one of them as it stood.
///
/// Besides a list window's controls scripts know TXT_GIORNO, CMB_VISTA (0 the differences, 1 and 2 the left and the
/// right distinta as it stood), CMB_ESITI (0 for all), CMD_CONFRONTA and CMD_MOSTRA.
class ComparisonWindow : public ListWindow {
    Q_OBJECT
public:
    /// left, right: what is compared. The comparisons outlive the window.
    ComparisonWindow(Comparisons& comparisons, contract::ComparedDistinta left, contract::ComparedDistinta right,
                     contract::Date day, QWidget* parent);

    /// Compares anew on the day that stands in the window.
    void refresh();
    /// Null where there is none.
    const std::shared_ptr<const contract::ComparisonReport>& report() const { return report_; }
    /// The row whose nodes the user wants to see in their trees, and the trees' distinte; one where the row has one.
    struct Wanted {
        std::optional<std::int64_t> left;
        std::optional<std::int64_t> right;
    };
    const std::optional<Wanted>& wanted() const { return wanted_; }

private:
    enum class View { differences, left, right };
    View chosenView() const { return static_cast<View>(view_->currentIndex()); }
    std::shared_ptr<const contract::ComparisonReport> ask(contract::Date day);
    QString describe(contract::Date day) const;
    void fillOutcomes();
    void filterRows();
    void focusFirst();
    void leaveFor(std::size_t row);

    Comparisons& comparisons_;
    contract::ComparedDistinta left_;
    contract::ComparedDistinta right_;
    platform::qt::CalendarEdit* day_;
    QComboBox* view_;
    QComboBox* outcomes_;
    QPushButton* show_;
    std::vector<contract::ComparisonOutcome> choices_; ///< behind the choices from position 1
    std::shared_ptr<const contract::ComparisonReport> report_;
    QString compared_; ///< the day that the rows are of, as it stands in the field
    std::optional<Wanted> wanted_;
};

} // namespace host

#include "host/comparison/ComparisonWindow.h"

#include "contract/RuntimeError.h"
#include "host/comparison/ComparisonTable.h"
#include "host/script/ChoiceControls.h"
#include "host/script/ComboControl.h"
#include "host/services/Text.h"
#include "host/windows/WorkProgress.h"

#include <QGuiApplication>
#include <QSignalBlocker>

#include <array>
#include <utility>

namespace host {

using contract::ComparisonOutcome;

namespace {

constexpr std::array<ComparisonOutcome, 4> outcomes{ComparisonOutcome::left, ComparisonOutcome::right,
                                                    ComparisonOutcome::parent, ComparisonOutcome::period};

std::array<std::size_t, outcomes.size()> countsOf(const contract::ComparisonReport& report) {
    std::array<std::size_t, outcomes.size()> counts{};
    for (std::size_t i = 0; i < report.size(); ++i)
        ++counts[static_cast<std::size_t>(report.outcome(i))];
    return counts;
}

} // namespace

ComparisonWindow::ComparisonWindow(Comparisons& comparisons, contract::ComparedDistinta left,
                                   contract::ComparedDistinta right, contract::Date day, QWidget* parent)
    : ListWindow(QStringLiteral("FRM_CONFRONTO"), QStringLiteral("Confronto di due distinte"), parent),
      comparisons_(comparisons), left_(std::move(left)), right_(std::move(right)),
      day_(new platform::qt::CalendarEdit(this)), view_(new QComboBox(this)), outcomes_(new QComboBox(this)) {
    auto* dayLabel = new QLabel(QStringLiteral("&Giorno:"), this);
    dayLabel->setBuddy(day_);
    day_->setAccessibleName(QStringLiteral("Giorno"));
    day_->setText(toQt(day.text()));
    auto* viewLabel = new QLabel(QStringLiteral("&Vista:"), this);
    viewLabel->setBuddy(view_);
    view_->setAccessibleName(QStringLiteral("Vista"));
    view_->addItem(QStringLiteral("Differenze"));
    for (const auto* distinta : {&left_, &right_})
        view_->addItem(QStringLiteral("Solo %1, com'era").arg(toQt(nameOf(*distinta))));
    choices().addWidget(dayLabel);
    choices().addWidget(day_);
    choices().addWidget(viewLabel);
    choices().addWidget(view_, 1);
    auto* outcomeLabel = new QLabel(QStringLiteral("&Esito:"), this);
    outcomeLabel->setBuddy(outcomes_);
    outcomes_->setAccessibleName(QStringLiteral("Esito"));
    outcomes_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    filters().addWidget(outcomeLabel);
    filters().addWidget(outcomes_);
    auto* again = addButton(QStringLiteral("CMD_CONFRONTA"), QStringLiteral("Con&fronta"));
    show_ = addButton(QStringLiteral("CMD_MOSTRA"), QStringLiteral("&Mostra il nodo"), true);
    setListName(QStringLiteral("Conti che differiscono"));
    view().setToolTip(QStringLiteral("Invio o doppio clic: mostra il nodo in tutti e due gli alberi"));
    addControl(QStringLiteral("TXT_GIORNO"), std::make_unique<DayControl>(day_));
    addControl(QStringLiteral("CMB_VISTA"), std::make_unique<ComboControl>(view_));
    addControl(QStringLiteral("CMB_ESITI"), std::make_unique<ComboControl>(outcomes_));

    connect(again, &QPushButton::clicked, this, &ComparisonWindow::refresh);
    connect(day_, &QLineEdit::editingFinished, this, [this] {
        if (day_->hasValidDate() && day_->text().trimmed() != compared_)
            refresh();
    });
    connect(view_, &QComboBox::currentIndexChanged, this, &ComparisonWindow::refresh);
    connect(outcomes_, &QComboBox::currentIndexChanged, this, &ComparisonWindow::filterRows);
    connect(this, &ListWindow::rowFocused, this, [this] { show_->setEnabled(currentRow().has_value()); });
    connect(this, &ListWindow::rowActivated, this, &ComparisonWindow::leaveFor);
    connect(show_, &QPushButton::clicked, this, [this] {
        if (const auto row = currentRow())
            leaveFor(*row);
    });
}

std::shared_ptr<const contract::ComparisonReport> ComparisonWindow::ask(contract::Date day) {
    WorkProgress progress;
    if (chosenView() == View::differences)
        return comparisons_.compare(left_.id, right_.id, day, progress);
    return comparisons_.treeOn(chosenView() == View::left ? left_.id : right_.id, day, progress);
}

QString ComparisonWindow::describe(contract::Date day) const {
    const QString on = toQt(day.text());
    if (chosenView() != View::differences) {
        const auto& shown = chosenView() == View::left ? left_ : right_;
        return QStringLiteral("%1 al %2: %3 legami.").arg(toQt(nameOf(shown)), on).arg(report_->size());
    }
    QString counts;
    const auto all = countsOf(*report_);
    for (const auto outcome : outcomes)
        if (const auto count = all[static_cast<std::size_t>(outcome)])
            counts += QStringLiteral("%1%2 %3")
                          .arg(counts.isEmpty() ? QString() : QStringLiteral(", "))
                          .arg(count)
                          .arg(outcomeTitle(outcome).toLower());
    return QStringLiteral("A sinistra %1, a destra %2, al %3: %4.")
        .arg(toQt(nameOf(left_)), toQt(nameOf(right_)), on,
             counts.isEmpty() ? QStringLiteral("nessuna differenza") : counts);
}

void ComparisonWindow::refresh() {
    report_.reset();
    QString heading;
    day_->complete();
    compared_ = day_->text().trimmed();
    if (const auto day = contract::Date::parse(compared_.toStdString())) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        try {
            report_ = ask(*day);
            heading = describe(*day);
        } catch (const contract::RuntimeError& error) {
            heading = QStringLiteral("Il confronto non è riuscito: %1").arg(toQt(error.description()));
        } catch (const contract::Cancelled&) {
            heading = QStringLiteral("Il confronto è stato annullato.");
        }
        QGuiApplication::restoreOverrideCursor();
    } else {
        heading = QStringLiteral("Indicare il giorno del confronto.");
    }
    setHeading(heading);
    fillOutcomes();
    setTable(report_ ? std::make_shared<ComparisonTable>(report_, chosenView() != View::differences) : nullptr);
    filterRows();
    show_->setEnabled(currentRow().has_value());
}

// An outcome that was chosen stays chosen, as long as it occurs.
void ComparisonWindow::fillOutcomes() {
    const int chosen = outcomes_->currentIndex();
    const auto before = chosen > 0 ? static_cast<int>(choices_[static_cast<std::size_t>(chosen) - 1]) : -1;
    const QSignalBlocker quiet(outcomes_);
    outcomes_->clear();
    choices_.clear();
    outcomes_->addItem(QStringLiteral("Tutti (%1)").arg(report_ ? report_->size() : 0));
    if (!report_ || chosenView() != View::differences)
        return;
    const auto counts = countsOf(*report_);
    for (const auto outcome : outcomes) {
        const auto count = counts[static_cast<std::size_t>(outcome)];
        if (count == 0)
            continue;
        choices_.push_back(outcome);
        outcomes_->addItem(QStringLiteral("%1 (%2)").arg(outcomeTitle(outcome)).arg(count));
        if (before == static_cast<int>(outcome))
            outcomes_->setCurrentIndex(outcomes_->count() - 1);
    }
}

void ComparisonWindow::filterRows() {
    const int chosen = outcomes_->currentIndex();
    if (chosen <= 0) {
        setRowFilter({});
        focusFirst();
        return;
    }
    setRowFilter([report = report_, outcome = choices_[static_cast<std::size_t>(chosen) - 1]](std::size_t row) {
        return report->outcome(row) == outcome;
    });
    focusFirst();
}

// Where the filters have taken the row away that had the focus.
void ComparisonWindow::focusFirst() {
    if (!currentRow() && view().model()->rowCount() > 0)
        view().setCurrentIndex(view().model()->index(0, 0));
}

void ComparisonWindow::leaveFor(std::size_t row) {
    const auto shown = report_->row(row);
    Wanted wanted;
    if (shown.left)
        (chosenView() == View::right ? wanted.right : wanted.left) = shown.left->node;
    if (shown.right)
        wanted.right = shown.right->node;
    wanted_ = wanted;
    accept();
}

} // namespace host

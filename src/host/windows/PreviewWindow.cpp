#include "host/windows/PreviewWindow.h"

#include "host/script/ChoiceControls.h"
#include "host/services/Text.h"

#include <QButtonGroup>
#include <QLabel>

namespace host {

PreviewWindow::PreviewWindow(const QString& windowName, const QString& title, Planner planner,
                             const contract::MoveManner& manner, bool withLines, QWidget* parent)
    : PlanWindow(windowName, title, parent), planner_(std::move(planner)), withLines_(withLines),
      structure_(new QRadioButton(QStringLiteral("S&truttura"), this)),
      validity_(new QRadioButton(QStringLiteral("Con &validità"), this)), day_(new platform::qt::CalendarEdit(this)) {
    auto* kinds = new QButtonGroup(this);
    kinds->addButton(structure_);
    kinds->addButton(validity_);
    auto* label = new QLabel(QStringLiteral("&Data fine legame:"), this);
    label->setBuddy(day_);
    day_->setAccessibleName(QStringLiteral("Data fine legame"));
    day_->setToolTip(QStringLiteral("Ultimo giorno dei legami attuali (gg/mm/aaaa)"));
    choices().addWidget(structure_);
    choices().addWidget(validity_);
    choices().addSpacing(16);
    choices().addWidget(label);
    choices().addWidget(day_);
    choices().addStretch(1);
    addControl(QStringLiteral("RDB_STRUTTURA"), std::make_unique<CheckControl>(structure_));
    addControl(QStringLiteral("RDB_VALIDITA"), std::make_unique<CheckControl>(validity_));
    addControl(QStringLiteral("TXT_DATA"), std::make_unique<DayControl>(day_));
    orderTabs({structure_, validity_, day_});

    (manner.validity ? validity_ : structure_)->setChecked(true);
    day_->setText(manner.end ? toQt(manner.end->text()) : QString());
    day_->setEnabled(manner.validity);
    refresh();

    connect(validity_, &QRadioButton::toggled, this, [this](bool validity) {
        day_->setEnabled(validity);
        refresh();
    });
    // While a day is being typed there is nothing to ask about.
    connect(day_, &platform::qt::CalendarEdit::changed, this, [this](const QString& text) {
        if (text.isEmpty() || day_->hasValidDate())
            refresh();
    });
}

contract::MoveManner PreviewWindow::manner() const {
    const bool validity = validity_->isChecked();
    return {validity, validity ? contract::Date::parse(day_->text().toStdString()) : std::nullopt};
}

} // namespace host

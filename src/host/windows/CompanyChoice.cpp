#include "host/windows/CompanyChoice.h"

#include "host/windows/DialogButtons.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace host {

namespace {

constexpr int leastWidth = 420;
constexpr int longestEntry = 56; ///< letters

QString entryOf(const CompanyChoice::Company& company) {
    const QString what = company.distinte.isEmpty() ? QStringLiteral("nessuna distinta") : company.distinte;
    const QString text = QStringLiteral("%1 – %2").arg(company.number).arg(what);
    return text.size() <= longestEntry ? text : text.left(longestEntry - 1) + QChar(0x2026);
}

} // namespace

CompanyChoice::CompanyChoice(const std::vector<Company>& companies, std::int64_t current, QWidget* parent)
    : QDialog(parent), list_(new QComboBox(this)) {
    setWindowTitle(QStringLiteral("Azienda di lavoro"));
    std::vector<Company> all;
    const auto isCurrent = [&](const Company& each) { return each.number == current; };
    if (std::none_of(companies.begin(), companies.end(), isCurrent))
        all.push_back({current, QString()});
    all.insert(all.end(), companies.begin(), companies.end());
    list_->setObjectName(QStringLiteral("azienda"));
    list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list_->setMinimumWidth(leastWidth);
    for (const auto& each : all) {
        list_->addItem(entryOf(each), static_cast<qlonglong>(each.number));
        if (each.number == current)
            list_->setCurrentIndex(list_->count() - 1);
    }
    auto* column = new QVBoxLayout(this);
    auto* caption = new QLabel(QStringLiteral("A&zienda"), this);
    caption->setBuddy(list_);
    column->addWidget(caption);
    column->addWidget(list_);
    auto* buttons = new QDialogButtonBox(this);
    auto* accept = dialogButton(QStringLiteral("&Conferma"), buttons, true);
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    buttons->addButton(dialogButton(QStringLiteral("&Annulla"), buttons), QDialogButtonBox::RejectRole);
    accept->setDefault(true);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    list_->setFocus();
}

std::int64_t CompanyChoice::company() const {
    return list_->currentData().toLongLong();
}

} // namespace host

#include "host/windows/UserChoice.h"

#include "host/windows/DialogButtons.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

namespace host {

UserChoice::UserChoice(const QString& user, const QString& group, QWidget* parent)
    : QDialog(parent), user_(new QLineEdit(user, this)), group_(new QLineEdit(group, this)) {
    setWindowTitle(QStringLiteral("Utente e gruppo"));
    // As long as the columns that take them.
    constexpr int longestCode = 50;
    user_->setMaxLength(longestCode);
    group_->setMaxLength(longestCode);
    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Utente"), user_);
    form->addRow(QStringLiteral("&Gruppo"), group_);
    auto* buttons = new QDialogButtonBox(this);
    auto* accept = dialogButton(QStringLiteral("&Conferma"), buttons, true);
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    buttons->addButton(dialogButton(QStringLiteral("&Annulla"), buttons), QDialogButtonBox::RejectRole);
    accept->setDefault(true);
    form->addRow(buttons);
    const auto check = [this, accept] { accept->setEnabled(!this->user().isEmpty() && !this->group().isEmpty()); };
    connect(user_, &QLineEdit::textChanged, this, check);
    connect(group_, &QLineEdit::textChanged, this, check);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

} // namespace host

#include "host/windows/Prompts.h"

#include "contract/Host.h"
#include "host/windows/DialogButtons.h"
#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/forms/Session.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <optional>

namespace host {

namespace {

namespace message = contract::message;

constexpr int questionIcon = 32;

/// Where a script drives the program nobody closes a box: it answers as the data-entry windows' boxes do. Nothing while
/// a person is there.
std::optional<int> answerOfScript(const QString& title, const QString& text, int style) {
    const auto& show = platform::qt::DataEntryHooks::instance().showMessage;
    if (!platform::qt::Session::instance().unattended() || !show)
        return std::nullopt;
    return show(title, text, style);
}

int styleOf(QMessageBox::Icon icon) {
    switch (icon) {
    case QMessageBox::Critical:
        return message::critical;
    case QMessageBox::Warning:
        return message::exclamation;
    case QMessageBox::Question:
        return questionIcon;
    default:
        return message::information;
    }
}

} // namespace

void tell(QMessageBox::Icon icon, const QString& title, const QString& text, QWidget* parent) {
    if (answerOfScript(title, text, styleOf(icon)))
        return;
    QMessageBox box(parent);
    box.setIcon(icon);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.addButton(dialogButton(QStringLiteral("OK"), &box, true), QMessageBox::AcceptRole);
    box.exec();
}

bool ask(const QString& title, const QString& question, QWidget* parent) {
    if (const auto answer = answerOfScript(title, question, message::yesNo | styleOf(QMessageBox::Question)))
        return *answer == message::answerYes;
    QMessageBox box(parent);
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    auto* yes = dialogButton(QStringLiteral("&Sì"), &box);
    auto* no = dialogButton(QStringLiteral("&No"), &box, true);
    box.addButton(yes, QMessageBox::YesRole);
    box.addButton(no, QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

QString asSentence(const QString& reason) {
    QString text = reason.trimmed();
    if (text.isEmpty())
        return text;
    text[0] = text[0].toUpper();
    return text.endsWith(QLatin1Char('.')) ? text : text + QLatin1Char('.');
}

FieldDialog::FieldDialog(const QString& title, const QString& label, QWidget* field, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(title);
    auto* column = new QVBoxLayout(this);
    auto* caption = new QLabel(label, this);
    caption->setBuddy(field);
    column->addWidget(caption);
    constexpr int leastWidth = 320; // the title stays readable
    field->setMinimumWidth(leastWidth);
    column->addWidget(field);
    auto* buttons = new QDialogButtonBox(this);
    auto* accept = dialogButton(QStringLiteral("&Conferma"), buttons, true);
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    buttons->addButton(dialogButton(QStringLiteral("&Annulla"), buttons), QDialogButtonBox::RejectRole);
    accept->setDefault(true);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    field->setFocus();
}

} // namespace host

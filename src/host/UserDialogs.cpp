#include "host/UserDialogs.h"

#include "host/DialogButtons.h"
#include "plugin/contract/Host.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace host {

namespace message = contract::message;

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Of data-entry windows of the host only.
constexpr int yesNoCancel = 3;
constexpr int answerCancel = 2;

constexpr int leastHeight = 32;

constexpr int buttonBits = 0x0F;
constexpr int iconBits = 0xF0;

QMessageBox::Icon iconOf(int style) {
    switch (style & iconBits) {
    case message::critical:
        return QMessageBox::Critical;
    case message::exclamation:
        return QMessageBox::Warning;
    case message::information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QPushButton* addButton(QMessageBox& box, const QString& caption, QMessageBox::ButtonRole role, bool primary = false) {
    auto* button = dialogButton(caption, &box, primary);
    box.addButton(button, role);
    return button;
}

} // namespace

void UserDialogs::queueAnswers(std::vector<int> answers) {
    answers_ = std::move(answers);
}

std::vector<ShownMessage> UserDialogs::takeShown() {
    return std::exchange(shown_, {});
}

std::optional<int> UserDialogs::nextAnswer() {
    if (answers_.empty())
        return std::nullopt;
    const int answer = answers_.front();
    answers_.erase(answers_.begin());
    return answer;
}

/// Lets a box that was answered leave the screen, and what it covered come back, before what it started begins; no
/// input is dealt with meanwhile.
void UserDialogs::leaveScreen(QWidget& box) const {
    constexpr int most = 60; // milliseconds: the window manager takes its frame away
    box.hide();
    QElapsedTimer waited;
    waited.start();
    do
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, most / 4);
    while (waited.elapsed() < most);
    if (window_)
        window_->repaint();
}

int UserDialogs::showMessage(std::string_view title, std::string_view body, int style) {
    const int buttons = style & buttonBits;
    const bool yesNo = buttons == message::yesNo || buttons == yesNoCancel;
    if (scripted_) {
        ShownMessage shown;
        shown.title = text(title);
        shown.text = text(body);
        shown.style = style;
        shown.answer = nextAnswer().value_or(yesNo ? message::answerNo : message::answerOk);
        shown_.push_back(shown);
        return shown.answer;
    }
    QMessageBox box(window_);
    box.setIcon(iconOf(style));
    box.setWindowTitle(text(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(text(body).trimmed());
    if (!yesNo) {
        addButton(box, QStringLiteral("OK"), QMessageBox::AcceptRole, true);
        box.exec();
        return message::answerOk;
    }
    const bool keepsWork = buttons == yesNoCancel; // "Salvare le modifiche?"
    auto* yes = addButton(box, QStringLiteral("&Sì"), QMessageBox::YesRole, keepsWork);
    auto* no = addButton(box, QStringLiteral("&No"), QMessageBox::NoRole);
    QPushButton* cancel = nullptr;
    if (buttons == yesNoCancel)
        cancel = addButton(box, QStringLiteral("Annulla"), QMessageBox::RejectRole);
    // What can not be undone by a second thought wants a deliberate key: a move, or the loss of what was typed.
    box.setDefaultButton(keepsWork ? yes : no);
    box.setEscapeButton(cancel != nullptr ? cancel : no);
    box.exec();
    leaveScreen(box);
    if (cancel != nullptr && box.clickedButton() == cancel)
        return answerCancel;
    return box.clickedButton() == yes ? message::answerYes : message::answerNo;
}

int UserDialogs::showError(std::string_view caption, std::string_view procedure, const contract::RuntimeError& error,
                           const contract::ErrorList& records, int style) {
    if (scripted_) {
        ShownMessage shown;
        shown.kind = ShownMessage::Kind::error;
        shown.caption = text(caption);
        shown.procedure = text(procedure);
        shown.style = style;
        shown.number = error.number();
        shown.description = text(error.description());
        shown.answer = nextAnswer().value_or(message::answerAbort);
        shown_.push_back(shown);
        return shown.answer;
    }
    QMessageBox box(window_);
    box.setIcon(QMessageBox::Critical);
    box.setWindowTitle(text(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(text(error.description()));
    box.setInformativeText(
        QStringLiteral("Procedura %1, errore %2.").arg(text(procedure), QString::number(error.number())));
    QString details;
    for (const auto& record : records) {
        const QString state = record.sqlState.empty() ? QString() : QStringLiteral("[%1] ").arg(text(record.sqlState));
        details +=
            QStringLiteral("%1%2: %3\n").arg(state, QString::number(record.nativeError), text(record.description));
    }
    if (!details.isEmpty())
        box.setDetailedText(details);
    // The box's own button for the details, as high as the others.
    for (auto* button : box.buttons())
        button->setMinimumHeight(leastHeight);
    auto* abort = addButton(box, QStringLiteral("&Interrompi"), QMessageBox::RejectRole);
    auto* retry = addButton(box, QStringLiteral("&Riprova"), QMessageBox::AcceptRole);
    auto* ignore = addButton(box, QStringLiteral("I&gnora"), QMessageBox::AcceptRole);
    box.setDefaultButton(retry);
    box.setEscapeButton(abort);
    box.exec();
    leaveScreen(box);
    if (box.clickedButton() == retry)
        return message::answerRetry;
    return box.clickedButton() == ignore ? message::answerIgnore : message::answerAbort;
}

} // namespace host

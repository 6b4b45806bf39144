#include "host/windows/UserDialogs.h"

#include "contract/Host.h"
#include "host/services/Text.h"
#include "host/windows/DialogButtons.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace host {

namespace message = contract::message;

namespace {

// Of data-entry windows of the host only.
constexpr int yesNoCancel = 3;
constexpr int answerCancel = 2;

constexpr int leastHeight = 32;

constexpr double smaller = 0.9; ///< what a box is about, against its text

/// How often in a row the default button of one error display is "Riprova".
constexpr int retriesByDefault = 2;

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

/// Below the text, smaller.
void showDetail(QMessageBox& box, const QString& detail) {
    if (detail.isEmpty())
        return;
    box.setInformativeText(detail);
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
    if (label == nullptr)
        return;
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * smaller);
    label->setFont(font);
}

/// What the answers mean, with what can be done about the cause where one is known.
QString whatToDo(const contract::ErrorList& records) {
    using contract::ErrorCategory;
    const auto category = records.empty() ? ErrorCategory::other : records.front().category;
    QString cause;
    switch (category) {
    case ErrorCategory::lostConnection:
        cause = QStringLiteral("Controllare la rete e il server, poi riprovare. ");
        break;
    case ErrorCategory::deadlock:
    case ErrorCategory::timeout:
    case ErrorCategory::locked:
        cause = QStringLiteral("Un altro utente o programma sta usando gli stessi dati: attendere, poi riprovare. ");
        break;
    case ErrorCategory::permission:
    case ErrorCategory::readOnly:
        cause = QStringLiteral("Mancano i diritti: chiederli a chi amministra il database. ");
        break;
    case ErrorCategory::full:
        cause = QStringLiteral("Liberare spazio sul disco, poi riprovare. ");
        break;
    default:
        break;
    }
    return cause + QStringLiteral("Riprova ripete l'operazione, Ignora va avanti senza di essa, Interrompi lascia il "
                                  "comando.");
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

/// The default button must not repeat for ever what fails for ever: who only keeps a key pressed leaves. The count ends
/// with the command, when the event loop comes to rest outside of a box.
void UserDialogs::countRetry(const QString& display) {
    retries_ = display == retried_ ? retries_ + 1 : 1;
    retried_ = display;
    commandsEnd_ = std::make_unique<QObject>();
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, commandsEnd_.get(),
                     [this] {
                         if (qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) == nullptr)
                             retried_.clear();
                     });
}

int UserDialogs::showMessage(std::string_view title, std::string_view body, int style, std::string_view detail) {
    const int buttons = style & buttonBits;
    const bool yesNo = buttons == message::yesNo || buttons == yesNoCancel;
    if (scripted_) {
        ShownMessage shown;
        shown.title = toQt(title);
        shown.text = toQt(body);
        shown.detail = toQt(detail);
        shown.style = style;
        shown.answer = nextAnswer().value_or(yesNo ? message::answerNo : message::answerOk);
        shown_.push_back(shown);
        return shown.answer;
    }
    QMessageBox box(window_);
    box.setIcon(iconOf(style));
    box.setWindowTitle(toQt(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(body).trimmed());
    showDetail(box, toQt(detail));
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
        shown.caption = toQt(caption);
        shown.procedure = toQt(procedure);
        shown.style = style;
        shown.number = error.number();
        shown.description = toQt(error.description());
        shown.detail = whatToDo(records);
        shown.answer = nextAnswer().value_or(message::answerAbort);
        shown_.push_back(shown);
        return shown.answer;
    }
    QMessageBox box(window_);
    box.setIcon(QMessageBox::Critical);
    box.setWindowTitle(toQt(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(error.description()));
    showDetail(box, whatToDo(records));
    QString details =
        QStringLiteral("Procedura %1, errore %2.\n").arg(toQt(procedure), QString::number(error.number()));
    for (const auto& record : records) {
        const QString state = record.sqlState.empty() ? QString() : QStringLiteral("[%1] ").arg(toQt(record.sqlState));
        details +=
            QStringLiteral("%1%2: %3\n").arg(state, QString::number(record.nativeError), toQt(record.description));
    }
    box.setDetailedText(details);
    // The box's own button for the details, as high as the others.
    for (auto* button : box.buttons())
        button->setMinimumHeight(leastHeight);
    auto* abort = addButton(box, QStringLiteral("&Interrompi"), QMessageBox::RejectRole);
    auto* retry = addButton(box, QStringLiteral("&Riprova"), QMessageBox::AcceptRole);
    auto* ignore = addButton(box, QStringLiteral("I&gnora"), QMessageBox::AcceptRole);
    const QString display = toQt(caption) + QChar::LineFeed + details + toQt(error.description());
    const bool again = display == retried_ && retries_ >= retriesByDefault;
    box.setDefaultButton(again ? abort : retry);
    box.setEscapeButton(abort);
    box.exec();
    leaveScreen(box);
    if (box.clickedButton() == retry) {
        countRetry(display);
        return message::answerRetry;
    }
    retried_.clear();
    return box.clickedButton() == ignore ? message::answerIgnore : message::answerAbort;
}

} // namespace host

#include "host/start/StartWindow.h"

#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/start/StartFailure.h"
#include "host/start/UserSettings.h"
#include "host/windows/ConnectionDialog.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/Prompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QRegularExpression>
#include <QStyle>
#include <QVBoxLayout>

#include <filesystem>

namespace host {

namespace {

constexpr int leastWidth = 520;
constexpr int iconSize = 40;
constexpr double headingScale = 1.25;

QLabel* paragraph(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

StartWindow::StartWindow(const QString& reason, const QString& advice, Offer offer, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("avvio"));
    setWindowTitle(QStringLiteral("Manutenzione distinte"));
    auto* row = new QHBoxLayout;
    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(iconSize));
    row->addWidget(icon, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    auto* heading = paragraph(offer == Offer::nothing ? QStringLiteral("Il programma non può partire")
                                                      : QStringLiteral("Il database non si apre"),
                              this);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * headingScale);
    font.setBold(true);
    heading->setFont(font);
    texts->addWidget(heading);
    // A driver's own words are nobody's but the assistance's, and in another language.
    static const QRegularExpression driversWords(QStringLiteral(R"( \(([0-9A-Z]{5}, errore .*)\))"),
                                                 QRegularExpression::DotMatchesEverythingOption);
    const auto words = driversWords.match(reason);
    QString own = reason;
    auto* why = paragraph(asSentence(words.hasMatch() ? own.remove(words.captured(0)) : own), this);
    why->setObjectName(QStringLiteral("motivo"));
    texts->addWidget(why);
    if (!advice.isEmpty()) {
        auto* what = paragraph(advice, this);
        what->setObjectName(QStringLiteral("rimedio"));
        texts->addWidget(what);
    }
    if (words.hasMatch()) {
        auto* detail = paragraph(QStringLiteral("Per l'assistenza: %1").arg(words.captured(1)), this);
        detail->setObjectName(QStringLiteral("dettaglio"));
        QFont small = detail->font();
        small.setPointSizeF(small.pointSizeF() / headingScale);
        detail->setFont(small);
        texts->addWidget(detail);
    }
    texts->addStretch();
    row->addLayout(texts, 1);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& caption, const char* name, Answer answer, bool primary = false) {
        auto* button = dialogButton(caption, this, primary);
        button->setObjectName(QLatin1String(name));
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            answer == Answer::quit ? reject() : accept();
        });
        return button;
    };
    QPushButton* first = nullptr;
    if (offer == Offer::otherDatabase) {
        add(QStringLiteral("&Apri…"), "apri", Answer::open);
        add(QStringLiteral("&Connessione…"), "connessione", Answer::connection);
        buttons->addStretch();
        first = add(QStringLiteral("&Riprova"), "riprova", Answer::retry, true);
        add(QStringLiteral("&Esci"), "esci", Answer::quit);
    } else {
        buttons->addStretch();
        first = add(QStringLiteral("&Esci"), "esci", Answer::quit, true);
    }
    first->setDefault(true);
    first->setFocus();
    auto* column = new QVBoxLayout(this);
    column->setSpacing(16);
    column->addLayout(row, 1);
    column->addLayout(buttons);
    setMinimumWidth(leastWidth);
}

QString adviceFor(const std::string& connectionString) {
    if (!isEmbedded(connectionString))
        return QStringLiteral(
            "«Riprova» ripete il collegamento, e chiede di nuovo la password dove serve. «Connessione…» "
            "corregge server, database e utente; «Apri…» apre un database in un file.");
    std::error_code error;
    const auto status = std::filesystem::status(embeddedPath(connectionString), error);
    if (!std::filesystem::exists(status))
        return QStringLiteral(
            "Il file può essere stato spostato, rinominato o stare su un disco che ora manca. «Apri…» "
            "lo cerca; «Connessione…» sceglie un altro database.");
    if (std::filesystem::is_directory(status))
        return QStringLiteral("Serve il file del database, non la cartella in cui sta: «Apri…» lo sceglie.");
    return QStringLiteral("Il file non è un database di questo programma, oppure è danneggiato o non si può leggere. "
                          "«Apri…» ne sceglie un altro, per esempio una copia di sicurezza.");
}

bool hasScreen() {
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

bool askPassword(HostSession& session, QWidget* parent) {
    const std::string& database = session.connectionString();
    if (!wantsPassword(database))
        return true;
    auto* password = new QLineEdit;
    password->setEchoMode(QLineEdit::Password);
    // A name may hold the mark of a mnemonic.
    const QString label = toQt(databaseLabel(database)).replace(QLatin1Char('&'), QLatin1String("&&"));
    FieldDialog dialog(QStringLiteral("Manutenzione distinte"), QStringLiteral("Password per %1:").arg(label), password,
                       parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    session.setDatabase(withPassword(database, password->text().toStdString()));
    return true;
}

void openForAPerson(HostSession& session, UserSettings& remembered, bool named) {
    // What was typed for one try is no answer to the next.
    std::string wanted = session.connectionString();
    const auto choose = [&](const std::string& chosen) {
        wanted = chosen;
        session.setDatabase(chosen);
        if (!named)
            remembered.saveConnection(chosen);
    };
    for (;;) {
        try {
            if (!askPassword(session, nullptr))
                throw StartFailure(ExitStatus::database, "connessione a \"" +
                                                             databaseLabel(session.connectionString()) +
                                                             "\" annullata: password non data");
            session.openDatabase();
            return;
        } catch (StartFailure& failure) {
            if (failure.status() != ExitStatus::database)
                throw;
            StartWindow window(QString::fromUtf8(failure.what()), adviceFor(wanted), StartWindow::Offer::otherDatabase);
            window.exec();
            session.setDatabase(wanted);
            switch (window.answer()) {
            case StartWindow::Answer::quit:
                failure.setShown();
                throw;
            case StartWindow::Answer::retry:
                // A password from outside that the server does not take is asked for in its place.
                if (std::string_view(failure.what()).find("utente o password non accettati") != std::string_view::npos)
                    session.setDatabase(wanted = withoutSecrets(wanted));
                break;
            case StartWindow::Answer::open: {
                const QString path =
                    QFileDialog::getOpenFileName(nullptr, QStringLiteral("Database"), toQt(embeddedPath(wanted)),
                                                 QStringLiteral("Database (*.sqlite *.db);;Tutti i file (*)"));
                if (!path.isEmpty())
                    choose(embeddedDatabase(path.toStdString()));
                break;
            }
            case StartWindow::Answer::connection: {
                ConnectionDialog dialog(
                    wanted, [&](const std::string& text) { return session.tryDatabase(text); }, nullptr);
                if (dialog.exec() == QDialog::Accepted)
                    choose(dialog.connectionString());
                break;
            }
            }
        }
    }
}

} // namespace host

#pragma once

#include <QDialog>
#include <QString>

namespace host {

class HostSession;
class UserSettings;

/// Tells a person why the program did not start, and offers what may help.
class StartWindow : public QDialog {
    Q_OBJECT
public:
    enum class Answer { quit, retry, open, connection };
    /// Which ways out are offered: none but the end where no database can help.
    enum class Offer { nothing, otherDatabase };

    /// reason: as the program writes it on a console. advice: what to do, whole sentences; may be empty.
    StartWindow(const QString& reason, const QString& advice, Offer offer, QWidget* parent = nullptr);

    Answer answer() const { return answer_; }

private:
    Answer answer_ = Answer::quit;
};

/// What to do about a database that does not open, in whole sentences.
QString adviceFor(const std::string& connectionString);

/// Whether windows can be seen: a platform with a screen behind it.
bool hasScreen();

/// Opens the session's database for a person: asks for a password that is wanted, and where the database does not open
/// shows why and lets another one be chosen, until one opens or the person gives up. What is chosen is remembered,
/// unless the database was named from outside: then it serves this once. Throws the last StartFailure when given up.
void openForAPerson(HostSession& session, UserSettings& remembered, bool named);

/// Asks for the password where the session's connection string names a user without one. False when it was not given.
bool askPassword(HostSession& session, QWidget* parent);

} // namespace host

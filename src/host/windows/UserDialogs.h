#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace host {

/// One message box or error display that was shown to the user, with the answer it got.
struct ShownMessage {
    enum class Kind : std::uint8_t { message, error };

    Kind kind = Kind::message;
    QString title;  ///< message boxes
    QString text;   ///< message boxes
    QString detail; ///< the smaller text below: what a question is about, what to do after an error; empty for none
    int style = 0;
    int answer = 0;
    QString procedure;   ///< error displays: the procedure that failed
    QString caption;     ///< error displays: the form's caption
    int number = 0;      ///< error displays: the run-time error's
    QString description; ///< error displays: the run-time error's, in the user's language
};

/// The one place that shows message boxes and error displays.
///
/// With a person they are real boxes. Driven by a script nothing is shown: the answers come from a queue, and what
/// would have been shown is kept until takeShown().
class UserDialogs {
public:
    UserDialogs() = default;
    UserDialogs(const UserDialogs&) = delete;
    UserDialogs& operator=(const UserDialogs&) = delete;

    /// The window over which boxes stand; none at first.
    void setWindow(QWidget* window) { window_ = window; }
    void setScripted(bool scripted) { scripted_ = scripted; }
    bool scripted() const { return scripted_; }

    /// Answers of the next boxes, in place of those an earlier call left over. Scripted only.
    void queueAnswers(std::vector<int> answers);
    std::size_t queuedAnswers() const { return answers_.size(); }
    /// What was shown since the last call, in order. Scripted only.
    std::vector<ShownMessage> takeShown();

    /// Shows a message box; the code of the button pressed (contract::message), 7 for a yes/no box and 1 for any other
    /// when nothing is queued for it. The detail stands smaller below the text; empty for none.
    int showMessage(std::string_view title, std::string_view text, int style, std::string_view detail = {});
    /// Shows what happened and what to do, with procedure, number and the database's own records as details; 3, 4 or 5,
    /// scripted whatever is queued. Whoever has the same one tried again and again finds another default button.
    int showError(std::string_view caption, std::string_view procedure, const contract::RuntimeError& error,
                  const contract::ErrorList& records, int style);

private:
    std::optional<int> nextAnswer();
    void leaveScreen(QWidget& box) const;
    void countRetry(const QString& display);

    QPointer<QWidget> window_;
    bool scripted_ = false;
    std::vector<int> answers_;
    std::vector<ShownMessage> shown_;
    QString retried_;                      ///< the error display that was last answered "Riprova"
    int retries_ = 0;                      ///< how often in a row
    std::unique_ptr<QObject> commandsEnd_; ///< while retries are counted
};

} // namespace host

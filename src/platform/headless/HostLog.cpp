#include "platform/headless/HostLog.h"

namespace platform::headless {

void HostLog::setInterface(contract::Cinterface* host) {
    state_->journal->call("LogClass.setInterface", {host ? "host" : ""});
}

void HostLog::vbError(const contract::RuntimeError& error) {
    state_->journal->call("LogClass.vbError", {std::to_string(error.number()), error.description()});
    number_ = error.number();
    description_ = error.description();
}

void HostLog::ADOError(const contract::ErrorList& errors) {
    state_->journal->call("LogClass.ADOError", {std::to_string(errors.size())});
    databaseErrors_ = errors;
}

int HostLog::answer(int unasked) {
    if (state_->answers.empty())
        return unasked;
    const auto given = state_->answers.front();
    state_->answers.pop_front();
    return given;
}

int HostLog::ShowError(std::string_view application, std::string_view caption, std::string_view procedure, int style) {
    state_->journal->call("LogClass.ShowError", {std::string(application), std::string(caption), std::string(procedure),
                                                 std::to_string(style)});
    const auto given = state_->errorAnswer ? state_->errorAnswer() : answer(contract::message::answerAbort);
    state_->errors.push_back({std::string(caption), description_, style, given, std::string(procedure), number_,
                              std::exchange(databaseErrors_, {})});
    return given;
}

int HostLog::ShowMessage(std::string_view title, std::string_view text, int style) {
    state_->journal->call("LogClass.ShowMessage", {std::string(title), std::string(text), std::to_string(style)});
    const bool question = (style & 0xF) == contract::message::yesNo;
    const auto given = answer(question ? contract::message::answerNo : contract::message::answerOk);
    state_->messages.push_back({std::string(title), std::string(text), style, given});
    state_->messages.back().detail = std::exchange(detail_, {});
    return given;
}

} // namespace platform::headless

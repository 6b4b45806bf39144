#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace platform::qt {

/// How data-entry windows reach the user; the host sets it. Without it nothing is shown: a question is answered "no"
/// and errors go to the log.
struct DataEntryHooks {
    static DataEntryHooks& instance();

    /// Yes, no and cancel (answers 6, 7 and 2).
    static constexpr int yesNoCancel = 3;
    static constexpr int answerCancel = 2;

    /// Title, text, style; the code of the button pressed.
    std::function<int(const QString&, const QString&, int)> showMessage;
    /// A save that failed, with the database's records.
    std::function<void(const contract::RuntimeError&, const contract::ErrorList&)> showError;
    /// A record that was saved.
    std::function<void()> saved;
    /// Shows the list of workflow states and makes the one chosen the service's selected state; its WF02_ID, nothing
    /// when the list was left.
    std::function<std::optional<std::int64_t>()> chooseState;
    /// A list of states that the user asked for and that could not be read.
    std::function<void(const contract::RuntimeError&)> showStatesError;

    /// "Salvare le modifiche?" under the window's title; yes, no or cancel.
    int askToSave(const QString& title) const;
    void report(const contract::RuntimeError& error, const contract::ErrorList& records) const;
};

} // namespace platform::qt

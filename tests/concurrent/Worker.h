#pragma once

#include "concurrent/Journal.h"
#include "concurrent/User.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>

namespace concurrent {

/// One user's random work: moves, edits and screens grown old, drawn from the user's number.
class Worker {
public:
    Worker(int number, std::string connectionString, std::shared_ptr<RecordingConnection> connection, Journal& journal);

    /// Looks, thinks, and presses or types something; what the user read is counted in the journal.
    void act();

private:
    void load(bool destination);
    bool focusAny(bool destination);
    contract::Date someDay();
    void move(Entry::Kind kind);
    void edit();
    void note();

    int number_;
    Journal& journal_;
    std::mt19937 random_;
    std::shared_ptr<RecordingConnection> connection_;
    User user_;
    bool loaded_[2] = {false, false};
};

} // namespace concurrent

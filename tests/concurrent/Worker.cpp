#include "concurrent/Worker.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace concurrent {

namespace {

using Kind = Entry::Kind;

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

std::int32_t days(const contract::Value& date) {
    return date.date().value_or(contract::Date()).days();
}

Entry::Shown shown(const contract::Recordset& row) {
    return {true, row["QZ02_IDPARENT_QZ02"].integer().value_or(0), days(row["QZ02_DATAINIZIOVAL"]),
            days(row["QZ02_DATAFINEVAL"])};
}

} // namespace

Worker::Worker(int number, std::string connectionString, std::shared_ptr<RecordingConnection> connection,
               Journal& journal)
    : number_(number), journal_(journal), random_(static_cast<unsigned>(7001 + number)),
      connection_(std::move(connection)), user_(std::move(connectionString), connection_) {
}

void Worker::act() {
    ++journal_.counters().actions;
    // Often enough the screens stay as they are, however old.
    for (const bool destination : {false, true})
        if (!loaded_[destination] || draw(random_, 1, 3) == 1)
            load(destination);
    if (!focusAny(false) || !focusAny(true))
        return;
    // Thinking it over, while the others work.
    std::this_thread::sleep_for(std::chrono::milliseconds(draw(random_, 0, 20)));
    const int what = draw(random_, 1, 5);
    if (what <= 2)
        move(Kind::structure);
    else if (what <= 4)
        move(Kind::validity);
    else
        edit();
    if (connection_->InTransaction())
        ++journal_.counters().open;
}

void Worker::load(bool destination) {
    user_.load(destination, draw(random_, 1, 3));
    note();
    loaded_[destination] = true;
}

bool Worker::focusAny(bool destination) {
    auto& tree = user_.tree(destination);
    const auto count = static_cast<int>(tree.nodeCount());
    if (count == 0)
        return false;
    const bool done = user_.focus(destination, tree.key({draw(random_, 0, count - 1)}));
    note();
    return done;
}

contract::Date Worker::someDay() {
    return contract::Date::of(2020 + draw(random_, 0, 9), draw(random_, 1, 12), draw(random_, 1, 28))
        .value_or(contract::Date());
}

void Worker::move(Kind kind) {
    auto& state = user_.state();
    Entry entry;
    entry.kind = kind;
    entry.user = number_;
    entry.origin = contract::Value(state.origine.IdDistinta).integer().value_or(0);
    entry.destination = contract::Value(state.destinazione.IdDistinta).integer().value_or(0);
    entry.node = user_.tree(false).key(user_.tree(false).focused());
    entry.target = user_.tree(true).key(user_.tree(true).focused());
    entry.nodeShown = shown(*state.origine.dati);
    entry.targetShown = shown(*state.destinazione.dati);
    model::Move move;
    if (kind == Kind::validity) {
        move.withValidity = true;
        move.closing =
            std::max((*state.origine.dati)["QZ02_DATAINIZIOVAL"].date().value_or(contract::Date()), someDay());
        move.fixedEnd = draw(random_, 1, 2) == 1
                            ? std::max(move.closing.plusDays(1), someDay())
                            : (*state.origine.dati)["QZ02_DATAFINEVAL"].date().value_or(contract::Date());
        entry.closing = move.closing.days();
        entry.fixedEnd = move.fixedEnd->days();
    }
    connection_->announce(entry);
    user_.press(move);
    note();
}

void Worker::edit() {
    auto& rows = *user_.state().destinazione.dati;
    Entry entry;
    entry.kind = Kind::edit;
    entry.user = number_;
    entry.node = user_.tree(true).key(user_.tree(true).focused());
    entry.nodeShown = shown(rows);
    entry.oldStart = entry.newStart = days(rows["QZ02_DATAINIZIOVAL"]);
    entry.oldEnd = entry.newEnd = days(rows["QZ02_DATAFINEVAL"]);
    const bool end = draw(random_, 1, 2) == 1;
    const auto date = someDay();
    (end ? entry.newEnd : entry.newStart) = date.days();
    connection_->announce(entry);
    user_.edit(end, date);
    note();
}

/// What the user read while the last step ran.
void Worker::note() {
    auto& counters = journal_.counters();
    for (const auto& message : user_.host->messages)
        if (message.style != contract::message::yesNo) {
            ++counters.refusals;
            journal_.tell(number_, false, message.text);
            if (message.text.size() < 10)
                ++counters.unreadable;
            if (message.text.find("da un altro utente") != std::string::npos)
                ++counters.stale;
        }
    for (const auto& error : user_.host->errors) {
        ++counters.errors;
        journal_.tell(number_, true, error.procedure + ": " + error.text);
        if (error.text.find("da un altro utente") != std::string::npos)
            ++counters.stale;
        // A sentence, not a number.
        if (error.text.size() < 20 || error.text.find(' ') == std::string::npos)
            ++counters.unreadable;
    }
    user_.host->messages.clear();
    user_.host->errors.clear();
}

} // namespace concurrent

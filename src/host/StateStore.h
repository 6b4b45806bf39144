#pragma once

#include "plugin/contract/Connection.h"
#include "plugin/contract/Schema.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {
class Connection;
}

namespace host {

/// The host's workflow states of links, by the link's GUID, with their history, over a connection of their own: in a
/// file beside an embedded database ("<database>.stati"), or in two tables on the database's server. Either is made
/// when the first state is written, if it is not there yet.
///
/// In a file the writes of one command are put into one transaction, which is committed when the user interface comes
/// back to rest, so that giving a state to thousands of links costs one write to the disk. On a server each
/// state is written with its history by one text, a transaction of its own: other users wait for none of them.
class StateStore {
public:
    /// later: calls a function once the present command is done; nothing commits each write at once.
    explicit StateStore(const std::string& databasePath, std::function<void(std::function<void()>)> later = {});
    /// On the server of that connection, which is opened when it is needed.
    explicit StateStore(std::unique_ptr<platform::odbc::Connection> connection);
    StateStore(const StateStore&) = delete;
    StateStore& operator=(const StateStore&) = delete;
    /// Commits.
    ~StateStore();

    static std::string fileOf(const std::string& databasePath) { return databasePath + ".stati"; }
    static const contract::Schema& schema();
    /// Another schema's tables and, after them, the states': what a server's database holds.
    static contract::Schema beside(contract::Schema other);

    /// State of a link (WF02_ID), nothing when it has none. GUIDs compare without regard to case and blanks around.
    std::optional<std::int64_t> state(std::string_view guid);
    /// The same for many links, in their order.
    std::vector<std::optional<std::int64_t>> states(const std::vector<std::string>& guids);
    /// Gives a link a state and keeps it in the history, with who and, for a state taken over from a link, that link's
    /// GUID. Throws RuntimeError.
    void setState(std::string_view guid, std::int64_t state, std::string_view user, std::string_view from = {});
    /// The text with which a server writes a state and its history, both or neither. The identifiers are spelt out as
    /// the server does, the origin's empty for none; the user's code may be any text.
    static std::string serverText(const std::string& key, std::int64_t state, std::string_view user,
                                  const std::string& origin);
    /// How many changes the history holds for a link.
    std::size_t changes(std::string_view guid);

    /// Throws RuntimeError; the writes then wait for another commit(), or for giveUp().
    void commit();
    /// Takes back what has been written since the last commit, so that nobody waits for it.
    void giveUp();
    /// The records of the last failure.
    contract::ErrorList errors() const;

private:
    contract::Connection* open(bool create);
    contract::Connection* openFile(bool create);
    contract::Connection* openServer(bool create);
    void begin(contract::Connection& connection);
    void setOnServer(const std::string& key, std::int64_t state, std::string_view user, const std::string& origin);
    static std::int64_t update(contract::Connection& connection, const std::string& key, std::int64_t state);
    static void insert(contract::Connection& connection, const std::string& key, std::int64_t state);
    std::string keyOf(std::string_view guid) const;

    std::string path_;
    std::function<void(std::function<void()>)> later_;
    std::unique_ptr<contract::Connection> connection_;
    platform::odbc::Connection* server_ = nullptr; ///< the same, on a server
    bool tablesThere_ = false;                     ///< on a server
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace host

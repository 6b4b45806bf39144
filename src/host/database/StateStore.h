#pragma once

#include "contract/Connection.h"

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
namespace platform::sqlite {
class Connection;
}

namespace host {

/// The host's workflow states of links, by the link's GUID, with their history: in two tables of the host's own in the
/// database of the links, embedded or on a server.
///
/// Embedded, what is written while a transaction on the same file is under way belongs to it: a move and its states are
/// kept together or not at all. Other writes of one command are put into one transaction of the store's own connection,
/// which is committed when the user interface comes back to rest, so that giving a state to thousands of links costs
/// one write to the disk; a database without the tables gets them before the first write (prepareStateTables()).
///
/// On a server each state is written with its history by one text, a transaction of its own over the store's
/// connection: it is there before the move that wrote it commits, and other users wait for none of them.
class StateStore {
public:
    /// Gives the connection whose transaction is under way on the same file; null without one.
    using UnderWay = std::function<contract::Connection*()>;

    /// In an embedded database that exists. later: calls a function once the present command is done; nothing commits
    /// each write at once.
    explicit StateStore(std::string databasePath, std::function<void(std::function<void()>)> later = {},
                        UnderWay underWay = {});
    /// On the server of that connection, which is opened when it is needed.
    explicit StateStore(std::unique_ptr<platform::odbc::Connection> connection);
    StateStore(const StateStore&) = delete;
    StateStore& operator=(const StateStore&) = delete;
    /// Commits.
    ~StateStore();

    /// Embedded: commits what waits and makes the tables where they are missing, so that a transaction of another
    /// connection may begin. Throws RuntimeError.
    void prepare();
    /// Embedded: the connection whose transaction is under way on the file, null without one.
    contract::Connection* underWay() const;

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

    /// Throws RuntimeError; the writes then wait for another commit(), which makes them anew where the database has
    /// taken them back, or for giveUp().
    void commit();
    /// Takes back what has been written since the last commit, so that nobody waits for it.
    void giveUp();
    /// The records of the last failure.
    contract::ErrorList errors() const;

private:
    struct Write {
        std::string key;
        std::int64_t state;
        std::string user;
        std::string origin;
    };

    contract::Connection* reading();
    contract::Connection* openServer(bool create);
    platform::sqlite::Connection& openFile();
    void prepareFile();
    void begin();
    void setOnServer(const Write& write);
    static void execute(contract::Connection& connection, const Write& write);
    std::string keyOf(std::string_view guid) const;

    std::string path_;
    std::function<void(std::function<void()>)> later_;
    UnderWay underWay_;
    std::unique_ptr<platform::odbc::Connection> server_;
    std::unique_ptr<platform::sqlite::Connection> file_;
    std::unique_ptr<platform::sqlite::Connection> companion_; ///< read until it can be taken in
    std::vector<Write> waiting_;                              ///< not committed yet
    bool tablesThere_ = false;
    bool prepared_ = false;
    contract::ErrorList errors_; ///< of a connection that had to go
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace host

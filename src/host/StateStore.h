#pragma once

#include "plugin/contract/Connection.h"
#include "plugin/contract/Schema.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// The host's workflow states of links, by the link's GUID, with their history: a file of the host's own beside the
/// database ("<database>.stati"), made when the first state is written.
///
/// Writes of one command are put into one transaction, which is committed when the user interface comes back to rest,
/// so that giving a state to thousands of links costs one write to the disk.
class StateStore {
public:
    /// later: calls a function once the present command is done; nothing commits each write at once.
    explicit StateStore(std::string databasePath, std::function<void(std::function<void()>)> later = {});
    StateStore(const StateStore&) = delete;
    StateStore& operator=(const StateStore&) = delete;
    /// Commits.
    ~StateStore();

    static std::string fileOf(const std::string& databasePath) { return databasePath + ".stati"; }
    static const contract::Schema& schema();

    /// State of a link (WF02_ID), nothing when it has none. GUIDs compare without regard to case and blanks around.
    std::optional<std::int64_t> state(std::string_view guid);
    /// Gives a link a state and keeps it in the history, with who and, for a state taken over from a link, that link's
    /// GUID. Throws RuntimeError.
    void setState(std::string_view guid, std::int64_t state, std::string_view user, std::string_view from = {});
    /// How many changes the history holds for a link.
    std::size_t changes(std::string_view guid);

    void commit();

private:
    contract::Connection* open(bool create);

    std::string path_;
    std::function<void(std::function<void()>)> later_;
    std::unique_ptr<contract::Connection> connection_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace host

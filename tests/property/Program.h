#pragma once

#include "component/form/FRMQZ_COPIADISTINTA.h"
#include "component/plugin/CLSQZ_COPIADISTINTA.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostServices.h"
#include "property/FaultyConnection.h"
#include "property/MoveModel.h"
#include "property/WorldDatabase.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace property {

/// The whole component with headless controls over a database of its own, which is removed with it. Company 1, today
/// 15/06/2024, three distinte of customers: "1", "2" and "3".
class Program {
public:
    /// Makes the connection that the program gets, not open yet.
    using Connect = std::function<std::unique_ptr<contract::Connection>(const WorldDatabase&)>;

    explicit Program(Where where = Where::embedded, const Connect& connect = &WorldDatabase::connect);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    /// Makes the database hold exactly this world.
    void write(const model::World& world) { database_.write(world); }
    /// The rows as the database holds them, through a connection of their own.
    std::vector<model::Row> rows() { return database_.rows(); }
    /// Rows that a model made, with the numbers that rows() gives them on a server.
    std::vector<model::Row> renumbered(std::vector<model::Row> rows) const {
        database_.renumber(rows);
        return rows;
    }
    /// Loads both sides and focuses a node on each. False when one of the nodes is none of its tree.
    bool focus(const model::Move& move);
    /// Presses a move button and answers "Sì", then error displays with the answer given.
    void press(const model::Move& move, std::vector<int> errorAnswers = {});
    /// Types a date into a cell of the destination's tree and leaves it; error displays get the answers given. False
    /// when the cell takes none.
    bool edit(std::int64_t node, std::string_view column, std::string_view text, std::vector<int> errorAnswers = {});
    /// What a cell of the destination's tree shows.
    std::string cell(std::int64_t node, std::string_view column);
    /// Path of an embedded database.
    const std::string& file() const { return database_.path(); }
    /// What another user does: gives a node's link another end.
    void changeEnd(std::int64_t node, contract::Date end) { database_.changeEnd(node, end); }
    /// Clicks a type again on both sides, as a user would to go on working.
    void reload();

    /// Text of the last message box since the last press, empty for none besides the question.
    std::string message() const;

private:
    WorldDatabase database_;

public:
    std::shared_ptr<platform::headless::HostState> host = std::make_shared<platform::headless::HostState>();
    std::shared_ptr<FaultyConnection> connection;
    std::unique_ptr<qz::CLSQZ_COPIADISTINTA> component = std::make_unique<qz::CLSQZ_COPIADISTINTA>();
    qz::StatoForm& state() { return component->form()->stato(); }
};

} // namespace property

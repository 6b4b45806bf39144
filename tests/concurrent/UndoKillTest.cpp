// A program that is killed before and after every operation of an undo: the rows and the registry are both as before or
// both as after, and the next program takes back what was not taken back.

#include "component/maintenance/Annullamento.h"
#include "component/maintenance/LetturaRegistro.h"
#include "concurrent/DeadlyConnection.h"
#include "concurrent/Process.h"
#include "concurrent/User.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <tuple>

namespace concurrent {

namespace {

using property::moveOf;
using property::smallWorld;
using property::Where;
using property::Work;
using property::WorldDatabase;

class UndoKill : public testing::TestWithParam<std::tuple<Where, Work>> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(std::get<Where>(GetParam())))
            GTEST_SKIP() << *why;
    }
};

std::vector<contract::Operation> operations(const WorldDatabase& database) {
    const auto connection = database.connect();
    connection->Open();
    return qz::leggiOperazioni(*connection, 1, {});
}

contract::Undoing takeBack(contract::Connection& connection, std::int64_t operation) {
    const qz::Autore author{"UTENTE", "GRUPPO", property::dateOf("15/06/2024")};
    return qz::Annullamento(connection, 1, author, "10:00:00").esegui(operation);
}

/// The world with one operation done.
void prepare(WorldDatabase& database, Work work) {
    database.write(smallWorld());
    const std::shared_ptr<contract::Connection> connection = database.connect();
    User user(database.connectionString(), connection);
    connection->Execute(contract::Statement("DELETE FROM QZ90_REGISTRO"));
    connection->Execute(contract::Statement("DELETE FROM QZ91_REGISTRORIGHE"));
    user.state().tieneRegistro = true;
    const auto move = moveOf(work);
    user.load(false, move.origin);
    user.load(true, move.destination);
    user.focus(false, move.node);
    user.focus(true, move.target);
    if (work == Work::edit)
        user.edit(true, property::dateOf("31/12/2030"));
    else
        user.press(move);
    ASSERT_TRUE(user.host->errors.empty());
}

} // namespace

TEST_P(UndoKill, AtEveryOperationLeavesRowsAndRegistryTogether) {
    const auto where = std::get<Where>(GetParam());
    const auto work = std::get<Work>(GetParam());
    WorldDatabase database(where, true);
    const auto before = smallWorld().rows;
    prepare(database, work);
    const auto after = database.rows();
    ASSERT_NE(before, after);
    int killed = 0;
    int kept = 0;
    bool reached = true;
    for (int at = 1; reached; ++at) {
        for (const bool late : {false, true}) {
            if (!late && where == Where::server)
                continue;
            const auto all = operations(database);
            ASSERT_EQ(all.size(), 1U);
            const auto operation = all.front().id;
            const auto ending = waitFor(start([&] {
                DeadlyConnection connection(database.connect());
                connection.Open();
                connection.dieAt(at, late);
                return takeBack(connection, operation).undone ? 0 : 1;
            }));
            const auto rows = database.rows();
            const auto left = operations(database);
            if (ending.signal == 0) {
                ASSERT_EQ(ending.status, 0);
                EXPECT_EQ(rows, before);
                EXPECT_EQ(left.size(), 2U);
                reached = false;
                break;
            }
            ASSERT_EQ(ending.signal, SIGKILL);
            ++killed;
            EXPECT_TRUE(database.sound());
            if (rows == before) {
                ++kept;
                ASSERT_EQ(left.size(), 2U) << at;
                ASSERT_EQ(left.front().undoes, operation) << at;
                prepare(database, work);
            } else {
                ASSERT_EQ(left.size(), 1U) << at;
                ASSERT_FALSE(left.front().undoneBy) << at;
            }
        }
        ASSERT_LT(at, 100);
    }
    EXPECT_GT(killed, 15 / (where == Where::server ? 2 : 1));
    EXPECT_GT(kept, 0);
    std::cout << killed << " processes killed\n";
}

INSTANTIATE_TEST_SUITE_P(EveryKind, UndoKill,
                         testing::Combine(testing::Values(Where::embedded, Where::odbc, Where::server),
                                          testing::Values(Work::structure, Work::validity, Work::edit)),
                         [](const auto& tested) {
                             return property::nameOf(std::get<Where>(tested.param)) +
                                    property::nameOf(std::get<Work>(tested.param));
                         });

} // namespace concurrent

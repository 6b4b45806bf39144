// Random operations in random forests, taken back in reverse: the first database comes back, row by row, every column.

#include "property/Program.h"
#include "property/RandomWorld.h"
#include "property/SmallWorld.h"
#include "property/WildWorld.h"
#include "property/Works.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace property {

namespace {

/// So many times as many operations as in the everyday run: 5 make ten thousand.
int longer() {
    const char* times = std::getenv("DISTINTE_UNDO_TIMES");
    return times != nullptr ? std::max(1, std::atoi(times)) : 1;
}

struct Tally {
    int structure = 0;
    int validity = 0;
    int edits = 0;
    int refused = 0;
    int redone = 0;
    int worlds = 0;

    int kept() const { return structure + validity + edits; }
};

/// A program whose class has a connection of its own, and keeps the registry.
class Undoing : public ::testing::Test {
protected:
    void prepare(Program& program) {
        connection_ = program.connection;
        program.component->plugin().Connection(connection_);
        program.component->KeepsRegistry(true);
    }

    /// Every column of every row of the nodes.
    std::string nodes() const { return everything(*connection_); }
    void clearRegistry() {
        connection_->Execute(contract::Statement("DELETE FROM QZ90_REGISTRO"));
        connection_->Execute(contract::Statement("DELETE FROM QZ91_REGISTRORIGHE"));
    }

    static std::vector<contract::Operation> operations(Program& program) { return program.component->Operations({}); }

    /// Loads what a move needs and presses its button; whether something was kept.
    bool press(Program& program, const model::Move& move) {
        const auto before = operations(program).size();
        if (!program.focus(move))
            return false;
        program.press(move);
        EXPECT_TRUE(program.host->errors.empty()) << program.host->errors.front().text;
        return operations(program).size() > before;
    }

    /// Types an end into a node of the destination; whether it was kept.
    bool type(Program& program, const model::Move& move, std::mt19937& random) {
        if (!program.focus(move))
            return false;
        const auto before = operations(program).size();
        const auto day = contract::Date::of(2026 + static_cast<int>(random() % 9), 1 + static_cast<int>(random() % 12),
                                            1 + static_cast<int>(random() % 28));
        program.edit(move.target, random() % 4 == 0 ? "trQZ02_DATAINIZIOVAL" : "trQZ02_DATAFINEVAL", day->text());
        EXPECT_TRUE(program.host->errors.empty()) << program.host->errors.front().text;
        return operations(program).size() > before;
    }

    /// Up to so many operations in one world.
    void workAndTakeBack(Program& program, unsigned seed, Tally& tally) {
        std::mt19937 random(seed);
        auto world = randomWorld(random);
        program.write(world);
        clearRegistry();
        program.state().nodiPerBlocchi = seed % 2 == 0 ? 0 : -1;
        std::vector<std::string> states{nodes()};
        const int wanted = 1 + static_cast<int>(random() % 6);
        for (int tries = 0; tries < wanted * 3 && static_cast<int>(states.size()) <= wanted; ++tries) {
            world.rows = program.rows();
            const bool withValidity = random() % 2 == 0;
            const auto move = randomMove(world, random, withValidity);
            const bool edit = random() % 4 == 0;
            if (edit ? !type(program, move, random) : !press(program, move)) {
                EXPECT_EQ(states.back(), nodes()) << seed;
                ++tally.refused;
                continue;
            }
            states.push_back(nodes());
            ++(edit ? tally.edits : withValidity ? tally.validity : tally.structure);
        }
        auto left = operations(program);
        ASSERT_EQ(left.size() + 1, states.size()) << seed;
        // Now and then what was taken back is done again first.
        for (const auto& operation : left) {
            takeBack(program, operation.id, states[states.size() - 2], seed);
            if (random() % 5 == 0 && !HasFailure()) {
                takeBack(program, operations(program).front().id, states.back(), seed);
                takeBack(program, operations(program).front().id, states[states.size() - 2], seed);
                ++tally.redone;
            }
            states.pop_back();
            if (HasFailure())
                return;
        }
        ++tally.worlds;
    }

    void takeBack(Program& program, std::int64_t operation, const std::string& expected, unsigned seed) {
        const auto before = nodes();
        const auto preview = program.component->PreviewUndo(operation);
        EXPECT_EQ(before, nodes());
        const auto outcome = program.component->Undo(operation);
        EXPECT_TRUE(outcome.undone) << "seed " << seed << ", operation " << operation << ": "
                                    << (outcome.obstacles.empty() ? std::string() : outcome.obstacles.front().reason)
                                    << "\n"
                                    << before;
        EXPECT_TRUE(preview.obstacles.empty());
        EXPECT_EQ(preview.rows.size(), outcome.rows.size());
        EXPECT_EQ(expected, nodes()) << "seed " << seed << ", operation " << operation;
        EXPECT_FALSE(connection_->InTransaction());
    }

    std::shared_ptr<contract::Connection> connection_;
};

TEST_F(Undoing, InReverseGivesBackTheFirstDatabase) {
    Program program;
    prepare(program);
    Tally tally;
    const int wanted = 2000 * longer();
    for (unsigned seed = 1; tally.kept() < wanted && !HasFailure(); ++seed)
        workAndTakeBack(program, seed, tally);
    std::printf("structural %d, with validity %d, edits %d, refused %d, done again %d, worlds %d\n", tally.structure,
                tally.validity, tally.edits, tally.refused, tally.redone, tally.worlds);
    // Every kind must be well represented for the agreement to mean something.
    EXPECT_GT(tally.structure, wanted / 10);
    EXPECT_GT(tally.validity, wanted / 10);
    EXPECT_GT(tally.edits, wanted / 20);
    EXPECT_GT(tally.redone, wanted / 50);
}

struct Case {
    Where where;
    Work work;
    Fault fault;
};

std::string nameOfCase(const ::testing::TestParamInfo<Case>& tested) {
    static const char* const faults[] = {"Error", "EndedByServer", "LostConnection"};
    return nameOf(tested.param.where) + nameOf(tested.param.work) + faults[static_cast<int>(tested.param.fault)];
}

std::vector<Case> cases() {
    std::vector<Case> all;
    for (const auto where : {Where::embedded, Where::odbc, Where::server})
        for (const auto work : {Work::structure, Work::validity, Work::edit})
            for (const auto fault : {Fault::error, Fault::endedByServer, Fault::lostConnection})
                all.push_back({where, work, fault});
    return all;
}

class UndoFault : public Undoing, public ::testing::WithParamInterface<Case> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(GetParam().where))
            GTEST_SKIP() << *why;
    }

    std::string registry() const {
        contract::Recordset rows;
        rows.Open(contract::Statement("SELECT QZ90_ID, QZ90_ANNULLATA FROM QZ90_REGISTRO ORDER BY QZ90_ID"),
                  *connection_);
        std::string text;
        for (; !rows.Eof(); rows.MoveNext())
            text += rows["QZ90_ID"].text() + " " + rows["QZ90_ANNULLATA"].text() + "\n";
        return text;
    }
};

TEST_P(UndoFault, LeavesRowsAndRegistryTogetherAtEveryOperation) {
    const auto [where, work, fault] = GetParam();
    Program program(where);
    prepare(program);
    // To and fro: an undo of the operation, and of that undo, fail at each of their statements.
    std::size_t injected = 0;
    program.write(smallWorld());
    ASSERT_TRUE(program.focus(moveOf(work)));
    const auto before = nodes();
    doWork(program, work);
    const auto after = nodes();
    ASSERT_NE(before, after);
    for (const bool redo : {false, true}) {
        const auto target = operations(program).front().id;
        const auto start = nodes();
        const auto kept = registry();
        for (std::size_t at = 1;; ++at) {
            program.connection->failAt(at, fault);
            bool failed = false;
            try {
                program.component->Undo(target);
            } catch (const contract::RuntimeError&) {
                failed = true;
            }
            program.connection->neverFail();
            program.connection->reconnect();
            EXPECT_FALSE(program.connection->InTransaction()) << at;
            if (!failed)
                break;
            ++injected;
            ASSERT_EQ(start, nodes()) << at;
            ASSERT_EQ(kept, registry()) << at;
            ASSERT_LT(at, 100U);
        }
        EXPECT_EQ(redo ? after : before, nodes());
        EXPECT_EQ(target + 1, operations(program).front().id);
    }
    EXPECT_GT(injected, 15U);
    // The next work on the same connection goes as ever.
    ASSERT_TRUE(program.focus(moveOf(work)) || work == Work::structure);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, UndoFault, ::testing::ValuesIn(cases()), nameOfCase);

class RegistryFault : public UndoFault {};

TEST_P(RegistryFault, AMoveAndItsOperationStandTogether) {
    const auto [where, work, fault] = GetParam();
    Program program(where);
    prepare(program);
    for (std::size_t at = 1;; ++at) {
        program.connection->reconnect();
        program.write(smallWorld());
        clearRegistry();
        ASSERT_TRUE(program.focus(moveOf(work)));
        const auto before = nodes();
        program.connection->failAt(at, fault);
        doWork(program, work,
               {contract::message::answerAbort, contract::message::answerAbort, contract::message::answerAbort,
                contract::message::answerAbort});
        program.connection->neverFail();
        const bool failed = !program.host->errors.empty();
        program.connection->reconnect();
        EXPECT_EQ(before == nodes() ? 0U : 1U, operations(program).size()) << at;
        if (!failed)
            break;
        ASSERT_LT(at, 500U);
    }
    EXPECT_EQ(1U, operations(program).size());
}

INSTANTIATE_TEST_SUITE_P(EveryKind, RegistryFault, ::testing::ValuesIn(cases()), nameOfCase);

} // namespace

} // namespace property

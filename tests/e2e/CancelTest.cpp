// Works that their user gives up, at each of their statements: nothing of them is kept, nothing is shown but one line,
// and the next try succeeds.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace e2e;

namespace {

constexpr const char* given = "Operazione annullata: nessuna modifica è stata salvata.";

std::string statusLine(Dialogue& program) {
    return text(program.read(QStringLiteral("StatusBar")).value(QLatin1String("value")));
}

void cancelAfter(Dialogue& program, int statements) {
    program.must(QStringLiteral(R"({"do":"cancel","after":%1})").arg(statements).toUtf8());
}

/// What a user sees of both sides, and which distinta they stand on.
std::string screen(Dialogue& program) {
    std::string seen;
    for (const auto& control : {origTree, destTree, origList, destList}) {
        auto read = program.read(control);
        read.remove(QLatin1String("tooltip"));
        seen += json(read) + "\n";
    }
    auto state = program.state();
    // What the move says of itself stays with it.
    state.remove(QLatin1String("DataFineLegame"));
    state.remove(QLatin1String("MessaggioSpostamento"));
    return seen + json(state);
}

/// On a server states are kept before the move that gives them, of which they are no part.
std::string rowsOf(const Workplace& place, Database& database) {
    std::string rows = database.nodes();
    std::vector<std::string> tables{"QZ90_REGISTRO", "QZ91_REGISTRORIGHE"};
    if (!place.onServer())
        tables.insert(tables.end(), {"STATI_LEGAME", "STATI_STORIA"});
    for (const auto& table : tables)
        rows += database.value("SELECT COUNT(*) FROM " + table) + " ";
    return rows;
}

class Cancelled : public ::testing::TestWithParam<std::pair<Work, int>> {};

std::string nameOfParam(const ::testing::TestParamInfo<std::pair<Work, int>>& info) {
    return nameOf(info.param.first) + (info.param.second == 0 ? "InBlocks" : "");
}

} // namespace

TEST_P(Cancelled, LeavesEverythingAsItWas) {
    const auto [work, blocks] = GetParam();
    Workplace place;
    place.makeForest();
    Database database(place);
    Dialogue program(place, {}, false);
    program.open({{QStringLiteral("NodiPerBlocchi"), blocks}});
    aim(program, work);
    // The node and the cell that an edit goes to, before anything is compared.
    if (work == Work::edit)
        program.focus(destTree, 5);
    const auto rows = rowsOf(place, database);
    const auto seen = screen(program);
    const std::size_t questions = work == Work::edit ? 0 : 1;
    int cancelled = 0;
    for (int statements = 0; statements < 200; ++statements) {
        SCOPED_TRACE(statements);
        cancelAfter(program, statements);
        program.trace();
        const auto reply = doWork(program, work);
        if (isDone(database, work))
            break;
        ++cancelled;
        EXPECT_EQ(questions, messages(reply).size()) << json(reply);
        EXPECT_TRUE(errors(reply).empty()) << json(reply);
        EXPECT_EQ(given, statusLine(program));
        EXPECT_EQ(rows, rowsOf(place, database));
        EXPECT_EQ(seen, screen(program));
        const auto sent = program.trace();
        EXPECT_TRUE(sent.empty() || sent.back() != "CommitTrans");
    }
    EXPECT_GT(cancelled, work == Work::edit ? 2 : 5);
    EXPECT_TRUE(isDone(database, work)) << "the next try succeeds";
    EXPECT_NE(given, statusLine(program)) << "too late is not heard";
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Works, Cancelled,
                         ::testing::Values(std::pair(Work::structure, -1), std::pair(Work::structure, 0),
                                           std::pair(Work::validity, -1), std::pair(Work::validity, 0),
                                           std::pair(Work::edit, -1)),
                         nameOfParam);

TEST(CancelledLoad, LeavesTheDistintaThatWasShown) {
    Workplace place;
    place.makeForest();
    Dialogue program(place);
    for (const auto& list : {origList, destList}) {
        program.select(list, QStringLiteral("C1"));
        const auto seen = screen(program);
        int cancelled = 0;
        for (int statements = 0; statements < 20; ++statements) {
            SCOPED_TRACE(statements);
            cancelAfter(program, statements);
            const auto reply = program.select(list, QStringLiteral("C2"));
            EXPECT_TRUE(messages(reply).empty()) << json(reply);
            if (text(program.read(list).value(QLatin1String("selected"))) == "C2")
                break;
            ++cancelled;
            EXPECT_EQ(given, statusLine(program));
            EXPECT_EQ(seen, screen(program));
        }
        EXPECT_EQ(2, cancelled) << "before the type and before the nodes; then the tree is filled to its end";
        EXPECT_NE(seen, screen(program));
        EXPECT_NE(given, statusLine(program));
    }
    EXPECT_EQ(program.finish(), 0);
}

TEST(CancelledRefresh, LeavesBothTreesWhole) {
    Workplace place;
    place.makeForest();
    Dialogue program(place);
    aim(program, Work::structure);
    const auto seen = screen(program);
    int cancelled = 0;
    for (int statements = 0; statements < 40; ++statements) {
        SCOPED_TRACE(statements);
        cancelAfter(program, statements);
        const auto reply = program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":116})");
        EXPECT_TRUE(messages(reply).empty()) << json(reply);
        EXPECT_EQ(seen, screen(program));
        if (statusLine(program) == "Le distinte sono state rilette.")
            break;
        ++cancelled;
        EXPECT_EQ(given, statusLine(program));
    }
    EXPECT_GE(cancelled, 4);
    EXPECT_EQ(program.finish(), 0);
}

TEST(CancelRequest, ServesTheNextLineAlone) {
    Workplace place;
    place.makeForest();
    Database database(place);
    Dialogue program(place);
    aim(program, Work::structure);
    cancelAfter(program, 0);
    program.focus(origTree, 3);
    doWork(program, Work::structure);
    EXPECT_TRUE(isDone(database, Work::structure));
    EXPECT_NE(std::string::npos, program.refusal(R"({"do":"cancel"})").find("after"));
    EXPECT_FALSE(program.refusal(R"({"do":"cancel","after":-1})").empty());
    EXPECT_EQ(program.finish(), 1);
}

// A move in blocks beside the same move statement by statement: the user sees no difference.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <regex>
#include <string>
#include <vector>

using namespace e2e;

namespace {

/// What one move showed, asked and left.
struct Left {
    std::vector<std::string> statements; ///< between the transaction's ends
    std::vector<std::string> shown;
    std::vector<std::vector<std::string>> rows;
    std::vector<int> origin;
    std::vector<int> destination;
    QJsonArray services;
};

/// The same statements with every GUID, which are new in each run, written as "guid".
std::vector<std::string> withoutGuids(std::vector<std::string> statements) {
    static const std::regex guid("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}");
    for (auto& text : statements)
        text = std::regex_replace(text, guid, "guid");
    return statements;
}

bool inBlocks(const std::vector<std::string>& statements) {
    return std::any_of(statements.begin(), statements.end(),
                       [](const std::string& text) { return contains(text, "QZ02_IDPARENT_QZ02 IN ("); });
}

class MovesOfBothKinds : public ::testing::TestWithParam<Work> {
protected:
    /// A move in a new forest; the context sets the property, and so does the value when there is one.
    static Left move(Work work, const QJsonObject& context, std::optional<int> set = std::nullopt) {
        Workplace place;
        place.makeForest();
        Left run;
        {
            Dialogue program(place, {}, false);
            program.open(context);
            if (set)
                program.must(R"({"do":"class","set":"NodiPerBlocchi","value":)" + QByteArray::number(*set) + "}");
            aim(program, work);
            program.trace();
            program.services();
            run.shown = messages(doWork(program, work));
            run.statements = withoutGuids(stretch(program.trace(), "BeginTrans", "CommitTrans"));
            const QJsonArray services = program.services();
            for (const QJsonValue& service : services)
                run.services.append(service.toObject().value(QStringLiteral("operation")));
            run.origin = program.ids(origTree);
            run.destination = program.ids(destTree);
        }
        run.rows = Database(place).rows(
            "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, "
            "QZ02_DATAFINEVAL, QZ02_DATACRE, QZ02_UTENTECRE, QZ02_GRUPPOCRE, QZ02_DATAVAR, QZ02_UTENTEVAR, "
            "QZ02_GRUPPOVAR, QZ02_ID_WF02 FROM QZ02_DISTINTA ORDER BY QZ02_ID");
        return run;
    }

    static QJsonObject context(int value) { return {{QStringLiteral("NodiPerBlocchi"), value}}; }
};

TEST_P(MovesOfBothKinds, LeaveTheSame) {
    const auto usual = move(GetParam(), {});
    const auto never = move(GetParam(), context(-1));
    const auto always = move(GetParam(), context(0));
    const auto setLater = move(GetParam(), {}, 0);

    ASSERT_GT(usual.statements.size(), 2U);
    EXPECT_FALSE(inBlocks(usual.statements));
    EXPECT_EQ(usual.statements, never.statements);
    EXPECT_TRUE(inBlocks(always.statements));
    EXPECT_EQ(always.statements, setLater.statements);
    for (const auto* run : {&never, &always, &setLater}) {
        EXPECT_EQ(usual.shown, run->shown);
        EXPECT_EQ(usual.rows, run->rows);
        EXPECT_EQ(usual.origin, run->origin);
        EXPECT_EQ(usual.destination, run->destination);
        EXPECT_EQ(usual.services, run->services);
    }
}

INSTANTIATE_TEST_SUITE_P(Moves, MovesOfBothKinds, ::testing::Values(Work::structure, Work::validity), nameOfCase);

TEST(NodesForBlocks, AreReadAndWrittenByScripts) {
    Workplace place;
    place.makeForest();
    Dialogue program(place);
    const auto get = [&] {
        return program.must(R"({"do":"class","get":"NodiPerBlocchi"})").value(QStringLiteral("value"));
    };
    EXPECT_EQ(QJsonValue(100), get());
    program.must(R"({"do":"class","set":"NodiPerBlocchi","value":-1})");
    EXPECT_EQ(QJsonValue(-1), get());
    EXPECT_EQ("la proprietà \"NodiPerBlocchi\" vuole un numero intero",
              program.refusal(R"({"do":"class","set":"NodiPerBlocchi","value":1.5})"));
    EXPECT_EQ(QJsonValue(-1), get());
}

TEST(NodesForBlocks, AreABoundOnTheNodesBelow) {
    // Node 2 has one node below it.
    for (const int limit : {1, 0}) {
        Workplace place;
        place.makeForest();
        Dialogue program(place, {}, false);
        program.open({{QStringLiteral("NodiPerBlocchi"), limit}});
        aim(program, Work::validity);
        program.trace();
        doWork(program, Work::validity);
        EXPECT_EQ(limit == 0, inBlocks(stretch(program.trace(), "BeginTrans", "CommitTrans"))) << limit;
    }
}

} // namespace

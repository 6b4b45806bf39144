// Lists, previews and undos that their user gives up: refused with one sentence, nothing written, and the next try
// goes.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <string>

using namespace e2e;

namespace {

constexpr const char* given = "Operazione annullata: nessuna modifica è stata salvata.";

std::string allRows(Database& database) {
    return database.nodes() + database.value("SELECT COUNT(*) FROM QZ90_REGISTRO") + " " +
           database.value("SELECT COUNT(*) FROM QZ91_REGISTRORIGHE") + " " +
           database.value("SELECT COUNT(*) FROM STATI_LEGAME");
}

/// Gives a request up after each number of statements, until it goes; how often it was given up.
int giveUpUntilItGoes(Dialogue& program, Database& database, const QJsonObject& request) {
    const auto before = allRows(database);
    for (int statements = 0; statements < 300; ++statements) {
        SCOPED_TRACE(statements);
        program.must(QStringLiteral(R"({"do":"cancel","after":%1})").arg(statements).toUtf8());
        const auto reply = program.ask(request);
        if (reply.value(QLatin1String("ok")).toBool())
            return statements;
        EXPECT_EQ(given, text(reply.value(QLatin1String("error")))) << json(reply);
        EXPECT_TRUE(messages(reply).empty()) << json(reply);
        EXPECT_EQ(given, text(program.read(QStringLiteral("StatusBar")).value(QLatin1String("value"))));
        EXPECT_EQ(before, allRows(database));
    }
    ADD_FAILURE() << "never done";
    return 0;
}

class CancelTools : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_{Workplace::Where::file};
};

TEST_F(CancelTools, AnUndo) {
    Database database(place_);
    Dialogue program(place_);
    const auto before = database.nodes();
    aim(program, Work::validity);
    doWork(program, Work::validity);
    ASSERT_NE(before, database.nodes());
    EXPECT_GT(giveUpUntilItGoes(program, database,
                                {{QStringLiteral("do"), QStringLiteral("undo")}, {QStringLiteral("id"), 1}}),
              4);
    EXPECT_EQ(before, database.nodes());
    EXPECT_EQ(program.finish(), 1);
}

TEST_F(CancelTools, AListOfMoves) {
    Database database(place_);
    Dialogue program(place_);
    program.select(origList, QStringLiteral("C1"));
    program.select(destList, QStringLiteral("C2"));
    const auto file = place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre;distinta_origine;"
                                                                 "distinta_destinazione\n110;210;AG;ZN\n");
    EXPECT_GT(giveUpUntilItGoes(program, database,
                                {{QStringLiteral("do"), QStringLiteral("moves")},
                                 {QStringLiteral("file"), file},
                                 {QStringLiteral("apply"), true}}),
              8);
    EXPECT_EQ("2", database.value("SELECT QZ02_ID_QZ01 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    EXPECT_EQ(program.finish(), 1);
}

TEST_F(CancelTools, APreview) {
    Database database(place_);
    Dialogue program(place_);
    aim(program, Work::structure);
    EXPECT_GT(giveUpUntilItGoes(program, database, {{QStringLiteral("do"), QStringLiteral("preview")}}), 1);
    EXPECT_EQ(program.finish(), 1);
}

} // namespace

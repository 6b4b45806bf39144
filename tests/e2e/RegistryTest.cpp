// The registry of moves: what each move and each edit leaves in it, and nothing where nothing was kept.

#include "e2e/Registry.h"
#include "e2e/Database.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <QTime>

#include <string>
#include <vector>

using namespace e2e;

namespace {

class Registry : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override { place_.makeForest(); }

    static QJsonObject withBlocks(int blocks) { return {{QStringLiteral("NodiPerBlocchi"), blocks}}; }

    Workplace place_;
};

QJsonObject values(std::initializer_list<std::pair<QString, QJsonValue>> all) {
    return QJsonObject(all);
}

QJsonValue member(const QJsonValue& object, const char* name) {
    return object.toObject().value(QLatin1String(name));
}

TEST_P(Registry, TellsWhatAStructuralMoveChanged) {
    Dialogue program(place_, {"--user", "MARIO", "--group", "VENDITE"}, false);
    program.open(withBlocks(GetParam()));
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 2);
    program.focus(destTree, 21);
    program.must(R"({"do":"answer","values":[6]})");
    program.click(QStringLiteral("CMD_SPOSTASTRU"));

    const auto all = operations(program);
    ASSERT_EQ(1, all.size());
    const QJsonObject operation = all[0].toObject();
    EXPECT_EQ((QStringList{"day", "description", "group", "id", "kind", "rows", "time", "undoes", "undone_by", "user"}),
              operation.keys());
    EXPECT_EQ(1, member(operation, "id").toInt());
    EXPECT_EQ("structure", text(member(operation, "kind")));
    EXPECT_EQ(2, member(operation, "rows").toInt());
    EXPECT_EQ("MARIO", text(member(operation, "user")));
    EXPECT_EQ("VENDITE", text(member(operation, "group")));
    EXPECT_EQ(today(), text(member(operation, "day")));
    EXPECT_TRUE(member(operation, "undoes").isNull());
    EXPECT_TRUE(member(operation, "undone_by").isNull());
    EXPECT_EQ("110 Bianchi S.r.l.: Spostati 2 nodi sotto 210 Ovest", text(member(operation, "description")));
    EXPECT_TRUE(QTime::fromString(member(operation, "time").toString(), QStringLiteral("HH:mm:ss")).isValid());

    const auto rows = rowsOf(program, 1);
    ASSERT_EQ(2, rows.size());
    EXPECT_EQ((QStringList{"account", "after", "before", "id", "outcome", "row"}), rows[0].toObject().keys());
    const QString day = QString::fromStdString(today());
    EXPECT_EQ(QJsonValue(values({{"row", 1},
                                 {"id", 2},
                                 {"account", 110},
                                 {"outcome", "moves"},
                                 {"before", values({{"QZ02_ID_QZ01", 1},
                                                    {"QZ02_IDPARENT_QZ02", 1},
                                                    {"QZ02_UTENTEVAR", QJsonValue::Null},
                                                    {"QZ02_GRUPPOVAR", QJsonValue::Null},
                                                    {"QZ02_DATAVAR", QJsonValue::Null}})},
                                 {"after", values({{"QZ02_ID_QZ01", 2},
                                                   {"QZ02_IDPARENT_QZ02", 21},
                                                   {"QZ02_UTENTEVAR", "MARIO"},
                                                   {"QZ02_GRUPPOVAR", "VENDITE"},
                                                   {"QZ02_DATAVAR", day}})}})),
              rows[0]);
    EXPECT_EQ(QJsonValue(values({{"row", 2},
                                 {"id", 3},
                                 {"account", 111},
                                 {"outcome", "moves"},
                                 {"before", values({{"QZ02_ID_QZ01", 1}})},
                                 {"after", values({{"QZ02_ID_QZ01", 2}})}})),
              rows[1]);
}

TEST_P(Registry, TellsTheLinksThatAMoveWithValidityClosedAndOpened) {
    Dialogue program(place_, {}, false);
    program.open(withBlocks(GetParam()));
    aim(program, Work::validity);
    doWork(program, Work::validity);

    const auto all = operations(program);
    ASSERT_EQ(1, all.size());
    EXPECT_EQ("validity", text(member(all[0], "kind")));
    EXPECT_EQ(4, member(all[0], "rows").toInt());
    const auto rows = rowsOf(program, 1);
    ASSERT_EQ(4, rows.size());
    std::vector<std::string> outcomes;
    for (const auto& row : rows)
        outcomes.push_back(text(member(row, "account")) + " " + text(member(row, "outcome")));
    EXPECT_EQ((std::vector<std::string>{"110 copies", "110 opens", "111 copies", "111 opens"}), outcomes);
    EXPECT_EQ(QJsonValue(values({{"QZ02_DATAFINEVAL", "31/12/2099"},
                                 {"QZ02_UTENTEVAR", QJsonValue::Null},
                                 {"QZ02_GRUPPOVAR", QJsonValue::Null}})),
              member(rows[0], "before"));
    EXPECT_EQ(QJsonValue(values(
                  {{"QZ02_DATAFINEVAL", "30/06/2024"}, {"QZ02_UTENTEVAR", "ADMIN"}, {"QZ02_GRUPPOVAR", "ADMIN"}})),
              member(rows[0], "after"));
    EXPECT_TRUE(member(rows[1], "before").isNull());
    const QJsonObject opened = member(rows[1], "after").toObject();
    EXPECT_EQ("01/07/2024", text(member(opened, "QZ02_DATAINIZIOVAL")));
    EXPECT_EQ("31/12/2099", text(member(opened, "QZ02_DATAFINEVAL")));
    EXPECT_EQ(21, member(opened, "QZ02_IDPARENT_QZ02").toInt());
    EXPECT_EQ(2, member(opened, "QZ02_ID_QZ01").toInt());
    // It hangs under the new link of its parent, and both are rows of the table.
    EXPECT_EQ(member(rows[1], "id"), member(member(rows[3], "after"), "QZ02_IDPARENT_QZ02"));
    EXPECT_EQ(text(member(rows[3], "id")),
              Database(place_).value("SELECT QZ02_ID FROM QZ02_DISTINTA WHERE QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = "
                                     "111"));
}

TEST_P(Registry, ListsWhatACheckLeavesBehindButDoesNotCountIt) {
    // A child of node 2 with its own account would close a ring; the one after it goes.
    Database(place_).run("INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
                         "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES "
                         "(98,1,2,1,0,110,'2020-01-01','2099-12-31'),(99,1,2,1,0,130,'2010-01-01','2011-12-31')");
    Dialogue program(place_, {}, false);
    program.open(withBlocks(GetParam()));
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 2);
    program.focus(destTree, 21);
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.click(QStringLiteral("CMD_SPOSTASTRU"));
    const auto all = operations(program);
    ASSERT_EQ(1, all.size()) << json(reply);
    EXPECT_EQ(3, member(all[0], "rows").toInt());
    const auto rows = rowsOf(program, 1);
    ASSERT_EQ(4, rows.size());
    EXPECT_EQ("moves", text(member(rows[0], "outcome")));
    EXPECT_EQ("moves", text(member(rows[1], "outcome")));
    EXPECT_EQ(QJsonValue(values({{"row", 3},
                                 {"id", 98},
                                 {"account", 110},
                                 {"outcome", "stays"},
                                 {"before", QJsonObject()},
                                 {"after", QJsonObject()}})),
              rows[2]);
}

INSTANTIATE_TEST_SUITE_P(Ways, Registry, ::testing::Values(-1, 0),
                         [](const auto& way) { return way.param < 0 ? "Single" : "Blocks"; });

class RegistryOnce : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_;
};

class RegistryOf : public ::testing::TestWithParam<Work> {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_;
};

TEST_P(RegistryOf, StatementsAllNameItsTablesAndNoOtherChanges) {
    std::vector<std::string> with;
    std::vector<std::string> without;
    for (const bool tables : {true, false}) {
        Workplace place;
        place.makeForest();
        if (!tables)
            Database(place).run("DROP TABLE QZ90_REGISTRO; DROP TABLE QZ91_REGISTRORIGHE");
        Dialogue program(place);
        aim(program, GetParam());
        doWork(program, GetParam());
        auto& statements = tables ? with : without;
        statements = program.wholeTrace();
        EXPECT_EQ(tables, std::erase_if(statements, isOfRegistry) > 0);
    }
    // The GUIDs of new links are new in each run.
    const auto cut = [](std::vector<std::string>& statements) {
        for (auto& text : statements)
            if (startsWith(text, "INSERT INTO QZ02_DISTINTA"))
                text.resize(text.rfind(", '"));
    };
    cut(with);
    cut(without);
    EXPECT_EQ(without, with);
}

TEST_P(RegistryOf, NothingIsLeftOfWhatIsRefused) {
    // The new link would overlap another one, the dates would too, and the node would hang under itself.
    Database(place_).run("INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
                         "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES "
                         "(90,2,20,1,0,111,'2040-01-01','2045-12-31'),(91,2,20,1,0,130,'2040-01-01','2045-12-31')");
    if (GetParam() == Work::structure)
        Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 111 WHERE QZ02_ID = 25");
    if (GetParam() == Work::edit)
        Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '2030-12-31' WHERE QZ02_ID = 5");
    const auto before = Database(place_).nodes();
    Dialogue program(place_);
    aim(program, GetParam());
    EXPECT_FALSE(messages(doWork(program, GetParam())).empty());
    EXPECT_EQ(before, Database(place_).nodes());
    EXPECT_TRUE(operations(program).isEmpty());
    EXPECT_EQ("0", Database(place_).value("SELECT COUNT(*) FROM QZ91_REGISTRORIGHE"));
}

TEST_P(RegistryOf, IsAnOptionOfTheDatabase) {
    Database(place_).run("DROP TABLE QZ90_REGISTRO; DROP TABLE QZ91_REGISTRORIGHE");
    Dialogue program(place_);
    EXPECT_EQ("il database non ha le tabelle del registro degli spostamenti", program.refusal(R"({"do":"registry"})"));
    aim(program, GetParam());
    doWork(program, GetParam());
    Database database(place_);
    EXPECT_TRUE(isDone(database, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Works, RegistryOf, ::testing::Values(Work::structure, Work::validity, Work::edit), nameOfCase);

TEST_F(RegistryOnce, TellsAnEditWithBothItsDates) {
    Dialogue program(place_);
    aim(program, Work::edit);
    doWork(program, Work::edit);
    const auto all = operations(program);
    ASSERT_EQ(1, all.size());
    EXPECT_EQ("edit", text(member(all[0], "kind")));
    EXPECT_EQ("Conto 130: validità dal 01/01/2020 al 31/12/2099 cambiata, ora dal 01/01/2020 al 30/06/2050",
              text(member(all[0], "description")));
    const auto rows = rowsOf(program, 1);
    ASSERT_EQ(1, rows.size());
    EXPECT_EQ("edits", text(member(rows[0], "outcome")));
    EXPECT_EQ(5, member(rows[0], "id").toInt());
    EXPECT_EQ("31/12/2099", text(member(member(rows[0], "before"), "QZ02_DATAFINEVAL")));
    EXPECT_EQ("30/06/2050", text(member(member(rows[0], "after"), "QZ02_DATAFINEVAL")));
    EXPECT_FALSE(member(rows[0], "after").toObject().contains(QStringLiteral("QZ02_DATAINIZIOVAL")));
}

TEST_F(RegistryOnce, ItsTablesAreAddedOnlyWhenTheUserSaysYes) {
    Database(place_).run("DROP TABLE QZ90_REGISTRO; DROP TABLE QZ91_REGISTRORIGHE");
    Dialogue program(place_);
    const QByteArray add = R"({"do":"menu","item":"mnuAggiungiRegistro"})";
    EXPECT_EQ((std::vector<std::string>{"Nel database mancano le tabelle del registro: spostamenti e modifiche non "
                                        "vengono annotati. Si aggiungono con «Strumenti › Aggiungi le tabelle del "
                                        "registro…»."}),
              messages(program.must(R"({"do":"menu","item":"mnuRegistro"})")));
    EXPECT_EQ((std::vector<std::string>{"Aggiungere al database le tabelle del registro degli spostamenti?"}),
              messages(program.must(add)));
    program.refusal(R"({"do":"registry"})");
    program.must(R"({"do":"answer","values":[6]})");
    program.must(add);
    EXPECT_TRUE(operations(program).isEmpty());
    // The form that stands open writes into it from now on.
    aim(program, Work::structure);
    doWork(program, Work::structure);
    EXPECT_EQ(1, operations(program).size());
    EXPECT_EQ((std::vector<std::string>{"Il database ha già le tabelle del registro."}), messages(program.must(add)));
}

TEST_F(RegistryOnce, ItsWindowFiltersAndShowsTheRowsOfTheOneInFocus) {
    Dialogue program(place_);
    for (const auto work : {Work::structure, Work::validity}) {
        aim(program, work);
        doWork(program, work);
    }
    const QJsonObject reply = program.must(
        R"({"do":"when","form":"RegistroSpostamenti","steps":[{"do":"read","control":"LBL_TITOLO"},)"
        R"({"do":"read","control":"GRD_RIGHE"},{"do":"read","control":"GRD_DETTAGLIO"},)"
        R"({"do":"set","control":"TXT_UTENTE","value":"NESSUNO"},{"do":"read","control":"GRD_RIGHE"},)"
        R"({"do":"set","control":"TXT_UTENTE","value":"admin"},{"do":"set","control":"TXT_CONTO","value":"110"},)"
        R"({"do":"read","control":"GRD_RIGHE"},{"do":"set","control":"TXT_CONTO","value":""},)"
        R"({"do":"set","control":"TXT_GIORNO","value":"01/01/2020"},{"do":"read","control":"GRD_RIGHE"}]})");
    static_cast<void>(reply);
    const QJsonArray replies = program.must(R"({"do":"menu","item":"mnuRegistro"})")
                                   .value(QStringLiteral("modal"))
                                   .toArray()[0]
                                   .toObject()
                                   .value(QStringLiteral("replies"))
                                   .toArray();
    ASSERT_EQ(11, replies.size());
    const auto rows = [&](int step) { return member(replies[step], "rows").toArray(); };
    EXPECT_EQ("2 operazioni", text(member(replies[0], "caption")));
    ASSERT_EQ(2, rows(1).size());
    EXPECT_EQ("2", text(rows(1)[0].toArray()[0]));
    EXPECT_EQ("spostamento con validità", text(rows(1)[0].toArray()[5]));
    EXPECT_FALSE(rows(2).isEmpty());
    EXPECT_TRUE(rows(4).isEmpty());
    ASSERT_EQ(1, rows(7).size());
    EXPECT_EQ("2", text(rows(7)[0].toArray()[0]));
    EXPECT_TRUE(rows(10).isEmpty());
}

} // namespace

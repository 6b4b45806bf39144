// Taking operations of the registry back: what was there comes back, row by row, or nothing is written and what stands
// in the way is told.

#include "e2e/Database.h"
#include "e2e/Registry.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace e2e;

namespace {

class UndoBase : public ::testing::Test {
protected:
    void SetUp() override {
        place_.makeForest();
        before_ = Database(place_).nodes();
    }

    Workplace place_;
    std::string before_;
};

class UndoOf : public UndoBase, public ::testing::WithParamInterface<Work> {};

TEST_P(UndoOf, GivesBackEveryRowAndCanItselfBeUndone) {
    Dialogue program(place_);
    aim(program, GetParam());
    doWork(program, GetParam());
    const auto done = Database(place_).nodes();
    ASSERT_NE(before_, done);

    program.wholeTrace();
    const auto preview = undo(program, 1, true);
    EXPECT_TRUE(obstacles(preview).empty());
    for (const auto& statement : program.wholeTrace())
        EXPECT_TRUE(startsWith(statement, "SELECT")) << statement;
    EXPECT_EQ(done, Database(place_).nodes());

    EXPECT_TRUE(undone(undo(program, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
    EXPECT_TRUE(undone(undo(program, 2)));
    EXPECT_EQ(done, Database(place_).nodes());
    EXPECT_TRUE(undone(undo(program, 3)));
    EXPECT_EQ(before_, Database(place_).nodes());

    const auto all = operations(program);
    ASSERT_EQ(4, all.size());
    for (int i = 0; i < 3; ++i) {
        const QJsonObject operation = all[i].toObject();
        EXPECT_EQ("undo", text(operation.value(QStringLiteral("kind"))));
        EXPECT_EQ(3 - i, operation.value(QStringLiteral("undoes")).toInt());
        EXPECT_EQ(all[3].toObject().value(QStringLiteral("rows")), operation.value(QStringLiteral("rows")));
    }
    EXPECT_EQ(2, all[3].toObject().value(QStringLiteral("undone_by")).toInt());
    EXPECT_EQ((std::vector<std::string>{"-: L'operazione è già stata annullata dall'operazione 2."}),
              obstacles(undo(program, 1)));
    EXPECT_EQ((std::vector<std::string>{"-: L'operazione è già stata annullata dall'operazione 2."}),
              obstacles(undo(program, 1, true)));
}

TEST_P(UndoOf, IsRefusedWhereARowIsNotAsItWasLeft) {
    {
        Dialogue program(place_);
        aim(program, GetParam());
        doWork(program, GetParam());
    }
    const int node = GetParam() == Work::structure ? 3 : (GetParam() == Work::validity ? 2 : 5);
    Database(place_).run(GetParam() == Work::structure
                             ? "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 20 WHERE QZ02_ID = 3"
                             : "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '2024-05-31' WHERE QZ02_ID = " +
                                   std::to_string(node));
    const auto left = Database(place_).nodes();
    Dialogue program(place_);
    const auto refused = undo(program, 1);
    const auto told = obstacles(refused);
    ASSERT_EQ(1U, told.size());
    EXPECT_EQ(GetParam() == Work::structure
                  ? "3: È stato cambiato in seguito: padre ora 20, l'operazione aveva lasciato 25."
                  : std::to_string(node) +
                        ": È stato cambiato in seguito: fine ora 31/05/2024, l'operazione aveva "
                        "lasciato " +
                        (GetParam() == Work::validity ? "30/06/2024." : "30/06/2050."),
              told[0]);
    EXPECT_EQ(told, obstacles(undo(program, 1, true)));
    EXPECT_EQ(left, Database(place_).nodes());
    EXPECT_EQ(1, operations(program).size());
}

TEST_P(UndoOf, IsRefusedWhereARowIsGone) {
    {
        Dialogue program(place_);
        aim(program, GetParam());
        doWork(program, GetParam());
    }
    const int node = GetParam() == Work::structure ? 3 : (GetParam() == Work::validity ? 2 : 5);
    Database(place_).run("DELETE FROM QZ02_DISTINTA WHERE QZ02_ID = " + std::to_string(node));
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{std::to_string(node) + ": Il legame non c'è più."}),
              obstacles(undo(program, 1)));
}

INSTANTIATE_TEST_SUITE_P(Works, UndoOf, ::testing::Values(Work::structure, Work::validity, Work::edit), nameOfCase);

class Undo : public UndoBase {
protected:
    /// Works one after the other in one run of the program.
    void work(const std::vector<Work>& works) {
        Dialogue program(place_);
        for (const auto each : works) {
            aim(program, each);
            doWork(program, each);
        }
        ASSERT_EQ(static_cast<int>(works.size()), operations(program).size());
    }

    /// The link of an account that its move with validity opened.
    std::string opened(int account) {
        return Database(place_).value("SELECT MAX(QZ02_ID) FROM QZ02_DISTINTA WHERE QZ02_CLIFOR_CG44 = " +
                                      std::to_string(account));
    }
};

TEST_F(Undo, OfALaterOperationComesFirst) {
    Dialogue program(place_);
    aim(program, Work::structure);
    doWork(program, Work::structure);
    // Back again, by hand.
    program.select(origList, QStringLiteral("C2"));
    program.select(destList, QStringLiteral("C1"));
    program.focus(origTree, 3);
    program.focus(destTree, 4);
    program.must(R"({"do":"answer","values":[6]})");
    program.click(QStringLiteral("CMD_SPOSTASTRU"));
    const auto told = obstacles(undo(program, 1));
    ASSERT_EQ(2U, told.size());
    EXPECT_EQ("3: L'operazione 2 lo ha cambiato in seguito: va annullata prima quella.", told[1]);
    EXPECT_TRUE(undone(undo(program, 2)));
    EXPECT_TRUE(undone(undo(program, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
}

TEST_F(Undo, IsRefusedForAnEditThatCameLater) {
    // The move left other columns than the edit changed, and the same author: the row is not as it was left.
    Dialogue program(place_);
    aim(program, Work::structure);
    doWork(program, Work::structure);
    program.select(destList, QStringLiteral("C2"));
    program.focus(destTree, 3);
    program.must(R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":3,"column":"trQZ02_DATAFINEVAL",)"
                 R"("value":"31/12/2050"})");
    ASSERT_EQ(2, operations(program).size());
    EXPECT_EQ((std::vector<std::string>{"3: L'operazione 2 lo ha cambiato in seguito: va annullata prima quella."}),
              obstacles(undo(program, 1)));
    EXPECT_TRUE(undone(undo(program, 2)));
    EXPECT_TRUE(undone(undo(program, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
}

TEST_F(Undo, LeavesNothingHanging) {
    work({Work::validity});
    const auto link = opened(110);
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = " + link + " WHERE QZ02_ID = 25");
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{link + ": Sotto il legame che andrebbe tolto c'è il conto 220, dal 01/01/2020 "
                                               "al 31/12/2099."}),
              obstacles(undo(program, 1)));
}

TEST_F(Undo, LeavesADefinitiveBonusAlone) {
    work({Work::validity});
    const auto link = opened(111);
    Database(place_).run("INSERT INTO QZ13_PREMI (QZ13_ID, QZ13_DITTA_CG18) VALUES (1, 1);"
                         "INSERT INTO QZ14_SOGGCONTR (QZ14_ID_QZ13, QZ14_ID_QZ02, QZ14_DITTA_CG18) VALUES (1, " +
                         link +
                         ", 1);"
                         "INSERT INTO QZ18_LIQUIDAZIONE (QZ18_ID_QZ13, QZ18_DATASCADENZA, QZ18_STATOSCADENZA) "
                         "VALUES (1, '2025-01-01', 2)");
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{link + ": Sul legame c'è un premio definitivo."}), obstacles(undo(program, 1)));
    Database(place_).run("UPDATE QZ18_LIQUIDAZIONE SET QZ18_STATOSCADENZA = 1");
    EXPECT_TRUE(undone(undo(program, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
}

TEST_F(Undo, DoesNotMindABonusThatStoodBefore) {
    Database(place_).run("INSERT INTO QZ13_PREMI (QZ13_ID, QZ13_DITTA_CG18) VALUES (1, 1);"
                         "INSERT INTO QZ14_SOGGCONTR (QZ14_ID_QZ13, QZ14_ID_QZ02, QZ14_DITTA_CG18) VALUES (1, 3, 1);"
                         "INSERT INTO QZ18_LIQUIDAZIONE (QZ18_ID_QZ13, QZ18_DATASCADENZA, QZ18_STATOSCADENZA) "
                         "VALUES (1, '2025-01-01', 2)");
    work({Work::structure});
    Dialogue program(place_);
    EXPECT_TRUE(undone(undo(program, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
}

TEST_F(Undo, LetsNoLinksOverlap) {
    work({Work::validity});
    // Where the new link has given up its end, another one has taken the account.
    Database(place_).run("INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
                         "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES "
                         "(90,2,20,1,0,110,'2050-01-01','2060-12-31')");
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{"2: Tornerebbe a valere dal 01/01/2020 al 31/12/2099, insieme al legame 90 "
                                        "dello stesso conto, dal 01/01/2050 al 31/12/2060."}),
              obstacles(undo(program, 1)));
}

TEST_F(Undo, ClosesNoRing) {
    work({Work::structure});
    // What was above now hangs below.
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 3 WHERE QZ02_ID = 2");
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{"3: Tornerebbe sotto il conto 110, che ora gli sta sotto."}),
              obstacles(undo(program, 1)));
}

TEST_F(Undo, GoesUnderNoNodeThatIsGone) {
    work({Work::structure});
    Database(place_).run("DELETE FROM QZ02_DISTINTA WHERE QZ02_ID = 2");
    Dialogue program(place_);
    EXPECT_EQ((std::vector<std::string>{"3: Il nodo 2, sotto cui tornerebbe, non c'è più."}),
              obstacles(undo(program, 1)));
}

TEST_F(Undo, OfAnUnknownOperationIsNoRequest) {
    Dialogue program(place_);
    EXPECT_EQ("il registro degli spostamenti non contiene l'operazione 7", program.refusal(R"({"do":"undo","id":7})"));
}

TEST_F(Undo, LoadsBothTreesAgain) {
    Dialogue program(place_);
    aim(program, Work::structure);
    const auto origin = program.ids(origTree);
    const auto destination = program.ids(destTree);
    doWork(program, Work::structure);
    ASSERT_NE(origin, program.ids(origTree));
    undo(program, 1);
    EXPECT_EQ(origin, program.ids(origTree));
    EXPECT_EQ(destination, program.ids(destTree));
}

TEST_F(Undo, IsAskedForInItsWindow) {
    Dialogue program(place_);
    aim(program, Work::structure);
    doWork(program, Work::structure);
    const auto press = [&](const char* button) {
        program.must(R"({"do":"when","form":"AnnullaOperazione","steps":[{"do":"read","control":"LBL_TITOLO"},)"
                     R"({"do":"click","control":")" +
                     QByteArray(button) + R"("}]})");
        program.must(R"({"do":"when","form":"RegistroSpostamenti","steps":[{"do":"click","control":)"
                     R"("CMD_ANNULLA_OPERAZIONE"},{"do":"read","control":"LBL_TITOLO"}]})");
        program.must(R"({"do":"menu","item":"mnuRegistro"})");
    };
    press("CMD_CHIUDI");
    EXPECT_NE(before_, Database(place_).nodes());
    press("CMD_ANNULLA");
    EXPECT_EQ(before_, Database(place_).nodes());
    EXPECT_EQ(2, operations(program).size());
}

TEST_F(Undo, TwoUsersCanNotBothTakeAnOperationBack) {
    work({Work::structure});
    Dialogue one(place_);
    Dialogue other(place_);
    ASSERT_EQ(1, operations(other).size());
    EXPECT_TRUE(undone(undo(one, 1)));
    EXPECT_EQ((std::vector<std::string>{"-: L'operazione è già stata annullata dall'operazione 2."}),
              obstacles(undo(other, 1)));
    EXPECT_EQ(before_, Database(place_).nodes());
}

} // namespace

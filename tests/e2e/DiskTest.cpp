// A disk that fills up, and a program that is killed, at every single write of a move with validity: the rows and the
// states of their links are there together, or neither is.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <QFile>

#include <iostream>
#include <memory>

using namespace e2e;

namespace {

constexpr int farTooMany = 2000;

/// aim() and doWork() as one script.
QByteArray script(Work work) {
    const QByteArray open = R"({"do":"open"}
{"do":"select","control":"TRW_DISTINTEORIG","key":"C1"}
)";
    if (work == Work::edit)
        return open + R"({"do":"select","control":"TRW_DISTINTEDEST","key":"C1"}
{"do":"edit","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAFINEVAL","value":"30/06/2050"}
)";
    const QByteArray move = open + R"({"do":"select","control":"TRW_DISTINTEDEST","key":"C2"}
{"do":"answer","values":[6]}
)";
    if (work == Work::structure)
        return move + R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":3}
{"do":"focus","control":"TRW_ELEMDISTINTADEST","id":25}
{"do":"click","control":"CMD_SPOSTASTRU"}
)";
    return move + R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":2}
{"do":"focus","control":"TRW_ELEMDISTINTADEST","id":21}
{"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2024"},{"do":"click","control":"CMD_ESEGUI"}]}
{"do":"click","control":"CMD_SPOSTAVALID"}
)";
}

class Disk : public ::testing::TestWithParam<Work> {
protected:
    void SetUp() override {
        place_.makeForest();
        Database database(place_.database());
        database.run("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES "
                     "('22222222-0000-0000-0000-000000000002', 20)");
        place_.setVariable("LD_PRELOAD", FAULTY_DISK);
        place_.setVariable("FAULTY_DISK_FILES", place_.database());
        place_.setVariable("FAULTY_DISK_ORDER", place_.path("ordine"));
    }

    void give(const char* order, int number) {
        QFile::remove(place_.path("ordine"));
        place_.write("ordine", QByteArray(order) + ' ' + QByteArray::number(number));
    }
    void takeBack() { QFile::remove(place_.path("ordine")); }

    static std::string all(Database& database) {
        std::string text = database.nodes();
        for (const auto& row : database.rows("SELECT * FROM STATI_LEGAME ORDER BY STATI_GUID"))
            text += row[0] + "|" + row[1] + "\n";
        return text + database.value("SELECT Count(*) FROM STATI_STORIA");
    }

    /// Every link that the move has made has the state of the link that was moved, and its history.
    static void expectWhole(Database& database, Work work) {
        EXPECT_TRUE(isDone(database, work));
        if (work == Work::validity) {
            EXPECT_EQ("2", database.value("SELECT Count(*) FROM QZ02_DISTINTA JOIN STATI_LEGAME ON STATI_GUID = "
                                          "QZ02_GUID AND STATI_ID_WF02 = 20 WHERE QZ02_ID_QZ01 = 2 AND "
                                          "QZ02_CLIFOR_CG44 IN (110, 111)"));
            EXPECT_EQ("2", database.value("SELECT Count(*) FROM STATI_STORIA"));
        }
        EXPECT_EQ("ok", database.value("PRAGMA integrity_check"));
    }

    Workplace place_{Workplace::Where::file};
};

} // namespace

TEST_P(Disk, AKillAtAnyWriteLeavesRowsAndStatesOrNeither) {
    const QString pure = place_.path("intatto.sqlite");
    ASSERT_TRUE(QFile::copy(place_.database(), pure));
    const std::string before = all(*std::make_unique<Database>(pure));
    int kills = 0;
    int whole = 0;
    for (int number = 1;; ++number) {
        ASSERT_LT(number, farTooMany);
        QFile::remove(place_.database());
        QFile::remove(place_.database() + "-journal");
        ASSERT_TRUE(QFile::copy(pure, place_.database()));
        give("kill", number);
        const bool survived = place_.runScript(script(GetParam())).status == 0;
        Database database(place_.database());
        const std::string after = all(database);
        if (after != before) {
            expectWhole(database, GetParam());
            ++whole;
        }
        if (survived) {
            EXPECT_NE(before, after);
            break;
        }
        ++kills;
    }
    EXPECT_GT(kills, 10);
    std::cout << nameOf(GetParam()) << ": " << kills << " kills, the work was there after " << whole - 1 << "\n";
}

TEST_P(Disk, NoSpaceAtAnyWriteLeavesRowsAndStatesAsTheyWere) {
    Database database(place_.database());
    const std::string before = all(database);
    Dialogue program(place_);
    int faults = 0;
    for (int number = 1;; ++number) {
        ASSERT_LT(number, farTooMany);
        aim(program, GetParam());
        give("full", number);
        const auto said = errors(doWork(program, GetParam()));
        takeBack();
        if (said.empty())
            break;
        ++faults;
        EXPECT_TRUE(contains(said.front(), "non c'è più spazio sul disco")) << said.front();
        ASSERT_EQ(before, all(database)) << number;
    }
    EXPECT_GT(faults, 2);
    expectWhole(database, GetParam());
    std::cout << nameOf(GetParam()) << ": no space " << faults << " times\n";
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryKind, Disk, ::testing::Values(Work::structure, Work::validity, Work::edit), nameOfCase);

// Columns that lie: what an outside program can put into the tables without the engine minding. It is shown or refused
// in words, the other nodes stay usable, nothing is written by looking, and the program ends well.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

struct Lie {
    const char* name;
    const char* sql;
};

void PrintTo(const Lie& lie, std::ostream* out) {
    *out << lie.name;
}

class BadData : public ::testing::TestWithParam<Lie> {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_{Workplace::Where::file}; // a server minds the most of it
};

std::string lieName(const ::testing::TestParamInfo<Lie>& info) {
    return info.param.name;
}

/// Every message and error of a reply is a sentence of some length.
void expectReadable(const QJsonObject& reply) {
    const QJsonArray shown = reply.value(QStringLiteral("messages")).toArray();
    for (const QJsonValue& value : shown) {
        const QJsonObject message = value.toObject();
        const auto said = text(message.value(message.contains(QStringLiteral("text")) ? QStringLiteral("text")
                                                                                      : QStringLiteral("description")));
        EXPECT_GT(said.size(), 15U) << json(reply);
        EXPECT_TRUE(contains(said, " ")) << json(reply);
    }
}

/// As wide as the database's own.
std::vector<qint64> idsOf(const QJsonObject& tree) {
    std::vector<qint64> ids;
    const QJsonArray nodes = tree.value(QStringLiteral("nodes")).toArray();
    for (const QJsonValue& node : nodes)
        ids.push_back(node.toObject().value(QStringLiteral("id")).toInteger());
    return ids;
}

} // namespace

TEST_P(BadData, IsShownOrRefusedInWordsAndHarmsNothing) {
    Database database(place_.database());
    database.run(GetParam().sql);
    const auto before = database.nodes();

    Dialogue program(place_);
    for (const auto& key : {"C1", "C2"}) {
        expectReadable(program.select(origList, QLatin1String(key)));
        expectReadable(program.select(destList, QLatin1String(key)));
    }
    expectReadable(program.select(origList, QStringLiteral("C1")));
    // Every node that is shown can be looked at.
    for (const auto& tree : {origTree, destTree})
        for (const auto id : idsOf(program.read(tree)))
            expectReadable(program.ask(QJsonObject{{"do", "focus"}, {"control", tree}, {"id", id}}));
    expectReadable(program.must(R"({"do":"set","control":"txtCercaOrig","value":"ver"})"));
    expectReadable(program.must(R"({"do":"key","control":"txtCercaOrig","code":13})"));
    EXPECT_EQ(database.nodes(), before) << "looking must not write";

    // A move says what it did, and what it refuses it leaves alone.
    if (!program.node(origTree, 3).isEmpty() && !program.node(destTree, 25).isEmpty()) {
        program.focus(origTree, 3);
        program.focus(destTree, 25);
        program.must(R"({"do":"answer","values":[6]})");
        const auto reply = program.click(QStringLiteral("CMD_SPOSTASTRU"));
        expectReadable(reply);
        const bool moved = database.value("SELECT QZ02_ID_QZ01 FROM QZ02_DISTINTA WHERE QZ02_ID = 3") == "2";
        if (moved) {
            EXPECT_EQ(messages(reply).size(), 1U) << "the question alone: " << json(reply);
        } else {
            EXPECT_EQ(database.nodes(), before);
        }
    }
    expectReadable(program.must(R"({"do":"close"})"));
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadData,
    ::testing::Values(
        Lie{"TextInANumberColumn", "UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 'cento' WHERE QZ02_ID = 2"},
        Lie{"TextInAParentColumn", "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 'padre' WHERE QZ02_ID = 4"},
        Lie{"DateThatIsNone", "UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '2023-02-30' WHERE QZ02_ID = 3"},
        Lie{"DateOfLongAgo", "UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '1752-01-01' WHERE QZ02_ID = 3"},
        Lie{"DateThatIsAWord", "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = 'domani' WHERE QZ02_ID IN (3, 25)"},
        Lie{"DateThatIsANumber", "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = 45292 WHERE QZ02_ID = 21"},
        Lie{"IdsBeyondThirtyTwoBits",
            "INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,"
            "QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES (5000000000,1,1,1,0,110,'2020-01-01',"
            "'2020-12-31'),(9223372036854775806,1,5000000000,1,0,111,'2020-01-01','2020-12-31')"},
        Lie{"ANameOfTenMegabytes",
            "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = replace(hex(zeroblob(5000000)), '00', 'ab') WHERE CG16_CODICE = "
            "1110"},
        Lie{"BytesThatAreNoUtf8",
            "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = CAST(x'C3285652FF20E0A1' AS TEXT) WHERE CG16_CODICE = 1110"},
        Lie{"ControlCharacters",
            "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = 'Riga'||char(10)||'due'||char(9)||char(27)||'[31m' WHERE "
            "CG16_CODICE = 1110"},
        Lie{"ABlobInATextColumn", "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = x'00FF00FF' WHERE CG16_CODICE = 1110"},
        Lie{"ACycle", "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 3 WHERE QZ02_ID = 2"},
        Lie{"ANodeUnderItself", "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 4 WHERE QZ02_ID = 4"},
        Lie{"AnOrphan", "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 777 WHERE QZ02_ID = 2"},
        Lie{"AParentOfAnotherDistinta", "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 25 WHERE QZ02_ID = 2"},
        Lie{"TheSameGuidEverywhere", "UPDATE QZ02_DISTINTA SET QZ02_GUID = '22222222-0000-0000-0000-000000000001'"},
        Lie{"AGuidThatIsNone", "UPDATE QZ02_DISTINTA SET QZ02_GUID = 'nessuno''; DROP TABLE X; --'"},
        Lie{"ATypeWithoutCodeAndName",
            "UPDATE QZ01_TIPODISTINTA SET QZ01_CODICE = NULL, QZ01_DESCR = NULL WHERE QZ01_ID = 1"},
        Lie{"ADivisionWithQuotes", "UPDATE QZ01_TIPODISTINTA SET QZ01_IDDIV_CO1A = 'D''; DELETE FROM QZ02_DISTINTA; "
                                   "--' WHERE QZ01_ID IN (1, 2)"},
        Lie{"FractionsInIds", "UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 110.5 WHERE QZ02_ID = 2"}),
    lieName);

TEST(HostileUser, TheUsersCodesChangeNothingBeyondTheirQuotes) {
    Workplace place;
    place.makeForest();
    const QString user = QStringLiteral("O'Brien'; DELETE FROM QZ02_DISTINTA; --");
    Dialogue program(place, {QStringLiteral("--user"), user, QStringLiteral("--group"), QStringLiteral("''")});
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 3);
    program.focus(destTree, 25);
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ(messages(program.click(QStringLiteral("CMD_SPOSTASTRU"))).size(), 1U);
    Database database(place);
    EXPECT_EQ(database.value("SELECT Count(*) FROM QZ02_DISTINTA"), "15");
    EXPECT_EQ(database.value("SELECT QZ02_UTENTEVAR FROM QZ02_DISTINTA WHERE QZ02_ID = 3"), user.toStdString());
    EXPECT_EQ(database.value("SELECT QZ02_GRUPPOVAR FROM QZ02_DISTINTA WHERE QZ02_ID = 3"), "''");
}

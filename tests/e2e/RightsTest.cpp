// A database user with the rights that docs/operations.md asks for, and with one of them missing, on the server that
// DISTINTE_TEST_ODBC names.

#include "contract/RuntimeError.h"
#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"
#include "platform/odbc/Connection.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include <unistd.h>

using namespace e2e;

namespace {

struct Right {
    std::string table;
    std::string what; ///< SELECT, ...
};

std::vector<std::string> inCode(const std::string& cell) {
    static const std::regex code("`([A-Z0-9_]+)`");
    std::vector<std::string> words;
    for (std::sregex_iterator at(cell.begin(), cell.end(), code), end; at != end; ++at)
        words.push_back((*at)[1]);
    return words;
}

/// The rows of the table under "Rights".
std::vector<Right> rightsOfTheGuide() {
    std::ifstream file(DISTINTE_DOCS "/operations.md");
    std::ostringstream all;
    all << file.rdbuf();
    const std::string text = all.str();
    const auto from = text.find("\n## Rights\n");
    std::istringstream lines(text.substr(from, text.find("\n## ", from + 1) - from));
    std::vector<Right> rights;
    for (std::string line; std::getline(lines, line);) {
        const auto middle = line.find(" | ");
        if (!startsWith(line, "| ") || middle == std::string::npos)
            continue;
        for (const auto& table : inCode(line.substr(0, middle)))
            for (const auto& what : inCode(line.substr(middle)))
                rights.push_back({table, what});
    }
    return rights;
}

class Rights : public ::testing::Test {
protected:
    void SetUp() override {
        if (!place_.onServer())
            GTEST_SKIP() << "DISTINTE_TEST_ODBC names no server";
        place_.makeForest();
        admin_.SetConnectionString(place_.server());
        admin_.Open();
        const std::string password = "Aa1_" + std::to_string(::getpid());
        try {
            admin_.runNative("CREATE LOGIN " + user_ + " WITH PASSWORD = '" + password + "'");
            made_ = true;
            admin_.runNative("CREATE USER " + user_ + " FOR LOGIN " + user_);
        } catch (const contract::RuntimeError& error) {
            GTEST_SKIP() << "the user of DISTINTE_TEST_ODBC may not make users: " << error.description();
        }
        for (const auto& right : rightsOfTheGuide())
            give(right);
        platform::odbc::ConnectionString string(place_.server());
        string.removeSecrets();
        string.set("UID", user_);
        string.set("PWD", password);
        place_.connectBy(string.text());
    }
    void TearDown() override {
        if (!made_)
            return;
        try {
            for (const auto& right : rightsOfTheGuide())
                take(right);
            admin_.runNative("DROP USER " + user_);
            admin_.runNative("DROP LOGIN " + user_);
        } catch (const contract::RuntimeError& error) {
            ADD_FAILURE() << error.description();
        }
    }

    void give(const Right& right) { admin_.runNative("GRANT " + right.what + " ON " + right.table + " TO " + user_); }
    void take(const Right& right) {
        admin_.runNative("REVOKE " + right.what + " ON " + right.table + " FROM " + user_);
    }

    /// The work ends in words about the right; nothing of it stays, and it is done once the right is given again.
    void expectMissing(Dialogue& program, const Right& right, Work work) {
        SCOPED_TRACE(right.what + " on " + right.table + ", " + nameOf(work));
        Database database(place_);
        aim(program, work);
        const auto before = database.nodes();
        take(right);
        const auto said = errors(doWork(program, work));
        ASSERT_FALSE(said.empty());
        EXPECT_TRUE(contains(said.front(), "l'utente del database non ha il permesso")) << said.front();
        EXPECT_EQ(database.nodes(), before);
        give(right);
        aim(program, work);
        const auto after = errors(doWork(program, work));
        EXPECT_TRUE(after.empty()) << after.front();
        EXPECT_TRUE(isDone(database, work));
    }

    Workplace place_;
    platform::odbc::Connection admin_;
    const std::string user_ = "distinte_prova_" + std::to_string(::getpid());
    bool made_ = false;
};

} // namespace

TEST(RightsOfTheGuide, NameEveryTable) {
    std::set<std::string> tables;
    for (const auto& right : rightsOfTheGuide())
        tables.insert(right.table);
    EXPECT_EQ(tables, tablesOfTheProgram());
}

TEST_F(Rights, ThoseOfTheGuideAreEnough) {
    Database database(place_);
    // So that the detail reads every table.
    database.run("INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_FLG_ANAG,QZ03_FLG_CONDVEND,QZ03_FLG_CLAS,"
                 "QZ03_FLG_PROV) VALUES (1,1,1,1,1)");
    Dialogue program(place_);
    std::vector<std::string> said;
    const auto hear = [&](const QJsonObject& reply) {
        EXPECT_EQ(text(reply.value(QStringLiteral("ok"))), "true") << json(reply);
        for (const auto& words : errors(reply))
            said.push_back(words);
    };
    for (const auto work : {Work::structure, Work::validity, Work::edit}) {
        hear(program.select(destList, work == Work::edit ? QStringLiteral("C1") : QStringLiteral("C2")));
        aim(program, work);
        hear(doWork(program, work));
        EXPECT_TRUE(isDone(database, work)) << nameOf(work);
    }
    // A state, and the parameters.
    program.must(R"({"do":"when","form":"lkp_Stati","steps":[{"do":"choose","value":20}]})");
    hear(program.must(R"({"do":"mouse","control":"TRW_ELEMDISTINTADEST","id":4,"column":"RagioneSociale",)"
                      R"("button":"right"})"));
    hear(program.must(R"({"do":"menu","item":"mnuStatoLegame"})"));
    EXPECT_EQ("Approvato", program.cell(destTree, 4, QStringLiteral("Stato")));
    program.must(R"({"do":"when","form":"FRMQZ_PARAMETRI","steps":[)"
                 R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false},{"do":"click","control":"CMD_SALVA"}]})");
    hear(program.click(QStringLiteral("CMD_PARAMETRI")));
    EXPECT_EQ("0", database.value("SELECT QZ03_FLG_PROV FROM QZ03_PARAMETRI WHERE QZ03_DITTA_CG18 = 1"));
    EXPECT_TRUE(said.empty()) << said.front();
    program.must(R"({"do":"close"})");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Rights, WithoutTheChangeOfLinksNothingIsDone) {
    Dialogue program(place_);
    for (const auto work : {Work::structure, Work::validity, Work::edit})
        expectMissing(program, {"QZ02_DISTINTA", "UPDATE"}, work);
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Rights, WithoutNewLinksAMoveWithValidityClosesNone) {
    Dialogue program(place_);
    take({"QZ02_DISTINTA", "INSERT"});
    aim(program, Work::edit);
    EXPECT_TRUE(errors(doWork(program, Work::edit)).empty());
    give({"QZ02_DISTINTA", "INSERT"});
    expectMissing(program, {"QZ02_DISTINTA", "INSERT"}, Work::validity);
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Rights, ATableThatMayNotBeReadIsSaidWhenItIsLoaded) {
    const Right reading{"CG16_ANAGGEN", "SELECT"};
    {
        Dialogue program(place_);
        take(reading);
        const auto said = errors(program.select(origList, QStringLiteral("C2")));
        ASSERT_FALSE(said.empty());
        EXPECT_TRUE(contains(said.front(), "l'utente del database non ha il permesso")) << said.front();
        give(reading);
        EXPECT_TRUE(errors(program.select(origList, QStringLiteral("C1"))).empty());
        EXPECT_FALSE(program.ids(origTree).empty());
        EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
    }
    take(reading);
    const auto refused = place_.runScript(R"({"do":"open"})");
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.err.count(QLatin1Char('\n')), 1) << refused.err.toStdString();
    EXPECT_TRUE(refused.err.contains(QStringLiteral("CG16_ANAGGEN, o l'utente non la può leggere")))
        << refused.err.toStdString();
    give(reading);
}

#include "e2e/Database.h"
#include "e2e/Program.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

using namespace e2e;

namespace {

class Export : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    QByteArray exporting(const char* what, const QString& file) {
        return R"({"do":"export","what":")" + QByteArray(what) + R"(","file":")" + place_.path(file).toUtf8() + "\"}";
    }
    QByteArray content(const QString& file) {
        QFile in(place_.path(file));
        EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << qPrintable(file);
        return in.readAll();
    }
    /// Lines without the mark in front; a server gives brothers in the order it likes.
    std::vector<std::string> sortedLines(const QString& file) {
        std::vector<std::string> lines;
        QByteArray text = content(file);
        EXPECT_TRUE(text.startsWith("\xEF\xBB\xBF"));
        for (const auto& line : text.mid(3).split('\n'))
            if (!line.isEmpty())
                lines.push_back(line.toStdString());
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    Workplace place_;
};

TEST_F(Export, WritesTheTwoDistinteWithoutAStatement) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.trace();
    program.must(exporting("origin", QStringLiteral("origine.csv")));
    program.must(exporting("destination", QStringLiteral("destinazione.CSV")));
    EXPECT_TRUE(program.trace().empty());
    EXPECT_EQ((std::vector<std::string>{"1;100;Rossi S.p.A.;;01/01/2020;31/12/2099;100\r",
                                        "1;130;Gialli;;01/01/2020;31/12/2099;130\r",
                                        "2;110;Bianchi S.r.l.;100;01/01/2020;31/12/2099;100 / 110\r",
                                        "2;120;Neri S.n.c.;100;01/01/2024;31/12/2024;100 / 120\r",
                                        "2;999;;130;01/01/2020;31/12/2099;130 / 999\r",
                                        "3;111;Verdi & C.;110;01/01/2020;31/12/2099;100 / 110 / 111\r",
                                        "Livello;Codice;Ragione Sociale;Padre;Data inizio;Data fine;Percorso\r"}),
              sortedLines(QStringLiteral("origine.csv")));
    const auto lines = sortedLines(QStringLiteral("destinazione.CSV"));
    ASSERT_EQ(6U, lines.size());
    EXPECT_EQ("1;200;Nord;;01/01/2020;31/12/2099;;200\r", lines.front());
    EXPECT_EQ("Livello;Codice;Ragione Sociale;Padre;Data inizio;Data fine;Stato;Percorso\r", lines.back());
}

TEST_F(Export, TheEndingPicksTheFormat) {
    Dialogue program(place_);
    program.must(exporting("origin", QStringLiteral("foglio.xlsx")));
    EXPECT_TRUE(content(QStringLiteral("foglio.xlsx")).startsWith("PK"));
    program.must(exporting("origin", QStringLiteral("carta.pdf")));
    EXPECT_TRUE(content(QStringLiteral("carta.pdf")).startsWith("%PDF-"));
    EXPECT_NE(std::string::npos,
              program.refusal(exporting("origin", QStringLiteral("elenco.txt"))).find(".csv, .xlsx o .pdf"));
}

TEST_F(Export, TheListsOfTheWindowsAreThoseTheRequestsAnswer) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 2);
    program.focus(destTree, 22);
    const std::pair<const char*, const char*> lists[] = {
        {"audit", "findings"}, {"compare", "rows"}, {"preview", "rows"}};
    for (const auto& [what, member] : lists) {
        const QString file = QString::fromLatin1(what) + QStringLiteral(".csv");
        const auto reply = program.must(exporting(what, file));
        EXPECT_TRUE(messages(reply).empty()) << what;
        const QJsonArray rows =
            program.must(R"({"do":")" + QByteArray(what) + "\"}").value(QLatin1String(member)).toArray();
        EXPECT_EQ(static_cast<std::size_t>(rows.size()) + 1, sortedLines(file).size()) << what;
        EXPECT_FALSE(rows.isEmpty()) << what;
    }
}

TEST_F(Export, RefusesWhatItCanNotDo) {
    Dialogue program(place_);
    EXPECT_NE(std::string::npos,
              program.refusal(exporting("origin", QStringLiteral("manca/elenco.csv"))).find("il percorso non esiste"));
    EXPECT_NE(std::string::npos, program.refusal(exporting("altro", QStringLiteral("elenco.csv"))).find("\"what\""));
    program.refusal(R"({"do":"export","file":"elenco.csv"})");
    program.refusal(R"({"do":"export","what":"origin"})");
    program.must(R"({"do":"close"})");
    EXPECT_NE(std::string::npos,
              program.refusal(exporting("origin", QStringLiteral("elenco.csv"))).find("non è aperta"));
}

TEST_F(Export, AFullDiskLeavesTheFileAsItWas) {
    place_.write(QStringLiteral("elenco.csv"), "di prima");
    place_.limitFiles(100);
    // The database is read only here: what it writes for itself has no room either.
    Dialogue program(place_);
    EXPECT_NE(std::string::npos,
              program.refusal(exporting("origin", QStringLiteral("elenco.csv"))).find("supera la grandezza permessa"));
    EXPECT_EQ("di prima", content(QStringLiteral("elenco.csv")));
}

TEST_F(Export, ADistintaWithoutNodesIsItsTitles) {
    Dialogue program(place_);
    program.select(origList, QStringLiteral("C4"));
    program.must(exporting("origin", QStringLiteral("vuota.csv")));
    EXPECT_EQ((std::vector<std::string>{"Livello;Codice;Ragione Sociale;Padre;Data inizio;Data fine;Percorso\r"}),
              sortedLines(QStringLiteral("vuota.csv")));
}

TEST_F(Export, TheMenuDoesWhatItsWindowSays) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"ESPORTA","steps":[{"do":"set","control":"CMB_LATO","value":0},)"
                 R"({"do":"set","control":"CMB_RIGHE","value":1},{"do":"set","control":"TXT_FILE","value":")" +
                 place_.path(QStringLiteral("menu.csv")).toUtf8() + R"("},{"do":"click","control":"CMD_SCRIVI"}]})");
    const auto reply = program.must(R"({"do":"menu","item":"mnuEsporta"})");
    EXPECT_EQ(std::vector<std::string>{"ESPORTA"}, modalForms(reply));
    EXPECT_EQ(7U, sortedLines(QStringLiteral("menu.csv")).size());
    EXPECT_EQ("Righe esportate: 6 in «" + place_.path(QStringLiteral("menu.csv")).toStdString() + "».",
              text(program.read(QStringLiteral("StatusBar"))[QLatin1String("value")]));
    EXPECT_EQ(std::vector<std::string>{"STAMPA"}, modalForms(program.must(R"({"do":"menu","item":"mnuStampa"})")));
}

} // namespace

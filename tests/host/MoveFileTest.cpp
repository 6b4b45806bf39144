// What is a list of moves, and what is wrong with one that is none.

#include "host/moves/MoveFile.h"
#include "TestFolder.h"
#include "contract/RuntimeError.h"
#include "host/moves/CsvRecords.h"

#include <gtest/gtest.h>

#include <QFile>

#include <string>
#include <vector>

namespace {

using contract::MoveLine;

std::string refusal(std::string_view list) {
    try {
        host::readMoves(list);
    } catch (const contract::RuntimeError& error) {
        return error.description();
    }
    ADD_FAILURE() << "taken: " << list;
    return {};
}

MoveLine only(std::string_view list) {
    const auto lines = host::readMoves(list);
    EXPECT_EQ(1U, lines.size());
    return lines.empty() ? MoveLine{} : lines.front();
}

TEST(MoveFile, ReadsEveryColumnWhereverItStands) {
    const auto line = only("tipo;data_fine;nuovo_padre;conto;distinta_destinazione;distinta_origine\n"
                           "validita;30/06/2024;210;110;ZN;AG\n");
    EXPECT_EQ(2, line.line);
    EXPECT_EQ(110, line.account);
    EXPECT_EQ(210, line.parentAccount);
    EXPECT_EQ("AG", line.originCode);
    EXPECT_EQ("ZN", line.destinationCode);
    EXPECT_TRUE(line.manner.validity);
    EXPECT_EQ(contract::Date::parse("30/06/2024"), line.manner.end);
    EXPECT_EQ("", line.wrong);
}

TEST(MoveFile, AMoveWithoutKindIsStructural) {
    EXPECT_FALSE(only("conto,nuovo_padre\n1,2\n").manner.validity);
    EXPECT_FALSE(only("conto,nuovo_padre,tipo\n1,2,\n").manner.validity);
    EXPECT_FALSE(only("conto,nuovo_padre,tipo\n1,2,Struttura\n").manner.validity);
    EXPECT_TRUE(only("conto,nuovo_padre,tipo\n1,2,VALIDITA\n").manner.validity);
    EXPECT_TRUE(only("conto,nuovo_padre,tipo\n1,2,validità\n").manner.validity);
}

TEST(MoveFile, CountsLinesAsAnEditorDoes) {
    const auto lines = host::readMoves("conto;nuovo_padre;distinta_origine\r\n"
                                       "1;2;\r\n"
                                       "\r\n"
                                       ";;\r\n"
                                       "3;4;\"due\r\nrighe\"\r\n"
                                       "5;6;");
    ASSERT_EQ(3U, lines.size());
    EXPECT_EQ(2, lines[0].line);
    EXPECT_EQ(5, lines[1].line);
    EXPECT_EQ(7, lines[2].line);
    // Line ends of old machines.
    EXPECT_EQ(3, host::readMoves("conto;nuovo_padre\r1;2\r3;4\r").back().line);
}

TEST(MoveFile, TakesQuotesBlanksAndSeparatorsWithin) {
    const auto line = only("conto;nuovo_padre;distinta_origine\n \"110\" ; 210 ;\"A;G \"\"1\"\"\"\n");
    EXPECT_EQ(110, line.account);
    EXPECT_EQ(210, line.parentAccount);
    EXPECT_EQ("A;G \"1\"", line.originCode);
}

TEST(MoveFile, SaysWhatIsWrongWithALine) {
    const auto wrong = [](const std::string& line) {
        return only("conto;nuovo_padre;tipo;data_fine\n" + line + "\n").wrong;
    };
    EXPECT_EQ("conto manca", wrong(";2"));
    EXPECT_EQ("nuovo_padre «0» non è il codice di un conto", wrong("1;0"));
    EXPECT_EQ("conto «-1» non è il codice di un conto", wrong("-1;2"));
    EXPECT_EQ("conto «1.5» non è il codice di un conto", wrong("1.5;2"));
    EXPECT_EQ("conto «99999999999999999999» non è il codice di un conto", wrong("99999999999999999999;2"));
    EXPECT_EQ("data_fine «2024-06-30» non è un giorno gg/mm/aaaa", wrong("1;2;validita;2024-06-30"));
    EXPECT_EQ("tipo «copia» non è né struttura né validita", wrong("1;2;copia"));
    EXPECT_EQ("il valore «x» non sta sotto nessuna colonna", wrong("1;2;;;x"));
    EXPECT_EQ("conto «a» non è il codice di un conto; nuovo_padre manca", wrong("a;"));
    EXPECT_EQ("", wrong("1;2"));
}

TEST(MoveFile, SaysWhyATextIsNoList) {
    EXPECT_EQ("L'elenco è vuoto.", refusal(""));
    EXPECT_EQ("L'elenco è vuoto.", refusal(" \n;;\n"));
    EXPECT_EQ("L'elenco è vuoto: sotto l'intestazione non c'è nessuna riga.", refusal("conto;nuovo_padre"));
    EXPECT_EQ(0U, refusal("1;2\n3;4\n").find("Colonna sconosciuta «1»"));
    EXPECT_EQ(0U, refusal("conto;note\n1;2\n").find("Colonna sconosciuta «note»"));
    EXPECT_EQ(0U, refusal("nuovo_padre\n1\n").find("Manca la colonna «conto»"));
    EXPECT_EQ("La colonna «CONTO» c'è due volte.", refusal("conto;nuovo_padre;CONTO\n1;2;3\n"));
    EXPECT_EQ("Riga 3: le virgolette non tornano.", refusal("conto;nuovo_padre\n1;2\n\"3;4\n"));
    EXPECT_EQ("Riga 2: le virgolette non tornano.", refusal("conto;nuovo_padre\n\"1\"x;2\n"));
    EXPECT_EQ("Non è un testo.", refusal(std::string_view("conto\0", 6)));
    EXPECT_EQ(0U, refusal(std::string("\x7F") + "ELF\x01\x02").find("Colonna sconosciuta"));
}

TEST(MoveFile, ReadsBothCharacterSets) {
    EXPECT_EQ("Età", only("conto;nuovo_padre;distinta_origine\n1;2;Età\n").originCode);
    EXPECT_EQ("Età", only("\xEF\xBB\xBF"
                          "conto;nuovo_padre;distinta_origine\n1;2;Età\n")
                         .originCode);
    EXPECT_EQ("Età €", only("conto;nuovo_padre;distinta_origine\n1;2;Et\xE0 \x80\n").originCode);
    EXPECT_EQ("abc", host::asUtf8("abc"));
    EXPECT_EQ("", host::asUtf8(""));
}

TEST(MoveFile, HoldsNoMoreLinesThanItMay) {
    std::string list("conto;nuovo_padre\n");
    for (std::size_t i = 0; i < host::mostMoveLines; ++i)
        list += "1;2\n";
    EXPECT_EQ(host::mostMoveLines, host::readMoves(list).size());
    EXPECT_EQ("L'elenco ha più di 200000 righe.", refusal(list + "1;2\n"));
}

TEST(MoveFile, SaysWhichFileCanNotBeRead) {
    const host_test::Folder folder;
    const auto path = QString::fromStdString(folder.file("elenco.csv"));
    const auto reason = [&] {
        try {
            host::readMoveFile(path);
        } catch (const contract::RuntimeError& error) {
            return error.description();
        }
        return std::string();
    };
    EXPECT_NE(std::string::npos, reason().find("elenco.csv» non si può leggere: "));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("conto\n1\n");
    file.close();
    EXPECT_NE(std::string::npos, reason().find("elenco.csv» non è un elenco di spostamenti: Manca la colonna"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(host::longestMoveFile + 1));
    file.close();
    EXPECT_NE(std::string::npos, reason().find("è più grande di 64 MB"));
}

} // namespace

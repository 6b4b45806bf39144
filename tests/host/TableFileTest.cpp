#include "host/tables/TableFile.h"

#include "TableRows.h"
#include "TestSession.h"
#include "host/tables/CsvText.h"
#include "host/tables/XlsxFile.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using contract::Date;
using contract::Decimal;
using contract::Value;
using host::TableColumn;
using host_test::TableRows;

Date day(int year, int month, int of) {
    return Date::of(year, month, of).value();
}

/// One of everything: numbers, days, accents, what must be quoted, what a formula begins with, what is missing.
TableRows everyKind() {
    using enum TableColumn::Kind;
    return {{{"Conto", number}, {"Ragione sociale", text}, {"Importo", number}, {"Dal", day}},
            {{Value(std::int64_t{1200}), Value("Perché S.r.l."), Value(Decimal{"-1234.50"}), Value(::day(2020, 1, 31))},
             {Value(std::int64_t{-7}), Value("Rossi; \"Bianchi\" & C."), Value(0.5), Value(::day(1899, 12, 31))},
             {Value::null(), Value("=1+1"), Value(Decimal{"100000000"}), Value()},
             {Value(std::int64_t{3}), Value("due\nrighe"), Value::null(), Value(::day(2099, 12, 31))}},
            {0, 1, 2, 9}};
}

class TableFile : public testing::Test {
protected:
    TableFile() { host_test::needApplication(); }

    std::string written(const host::Table& table, const std::string& name) {
        EXPECT_EQ("", host::writeTableFile(table, {"Distinta di prova", "Azienda 1"},
                                           QString::fromStdString(folder.file(name))));
        return folder.file(name);
    }
    QString refusal(const QString& file) { return host::writeTableFile(everyKind(), {"Prova", {}}, file); }
    QString at(const std::string& name) { return QString::fromStdString(folder.file(name)); }

    host_test::Folder folder;
};

/// What a program says on standard output; nothing where the machine does not have it.
std::optional<QByteArray> said(const QString& program, const QStringList& arguments) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return std::nullopt;
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(300000)) << qPrintable(program);
    return process.readAllStandardOutput();
}

TEST_F(TableFile, CsvIsWhatAnItalianSpreadsheetReads) {
    EXPECT_EQ("\xEF\xBB\xBF"
              "Conto;Ragione sociale;Importo;Dal\r\n"
              "1200;Perché S.r.l.;-1234,50;31/01/2020\r\n"
              "-7;\"Rossi; \"\"Bianchi\"\" & C.\";0,5;31/12/1899\r\n"
              ";'=1+1;100000000;\r\n"
              "3;\"due\nrighe\";;31/12/2099\r\n",
              host_test::contentOf(written(everyKind(), "prova.csv")));
}

TEST(CsvText, DefusesWhatWouldBeAFormula) {
    for (const char* formula : {"=A1", "+39 011 123", "-5", "@SOMMA(A1)"})
        EXPECT_EQ(std::string("'") + formula, host::csvField(formula));
    EXPECT_EQ("'\t=A1", host::csvField("\t=A1"));
    EXPECT_EQ("\"'\r=A1\"", host::csvField("\r=A1"));
    EXPECT_EQ("\"'\n=A1\"", host::csvField("\n=A1"));
    // No formulas, and nobody's apostrophe.
    EXPECT_EQ("a=1", host::csvField("a=1"));
    EXPECT_EQ("'a", host::csvField("'a"));
    EXPECT_EQ("-5", host::csvField(std::int32_t{-5}));
    EXPECT_EQ("-5,25", host::csvField(-5.25));
}

TEST(CsvText, QuotesOnlyWhatNeedsIt) {
    EXPECT_EQ("a b", host::csvField("a b"));
    EXPECT_EQ("a,b", host::csvField("a,b"));
    EXPECT_EQ("\"a;b\"", host::csvField("a;b"));
    EXPECT_EQ("\"a\"\"b\"", host::csvField("a\"b"));
    EXPECT_EQ("\" a\"", host::csvField(" a"));
    EXPECT_EQ("\"a \"", host::csvField("a "));
    EXPECT_EQ("", host::csvField(""));
    EXPECT_EQ("", host::csvField(Value::null()));
    EXPECT_EQ("Sì", host::csvField(true));
    EXPECT_EQ("1;;due\r\n", host::csvLine({Value(std::int32_t{1}), Value(), Value("due")}));
}

TEST_F(TableFile, CsvOfManyRowsIsWholeAndInOrder) {
    std::vector<std::vector<Value>> rows;
    for (std::int32_t row = 0; row < 50000; ++row)
        rows.push_back({Value(row)});
    const std::string text =
        host_test::contentOf(written(TableRows({{"Numero", TableColumn::Kind::number}}, std::move(rows)), "molte.csv"));
    std::string wanted = "\xEF\xBB\xBFNumero\r\n";
    for (int row = 0; row < 50000; ++row)
        wanted += std::to_string(row) + "\r\n";
    EXPECT_TRUE(wanted == text);
}

TEST_F(TableFile, XlsxKeepsTypesFreezesTitlesAndGroupsLevels) {
    const QString file = QString::fromStdString(written(everyKind(), "prova.xlsx"));
    const auto sheet = said("unzip", {"-p", file, "xl/worksheets/sheet1.xml"});
    if (!sheet)
        GTEST_SKIP() << "unzip manca";
    const QString xml = QString::fromUtf8(*sheet);
    EXPECT_TRUE(xml.contains("<c r=\"A2\"><v>1200</v></c>")) << qPrintable(xml);
    EXPECT_TRUE(xml.contains("<c r=\"C2\"><v>-1234.5</v></c>"));
    EXPECT_TRUE(xml.contains(QRegularExpression("<c r=\"B2\" t=\"s\">")));
    EXPECT_TRUE(xml.contains(QRegularExpression("<c r=\"D2\" s=\"\\d+\"><v>43861</v></c>")));
    EXPECT_TRUE(xml.contains(QRegularExpression("<c r=\"D3\" t=\"s\">"))); // before a sheet's calendar
    EXPECT_FALSE(xml.contains("<f>"));
    EXPECT_FALSE(xml.contains("r=\"A4\"")); // missing
    EXPECT_TRUE(xml.contains("topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\""));
    EXPECT_TRUE(xml.contains("summaryBelow=\"0\""));
    EXPECT_TRUE(xml.contains(QRegularExpression("<row r=\"2\"(?![^>]*outlineLevel)[^>]*>")));
    EXPECT_TRUE(xml.contains(QRegularExpression("<row r=\"3\"[^>]* outlineLevel=\"1\"")));
    EXPECT_TRUE(xml.contains(QRegularExpression("<row r=\"5\"[^>]* outlineLevel=\"7\""))); // as deep as a sheet goes
    EXPECT_TRUE(xml.contains("<cols>"));
    const auto styles = said("unzip", {"-p", file, "xl/styles.xml"});
    EXPECT_TRUE(styles->contains("formatCode=\"dd/mm/yyyy\""));
    EXPECT_TRUE(styles->contains("<b/>"));
    const auto strings = said("unzip", {"-p", file, "xl/sharedStrings.xml"});
    EXPECT_TRUE(strings->contains("=1+1")); // a text is one here
    EXPECT_FALSE(strings->contains("'=1+1"));
}

TEST_F(TableFile, XlsxTakesNamesAndTextsThatNoSheetHas) {
    std::string control = "a";
    control += '\x01';
    const TableRows table({{"Testo", TableColumn::Kind::text}},
                          {{Value(std::string(40000, 'x'))}, {Value(control + "b")}, {Value("<a & b>")}});
    const QString file = at("strano.xlsx");
    EXPECT_EQ("", host::writeTableFile(table, {"'Distinta [1]: a/b?*\\ con un nome molto lungo'", {}}, file));
    const auto book = said("unzip", {"-p", file, "xl/workbook.xml"});
    if (!book)
        GTEST_SKIP() << "unzip manca";
    EXPECT_TRUE(book->contains("name=\"Distinta -1-- a-b--- con un no\"")) << book->toStdString();
    const auto strings = said("unzip", {"-p", file, "xl/sharedStrings.xml"});
    EXPECT_TRUE(strings->contains("x…<")) << strings->right(300).toStdString();
    EXPECT_TRUE(strings->contains("&lt;a &amp; b&gt;"));
    EXPECT_TRUE(strings->contains("_x0001_"));
}

TEST_F(TableFile, PdfHasTitlesAndNumbersOnEveryPage) {
    std::vector<std::vector<Value>> rows;
    for (std::int32_t row = 0; row < 200; ++row)
        rows.push_back({Value(row), Value("Ragione sociale numero " + std::to_string(row)), Value(::day(2020, 1, 31))});
    const TableRows table({{"Conto", TableColumn::Kind::number},
                           {"Ragione sociale", TableColumn::Kind::text},
                           {"Dal", TableColumn::Kind::day}},
                          std::move(rows));
    const QString file = QString::fromStdString(written(table, "prova.PDF"));
    const auto text = said("pdftotext", {"-layout", file, "-"});
    if (!text)
        GTEST_SKIP() << "pdftotext manca";
    const QStringList pages = QString::fromUtf8(*text).split('\f', Qt::SkipEmptyParts);
    ASSERT_GT(pages.size(), 2);
    int seen = 0;
    for (qsizetype page = 0; page < pages.size(); ++page) {
        EXPECT_TRUE(pages[page].contains("Distinta di prova"));
        EXPECT_TRUE(pages[page].contains("Azienda 1"));
        EXPECT_TRUE(pages[page].contains(QRegularExpression("Conto +Ragione sociale +Dal")));
        EXPECT_TRUE(pages[page].contains(QString("pagina %1 di %2").arg(page + 1).arg(pages.size())));
        const QString wanted = QStringLiteral("Ragione sociale numero %1 ");
        while (pages[page].contains(wanted.arg(seen)))
            ++seen;
    }
    EXPECT_EQ(200, seen); // none is lost between two pages, none is out of order
    const auto facts = said("pdfinfo", {file});
    EXPECT_TRUE(facts->contains("595.276 x 841.89") || facts->contains("595 x 842")) << facts->toStdString();
}

TEST_F(TableFile, PdfLiesAcrossWhereTheColumnsAreWideAndWrapsLongTexts) {
    std::vector<TableColumn> columns;
    std::vector<Value> cells;
    std::string endless;
    for (int word = 0; word < 200; ++word)
        endless += "parola" + std::to_string(word) + " ";
    for (int column = 0; column < 6; ++column) {
        columns.push_back({QStringLiteral("Colonna %1").arg(column), TableColumn::Kind::text});
        cells.emplace_back(column == 0 ? endless : "Testo di lunghezza media " + std::to_string(column));
    }
    const QString file = QString::fromStdString(written(TableRows(columns, {cells}), "larga.pdf"));
    const auto text = said("pdftotext", {"-layout", file, "-"});
    if (!text)
        GTEST_SKIP() << "pdftotext manca";
    const QString page = QString::fromUtf8(*text);
    EXPECT_TRUE(page.contains("pagina 1 di 1"));
    EXPECT_TRUE(page.contains("parola0"));
    EXPECT_TRUE(page.contains("…"));
    EXPECT_TRUE(page.contains("Testo di lunghezza media 5"));
    const auto facts = said("pdfinfo", {file});
    EXPECT_TRUE(facts->contains("841.89 x 595.276") || facts->contains("842 x 595")) << facts->toStdString();
}

TEST_F(TableFile, EmptyTableIsTitlesOnly) {
    const TableRows empty({{"Conto", TableColumn::Kind::number}}, {});
    EXPECT_EQ("\xEF\xBB\xBF"
              "Conto\r\n",
              host_test::contentOf(written(empty, "vuota.csv")));
    EXPECT_GT(std::filesystem::file_size(written(empty, "vuota.xlsx")), 0U);
    EXPECT_GT(std::filesystem::file_size(written(empty, "vuota.pdf")), 0U);
}

TEST_F(TableFile, RefusesWhatItCanNotWriteAndLeavesWhatWasThere) {
    EXPECT_EQ(QString("Il nome del file deve finire in .csv, .xlsx o .pdf: «%1».").arg(at("prova.txt")),
              refusal(at("prova.txt")));
    for (const char* ending : {"csv", "xlsx", "pdf"}) {
        const QString nowhere = at("manca/prova.") + ending;
        EXPECT_EQ(QString("Il file «%1» non si può scrivere: il percorso non esiste.").arg(nowhere), refusal(nowhere));
        const QString directory = at("cartella.") + ending;
        std::filesystem::create_directory(directory.toStdString());
        EXPECT_EQ(QString("Il file «%1» non si può scrivere: è una cartella.").arg(directory), refusal(directory));
        const QString device = QStringLiteral("/dev/null/x.") + ending;
        EXPECT_EQ(QString("Il file «%1» non si può scrivere: una parte del percorso non è una cartella.").arg(device),
                  refusal(device));
    }
    if (::geteuid() == 0)
        return; // nothing is forbidden
    host_test::write(folder.file("chiuso.csv"), "di prima");
    std::filesystem::permissions(folder.file("chiuso.csv"), std::filesystem::perms::owner_read);
    EXPECT_TRUE(refusal(at("chiuso.csv")).endsWith(": manca il permesso."));
    std::filesystem::permissions(folder.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_TRUE(refusal(at("nuovo.csv")).endsWith(": manca il permesso."));
}

/// A disk on which only so much has room.
class Room {
public:
    explicit Room(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit less{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &less);
    }
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;
    ~Room() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(TableFile, WritesNothingByHalvesWhereTheDiskIsFull) {
    std::vector<std::vector<Value>> rows;
    for (std::int32_t row = 0; row < 20000; ++row)
        rows.push_back({Value("Testo " + std::to_string(row * 7919LL % 1000003))});
    const TableRows table({{"Testo", TableColumn::Kind::text}}, std::move(rows));
    // A sheet is packed from larger temporary files; there too its end may have no room.
    const QString room = QStringLiteral("supera la grandezza permessa");
    const QString temporary = QStringLiteral("non c'è più spazio per i file temporanei");
    const std::tuple<const char*, rlim_t, QString> cases[] = {{"csv", 20000, room},
                                                              {"xlsx", 5000, room},
                                                              {"xlsx", 100000, temporary},
                                                              {"xlsx", 700000, temporary},
                                                              {"pdf", 20000, room}};
    for (const auto& [ending, bytes, reason] : cases) {
        const std::string name = std::string("pieno.") + ending;
        host_test::write(folder.file(name), "di prima");
        QString failure;
        {
            const Room small(bytes);
            failure = host::writeTableFile(table, {"Prova", {}}, at(name));
        }
        EXPECT_EQ(QString("Il file «%1» non si può scrivere: %2.").arg(at(name), reason).toStdString(),
                  failure.toStdString());
        EXPECT_TRUE("di prima" == host_test::contentOf(folder.file(name)));
    }
    EXPECT_EQ(3U, folder.entries());
}

TEST_F(TableFile, ReplacesAFileWithItsRightsAndMakesANewOneWithTheUsers) {
    host_test::write(folder.file("prima.csv"), std::string(100000, 'x'));
    std::filesystem::permissions(folder.file("prima.csv"), std::filesystem::perms(0640));
    EXPECT_EQ("", refusal(at("prima.csv")));
    EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(folder.file("prima.csv")).permissions());
    EXPECT_LT(std::filesystem::file_size(folder.file("prima.csv")), 1000U);
    const mode_t before = ::umask(027);
    EXPECT_EQ("", refusal(at("nuovo.pdf")));
    ::umask(before);
    EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(folder.file("nuovo.pdf")).permissions());
    std::filesystem::create_symlink("nuovo.csv", folder.file("legame.csv"));
    host_test::write(folder.file("nuovo.csv"), "");
    EXPECT_EQ("", refusal(at("legame.csv")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("legame.csv")));
    EXPECT_GT(std::filesystem::file_size(folder.file("nuovo.csv")), 10U);
}

} // namespace

// What a spreadsheet program makes of exported files: LibreOffice without a screen opens them and writes its own.

#include "TableRows.h"
#include "TestSession.h"
#include "host/tables/TableFile.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

using contract::Value;
using host::TableColumn;

struct Cell {
    QString type;
    QString value;
    friend bool operator==(const Cell&, const Cell&) = default;
};

void PrintTo(const Cell& cell, std::ostream* out) {
    *out << cell.type.toStdString() << " " << cell.value.toStdString();
}

using Rows = std::vector<std::vector<Cell>>;

/// The cells of a flat document that are not empty at the end of their row.
Rows cellsOf(const QString& file) {
    QFile in(file);
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << qPrintable(file);
    QXmlStreamReader xml(&in);
    Rows rows;
    while (!xml.atEnd()) {
        if (!xml.readNextStartElement() && xml.tokenType() != QXmlStreamReader::EndElement)
            continue;
        if (xml.tokenType() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"table-row")
            rows.emplace_back();
        if (xml.name() != u"table-cell" || rows.empty())
            continue;
        const auto attributes = xml.attributes();
        const auto named = [&](QStringView wanted) {
            for (const auto& attribute : attributes)
                if (attribute.qualifiedName() == wanted)
                    return attribute.value().toString();
            return QString();
        };
        Cell cell{named(u"office:value-type"), {}};
        if (cell.type == u"float")
            cell.value = named(u"office:value");
        else if (cell.type == u"date")
            cell.value = named(u"office:date-value");
        const int times = std::max(named(u"table:number-columns-repeated").toInt(), 1);
        if (named(u"table:formula").isEmpty() && cell.type == u"string") {
            QStringList lines;
            while (xml.readNextStartElement())
                lines.append(xml.readElementText(QXmlStreamReader::IncludeChildElements));
            cell.value = lines.join('\n');
        } else if (!named(u"table:formula").isEmpty()) {
            cell.type = "formula";
        }
        for (int at = 0; at < times && times < 100; ++at)
            rows.back().push_back(cell);
    }
    for (auto& row : rows)
        while (!row.empty() && row.back().type.isEmpty())
            row.pop_back();
    while (!rows.empty() && rows.back().empty())
        rows.pop_back();
    return rows;
}

class Spreadsheet : public testing::TestWithParam<const char*> {
protected:
    Spreadsheet() { host_test::needApplication(); }

    Rows opened(const QString& file, const QStringList& options) {
        QProcess office;
        office.setProcessChannelMode(QProcess::MergedChannels);
        office.start("soffice", QStringList{"-env:UserInstallation=file://" + QString::fromStdString(folder.file("p")),
                                            "--headless", "--convert-to", "fods", "--outdir",
                                            QString::fromStdString(folder.path().string())} +
                                    options + QStringList{file});
        EXPECT_TRUE(office.waitForFinished(300000));
        EXPECT_EQ(0, office.exitCode()) << office.readAll().toStdString();
        return cellsOf(QString::fromStdString(folder.file("prova.fods")));
    }

    host_test::Folder folder;
};

TEST_P(Spreadsheet, ReadsTheValuesBack) {
    if (QStandardPaths::findExecutable("soffice").isEmpty())
        GTEST_SKIP() << "soffice manca";
    using enum TableColumn::Kind;
    const auto date = [](int year, int month, int of) { return Value(contract::Date::of(year, month, of).value()); };
    const host_test::TableRows table(
        {{"Conto", number}, {"Ragione sociale", text}, {"Importo", number}, {"Dal", day}},
        {{Value(std::int64_t{1200}), Value("Perché S.r.l. €"), Value(contract::Decimal{"-1234.50"}), date(2020, 1, 31)},
         {Value(std::int64_t{-7}), Value("Rossi; \"Bianchi\" & C."), Value(0.5), date(2099, 12, 31)},
         {Value::null(), Value("=1+1"), Value(std::int64_t{100000000}), Value()},
         {Value(std::int64_t{3}), Value("@SOMMA(A1)"), Value(), date(2024, 2, 29)}});
    const std::string ending = GetParam();
    const QString file = QString::fromStdString(folder.file("prova." + ending));
    ASSERT_EQ("", host::writeTableFile(table, {"Prova", {}}, file));
    // As the import's window would be set by Italian settings: semicolons, UTF-8, numbers and days recognised.
    const QStringList options =
        ending == "csv" ? QStringList{"--infilter=CSV:59,34,76,1,,1040,false,true"} : QStringList{};
    // In text a formula is defused by an apostrophe; a sheet knows that it is a text.
    const QString defused = ending == "csv" ? "'" : "";
    const Rows wanted{
        {{"string", "Conto"}, {"string", "Ragione sociale"}, {"string", "Importo"}, {"string", "Dal"}},
        {{"float", "1200"}, {"string", "Perché S.r.l. €"}, {"float", "-1234.5"}, {"date", "2020-01-31"}},
        {{"float", "-7"}, {"string", "Rossi; \"Bianchi\" & C."}, {"float", "0.5"}, {"date", "2099-12-31"}},
        {{"", ""}, {"string", defused + "=1+1"}, {"float", "100000000"}},
        {{"float", "3"}, {"string", defused + "@SOMMA(A1)"}, {"", ""}, {"date", "2024-02-29"}},
    };
    EXPECT_EQ(wanted, opened(file, options));
}

INSTANTIATE_TEST_SUITE_P(Formats, Spreadsheet, testing::Values("csv", "xlsx"),
                         [](const auto& each) { return std::string(each.param); });

} // namespace

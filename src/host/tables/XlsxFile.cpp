#include "host/tables/XlsxFile.h"

#include "host/tables/WorkbookCheck.h"
#include "platform/shared/SystemReason.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <vector>

namespace host {

namespace {

constexpr double leastWidth = 8; ///< in letters, as sheets measure columns
constexpr double widest = 60;
constexpr std::size_t rowsMeasured = 2000;
constexpr qsizetype longestCell = 32767; ///< letters that a cell can hold
constexpr qsizetype longestTitle = 31;
/// First year of a sheet's calendar; an earlier day is written as text.
constexpr int firstYear = 1900;

QString sheetName(const QString& title) {
    QString name;
    for (const QChar letter : title.simplified())
        name += QStringLiteral("[]:*?/\\").contains(letter) ? QLatin1Char('-') : letter;
    name.truncate(longestTitle);
    while (name.startsWith(QLatin1Char('\'')))
        name.remove(0, 1);
    while (name.endsWith(QLatin1Char('\'')) || name.endsWith(QLatin1Char(' ')))
        name.chop(1);
    return name.isEmpty() ? QStringLiteral("Elenco") : name;
}

/// Frees what was not closed.
struct WorkbookDeleter {
    void operator()(lxw_workbook* workbook) const { lxw_workbook_free(workbook); }
};
using Workbook = std::unique_ptr<lxw_workbook, WorkbookDeleter>;

QString reasonOf(lxw_error error, int number) {
    if (number != 0)
        return QString::fromStdString(platform::systemReason(number));
    return QStringLiteral("errore %1 nella scrittura del foglio").arg(int(error));
}

class Sheet {
public:
    Sheet(const Table& table, lxw_workbook& workbook, const QString& title)
        : table_(table), sheet_(workbook_add_worksheet(&workbook, sheetName(title).toUtf8().constData())),
          heading_(workbook_add_format(&workbook)), day_(workbook_add_format(&workbook)) {
        format_set_bold(heading_);
        format_set_bottom(heading_, LXW_BORDER_THIN);
        format_set_num_format(day_, "dd/mm/yyyy");
    }

    QString write() {
        const auto columns = static_cast<lxw_col_t>(table_.columns().size());
        for (lxw_col_t column = 0; column < columns; ++column) {
            const QByteArray title = table_.columns()[column].title.toUtf8();
            worksheet_set_column(sheet_, column, column, widthOf(column), nullptr);
            worksheet_write_string(sheet_, 0, column, title.constData(), heading_);
        }
        worksheet_freeze_panes(sheet_, 1, 0);
        worksheet_repeat_rows(sheet_, 0, 0);
        // What belongs to a row stands below it.
        worksheet_outline_settings(sheet_, LXW_TRUE, LXW_FALSE, LXW_TRUE, LXW_FALSE);
        for (std::size_t row = 0; row < table_.rowCount(); ++row) {
            const auto at = static_cast<lxw_row_t>(row + 1);
            group(row, at);
            for (lxw_col_t column = 0; column < columns; ++column)
                if (const lxw_error error = writeCell(at, column, table_.value(row, column)); error != LXW_NO_ERROR)
                    return reasonOf(error, 0);
        }
        return {};
    }

private:
    double widthOf(lxw_col_t column) const {
        auto longest = static_cast<double>(table_.columns()[column].title.size()) + 2;
        const std::size_t rows = std::min(table_.rowCount(), rowsMeasured);
        for (std::size_t row = 0; row < rows; ++row)
            longest = std::max(longest, static_cast<double>(cellText(table_, row, column).size()) + 1);
        return std::clamp(longest, leastWidth, widest);
    }

    void group(std::size_t row, lxw_row_t at) {
        const int level = std::clamp(table_.level(row), 0, xlsxDeepestLevel);
        if (level == 0)
            return;
        lxw_row_col_options options{};
        options.level = static_cast<std::uint8_t>(level);
        worksheet_set_row_opt(sheet_, at, LXW_DEF_ROW_HEIGHT, nullptr, &options);
    }

    lxw_error writeCell(lxw_row_t row, lxw_col_t column, const contract::Value& value) {
        if (value.isMissing())
            return LXW_NO_ERROR;
        if (const bool* flag = value.as<bool>())
            return writeText(row, column, *flag ? QStringLiteral("Sì") : QStringLiteral("No"));
        if (value.isNumber())
            return worksheet_write_number(sheet_, row, column, QString::fromStdString(value.text()).toDouble(),
                                          nullptr);
        if (const auto* day = value.as<contract::Date>(); day != nullptr && day->year() >= firstYear) {
            lxw_datetime date{};
            date.year = day->year();
            date.month = day->month();
            date.day = day->day();
            return worksheet_write_datetime(sheet_, row, column, &date, day_);
        }
        return writeText(row, column, QString::fromStdString(value.text()));
    }

    lxw_error writeText(lxw_row_t row, lxw_col_t column, QString text) {
        if (text.size() > longestCell) {
            text.truncate(longestCell - 1);
            text += QStringLiteral("…");
        }
        return worksheet_write_string(sheet_, row, column, text.toUtf8().constData(), nullptr);
    }

    const Table& table_;
    lxw_worksheet* sheet_;
    lxw_format* heading_;
    lxw_format* day_;
};

} // namespace

QString writeXlsx(const Table& table, const QString& title, const std::string& file) {
    if (table.rowCount() > xlsxMostRows)
        return QStringLiteral("un foglio XLSX non ha più di %1 righe: scegliere il formato CSV").arg(xlsxMostRows);
    Workbook workbook(workbook_new(file.c_str()));
    if (!workbook)
        return QStringLiteral("manca la memoria");
    if (QString reason = Sheet(table, *workbook, title).write(); !reason.isEmpty())
        return reason;
    errno = 0;
    const lxw_error error = workbook_close(workbook.release());
    if (error != LXW_NO_ERROR)
        return reasonOf(error, errno);
    // The library does not look whether its own temporary files take what it writes: a sheet would end in its middle.
    return isWholeWorkbook(file) ? QString() : QStringLiteral("non c'è più spazio per i file temporanei");
}

} // namespace host

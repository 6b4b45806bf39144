#pragma once

#include "host/tables/Table.h"
#include "host/tables/TableFile.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// A table on sheets of paper: on each the title, the titles of the columns, as many rows as have room, the day and
/// "pagina 1 di n". Long texts go on over up to three lines and then end in dots; the rows of an outline are indented.
class TablePages {
public:
    /// Lays the table out on a device whose page is set. Table and device must outlive this.
    TablePages(const Table& table, const TableTitle& title, QPagedPaintDevice& device);

    int count() const { return static_cast<int>(starts_.size()); }
    /// Pages count from 0. The painter is one of the device's.
    void paint(QPainter& painter, int page) const;

    /// Sets A4 with its margins, upright or, where the columns want more room than that has, lying.
    static void setPage(const Table& table, QPagedPaintDevice& device);

private:
    struct Column {
        double left = 0;
        double width = 0;
        bool wraps = false;
        bool atRight = false;
    };

    double millimetres(double length) const;
    QFont font(double scale, bool bold) const;
    void layColumns();
    void breakPages();
    double indent(std::size_t row, std::size_t column) const;
    QStringList lines(std::size_t row, std::size_t column) const;
    int lineCount(std::size_t row) const;
    void paintHeading(QPainter& painter) const;
    void paintFooter(QPainter& painter, int page) const;
    void paintRow(QPainter& painter, std::size_t row, double top) const;

    const Table& table_;
    TableTitle title_;
    QPagedPaintDevice& device_;
    QString printed_; ///< day and time
    double points_;   ///< size of the type
    QFontMetricsF metrics_;
    std::vector<Column> columns_;
    int outline_ = -1;                ///< column that is indented by level
    std::vector<std::size_t> starts_; ///< first row of each page
    std::vector<std::uint8_t> lines_; ///< of each row
};

/// Puts the whole table on the device, its page as it is set there. False when the device can not be painted on.
bool printTable(const Table& table, const TableTitle& title, QPagedPaintDevice& device);

/// Writes a PDF file. The reason of a failure in the user's language, empty when it was written.
QString writePdf(const Table& table, const TableTitle& title, const std::string& file);

} // namespace host

#include "host/tables/TablePages.h"

#include "platform/qt/look/Appearance.h"
#include "platform/shared/SystemReason.h"

#include <QDateTime>
#include <QFile>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTextLayout>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>

namespace host {

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr double margin = 12;        ///< millimetres
constexpr double portraitRoom = 186; ///< millimetres between the margins
constexpr double usualPoints = 8;
constexpr double leastPoints = 6;
constexpr double titleScale = 1.5;
constexpr double padding = 1.2; ///< millimetres on either side of a text
constexpr int mostLines = 3;
constexpr int deepestIndent = 12;
constexpr double indentLetters = 1.5; ///< of each level
constexpr double leastLetters = 8;    ///< of a column that gives room up

QString textOf(const Table& table, std::size_t row, std::size_t column) {
    return cellText(table, row, column).simplified();
}

QFont fontOf(double points, bool bold) {
    QFont font(platform::qt::Appearance::instance().font());
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

/// Widest text of a column. Of texts that are much shorter than the longest one so far none is the widest.
double widestOf(const Table& table, std::size_t column, const QFontMetricsF& metrics, const QFontMetricsF& bold) {
    double widest = bold.horizontalAdvance(table.columns()[column].title);
    qsizetype longest = 0;
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const QString text = textOf(table, row, column);
        if (text.size() * 3 < longest * 2)
            continue;
        longest = std::max(longest, text.size());
        widest = std::max(widest, metrics.horizontalAdvance(text));
    }
    return widest;
}

int outlineColumn(const Table& table) {
    int deepest = 0;
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        deepest = std::max(deepest, table.level(row));
    if (deepest == 0)
        return -1;
    for (std::size_t column = 0; column < table.columns().size(); ++column)
        if (table.columns()[column].kind == TableColumn::Kind::text)
            return static_cast<int>(column);
    return -1;
}

double deepestIndentOf(const Table& table, const QFontMetricsF& metrics) {
    int deepest = 0;
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        deepest = std::max(deepest, table.level(row));
    return std::min(deepest, deepestIndent) * indentLetters * metrics.averageCharWidth();
}

/// Widths that the columns would have if there were room, texts and paddings.
std::vector<double> wantedWidths(const Table& table, double points, QPagedPaintDevice& device) {
    const QFontMetricsF metrics(fontOf(points, false), &device);
    const QFontMetricsF bold(fontOf(points, true), &device);
    const double sides = 2 * padding * device.logicalDpiX() / millimetresPerInch;
    const int outline = outlineColumn(table);
    std::vector<double> widths;
    for (std::size_t column = 0; column < table.columns().size(); ++column) {
        widths.push_back(widestOf(table, column, metrics, bold) + sides);
        if (static_cast<int>(column) == outline)
            widths.back() += deepestIndentOf(table, metrics);
    }
    return widths;
}

double sumOf(const std::vector<double>& widths) {
    double sum = 0;
    for (const double width : widths)
        sum += width;
    return sum;
}

bool narrows(const TableColumn& column) {
    return column.kind == TableColumn::Kind::text;
}

} // namespace

void TablePages::setPage(const Table& table, QPagedPaintDevice& device) {
    QPageLayout layout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(margin, margin, margin, margin),
                       QPageLayout::Millimeter);
    const double room = portraitRoom * device.logicalDpiX() / millimetresPerInch;
    if (sumOf(wantedWidths(table, usualPoints, device)) > room)
        layout.setOrientation(QPageLayout::Landscape);
    device.setPageLayout(layout);
}

TablePages::TablePages(const Table& table, const TableTitle& title, QPagedPaintDevice& device)
    : table_(table), title_(title), device_(device),
      printed_(QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy HH:mm"))), points_(usualPoints),
      metrics_(fontOf(points_, false), &device), outline_(outlineColumn(table)) {
    layColumns();
    breakPages();
}

double TablePages::millimetres(double length) const {
    return length * device_.logicalDpiX() / millimetresPerInch;
}

QFont TablePages::font(double scale, bool bold) const {
    return fontOf(points_ * scale, bold);
}

// Where there is no room for all, the type gets smaller first; then columns of text that are wider than their share
// give up what is over it, and go on over several lines.
void TablePages::layColumns() {
    const double room = device_.width();
    std::vector<double> widths = wantedWidths(table_, points_, device_);
    while (sumOf(widths) > room && points_ > leastPoints) {
        points_ -= 0.5;
        metrics_ = QFontMetricsF(fontOf(points_, false), &device_);
        widths = wantedWidths(table_, points_, device_);
    }
    double fixed = 0;
    std::vector<double> texts;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        if (narrows(table_.columns()[column]))
            texts.push_back(widths[column]);
        else
            fixed += widths[column];
    }
    // The width above which a column gives up: those below it keep theirs.
    const double free =
        std::max(room - fixed, leastLetters * metrics_.averageCharWidth() * static_cast<double>(texts.size()));
    std::sort(texts.begin(), texts.end());
    double limit = free;
    double left = free;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        limit = left / static_cast<double>(texts.size() - at);
        if (texts[at] > limit)
            break;
        left -= texts[at];
        limit = texts.back();
    }
    double at = 0;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        Column laid;
        laid.left = at;
        laid.wraps = narrows(table_.columns()[column]) && widths[column] > limit;
        laid.width = laid.wraps ? limit : widths[column];
        laid.atRight = table_.columns()[column].kind == TableColumn::Kind::number;
        at += laid.width;
        columns_.push_back(laid);
    }
}

double TablePages::indent(std::size_t row, std::size_t column) const {
    if (static_cast<int>(column) != outline_)
        return 0;
    const double wanted = std::min(table_.level(row), deepestIndent) * indentLetters * metrics_.averageCharWidth();
    return std::min(wanted, columns_[column].width / 2);
}

QStringList TablePages::lines(std::size_t row, std::size_t column) const {
    const QString text = textOf(table_, row, column);
    const double width = columns_[column].width - 2 * millimetres(padding) - indent(row, column);
    if (!columns_[column].wraps || metrics_.horizontalAdvance(text) <= width)
        return {text};
    QTextLayout layout(text, fontOf(points_, false), &device_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList found;
    while (found.size() < mostLines) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        const bool last = found.size() + 1 == mostLines;
        found.append(last ? metrics_.elidedText(text.mid(line.textStart()), Qt::ElideRight, width)
                          : text.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return found;
}

int TablePages::lineCount(std::size_t row) const {
    qsizetype most = 1;
    for (std::size_t column = 0; column < columns_.size(); ++column)
        if (columns_[column].wraps)
            most = std::max(most, lines(row, column).size());
    return static_cast<int>(most);
}

namespace {

/// Heights on a page, in the device's units.
struct Heights {
    double title;
    double detail;
    double columns;
    double footer;
    double line;
    double gap; ///< above and below the lines of a row
};

Heights heightsOf(double points, const QPagedPaintDevice& device) {
    const double line = QFontMetricsF(fontOf(points, false), &device).lineSpacing();
    const double title = QFontMetricsF(fontOf(points * titleScale, true), &device).lineSpacing();
    return {title * 1.2, line * 1.6, line * 1.8, line * 2.2, line, line * 0.2};
}

} // namespace

void TablePages::breakPages() {
    const Heights heights = heightsOf(points_, device_);
    const double room = device_.height() - heights.title - heights.detail - heights.columns - heights.footer;
    double used = 0;
    starts_.push_back(0);
    for (std::size_t row = 0; row < table_.rowCount(); ++row) {
        lines_.push_back(static_cast<std::uint8_t>(lineCount(row)));
        const double height = lines_.back() * heights.line + 2 * heights.gap;
        if (used + height > room && used > 0) {
            starts_.push_back(row);
            used = 0;
        }
        used += height;
    }
}

void TablePages::paintHeading(QPainter& painter) const {
    const Heights heights = heightsOf(points_, device_);
    const double width = device_.width();
    const QFont big = font(titleScale, true);
    painter.setPen(Qt::black);
    painter.setFont(big);
    painter.drawText(QRectF(0, 0, width, heights.title), Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     QFontMetricsF(big, &device_).elidedText(title_.title.simplified(), Qt::ElideRight, width));
    painter.setFont(font(1, false));
    painter.drawText(QRectF(0, heights.title, width, heights.detail), Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     metrics_.elidedText(title_.detail.simplified(), Qt::ElideRight, width));
    const double top = heights.title + heights.detail;
    const QFont bold = font(1, true);
    painter.setFont(bold);
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const Column& laid = columns_[column];
        const double sides = millimetres(padding);
        const QRectF cell(laid.left + sides, top, laid.width - 2 * sides, heights.columns);
        painter.drawText(
            cell, int(laid.atRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine,
            QFontMetricsF(bold, &device_).elidedText(table_.columns()[column].title, Qt::ElideRight, cell.width() + 1));
    }
    painter.setPen(QPen(Qt::black, millimetres(0.3)));
    painter.drawLine(QPointF(0, top + heights.columns), QPointF(width, top + heights.columns));
}

void TablePages::paintFooter(QPainter& painter, int page) const {
    const Heights heights = heightsOf(points_, device_);
    const QRectF foot(0, device_.height() - heights.footer, device_.width(), heights.footer);
    painter.setPen(Qt::black);
    painter.setFont(font(1, false));
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom, printed_);
    painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("pagina %1 di %2").arg(page + 1).arg(count()));
}

void TablePages::paintRow(QPainter& painter, std::size_t row, double top) const {
    const Heights heights = heightsOf(points_, device_);
    const double sides = millimetres(padding);
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const Column& laid = columns_[column];
        const double inner = indent(row, column);
        QRectF line(laid.left + sides + inner, top + heights.gap, laid.width - 2 * sides - inner, heights.line);
        const QStringList texts = lines(row, column);
        for (const QString& text : texts) {
            // Rounding takes nothing from a text that just has room.
            painter.drawText(line,
                             int(laid.atRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop | Qt::TextSingleLine |
                                 Qt::TextDontClip,
                             text);
            line.translate(0, heights.line);
        }
    }
}

void TablePages::paint(QPainter& painter, int page) const {
    const Heights heights = heightsOf(points_, device_);
    paintHeading(painter);
    const auto at = static_cast<std::size_t>(page);
    const std::size_t end = at + 1 < starts_.size() ? starts_[at + 1] : table_.rowCount();
    double top = heights.title + heights.detail + heights.columns;
    painter.setFont(font(1, false));
    const QPen rule(QColor(0xC8, 0xC8, 0xC8), millimetres(0.1));
    for (std::size_t row = starts_[at]; row < end; ++row) {
        const double height = lines_[row] * heights.line + 2 * heights.gap;
        painter.setPen(rule);
        painter.drawLine(QPointF(0, top + height), QPointF(device_.width(), top + height));
        painter.setPen(Qt::black);
        paintRow(painter, row, top);
        top += height;
    }
    paintFooter(painter, page);
}

bool printTable(const Table& table, const TableTitle& title, QPagedPaintDevice& device) {
    const TablePages pages(table, title, device);
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0 && !device.newPage())
            return false;
        pages.paint(painter, page);
    }
    return painter.end();
}

QString writePdf(const Table& table, const TableTitle& title, const std::string& file) {
    QFile out(QString::fromStdString(file));
    errno = 0;
    bool printed = out.open(QIODevice::WriteOnly);
    if (printed) {
        QPdfWriter writer(&out);
        writer.setTitle(title.title);
        writer.setCreator(QStringLiteral("Manutenzione distinte"));
        TablePages::setPage(table, writer);
        printed = printTable(table, title, writer);
    }
    // The writer itself does not look whether what it writes arrives.
    if (printed && out.flush() && out.error() == QFileDevice::NoError)
        return {};
    return errno != 0 ? QString::fromStdString(platform::systemReason(errno))
                      : QStringLiteral("errore nella scrittura delle pagine");
}

} // namespace host

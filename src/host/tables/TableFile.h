#pragma once

#include "host/tables/Table.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace host {

/// What stands above a table on paper, and names its file.
struct TableTitle {
    QString title;  ///< what the list is: "Distinta ZN Zone"
    QString detail; ///< company, counts, day; may be empty
};

/// A list to be written or printed.
struct TitledTable {
    std::shared_ptr<const Table> table;
    TableTitle title;
};

enum class TableFormat { csv, xlsx, pdf };

/// The format that a file's ending stands for, in either case of letters; nothing for any other.
std::optional<TableFormat> tableFormatOf(const QString& file);
/// The endings with the dot, in the order of the formats.
QStringList tableFileEndings();

/// Writes a table into a file; its ending picks the format. The file is made under another name beside it and then
/// takes its place: what was there before stays whole until then, and stays for good where the writing fails.
/// The reason of a failure in the user's language, empty when it was written.
QString writeTableFile(const Table& table, const TableTitle& title, const QString& file);

} // namespace host

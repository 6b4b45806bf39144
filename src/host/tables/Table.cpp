#include "host/tables/Table.h"

#include "host/services/Text.h"

namespace host {

QString cellText(const Table& table, std::size_t row, std::size_t column) {
    const contract::Value value = table.value(row, column);
    return value.isMissing() ? QString() : toQt(value.text());
}

} // namespace host

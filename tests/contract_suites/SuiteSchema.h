#pragma once

#include "contract/Schema.h"

namespace contract_suites {

/// Two small tables with a column of every kind.
inline contract::Schema suiteSchema() {
    using contract::ColumnType;
    contract::Schema schema;
    schema.tables.push_back({"PROVA",
                             {{"ID", ColumnType::identity, false},
                              {"CODICE", ColumnType::integer},
                              {"CONTO", ColumnType::number},
                              {"NOME", ColumnType::text},
                              {"DAL", ColumnType::date},
                              {"IMPORTO", ColumnType::amount},
                              {"ATTIVO", ColumnType::flag}},
                             {"ID"},
                             {{"IX_PROVA_CODICE", {"CODICE"}}}});
    schema.tables.push_back({"CHIAVI", {{"CHIAVE", ColumnType::number, false}}, {"CHIAVE"}, {}});
    return schema;
}

} // namespace contract_suites

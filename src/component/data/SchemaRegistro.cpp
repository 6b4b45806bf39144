#include "component/data/SchemaTables.h"

#include <utility>

namespace qz {

using contract::ColumnType;

void addRegistryTables(contract::Schema& schema) {
    contract::TableDef operations{"QZ90_REGISTRO",
                                  {{"QZ90_ID", ColumnType::identity, false},
                                   {"QZ90_DITTA_CG18", ColumnType::number, false},
                                   {"QZ90_DATA", ColumnType::date},
                                   {"QZ90_ORA", ColumnType::text, true, 8},
                                   {"QZ90_UTENTE", ColumnType::text, true, 50},
                                   {"QZ90_GRUPPO", ColumnType::text, true, 50},
                                   {"QZ90_TIPO", ColumnType::text, true, 20},
                                   {"QZ90_DESCR", ColumnType::text},
                                   {"QZ90_RIGHE", ColumnType::integer},
                                   {"QZ90_ID_QZ90", ColumnType::integer},
                                   {"QZ90_ANNULLATA", ColumnType::integer},
                                   {"QZ90_GUID", ColumnType::guid}},
                                  {"QZ90_ID"},
                                  {{"IX_QZ90_DITTA", {"QZ90_DITTA_CG18", "QZ90_ID"}},
                                   {"IX_QZ90_ANNULLA", {"QZ90_ID_QZ90"}},
                                   {"IX_QZ90_GUID", {"QZ90_GUID"}}}};
    operations.isOptional = true;
    schema.tables.push_back(std::move(operations));

    contract::TableDef rows{
        "QZ91_REGISTRORIGHE",
        {{"QZ91_ID_QZ90", ColumnType::integer, false},
         {"QZ91_RIGA", ColumnType::integer, false},
         {"QZ91_ID_QZ02", ColumnType::integer},
         {"QZ91_CLIFOR_CG44", ColumnType::number},
         {"QZ91_ESITO", ColumnType::text, true, 20},
         {"QZ91_MOTIVO", ColumnType::text},
         {"QZ91_OSTACOLI", ColumnType::integer},
         {"QZ91_PRIMA", ColumnType::text},
         {"QZ91_DOPO", ColumnType::text}},
        {"QZ91_ID_QZ90", "QZ91_RIGA"},
        {{"IX_QZ91_NODO", {"QZ91_ID_QZ02", "QZ91_ID_QZ90"}}, {"IX_QZ91_CLIFOR", {"QZ91_CLIFOR_CG44", "QZ91_ID_QZ90"}}}};
    rows.isOptional = true;
    schema.tables.push_back(std::move(rows));
}

} // namespace qz

#include "component/data/SchemaTables.h"

namespace qz {

using contract::ColumnType;

void addDistintaTables(contract::Schema& schema) {
    schema.tables.push_back({"QZ01_TIPODISTINTA",
                             {{"QZ01_ID", ColumnType::identity, false},
                              {"QZ01_DITTA_CG18", ColumnType::number, false},
                              {"QZ01_CODICE", ColumnType::text, true, 20},
                              {"QZ01_DESCR", ColumnType::text, true, 100},
                              {"QZ01_INDTIPOSOGG", ColumnType::number},
                              {"QZ01_IDDIV_CO1A", ColumnType::text, true, 20},
                              {"QZ01_GUID", ColumnType::guid}},
                             {"QZ01_ID"},
                             {{"IX_QZ01_DITTA", {"QZ01_DITTA_CG18", "QZ01_INDTIPOSOGG"}}}});

    // The three indexes carry every statement over the nodes: the children of a parent within a distinta, an account's
    // links within a distinta, and a distinta's rows within a company.
    schema.tables.push_back(
        {"QZ02_DISTINTA",
         {{"QZ02_ID", ColumnType::identity, false},
          {"QZ02_ID_QZ01", ColumnType::integer},
          {"QZ02_IDPARENT_QZ02", ColumnType::integer},
          {"QZ02_DITTA_CG18", ColumnType::number},
          {"QZ02_TIPOCF_CG44", ColumnType::number},
          {"QZ02_CLIFOR_CG44", ColumnType::number},
          {"QZ02_DESCR", ColumnType::text, true, 100},
          {"QZ02_DATAINIZIOVAL", ColumnType::date},
          {"QZ02_DATAFINEVAL", ColumnType::date},
          {"QZ02_ID_WF02", ColumnType::integer},
          {"QZ02_GUID", ColumnType::guid},
          {"QZ02_INDREGPROV", ColumnType::flag},
          {"QZ02_CLIFORFATT_CG44", ColumnType::number},
          {"QZ02_TIPOANAGFATT", ColumnType::number},
          {"QZ02_IDSTRUTTURA_LP09", ColumnType::integer},
          {"QZ02_IDLOCALIZZATA_LP09", ColumnType::integer},
          {"QZ02_INDEREPROMO", ColumnType::flag},
          {"QZ02_UTENTECRE", ColumnType::text, true, 50},
          {"QZ02_GRUPPOCRE", ColumnType::text, true, 50},
          {"QZ02_DATACRE", ColumnType::date},
          {"QZ02_UTENTEVAR", ColumnType::text, true, 50},
          {"QZ02_GRUPPOVAR", ColumnType::text, true, 50},
          {"QZ02_DATAVAR", ColumnType::date}},
         {"QZ02_ID"},
         {{"IX_QZ02_PARENT", {"QZ02_IDPARENT_QZ02", "QZ02_ID_QZ01"}},
          {"IX_QZ02_CLIFOR", {"QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44", "QZ02_CLIFOR_CG44", "QZ02_ID_QZ01"}},
          {"IX_QZ02_DISTINTA", {"QZ02_DITTA_CG18", "QZ02_ID_QZ01"}}}});

    schema.tables.push_back({"QZ03_PARAMETRI",
                             {{"QZ03_DITTA_CG18", ColumnType::number, false},
                              {"QZ03_ID_WF02", ColumnType::integer},
                              {"QZ03_TIPOCARICODATA", ColumnType::number},
                              {"QZ03_DATAINIZIOVAL", ColumnType::date},
                              {"QZ03_DATAFINEVAL", ColumnType::date},
                              {"QZ03_FLG_ANAG", ColumnType::flag},
                              {"QZ03_FLG_CONDVEND", ColumnType::flag},
                              {"QZ03_FLG_CLAS", ColumnType::flag},
                              {"QZ03_FLG_PROV", ColumnType::flag},
                              {"QZ03_TIPOANAGFATT", ColumnType::number}},
                             {"QZ03_DITTA_CG18"},
                             {}});

    schema.tables.push_back({"WF02_STATI",
                             {{"WF02_ID", ColumnType::integer, false}, {"WF02_DESCR", ColumnType::text, true, 100}},
                             {"WF02_ID"},
                             {}});
}

void addBonusTables(contract::Schema& schema) {
    schema.tables.push_back({"QZ13_PREMI",
                             {{"QZ13_ID", ColumnType::identity, false}, {"QZ13_DITTA_CG18", ColumnType::number}},
                             {"QZ13_ID"},
                             {}});
    schema.tables.push_back({"QZ14_SOGGCONTR",
                             {{"QZ14_ID_QZ13", ColumnType::integer},
                              {"QZ14_ID_QZ02", ColumnType::integer},
                              {"QZ14_DITTA_CG18", ColumnType::number},
                              {"QZ14_CODCONTR_QZ10", ColumnType::number},
                              {"QZ14_VERCONTR_QZ10", ColumnType::number},
                              {"QZ14_PROGRCOND_QZ13", ColumnType::number}},
                             {},
                             {{"IX_QZ14_NODO", {"QZ14_ID_QZ02", "QZ14_ID_QZ13"}}}});
    schema.tables.push_back({"QZ18_LIQUIDAZIONE",
                             {{"QZ18_ID_QZ13", ColumnType::integer},
                              {"QZ18_DATASCADENZA", ColumnType::date},
                              {"QZ18_STATOSCADENZA", ColumnType::number}},
                             {},
                             {{"IX_QZ18_PREMIO", {"QZ18_ID_QZ13"}}}});
    schema.tables.push_back(
        {"QZ27_SOGGCONTRDISAB",
         {{"QZ27_ID_QZ02", ColumnType::integer},
          {"QZ27_DITTA_CG18", ColumnType::number},
          {"QZ27_CODCONTR_QZ10", ColumnType::number},
          {"QZ27_VERCONTR_QZ10", ColumnType::number},
          {"QZ27_PROGRCOND_QZ13", ColumnType::number}},
         {},
         {{"IX_QZ27_CONTRATTO",
           {"QZ27_DITTA_CG18", "QZ27_CODCONTR_QZ10", "QZ27_VERCONTR_QZ10", "QZ27_PROGRCOND_QZ13"}}}});
}

} // namespace qz

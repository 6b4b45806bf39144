#include "component/data/SchemaTables.h"

namespace qz {

using contract::ColumnType;

void addAccountTables(contract::Schema& schema) {
    schema.tables.push_back({"CG16_ANAGGEN",
                             {{"CG16_CODICE", ColumnType::integer, false},
                              {"CG16_RAGSOANAG", ColumnType::text, true, 100},
                              {"CG16_INDIRIZZO", ColumnType::text, true, 100},
                              {"CG16_CITTA", ColumnType::text, true, 60},
                              {"CG16_PROV", ColumnType::text, true, 4},
                              {"CG16_TEL1NUM", ColumnType::text, true, 30},
                              {"CG16_FAXNUM", ColumnType::text, true, 30}},
                             {"CG16_CODICE"},
                             {}});
    schema.tables.push_back({"CG44_CLIFOR",
                             {{"CG44_DITTA_CG18", ColumnType::number, false},
                              {"CG44_TIPOCF", ColumnType::number, false},
                              {"CG44_CLIFOR", ColumnType::number, false},
                              {"CG44_CODICE_CG16", ColumnType::integer},
                              {"CG44_CODICE_CG08", ColumnType::text, true, 10},
                              {"CG44_CODICE_CG28", ColumnType::text, true, 10},
                              {"CG44_CODABI_CG12", ColumnType::text, true, 10},
                              {"CG44_CODCAB_CG13", ColumnType::text, true, 10},
                              {"CG44_CODPAG_CG62", ColumnType::text, true, 10},
                              {"CG44_IDAGENTE_MG17", ColumnType::integer}},
                             {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR"},
                             {{"IX_CG44_ANAG", {"CG44_CODICE_CG16"}}}});
    schema.tables.push_back({"CG12_BANCHE",
                             {{"CG12_BANCA", ColumnType::text, false, 10}, {"CG12_DESCR", ColumnType::text, true, 100}},
                             {"CG12_BANCA"},
                             {}});
    schema.tables.push_back({"CG13_AGENZIE",
                             {{"CG13_BANCA_CG12", ColumnType::text, false, 10},
                              {"CG13_CODCAB", ColumnType::text, false, 10},
                              {"CG13_DESCR", ColumnType::text, true, 100}},
                             {"CG13_BANCA_CG12", "CG13_CODCAB"},
                             {}});
    schema.tables.push_back(
        {"CG62_CONDPAGDES",
         {{"CG62_CODPAG", ColumnType::text, false, 10}, {"CG62_DESCPAG", ColumnType::text, true, 100}},
         {"CG62_CODPAG"},
         {}});
    schema.tables.push_back({"MG17_AGENTI",
                             {{"MG17_DITTA_CG18", ColumnType::number, false},
                              {"MG17_IDAGENTE", ColumnType::integer, false},
                              {"MG17_AGENTE", ColumnType::text, true, 20},
                              {"MG17_ANAGEN_CG16", ColumnType::integer}},
                             {"MG17_DITTA_CG18", "MG17_IDAGENTE"},
                             {}});
    schema.tables.push_back({"MG19_CLIFORVA",
                             {{"MG19_DITTA_CG18", ColumnType::number, false},
                              {"MG19_TIPOCF_CG44", ColumnType::number, false},
                              {"MG19_CLIFOR_CG44", ColumnType::number, false},
                              {"MG19_LISTMAG", ColumnType::integer},
                              {"MG19_MACROAREA", ColumnType::text, true, 10},
                              {"MG19_AREA", ColumnType::text, true, 10},
                              {"MG19_ZONA", ColumnType::text, true, 10},
                              {"MG19_MACROCAT", ColumnType::text, true, 10},
                              {"MG19_CATEG", ColumnType::text, true, 10},
                              {"MG19_SOTTOCAT", ColumnType::text, true, 10},
                              {"MG19_RAGGRCF1", ColumnType::text, true, 10},
                              {"MG19_RAGGRCF2", ColumnType::text, true, 10},
                              {"MG19_RAGGCRF3", ColumnType::text, true, 10}},
                             {"MG19_DITTA_CG18", "MG19_TIPOCF_CG44", "MG19_CLIFOR_CG44"},
                             {}});
    contract::TableDef divisions{"VCO1C_CLIFOR",
                                 {{"CO1C_DITTA_CG18", ColumnType::number, false},
                                  {"CO1C_TIPOCF_CG44", ColumnType::number, false},
                                  {"CO1C_CLIFOR_CG44", ColumnType::number, false},
                                  {"CO1C_IDDIV_CO1A", ColumnType::text, false, 20},
                                  {"CO1D_CODPAG_CG62", ColumnType::text, true, 10},
                                  {"CO1D_IDAGENTE_MG17", ColumnType::integer},
                                  {"CO1D_MACROAREA", ColumnType::text, true, 10},
                                  {"CO1D_AREA", ColumnType::text, true, 10},
                                  {"CO1D_ZONA", ColumnType::text, true, 10},
                                  {"CO1D_MACROCAT", ColumnType::text, true, 10},
                                  {"CO1D_CATEG", ColumnType::text, true, 10},
                                  {"CO1D_SOTTOCAT", ColumnType::text, true, 10},
                                  {"CO1D_RAGGRCF1", ColumnType::text, true, 10},
                                  {"CO1D_RAGGRCF2", ColumnType::text, true, 10},
                                  {"CO1D_RAGGRCF3", ColumnType::text, true, 10}},
                                 {"CO1C_DITTA_CG18", "CO1C_TIPOCF_CG44", "CO1C_CLIFOR_CG44", "CO1C_IDDIV_CO1A"},
                                 {}};
    divisions.isView = true;
    schema.tables.push_back(divisions);
}

} // namespace qz

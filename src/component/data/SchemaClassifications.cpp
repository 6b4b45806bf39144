#include "component/data/SchemaTables.h"

namespace qz {

using contract::ColumnType;

namespace {

constexpr auto code = ColumnType::text;
constexpr int codeLength = 10;
constexpr int descriptionLength = 60;

} // namespace

void addClassificationTables(contract::Schema& schema) {
    // Each level is keyed by company, account kind and the codes of its own and all levels above.
    schema.tables.push_back({"MG07_MACROAREE",
                             {{"MG07_DITTA_CG18", ColumnType::number, false},
                              {"MG07_TIPOCF", ColumnType::number, false},
                              {"MG07_MACROAREA", code, false, codeLength},
                              {"MG07_DESCRMACROAR", ColumnType::text, true, descriptionLength}},
                             {"MG07_DITTA_CG18", "MG07_TIPOCF", "MG07_MACROAREA"},
                             {}});
    schema.tables.push_back({"MG08_AREE",
                             {{"MG08_DITTA_CG18", ColumnType::number, false},
                              {"MG08_TIPOCF_MG07", ColumnType::number, false},
                              {"MG08_MACROAREA_MG07", code, false, codeLength},
                              {"MG08_AREA", code, false, codeLength},
                              {"MG08_DESCRAREA", ColumnType::text, true, descriptionLength}},
                             {"MG08_DITTA_CG18", "MG08_TIPOCF_MG07", "MG08_MACROAREA_MG07", "MG08_AREA"},
                             {}});
    schema.tables.push_back(
        {"MG09_ZONE",
         {{"MG09_DITTA_CG18", ColumnType::number, false},
          {"MG09_TIPOCF_MG08", ColumnType::number, false},
          {"MG09_MACROAREA_MG08", code, false, codeLength},
          {"MG09_AREA_MG08", code, false, codeLength},
          {"MG09_ZONA", code, false, codeLength},
          {"MG09_DESCRZONA", ColumnType::text, true, descriptionLength}},
         {"MG09_DITTA_CG18", "MG09_TIPOCF_MG08", "MG09_MACROAREA_MG08", "MG09_AREA_MG08", "MG09_ZONA"},
         {}});
    schema.tables.push_back({"MG10_MACROCAT",
                             {{"MG10_DITTA_CG18", ColumnType::number, false},
                              {"MG10_TIPOCF", ColumnType::number, false},
                              {"MG10_MACROCAT", code, false, codeLength},
                              {"MG10_DESCRMACROCAT", ColumnType::text, true, descriptionLength}},
                             {"MG10_DITTA_CG18", "MG10_TIPOCF", "MG10_MACROCAT"},
                             {}});
    schema.tables.push_back({"MG11_CATEG",
                             {{"MG11_DITTA_CG18", ColumnType::number, false},
                              {"MG11_TIPOCF_MG10", ColumnType::number, false},
                              {"MG11_MACROCAT_MG10", code, false, codeLength},
                              {"MG11_CATEG", code, false, codeLength},
                              {"MG11_DESCRCAT", ColumnType::text, true, descriptionLength}},
                             {"MG11_DITTA_CG18", "MG11_TIPOCF_MG10", "MG11_MACROCAT_MG10", "MG11_CATEG"},
                             {}});
    schema.tables.push_back(
        {"MG12_SOTTOCAT",
         {{"MG12_DITTA_CG18", ColumnType::number, false},
          {"MG12_TIPOCF_MG11", ColumnType::number, false},
          {"MG12_MACROCAT_MG11", code, false, codeLength},
          {"MG12_CATEG_MG11", code, false, codeLength},
          {"MG12_SOTTCAT", code, false, codeLength},
          {"MG12_DESCRSOTTOCAT", ColumnType::text, true, descriptionLength}},
         {"MG12_DITTA_CG18", "MG12_TIPOCF_MG11", "MG12_MACROCAT_MG11", "MG12_CATEG_MG11", "MG12_SOTTCAT"},
         {}});
    schema.tables.push_back({"MG31_RAGGRCF1",
                             {{"MG31_DITTA_CG18", ColumnType::number, false},
                              {"MG31_TIPOCF", ColumnType::number, false},
                              {"MG31_CODRAGGRCF1", code, false, codeLength},
                              {"MG31_DESCRAGGRCF1", ColumnType::text, true, descriptionLength}},
                             {"MG31_DITTA_CG18", "MG31_TIPOCF", "MG31_CODRAGGRCF1"},
                             {}});
    schema.tables.push_back({"MG32_RAGGRCF2",
                             {{"MG32_DITTA_CG18", ColumnType::number, false},
                              {"MG32_TIPOCF", ColumnType::number, false},
                              {"MG32_CODRAGGRCF2", code, false, codeLength},
                              {"MG32_DESCRAGGRCF2", ColumnType::text, true, descriptionLength}},
                             {"MG32_DITTA_CG18", "MG32_TIPOCF", "MG32_CODRAGGRCF2"},
                             {}});
    schema.tables.push_back({"MG33_RAGGRCF3",
                             {{"MG33_DITTA_CG18", ColumnType::number, false},
                              {"MG33_TIPOCF", ColumnType::number, false},
                              {"MG33_CODRAGGRCF3", code, false, codeLength},
                              {"MG33_DESCRAGGRCF3", ColumnType::text, true, descriptionLength}},
                             {"MG33_DITTA_CG18", "MG33_TIPOCF", "MG33_CODRAGGRCF3"},
                             {}});
}

} // namespace qz

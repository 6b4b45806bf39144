#include "component/data/Schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using contract::ColumnDef;
using contract::ColumnType;
using contract::TableDef;

namespace {

const TableDef* tabella(std::string_view nome) {
    for (const auto& t : qz::schema().tables)
        if (t.name == nome)
            return &t;
    return nullptr;
}

const ColumnDef* colonna(std::string_view nomeTabella, std::string_view nome) {
    const auto* t = tabella(nomeTabella);
    if (!t)
        return nullptr;
    for (const auto& c : t->columns)
        if (c.name == nome)
            return &c;
    return nullptr;
}

bool haIndice(std::string_view nomeTabella, const std::vector<std::string_view>& colonne) {
    const auto* t = tabella(nomeTabella);
    return t && std::any_of(t->indexes.begin(), t->indexes.end(), [&](const auto& i) { return i.columns == colonne; });
}

TEST(Schema, HasEveryColumnThatTheStatementsName) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> attese{
        {"QZ01_TIPODISTINTA",
         {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR", "QZ01_INDTIPOSOGG", "QZ01_IDDIV_CO1A",
          "QZ01_GUID"}},
        {"QZ02_DISTINTA",
         {"QZ02_ID",
          "QZ02_ID_QZ01",
          "QZ02_IDPARENT_QZ02",
          "QZ02_DITTA_CG18",
          "QZ02_TIPOCF_CG44",
          "QZ02_CLIFOR_CG44",
          "QZ02_DESCR",
          "QZ02_DATAINIZIOVAL",
          "QZ02_DATAFINEVAL",
          "QZ02_ID_WF02",
          "QZ02_GUID",
          "QZ02_INDREGPROV",
          "QZ02_CLIFORFATT_CG44",
          "QZ02_TIPOANAGFATT",
          "QZ02_IDSTRUTTURA_LP09",
          "QZ02_IDLOCALIZZATA_LP09",
          "QZ02_INDEREPROMO",
          "QZ02_UTENTECRE",
          "QZ02_GRUPPOCRE",
          "QZ02_DATACRE",
          "QZ02_UTENTEVAR",
          "QZ02_GRUPPOVAR",
          "QZ02_DATAVAR"}},
        {"QZ03_PARAMETRI",
         {"QZ03_DITTA_CG18", "QZ03_ID_WF02", "QZ03_TIPOCARICODATA", "QZ03_DATAINIZIOVAL", "QZ03_DATAFINEVAL",
          "QZ03_FLG_ANAG", "QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS", "QZ03_FLG_PROV", "QZ03_TIPOANAGFATT"}},
        {"QZ13_PREMI", {"QZ13_ID", "QZ13_DITTA_CG18"}},
        {"QZ14_SOGGCONTR",
         {"QZ14_ID_QZ13", "QZ14_ID_QZ02", "QZ14_DITTA_CG18", "QZ14_CODCONTR_QZ10", "QZ14_VERCONTR_QZ10",
          "QZ14_PROGRCOND_QZ13"}},
        {"QZ18_LIQUIDAZIONE", {"QZ18_ID_QZ13", "QZ18_DATASCADENZA", "QZ18_STATOSCADENZA"}},
        {"QZ27_SOGGCONTRDISAB",
         {"QZ27_ID_QZ02", "QZ27_DITTA_CG18", "QZ27_CODCONTR_QZ10", "QZ27_VERCONTR_QZ10", "QZ27_PROGRCOND_QZ13"}},
        {"WF02_STATI", {"WF02_ID", "WF02_DESCR"}},
        {"CG44_CLIFOR",
         {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16", "CG44_CODICE_CG08", "CG44_CODICE_CG28",
          "CG44_CODABI_CG12", "CG44_CODCAB_CG13", "CG44_CODPAG_CG62", "CG44_IDAGENTE_MG17"}},
        {"CG16_ANAGGEN",
         {"CG16_CODICE", "CG16_RAGSOANAG", "CG16_INDIRIZZO", "CG16_CITTA", "CG16_PROV", "CG16_TEL1NUM", "CG16_FAXNUM"}},
        {"CG12_BANCHE", {"CG12_BANCA", "CG12_DESCR"}},
        {"CG13_AGENZIE", {"CG13_BANCA_CG12", "CG13_CODCAB", "CG13_DESCR"}},
        {"CG62_CONDPAGDES", {"CG62_CODPAG", "CG62_DESCPAG"}},
        {"MG17_AGENTI", {"MG17_DITTA_CG18", "MG17_IDAGENTE", "MG17_AGENTE", "MG17_ANAGEN_CG16"}},
        {"MG19_CLIFORVA",
         {"MG19_DITTA_CG18", "MG19_TIPOCF_CG44", "MG19_CLIFOR_CG44", "MG19_LISTMAG", "MG19_MACROAREA", "MG19_AREA",
          "MG19_ZONA", "MG19_MACROCAT", "MG19_CATEG", "MG19_SOTTOCAT", "MG19_RAGGRCF1", "MG19_RAGGRCF2",
          "MG19_RAGGCRF3"}},
        {"MG07_MACROAREE", {"MG07_DITTA_CG18", "MG07_TIPOCF", "MG07_MACROAREA", "MG07_DESCRMACROAR"}},
        {"MG08_AREE", {"MG08_DITTA_CG18", "MG08_TIPOCF_MG07", "MG08_MACROAREA_MG07", "MG08_AREA", "MG08_DESCRAREA"}},
        {"MG09_ZONE",
         {"MG09_DITTA_CG18", "MG09_TIPOCF_MG08", "MG09_MACROAREA_MG08", "MG09_AREA_MG08", "MG09_ZONA",
          "MG09_DESCRZONA"}},
        {"MG10_MACROCAT", {"MG10_DITTA_CG18", "MG10_TIPOCF", "MG10_MACROCAT", "MG10_DESCRMACROCAT"}},
        {"MG11_CATEG", {"MG11_DITTA_CG18", "MG11_TIPOCF_MG10", "MG11_MACROCAT_MG10", "MG11_CATEG", "MG11_DESCRCAT"}},
        {"MG12_SOTTOCAT",
         {"MG12_DITTA_CG18", "MG12_TIPOCF_MG11", "MG12_MACROCAT_MG11", "MG12_CATEG_MG11", "MG12_SOTTCAT",
          "MG12_DESCRSOTTOCAT"}},
        {"MG31_RAGGRCF1", {"MG31_DITTA_CG18", "MG31_TIPOCF", "MG31_CODRAGGRCF1", "MG31_DESCRAGGRCF1"}},
        {"MG32_RAGGRCF2", {"MG32_DITTA_CG18", "MG32_TIPOCF", "MG32_CODRAGGRCF2", "MG32_DESCRAGGRCF2"}},
        {"MG33_RAGGRCF3", {"MG33_DITTA_CG18", "MG33_TIPOCF", "MG33_CODRAGGRCF3", "MG33_DESCRAGGRCF3"}},
        {"VCO1C_CLIFOR",
         {"CO1C_DITTA_CG18", "CO1C_TIPOCF_CG44", "CO1C_CLIFOR_CG44", "CO1C_IDDIV_CO1A", "CO1D_CODPAG_CG62",
          "CO1D_IDAGENTE_MG17", "CO1D_MACROAREA", "CO1D_AREA", "CO1D_ZONA", "CO1D_MACROCAT", "CO1D_CATEG",
          "CO1D_SOTTOCAT", "CO1D_RAGGRCF1", "CO1D_RAGGRCF2", "CO1D_RAGGRCF3"}},
        {"QZ90_REGISTRO",
         {"QZ90_ID", "QZ90_DITTA_CG18", "QZ90_DATA", "QZ90_ORA", "QZ90_UTENTE", "QZ90_GRUPPO", "QZ90_TIPO",
          "QZ90_DESCR", "QZ90_RIGHE", "QZ90_ID_QZ90", "QZ90_ANNULLATA", "QZ90_GUID"}},
        {"QZ91_REGISTRORIGHE",
         {"QZ91_ID_QZ90", "QZ91_RIGA", "QZ91_ID_QZ02", "QZ91_CLIFOR_CG44", "QZ91_ESITO", "QZ91_MOTIVO", "QZ91_OSTACOLI",
          "QZ91_PRIMA", "QZ91_DOPO"}}};
    for (const auto& [nome, colonne] : attese) {
        ASSERT_NE(tabella(nome), nullptr) << nome;
        for (const auto& c : colonne)
            EXPECT_NE(colonna(nome, c), nullptr) << nome << "." << c;
    }
    EXPECT_EQ(qz::schema().tables.size(), attese.size());
}

TEST(Schema, OnlyTheRegistryOfMovesIsOptional) {
    std::vector<std::string> facoltative;
    for (const auto& t : qz::schema().tables)
        if (t.isOptional)
            facoltative.emplace_back(t.name);
    EXPECT_EQ((std::vector<std::string>{"QZ90_REGISTRO", "QZ91_REGISTRORIGHE"}), facoltative);
}

TEST(Schema, KeepsTheIrregularNames) {
    EXPECT_EQ(colonna("MG19_CLIFORVA", "MG19_RAGGRCF3"), nullptr);
    EXPECT_EQ(colonna("MG12_SOTTOCAT", "MG12_SOTTOCAT"), nullptr);
}

TEST(Schema, NamesEveryTableAndItsColumnsOnce) {
    std::set<std::string_view> tabelle;
    for (const auto& t : qz::schema().tables) {
        EXPECT_TRUE(tabelle.insert(t.name).second) << t.name;
        std::set<std::string_view> colonne;
        for (const auto& c : t.columns)
            EXPECT_TRUE(colonne.insert(c.name).second) << t.name << "." << c.name;
    }
}

TEST(Schema, MakesKeysAndIndexesOfItsOwnColumns) {
    for (const auto& t : qz::schema().tables) {
        for (const auto& c : t.key)
            EXPECT_NE(colonna(t.name, c), nullptr) << t.name << "." << c;
        for (const auto& i : t.indexes)
            for (const auto& c : i.columns)
                EXPECT_NE(colonna(t.name, c), nullptr) << t.name << "." << c;
    }
}

TEST(Schema, LetsNodesBeWithoutParentAccountAndDates) {
    for (const auto* nome :
         {"QZ02_IDPARENT_QZ02", "QZ02_CLIFOR_CG44", "QZ02_GUID", "QZ02_CLIFORFATT_CG44", "QZ02_IDSTRUTTURA_LP09",
          "QZ02_IDLOCALIZZATA_LP09", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL"}) {
        const auto* c = colonna("QZ02_DISTINTA", nome);
        EXPECT_TRUE(c && c->nullable) << nome;
    }
    const auto* id = colonna("QZ02_DISTINTA", "QZ02_ID");
    EXPECT_TRUE(id && id->type == ColumnType::identity);
}

TEST(Schema, HasTheIndexesThatTheStatementsNeed) {
    EXPECT_TRUE(haIndice("QZ02_DISTINTA", {"QZ02_IDPARENT_QZ02", "QZ02_ID_QZ01"}));
    EXPECT_TRUE(haIndice("QZ02_DISTINTA", {"QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44", "QZ02_CLIFOR_CG44", "QZ02_ID_QZ01"}));
    EXPECT_TRUE(haIndice("QZ02_DISTINTA", {"QZ02_DITTA_CG18", "QZ02_ID_QZ01"}));
}

TEST(Schema, MarksTheHostsViewAlone) {
    for (const auto& t : qz::schema().tables)
        EXPECT_EQ(t.isView, t.name == "VCO1C_CLIFOR") << t.name;
}

} // namespace

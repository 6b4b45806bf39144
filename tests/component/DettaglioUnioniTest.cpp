// The joins of the account detail's statements: for each table, in the statement's order, what it is joined on.

#include "component/data/IstruzioniDettaglio.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace {

using Testi = std::vector<std::string>;
using Unioni = std::vector<Testi>; ///< for each ON its equalities

const qz::SoggettoDettaglio conto{12, 1, contract::Value(std::int64_t{345})};

Unioni unioni(const std::string& istruzione) {
    const auto da = istruzione.find(" FROM         ");
    std::string testo = istruzione.substr(da, istruzione.find(" WHERE ") - da);
    static const std::regex uguaglianza(R"((isnull\([^)]*\)|[A-Z0-9_]+\.[A-Z0-9_]+) = (isnull\([^)]*\)|[A-Z0-9_.]+))");
    Unioni tutte;
    for (auto on = testo.find(" ON "); on != std::string::npos;) {
        const auto prossimo = testo.find(" ON ", on + 1);
        const auto pezzo = testo.substr(on, prossimo == std::string::npos ? prossimo : prossimo - on);
        Testi trovate;
        for (std::sregex_iterator i(pezzo.begin(), pezzo.end(), uguaglianza), fine; i != fine; ++i)
            trovate.push_back(i->str());
        tutte.push_back(trovate);
        on = prossimo;
    }
    return tutte;
}

/// A classification table: its account kind, and its codes from the highest level to its own, each with the sales
/// data's column.
struct Livello {
    std::string tabella;
    std::string tipoCF;
    std::vector<std::pair<std::string, std::string>> codici;
};
const Livello macroarea{"MG07_MACROAREE", "MG07_TIPOCF", {{"MG07_MACROAREA", "MACROAREA"}}};
const Livello area{"MG08_AREE", "MG08_TIPOCF_MG07", {{"MG08_MACROAREA_MG07", "MACROAREA"}, {"MG08_AREA", "AREA"}}};
const Livello zona{"MG09_ZONE",
                   "MG09_TIPOCF_MG08",
                   {{"MG09_MACROAREA_MG08", "MACROAREA"}, {"MG09_AREA_MG08", "AREA"}, {"MG09_ZONA", "ZONA"}}};
const Livello macrocat{"MG10_MACROCAT", "MG10_TIPOCF", {{"MG10_MACROCAT", "MACROCAT"}}};
const Livello categ{"MG11_CATEG", "MG11_TIPOCF_MG10", {{"MG11_MACROCAT_MG10", "MACROCAT"}, {"MG11_CATEG", "CATEG"}}};
const Livello sottocat{
    "MG12_SOTTOCAT",
    "MG12_TIPOCF_MG11",
    {{"MG12_MACROCAT_MG11", "MACROCAT"}, {"MG12_CATEG_MG11", "CATEG"}, {"MG12_SOTTCAT", "SOTTOCAT"}}};
const Livello gruppo1{"MG31_RAGGRCF1", "MG31_TIPOCF", {{"MG31_CODRAGGRCF1", "RAGGRCF1"}}};
const Livello gruppo2{"MG32_RAGGRCF2", "MG32_TIPOCF", {{"MG32_CODRAGGRCF2", "RAGGRCF2"}}};
const Livello gruppo3{"MG33_RAGGRCF3", "MG33_TIPOCF", {{"MG33_CODRAGGRCF3", "RAGGRCF3"}}};

Testi unione(const Livello& livello, bool divisione) {
    const auto colonna = [&](const std::string& nome) { return livello.tabella + "." + nome; };
    const std::string vendite = "MG19_CLIFORVA.MG19_";
    Testi tutte{colonna(livello.tabella.substr(0, 4) + "_DITTA_CG18") + " = " + vendite + "DITTA_CG18",
                colonna(livello.tipoCF) + " = " + vendite + "TIPOCF_CG44"};
    for (const auto& [codice, nome] : livello.codici) {
        // The third grouping's column of the sales data has the letters C and R in the other order.
        const auto proprio = vendite + (nome == "RAGGRCF3" ? "RAGGCRF3" : nome);
        tutte.push_back(colonna(codice) + " = " + (divisione ? "isnull(CO1D_" + nome + "," + proprio + ")" : proprio));
    }
    return tutte;
}

const Testi vendite{"CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18",
                    "CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44",
                    "CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44"};
const Testi nomeAgente{"MG17_AGENTI.MG17_ANAGEN_CG16 = CG16_ANAGGEN_AGE.CG16_CODICE"};
const Testi banca{"CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.CG12_BANCA"};
const Testi agenzia{"CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG12",
                    "CG44_CLIFOR.CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB"};
const Testi anagrafica{"CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"};

TEST(UnioniDettaglio, JoinEachTableOnItsKey) {
    const Unioni attese{{"CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18",
                         "CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE"},
                        nomeAgente,
                        {"CG44_CLIFOR.CG44_CODPAG_CG62 = CG62_CONDPAGDES.CG62_CODPAG"},
                        unione(macroarea, false),
                        unione(area, false),
                        unione(zona, false),
                        unione(macrocat, false),
                        unione(categ, false),
                        unione(sottocat, false),
                        unione(gruppo1, false),
                        unione(gruppo2, false),
                        unione(gruppo3, false),
                        vendite,
                        banca,
                        agenzia,
                        anagrafica};
    EXPECT_EQ(unioni(qz::istruzioneDettaglio({}, conto).text()), attese);
}

TEST(UnioniDettaglio, JoinADivisionsTablesOnTheOverriddenCodes) {
    const Unioni attese{{"CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18",
                         "CG44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44",
                         "CG44_CLIFOR.CG44_CLIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44"},
                        vendite,
                        {"CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18",
                         "isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17_AGENTI.MG17_IDAGENTE"},
                        nomeAgente,
                        {"isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG"},
                        unione(macroarea, true),
                        unione(area, true),
                        unione(zona, true),
                        unione(macrocat, true),
                        unione(categ, true),
                        unione(sottocat, true),
                        unione(gruppo3, true),
                        unione(gruppo2, true),
                        unione(gruppo1, true),
                        banca,
                        agenzia,
                        anagrafica};
    EXPECT_EQ(unioni(qz::istruzioneDettaglioDivisione({}, conto, "1").text()), attese);
}

} // namespace

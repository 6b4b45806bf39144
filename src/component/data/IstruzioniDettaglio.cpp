#include "component/data/IstruzioniDettaglio.h"

namespace qz {

using contract::Statement;

namespace {

void aggiungiSoggetto(Statement& s) {
    s << " SELECT   RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) + ' - ' +  "
         "RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,'')) + ' ' + "
         "RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) + ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TEL1NUM,'')) + ' Fax ' "
         "+ RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,'')) AS Soggetto ";
}

void aggiungiCondizioni(Statement& s) {
    s << ", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) as Valuta "
      << ", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG28 AS Char)) As AliquotaIva "
      << ", Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS Char)) + ' ' + ISNULL(CG12_BANCHE.CG12_DESCR,'') AS ABI "
      << ", Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + ' ' + ISNULL(CG13_AGENZIE.CG13_DESCR,'') AS CAB ";
}

void aggiungiProvvigioni(Statement& s) {
    s << ", Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' ' + ISNULL(CG16_ANAGGEN_AGE.CG16_RAGSOANAG,'') AS Agente "
      << ", MG19_LISTMAG AS ListinoAnagrafico ";
}

void aggiungiFiltro(Statement& s, const SoggettoDettaglio& soggetto) {
    s << " WHERE  CG44_DITTA_CG18 = ";
    s.number(soggetto.ditta);
    s << "   AND  CG44_TIPOCF = ";
    s.number(soggetto.tipoCF);
    s << "   AND  CG44_CLIFOR = ";
    s.bare(soggetto.codice);
}

void aggiungiClassificazioni(Statement& s) {
    s << ", Rtrim(CAST(MG07_MACROAREE.MG07_MACROAREA AS Char)) + ' ' + ISNULL(MG07_MACROAREE.MG07_DESCRMACROAR,'') AS "
         "MacroArea "
      << ", Rtrim(CAST(MG08_AREE.MG08_AREA AS Char)) + ' ' + ISNULL(MG08_AREE.MG08_DESCRAREA,'') AS Area"
      << ", Rtrim(CAST(MG09_ZONE.MG09_ZONA AS Char)) + ' ' + ISNULL(MG09_ZONE.MG09_DESCRZONA,'') AS Zona "
      << ", Rtrim(CAST(MG10_MACROCAT.MG10_MACROCAT AS Char)) + ' ' + ISNULL(MG10_MACROCAT.MG10_DESCRMACROCAT,'') AS "
         "MacroCategoria"
      << ", Rtrim(CAST(MG11_CATEG.MG11_CATEG AS Char)) + ' ' + ISNULL(MG11_CATEG.MG11_DESCRCAT,'') AS Categoria"
      << ", Rtrim(CAST(MG12_SOTTOCAT.MG12_SOTTCAT AS Char)) + ' ' + ISNULL(MG12_SOTTOCAT.MG12_DESCRSOTTOCAT,'') AS "
         "SottoCategoria"
      << ", Rtrim(CAST(MG31_RAGGRCF1.MG31_CODRAGGRCF1 AS Char)) + ' ' + ISNULL(MG31_RAGGRCF1.MG31_DESCRAGGRCF1,'') AS "
         "Raggruppamento1"
      << ", Rtrim(CAST(MG32_RAGGRCF2.MG32_CODRAGGRCF2 AS Char)) + ' ' + ISNULL(MG32_RAGGRCF2.MG32_DESCRAGGRCF2,'') AS "
         "Raggruppamento2"
      << ", Rtrim(CAST(MG33_RAGGRCF3.MG33_CODRAGGRCF3 AS Char)) + ' ' + ISNULL(MG33_RAGGRCF3.MG33_DESCRAGGRCF3,'') AS "
         "Raggruppamento3";
}

void aggiungiClassificazioniDivisione(Statement& s) {
    s << ", Rtrim(CAST(ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) AS Char)) + ' ' + "
         "ISNULL(MG07_MACROAREE.MG07_DESCRMACROAR,'') AS MacroArea "
      << ", Rtrim(CAST(ISNULL(CO1D_AREA ,MG19_AREA   ) AS Char)) + ' ' + ISNULL(MG08_AREE.MG08_DESCRAREA,'') AS Area"
      << ", Rtrim(CAST(ISNULL(CO1D_ZONA ,MG19_ZONA   ) AS Char)) + ' ' + ISNULL(MG09_ZONE.MG09_DESCRZONA,'') AS Zona "
      << ", Rtrim(CAST(ISNULL(CO1D_MACROCAT ,MG19_MACROCAT   ) AS Char)) + ' ' + "
         "ISNULL(MG10_MACROCAT.MG10_DESCRMACROCAT,'') AS MacroCategoria"
      << ", Rtrim(CAST(ISNULL(CO1D_CATEG ,MG19_CATEG   ) AS Char)) + ' ' + ISNULL(MG11_CATEG.MG11_DESCRCAT,'') AS "
         "Categoria"
      << ", Rtrim(CAST(ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT   ) AS Char)) + ' ' + "
         "ISNULL(MG12_SOTTOCAT.MG12_DESCRSOTTOCAT,'') AS SottoCategoria"
      << ", Rtrim(CAST(ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1   ) AS Char)) + ' ' + "
         "ISNULL(MG31_RAGGRCF1.MG31_DESCRAGGRCF1,'') AS Raggruppamento1"
      << ", Rtrim(CAST(ISNULL(CO1D_RAGGRCF2 ,MG19_RAGGRCF2   ) AS Char)) + ' ' + "
         "ISNULL(MG32_RAGGRCF2.MG32_DESCRAGGRCF2,'') AS Raggruppamento2"
      << ", Rtrim(CAST(ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3   ) AS Char)) + ' ' + "
         "ISNULL(MG33_RAGGRCF3.MG33_DESCRAGGRCF3,'') AS Raggruppamento3";
}

// The sales data and their classifications are one nested block, innermost the sales data that it keeps.
void aggiungiTabelle(Statement& s) {
    s << " FROM         CG44_CLIFOR LEFT OUTER JOIN"
      << "                       MG17_AGENTI ON CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18 AND "
      << "                       CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE LEFT OUTER JOIN"
      << "                       CG16_ANAGGEN CG16_ANAGGEN_AGE ON MG17_AGENTI.MG17_ANAGEN_CG16 = "
         "CG16_ANAGGEN_AGE.CG16_CODICE LEFT OUTER JOIN"
      << "                       CG62_CONDPAGDES ON CG44_CLIFOR.CG44_CODPAG_CG62 = CG62_CONDPAGDES.CG62_CODPAG LEFT "
         "OUTER JOIN"
      << "                       MG33_RAGGRCF3 RIGHT OUTER JOIN"
      << "                       MG32_RAGGRCF2 RIGHT OUTER JOIN"
      << "                       MG31_RAGGRCF1 RIGHT OUTER JOIN"
      << "                       MG12_SOTTOCAT RIGHT OUTER JOIN"
      << "                       MG11_CATEG RIGHT OUTER JOIN"
      << "                       MG10_MACROCAT RIGHT OUTER JOIN"
      << "                       MG09_ZONE RIGHT OUTER JOIN"
      << "                       MG08_AREE RIGHT OUTER JOIN"
      << "                       MG07_MACROAREE RIGHT OUTER JOIN"
      << "                       MG19_CLIFORVA ON MG07_MACROAREE.MG07_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG07_MACROAREE.MG07_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG07_MACROAREE.MG07_MACROAREA = MG19_CLIFORVA.MG19_MACROAREA ON "
      << "                       MG08_AREE.MG08_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG08_AREE.MG08_TIPOCF_MG07 = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG08_AREE.MG08_MACROAREA_MG07 = MG19_CLIFORVA.MG19_MACROAREA AND "
      << "                       MG08_AREE.MG08_AREA = MG19_CLIFORVA.MG19_AREA ON "
      << "                       MG09_ZONE.MG09_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG09_ZONE.MG09_TIPOCF_MG08 = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG09_ZONE.MG09_MACROAREA_MG08 = MG19_CLIFORVA.MG19_MACROAREA AND "
      << "                       MG09_ZONE.MG09_AREA_MG08 = MG19_CLIFORVA.MG19_AREA AND "
      << "                       MG09_ZONE.MG09_ZONA = MG19_CLIFORVA.MG19_ZONA ON "
      << "                       MG10_MACROCAT.MG10_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG10_MACROCAT.MG10_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG10_MACROCAT.MG10_MACROCAT = MG19_CLIFORVA.MG19_MACROCAT ON "
      << "                       MG11_CATEG.MG11_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG11_CATEG.MG11_TIPOCF_MG10 = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG11_CATEG.MG11_MACROCAT_MG10 = MG19_CLIFORVA.MG19_MACROCAT AND "
      << "                       MG11_CATEG.MG11_CATEG = MG19_CLIFORVA.MG19_CATEG ON "
      << "                       MG12_SOTTOCAT.MG12_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG12_SOTTOCAT.MG12_TIPOCF_MG11 = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG12_SOTTOCAT.MG12_MACROCAT_MG11 = MG19_CLIFORVA.MG19_MACROCAT AND "
      << "                       MG12_SOTTOCAT.MG12_CATEG_MG11 = MG19_CLIFORVA.MG19_CATEG AND "
      << "                       MG12_SOTTOCAT.MG12_SOTTCAT = MG19_CLIFORVA.MG19_SOTTOCAT ON "
      << "                       MG31_RAGGRCF1.MG31_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG31_RAGGRCF1.MG31_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG31_RAGGRCF1.MG31_CODRAGGRCF1 = MG19_CLIFORVA.MG19_RAGGRCF1 ON "
      << "                       MG32_RAGGRCF2.MG32_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG32_RAGGRCF2.MG32_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG32_RAGGRCF2.MG32_CODRAGGRCF2 = MG19_CLIFORVA.MG19_RAGGRCF2 ON "
      << "                       MG33_RAGGRCF3.MG33_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       MG33_RAGGRCF3.MG33_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       MG33_RAGGRCF3.MG33_CODRAGGRCF3 = MG19_CLIFORVA.MG19_RAGGCRF3 ON "
      << "                       CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND "
      << "                       CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 AND "
      << "                       CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 LEFT OUTER JOIN"
      << "                       CG12_BANCHE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.CG12_BANCA LEFT OUTER JOIN"
      << "                       CG13_AGENZIE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG12 AND "
      << "                       CG44_CLIFOR.CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB LEFT OUTER JOIN"
      << "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE";
}

void aggiungiTabelleDivisione(Statement& s, std::string_view divisione) {
    s << " FROM         "
      << " CG44_CLIFOR "
      << " LEFT OUTER JOIN VCO1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18 "
      << "                       AND CG44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44 "
      << "                       AND CG44_CLIFOR.CG44_CLIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44 "
      << "                       AND CO1C_IDDIV_CO1A = '";
    s.text(divisione);
    s << "'"
      << " LEFT OUTER JOIN MG19_CLIFORVA ON CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 "
      << " LEFT OUTER JOIN MG17_AGENTI ON CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18 "
      << "                       AND isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = "
         "MG17_AGENTI.MG17_IDAGENTE "
      << " LEFT OUTER JOIN CG16_ANAGGEN CG16_ANAGGEN_AGE ON MG17_AGENTI.MG17_ANAGEN_CG16 = "
         "CG16_ANAGGEN_AGE.CG16_CODICE "
      << " LEFT OUTER JOIN CG62_CONDPAGDES ON isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = "
         "CG62_CONDPAGDES.CG62_CODPAG "
      << " LEFT OUTER JOIN MG07_MACROAREE ON MG07_MACROAREE.MG07_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG07_MACROAREE.MG07_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG07_MACROAREE.MG07_MACROAREA = "
         "isnull(CO1D_MACROAREA,MG19_CLIFORVA.MG19_MACROAREA) "
      << " LEFT OUTER JOIN MG08_AREE ON MG08_AREE.MG08_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG08_AREE.MG08_TIPOCF_MG07 = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG08_AREE.MG08_MACROAREA_MG07 = "
         "isnull(CO1D_MACROAREA,MG19_CLIFORVA.MG19_MACROAREA) "
      << "                       AND MG08_AREE.MG08_AREA = isnull(CO1D_AREA,MG19_CLIFORVA.MG19_AREA) "
      << " LEFT OUTER JOIN MG09_ZONE ON MG09_ZONE.MG09_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG09_ZONE.MG09_TIPOCF_MG08 = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG09_ZONE.MG09_MACROAREA_MG08 = "
         "isnull(CO1D_MACROAREA,MG19_CLIFORVA.MG19_MACROAREA) "
      << "                       AND MG09_ZONE.MG09_AREA_MG08 = isnull(CO1D_AREA,MG19_CLIFORVA.MG19_AREA) "
      << "                       AND MG09_ZONE.MG09_ZONA = isnull(CO1D_ZONA,MG19_CLIFORVA.MG19_ZONA) "
      << " LEFT OUTER JOIN MG10_MACROCAT ON MG10_MACROCAT.MG10_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG10_MACROCAT.MG10_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG10_MACROCAT.MG10_MACROCAT = isnull(CO1D_MACROCAT,MG19_CLIFORVA.MG19_MACROCAT) "
      << " LEFT OUTER JOIN MG11_CATEG ON MG11_CATEG.MG11_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG11_CATEG.MG11_TIPOCF_MG10 = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG11_CATEG.MG11_MACROCAT_MG10 = isnull(CO1D_MACROCAT,MG19_CLIFORVA.MG19_MACROCAT) "
      << "                       AND MG11_CATEG.MG11_CATEG = isnull(CO1D_CATEG,MG19_CLIFORVA.MG19_CATEG) "
      << " LEFT OUTER JOIN MG12_SOTTOCAT ON MG12_SOTTOCAT.MG12_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG12_SOTTOCAT.MG12_TIPOCF_MG11 = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG12_SOTTOCAT.MG12_MACROCAT_MG11 = "
         "isnull(CO1D_MACROCAT,MG19_CLIFORVA.MG19_MACROCAT) "
      << "                       AND MG12_SOTTOCAT.MG12_CATEG_MG11 = isnull(CO1D_CATEG,MG19_CLIFORVA.MG19_CATEG) "
      << "                       AND MG12_SOTTOCAT.MG12_SOTTCAT = isnull(CO1D_SOTTOCAT,MG19_CLIFORVA.MG19_SOTTOCAT) "
      << " LEFT OUTER JOIN MG33_RAGGRCF3 ON MG33_RAGGRCF3.MG33_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG33_RAGGRCF3.MG33_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG33_RAGGRCF3.MG33_CODRAGGRCF3 = "
         "isnull(CO1D_RAGGRCF3,MG19_CLIFORVA.MG19_RAGGCRF3) "
      << " LEFT OUTER JOIN MG32_RAGGRCF2 ON MG32_RAGGRCF2.MG32_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG32_RAGGRCF2.MG32_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG32_RAGGRCF2.MG32_CODRAGGRCF2 = "
         "isnull(CO1D_RAGGRCF2,MG19_CLIFORVA.MG19_RAGGRCF2) "
      << " LEFT OUTER JOIN MG31_RAGGRCF1 ON MG31_RAGGRCF1.MG31_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
      << "                       AND MG31_RAGGRCF1.MG31_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
      << "                       AND MG31_RAGGRCF1.MG31_CODRAGGRCF1 = "
         "isnull(CO1D_RAGGRCF1,MG19_CLIFORVA.MG19_RAGGRCF1) "
      << " LEFT OUTER JOIN CG12_BANCHE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.CG12_BANCA "
      << " LEFT OUTER JOIN CG13_AGENZIE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG12 "
      << "                       AND CG44_CLIFOR.CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB "
      << " LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ";
}

} // namespace

Statement istruzioneDettaglio(const LinkParameters& parametri, const SoggettoDettaglio& soggetto) {
    Statement s;
    aggiungiSoggetto(s);
    if (parametri.flg_CondVendita) {
        s << ", Rtrim(CAST(CG62_CONDPAGDES.CG62_CODPAG AS Char)) + ' ' + ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS "
             "CondizioniPagamento ";
        aggiungiCondizioni(s);
    }
    if (parametri.flg_Provvigioni)
        aggiungiProvvigioni(s);
    if (parametri.flg_Classificazioni)
        aggiungiClassificazioni(s);
    aggiungiTabelle(s);
    aggiungiFiltro(s, soggetto);
    return s;
}

Statement istruzioneDettaglioDivisione(const LinkParameters& parametri, const SoggettoDettaglio& soggetto,
                                       std::string_view divisione) {
    Statement s;
    aggiungiSoggetto(s);
    if (parametri.flg_CondVendita) {
        s << ", Rtrim(CAST(ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62) AS Char)) + ' ' + "
             "ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento ";
        aggiungiCondizioni(s);
    }
    if (parametri.flg_Provvigioni)
        aggiungiProvvigioni(s);
    if (parametri.flg_Classificazioni)
        aggiungiClassificazioniDivisione(s);
    aggiungiTabelleDivisione(s, divisione);
    aggiungiFiltro(s, soggetto);
    return s;
}

} // namespace qz

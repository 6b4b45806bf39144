// The texts of the audit's and the comparison's statements, to the blank.

#include "component/maintenance/IstruzioniVerifica.h"
#include "component/maintenance/IstruzioniConfronto.h"

#include <gtest/gtest.h>

namespace {

TEST(IstruzioniVerifica, ReadTheTablesOnce) {
    EXPECT_EQ(qz::istruzioneTuttiILegami().text(),
              "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
              "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_GUID FROM QZ02_DISTINTA");
    EXPECT_EQ(qz::istruzioneTutteLeDistinte().text(),
              "SELECT QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_INDTIPOSOGG FROM QZ01_TIPODISTINTA");
    EXPECT_EQ(qz::istruzioneAnagrafiche(12).text(),
              "SELECT CG44_TIPOCF, CG44_CLIFOR, CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON "
              "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE CG44_DITTA_CG18 = 12");
    EXPECT_EQ(qz::istruzioneStatoNeiParametri(12).text(),
              "SELECT QZ03_ID_WF02, WF02_ID FROM QZ03_PARAMETRI LEFT OUTER JOIN WF02_STATI ON "
              "QZ03_PARAMETRI.QZ03_ID_WF02 = WF02_STATI.WF02_ID WHERE QZ03_DITTA_CG18 = 12");
}

TEST(IstruzioniConfronto, ReadADistintaAsItsTreeShowsIt) {
    EXPECT_EQ(qz::istruzioneDistinteDellaDitta(12).text(),
              "SELECT QZ01_ID, QZ01_INDTIPOSOGG, QZ01_CODICE, QZ01_DESCR FROM QZ01_TIPODISTINTA WHERE "
              "QZ01_DITTA_CG18 = 12");
    EXPECT_EQ(qz::istruzioneLegamiDistinta(12, 1, 34).text(),
              "SELECT QZ02_ID, QZ02_IDPARENT_QZ02, QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, "
              "CG16_RAGSOANAG FROM QZ02_DISTINTA LEFT OUTER JOIN CG44_CLIFOR ON QZ02_DISTINTA.QZ02_DITTA_CG18 = "
              "CG44_CLIFOR.CG44_DITTA_CG18 AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
              "QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR LEFT OUTER JOIN CG16_ANAGGEN ON "
              "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE QZ02_DITTA_CG18 = 12 AND "
              "QZ02_TIPOCF_CG44 = 1 AND QZ02_ID_QZ01 = 34 AND QZ02_CLIFOR_CG44 IS NOT NULL");
}

} // namespace

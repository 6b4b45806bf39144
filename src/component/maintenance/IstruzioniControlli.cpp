#include "component/maintenance/IstruzioniControlli.h"

namespace qz {

using contract::Statement;

namespace {

void aggiungiPadriEFigli(Statement& s) {
    s << " FROM         QZ02_DISTINTA QZ02_DISTINTA_PADRE LEFT OUTER JOIN"
      << "                       QZ01_TIPODISTINTA ON QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 = QZ01_TIPODISTINTA.QZ01_ID "
         "RIGHT OUTER JOIN"
      << "                       QZ02_DISTINTA QZ02_DISTINTA_FIGLIO ON QZ02_DISTINTA_PADRE.QZ02_ID = "
         "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 LEFT OUTER JOIN"
      << "                       CG44_CLIFOR LEFT OUTER JOIN"
      << "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ON "
      << "                       QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
      << "                       QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
      << "                       QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR";
}

} // namespace

Statement istruzioneContaDitta(std::int64_t ditta, DistintaId distinta) {
    Statement s;
    s << " SELECT Count(*) as Conta "
      << " FROM QZ02_DISTINTA "
      << " WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << "   AND QZ02_ID_QZ01 = ";
    return s.number(distinta.numero());
}

Statement istruzionePadri(const Soggetto& soggetto, DistintaId distinta) {
    Statement s;
    s << " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS "
         "DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF ";
    aggiungiPadriEFigli(s);
    s << " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ";
    s.number(soggetto.ditta);
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = ";
    s.number(soggetto.account.numero());
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = ";
    s.number(soggetto.tipo.numero());
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01 = ";
    return s.number(distinta.numero());
}

Statement istruzioneDecodificaPadre(NodoId nodo, std::optional<contract::Date> inizio) {
    Statement s;
    s << "SELECT QZ02_DISTINTA_DEST.QZ02_ID AS ID , QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 AS CODICE"
      << " FROM QZ02_DISTINTA QZ02_DISTINTA_ORIG INNER JOIN QZ02_DISTINTA QZ02_DISTINTA_DEST "
      << "      ON QZ02_DISTINTA_ORIG.QZ02_DITTA_CG18 = QZ02_DISTINTA_DEST.QZ02_DITTA_CG18 AND "
      << "         QZ02_DISTINTA_ORIG.QZ02_TIPOCF_CG44 = QZ02_DISTINTA_DEST.QZ02_TIPOCF_CG44 AND "
      << "         QZ02_DISTINTA_ORIG.QZ02_CLIFOR_CG44 = QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 ";
    if (inizio) {
        s << "   AND QZ02_DISTINTA_DEST.QZ02_DATAINIZIOVAL =   CONVERT(DateTime,'";
        s.date(*inizio);
        s << "',103)";
    }
    s << " WHERE QZ02_DISTINTA_ORIG.QZ02_ID = ";
    return s.number(nodo.numero());
}

Statement istruzioneNodo(std::int64_t ditta, NodoId nodo) {
    Statement s;
    s << " SELECT * FROM QZ02_DISTINTA "
      << " WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << "   AND QZ02_ID  = ";
    return s.number(nodo.numero());
}

Statement istruzioneSovrapposti(const Soggetto& soggetto, const Periodo& periodo, std::optional<NodoId> escluso) {
    Statement s;
    s << " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, "
      << " QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS DataI,"
      << " QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF, "
      << " QZ01_TIPODISTINTA.QZ01_CODICE AS CodDistinta,"
      << " QZ01_TIPODISTINTA.QZ01_DESCR AS DescDistinta";
    aggiungiPadriEFigli(s);
    s << " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ";
    s.number(soggetto.ditta);
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = ";
    s.number(soggetto.account.numero());
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = ";
    s.number(soggetto.tipo.numero());
    s << "   AND (CONVERT(DateTime,'";
    s.date(periodo.inizio);
    s << "',103) BETWEEN  QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND  QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL  "
      << "        OR CONVERT(DateTime,'";
    s.text(periodo.fine);
    s << "',103) BETWEEN QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL "
      << "        OR (CONVERT(DateTime,'";
    s.date(periodo.inizio);
    s << "',103) <= QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND CONVERT(DateTime,'";
    s.text(periodo.fine);
    s << "',103) >= QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL)"
      << "        )";
    if (escluso) {
        s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID <> ";
        s.number(escluso->numero());
    }
    s << " ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01";
    return s;
}

Statement istruzionePremio(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) {
    Statement s;
    s << "SELECT TOP 1 *  "
      << " FROM  QZ18_LIQUIDAZIONE INNER JOIN"
      << "       QZ13_PREMI ON QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = QZ13_PREMI.QZ13_ID "
      << "       INNER JOIN "
      << "       QZ14_SOGGCONTR ON QZ13_PREMI.QZ13_ID = QZ14_SOGGCONTR.QZ14_ID_QZ13"
      << " WHERE QZ13_DITTA_CG18    = ";
    s.number(ditta);
    s << "   AND QZ14_ID_QZ02       = ";
    s.number(nodo.numero());
    if (scadenzaDopo) {
        s << "   AND QZ18_DATASCADENZA  > CONVERT(DateTime,'";
        s.text(*scadenzaDopo);
        s << "',103) ";
    }
    s << "   AND QZ18_STATOSCADENZA >= 2 "
      << "   AND QZ14_ID_QZ02 NOT IN ("
      << "                            SELECT QZ27_ID_QZ02 "
      << "                              FROM QZ27_SOGGCONTRDISAB "
      << "                             WHERE QZ27_DITTA_CG18     = QZ14_DITTA_CG18     "
      << "                               AND QZ27_CODCONTR_QZ10  = QZ14_CODCONTR_QZ10  "
      << "                               AND QZ27_VERCONTR_QZ10  = QZ14_VERCONTR_QZ10  "
      << "                               AND QZ27_PROGRCOND_QZ13 = QZ14_PROGRCOND_QZ13 "
      << "                            )   ";
    return s;
}

} // namespace qz

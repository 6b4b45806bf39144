#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

/// The statements that moves send, written out as a server receives them: company 1, today 15/06/2024, user "UTENTE",
/// group "GRUPPO", customers on both sides.
namespace attesa {

using Numero = std::int64_t;

inline std::string n(Numero numero) {
    return std::to_string(numero);
}

inline std::string rilettura(Numero origine, Numero destinazione) {
    return "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL FROM "
           "QZ02_DISTINTA WHERE QZ02_ID IN (" +
           n(origine) + ", " + n(destinazione) + ")";
}

inline std::string contaDitta(Numero distinta) {
    return " SELECT Count(*) as Conta  FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 1   AND QZ02_ID_QZ01 = " +
           n(distinta);
}

inline std::string contaNodi(Numero distinta) {
    return " SELECT Count(*) as Conta  FROM QZ02_DISTINTA  WHERE QZ02_ID_QZ01 = " + n(distinta);
}

inline const std::string padriEFigli =
    " FROM         QZ02_DISTINTA QZ02_DISTINTA_PADRE LEFT OUTER JOIN"
    "                       QZ01_TIPODISTINTA ON QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 = QZ01_TIPODISTINTA.QZ01_ID RIGHT "
    "OUTER JOIN"
    "                       QZ02_DISTINTA QZ02_DISTINTA_FIGLIO ON QZ02_DISTINTA_PADRE.QZ02_ID = "
    "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 LEFT OUTER JOIN"
    "                       CG44_CLIFOR LEFT OUTER JOIN"
    "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ON "
    "                       QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
    "                       QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
    "                       QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR";

inline std::string padri(Numero account, Numero distinta) {
    return " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS "
           "DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF " +
           padriEFigli +
           " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 1   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = " +
           n(account) +
           "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 0   AND QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01 = " + n(distinta);
}

/// With a start date, the copy that starts on it.
inline std::string decodifica(Numero nodo, const std::string& inizio = {}) {
    return "SELECT QZ02_DISTINTA_DEST.QZ02_ID AS ID , QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 AS CODICE"
           " FROM QZ02_DISTINTA QZ02_DISTINTA_ORIG INNER JOIN QZ02_DISTINTA QZ02_DISTINTA_DEST "
           "      ON QZ02_DISTINTA_ORIG.QZ02_DITTA_CG18 = QZ02_DISTINTA_DEST.QZ02_DITTA_CG18 AND "
           "         QZ02_DISTINTA_ORIG.QZ02_TIPOCF_CG44 = QZ02_DISTINTA_DEST.QZ02_TIPOCF_CG44 AND "
           "         QZ02_DISTINTA_ORIG.QZ02_CLIFOR_CG44 = QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 " +
           (inizio.empty()
                ? std::string()
                : "   AND QZ02_DISTINTA_DEST.QZ02_DATAINIZIOVAL =   CONVERT(DateTime,'" + inizio + "',103)") +
           " WHERE QZ02_DISTINTA_ORIG.QZ02_ID = " + n(nodo);
}

inline std::string figli(Numero padre, Numero distinta) {
    return "SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02 = " + n(padre) +
           "   AND QZ02_ID_QZ01 = " + n(distinta);
}

inline std::string aggiornaDistinta(Numero nodo, Numero da, Numero a) {
    return "UPDATE QZ02_DISTINTA  SET QZ02_ID_QZ01 = '" + n(a) + "' WHERE QZ02_ID_QZ01 = '" + n(da) +
           "'   AND QZ02_ID = " + n(nodo);
}

inline std::string spostaNodo(Numero nodo, Numero padre, Numero da, Numero a) {
    return "UPDATE QZ02_DISTINTA  SET QZ02_IDPARENT_QZ02 = " + n(padre) + ",     QZ02_ID_QZ01 = '" + n(a) +
           "',     QZ02_DATAVAR = CONVERT(DateTime,'15/06/2024',103),     QZ02_GRUPPOVAR = 'GRUPPO',     "
           "QZ02_UTENTEVAR = 'UTENTE' WHERE QZ02_ID_QZ01 = '" +
           n(da) + "'   AND QZ02_ID = " + n(nodo);
}

inline std::string chiudi(Numero nodo, Numero distinta, const std::string& fine) {
    return "UPDATE QZ02_DISTINTA  SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'" + fine +
           "',103)                              THEN QZ02_DATAINIZIOVAL                               ELSE "
           "CONVERT(DateTime,'" +
           fine +
           "',103)                         END),     QZ02_GRUPPOVAR = 'GRUPPO',     QZ02_UTENTEVAR = 'UTENTE' WHERE "
           "QZ02_ID_QZ01 = '" +
           n(distinta) + "'   AND QZ02_ID = " + n(nodo) + "   AND QZ02_DATAFINEVAL > CONVERT(DateTime,'" + fine +
           "',103)";
}

inline std::string nodo(Numero id) {
    return " SELECT * FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 1   AND QZ02_ID  = " + n(id);
}

/// With a node, those of an edit of it.
inline std::string sovrapposti(Numero account, const std::string& inizio, const std::string& fine, Numero tipo = 0,
                               Numero escluso = 0) {
    const std::string dal = "CONVERT(DateTime,'" + inizio + "',103)";
    const std::string al = "CONVERT(DateTime,'" + fine + "',103)";
    return " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc,  QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS "
           "DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF,  QZ01_TIPODISTINTA.QZ01_CODICE AS CodDistinta, "
           "QZ01_TIPODISTINTA.QZ01_DESCR AS DescDistinta" +
           padriEFigli +
           " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 1   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = " +
           n(account) + "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = " + n(tipo) + "   AND (" + dal +
           " BETWEEN  QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND  QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL          "
           "OR " +
           al +
           " BETWEEN QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL         OR (" +
           dal + " <= QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND " + al +
           " >= QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL)        )" +
           (escluso == 0 ? std::string() : "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID <> " + n(escluso)) +
           " ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01";
}

/// The definitive bonus that would fall due after an end.
inline std::string premio(Numero nodo, const std::string& fine) {
    return "SELECT TOP 1 *   FROM  QZ18_LIQUIDAZIONE INNER JOIN       QZ13_PREMI ON QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = "
           "QZ13_PREMI.QZ13_ID        INNER JOIN        QZ14_SOGGCONTR ON QZ13_PREMI.QZ13_ID = "
           "QZ14_SOGGCONTR.QZ14_ID_QZ13 WHERE QZ13_DITTA_CG18    = 1   AND QZ14_ID_QZ02       = " +
           n(nodo) + "   AND QZ18_DATASCADENZA  > CONVERT(DateTime,'" + fine +
           "',103)    AND QZ18_STATOSCADENZA >= 2    AND QZ14_ID_QZ02 NOT IN (                            SELECT "
           "QZ27_ID_QZ02                               FROM QZ27_SOGGCONTRDISAB                              WHERE "
           "QZ27_DITTA_CG18     = QZ14_DITTA_CG18                                    AND QZ27_CODCONTR_QZ10  = "
           "QZ14_CODCONTR_QZ10                                 AND QZ27_VERCONTR_QZ10  = QZ14_VERCONTR_QZ10           "
           "                      AND QZ27_PROGRCOND_QZ13 = QZ14_PROGRCOND_QZ13                             )   ";
}

/// A copy without optional values, in state 0.
inline std::string inserisci(Numero account, Numero padre, Numero distinta, const std::string& inizio,
                             const std::string& fine, const std::string& guid) {
    return "INSERT INTO QZ02_DISTINTA  (  QZ02_ID_QZ01,  QZ02_IDPARENT_QZ02,  QZ02_DITTA_CG18,  QZ02_TIPOCF_CG44,  "
           "QZ02_CLIFOR_CG44,  QZ02_INDREGPROV,  QZ02_ID_WF02,  QZ02_DATAINIZIOVAL,  QZ02_DATAFINEVAL,  QZ02_DATACRE,  "
           "QZ02_GRUPPOCRE,  QZ02_UTENTECRE,  QZ02_DATAVAR,  QZ02_GRUPPOVAR,  QZ02_UTENTEVAR , QZ02_GUID  ) VALUES ( "
           "'" +
           n(distinta) + "',  " + n(padre) + ",  1,  0,  " + n(account) + ",  0,  0,  CONVERT(DateTime,'" + inizio +
           "',103),  CONVERT(DateTime,'" + fine +
           "',103),  CONVERT(DateTime,'15/06/2024',103),  'GRUPPO',  'UTENTE',  CONVERT(DateTime,'15/06/2024',103),  "
           "'GRUPPO',  'UTENTE', '" +
           guid + "'  )";
}

/// Beginnings of the two statements that load a side.
inline const std::string divisioneOrig = " SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINTA WHERE QZ01_ID = ";
inline const std::string divisioneDest = " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_TIPODISTINTA WHERE QZ01_ID = ";
inline const std::string nodi = " SELECT QZ02_ID,  ";

} // namespace attesa

} // namespace prove

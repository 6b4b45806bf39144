#include "component/data/IstruzioniDistinta.h"

#include "contract/RuntimeError.h"

#include <string>

namespace qz {

using contract::Statement;

std::int64_t idSenzaApici(std::string_view idDistinta) {
    const auto numero = contract::Value(idDistinta).integer();
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + std::string(idDistinta) +
                                         "\" non è l'identificativo di una distinta.");
    return *numero;
}

Statement istruzioneTipi(std::int64_t ditta, int tipoCF) {
    Statement s;
    s << "SELECT * "
      << " FROM QZ01_TIPODISTINTA"
      << " WHERE QZ01_DITTA_CG18 = ";
    s.number(ditta);
    if (tipoCF == 0)
        s << "   AND QZ01_INDTIPOSOGG = 0 ";
    else
        s << "   AND QZ01_INDTIPOSOGG = 1 ";
    return s;
}

Statement istruzioneDivisione(const DescrizioneLato& lato, std::string_view idTipo) {
    Statement s;
    if (lato.leggeGuid)
        s << " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_TIPODISTINTA WHERE QZ01_ID = ";
    else
        s << " SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINTA WHERE QZ01_ID = ";
    return s.number(idSenzaApici(idTipo));
}

Statement istruzioneNodi(const DescrizioneLato& lato, std::int64_t ditta, std::int64_t tipoCF,
                         std::string_view idTipo) {
    Statement s;
    s << " SELECT QZ02_ID,  "
      << " (SELECT CG16_RAGSOANAG"
      << "    FROM CG44_CLIFOR"
      << "    INNER JOIN CG16_ANAGGEN "
      << "            ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"
      << "           AND QZ02_DISTINTA.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
      << "           AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
      << "           AND QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
      << "  ) AS RagioneSociale,"
      << " QZ02_DESCR, "
      << " QZ02_IDPARENT_QZ02, "
      << " QZ02_ID AS COD, "
      << " QZ02_IDPARENT_QZ02 AS CODP, "
      << " QZ02_CLIFOR_CG44, "
      << " QZ02_DATAINIZIOVAL, "
      << " QZ02_DATAFINEVAL ";
    if (lato.leggeFatturazione)
        s << " , QZ02_CLIFORFATT_CG44 , QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, QZ02_IDLOCALIZZATA_LP09, "
             "QZ02_INDEREPROMO";
    s << " , QZ02_GUID "
      << " FROM         QZ02_DISTINTA"
      << " WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << "   AND QZ02_TIPOCF_CG44 = ";
    s.number(tipoCF);
    s << "   AND QZ02_ID_QZ01 = '";
    s.text(idTipo);
    s << "'"
      << "   AND QZ02_CLIFOR_CG44 IS NOT NULL";
    return s;
}

} // namespace qz

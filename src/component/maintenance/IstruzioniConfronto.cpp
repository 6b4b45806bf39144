#include "component/maintenance/IstruzioniConfronto.h"

namespace qz {

using contract::Statement;

Statement istruzioneDistinteDellaDitta(std::int64_t ditta) {
    Statement s;
    s << "SELECT QZ01_ID, QZ01_INDTIPOSOGG, QZ01_CODICE, QZ01_DESCR FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = ";
    return s.number(ditta);
}

Statement istruzioneLegamiDistinta(std::int64_t ditta, std::int64_t tipo, std::int64_t distinta) {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_IDPARENT_QZ02, QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, CG16_RAGSOANAG"
      << " FROM QZ02_DISTINTA LEFT OUTER JOIN CG44_CLIFOR ON QZ02_DISTINTA.QZ02_DITTA_CG18 = "
      << "CG44_CLIFOR.CG44_DITTA_CG18 AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
      << "QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
      << " LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"
      << " WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta) << " AND QZ02_TIPOCF_CG44 = ";
    s.number(tipo) << " AND QZ02_ID_QZ01 = ";
    return s.number(distinta) << " AND QZ02_CLIFOR_CG44 IS NOT NULL";
}

} // namespace qz

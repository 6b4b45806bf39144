#include "component/maintenance/IstruzioniVerifica.h"

namespace qz {

using contract::Statement;

Statement istruzioneTuttiILegami() {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
      << "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_GUID FROM QZ02_DISTINTA";
    return s;
}

Statement istruzioneTutteLeDistinte() {
    Statement s;
    s << "SELECT QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_INDTIPOSOGG FROM QZ01_TIPODISTINTA";
    return s;
}

Statement istruzioneAnagrafiche(std::int64_t ditta) {
    Statement s;
    s << "SELECT CG44_TIPOCF, CG44_CLIFOR, CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
      << "ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE CG44_DITTA_CG18 = ";
    return s.number(ditta);
}

Statement istruzioneStatoNeiParametri(std::int64_t ditta) {
    Statement s;
    s << "SELECT QZ03_ID_WF02, WF02_ID FROM QZ03_PARAMETRI LEFT OUTER JOIN WF02_STATI "
      << "ON QZ03_PARAMETRI.QZ03_ID_WF02 = WF02_STATI.WF02_ID WHERE QZ03_DITTA_CG18 = ";
    return s.number(ditta);
}

} // namespace qz

#include "component/interaction/FRMQZ_PARAMETRI.h"

namespace qz {

using contract::Statement;

Statement istruzioneRigaParametri(std::int64_t ditta) {
    Statement s;
    s << "SELECT * FROM QZ03_PARAMETRI "
      << " WHERE QZ03_DITTA_CG18 = ";
    return s.number(ditta);
}

Statement istruzioneValoriParametri(std::int64_t ditta) {
    Statement s;
    s << " SELECT   QZ03_ID_WF02 AS StatoLegame, "
      << " ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
      << " ISNULL(QZ03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO, "
      << " ISNULL(QZ03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE, "
      << " ISNULL(QZ03_FLG_ANAG,0) AS flg_Anagrafica, "
      << " ISNULL(QZ03_FLG_CONDVEND,0) AS flg_CondVendita, "
      << " ISNULL(QZ03_FLG_CLAS,0) AS flg_Classificazioni, "
      << " ISNULL(QZ03_FLG_PROV,0) AS flg_Provvigioni"
      << " FROM  QZ03_PARAMETRI"
      << " WHERE QZ03_DITTA_CG18 = ";
    return s.number(ditta);
}

Statement istruzioneElencoStati() {
    Statement s;
    return s << " SELECT WF02_ID, WF02_DESCR FROM  WF02_STATI"
             << " ORDER BY WF02_ID ";
}

Statement istruzioneDescrizioneStato(std::int64_t stato) {
    Statement s;
    s << " SELECT WF02_DESCR FROM  WF02_STATI"
      << " WHERE WF02_ID = ";
    return s.number(stato);
}

} // namespace qz

#include "component/maintenance/IstruzioniElenco.h"

namespace qz {

using contract::Statement;

namespace {

void aggiungiColonne(Statement& s) {
    s << "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
         "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_CLIFORFATT_CG44, QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, "
         "QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO, QZ02_GUID FROM QZ02_DISTINTA WHERE QZ02_DITTA_CG18 = ";
}

} // namespace

Statement istruzioneDistinteDi(std::int64_t ditta) {
    Statement s;
    s << "SELECT QZ01_ID, QZ01_CODICE, QZ01_INDTIPOSOGG FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = ";
    s.number(ditta);
    return s << " ORDER BY QZ01_ID";
}

Statement istruzioneNodiDiAccount(const Soggetto& soggetto, DistintaId distinta) {
    Statement s;
    aggiungiColonne(s);
    s.number(soggetto.ditta);
    s << " AND QZ02_TIPOCF_CG44 = ";
    s.number(soggetto.tipo.numero());
    s << " AND QZ02_CLIFOR_CG44 = ";
    s.number(soggetto.account.numero());
    s << " AND QZ02_ID_QZ01 = ";
    s.number(distinta.numero());
    return s << " ORDER BY QZ02_ID";
}

Statement istruzioneNodoConStato(std::int64_t ditta, NodoId nodo) {
    Statement s;
    aggiungiColonne(s);
    s.number(ditta);
    s << " AND QZ02_ID = ";
    return s.number(nodo.numero());
}

} // namespace qz

#include "component/maintenance/IstruzioniSpostamento.h"

namespace qz {

using contract::Statement;

Statement istruzioneRilettura(const contract::Value& idOrigine, const contract::Value& idDestinazione) {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL FROM QZ02_DISTINTA "
         "WHERE QZ02_ID IN (";
    s.bare(idOrigine);
    if (!idDestinazione.isMissing()) {
        s << ", ";
        s.bare(idDestinazione);
    }
    return s << ")";
}

Statement istruzioneSpostaNodo(std::optional<NodoId> nodo, std::optional<NodoId> sotto, DistintaId da, DistintaId a,
                               const Autore& autore) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_IDPARENT_QZ02 = ";
    if (sotto)
        s.number(sotto->numero());
    s << ","
      << "     QZ02_ID_QZ01 = '";
    s.number(a.numero());
    s << "',"
      << "     QZ02_DATAVAR = CONVERT(DateTime,'";
    s.date(autore.oggi);
    s << "',103),"
      << "     QZ02_GRUPPOVAR = '";
    s.text(autore.gruppo);
    s << "',"
      << "     QZ02_UTENTEVAR = '";
    s.text(autore.utente);
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.number(da.numero());
    s << "'"
      << "   AND QZ02_ID = ";
    if (nodo)
        s.number(nodo->numero());
    return s;
}

Statement istruzioneContaNodi(DistintaId distinta) {
    Statement s;
    s << " SELECT Count(*) as Conta "
      << " FROM QZ02_DISTINTA "
      << " WHERE QZ02_ID_QZ01 = ";
    return s.number(distinta.numero());
}

Statement istruzioneFigli(NodoId padre, DistintaId distinta) {
    Statement s;
    s << "SELECT  * "
      << " FROM  QZ02_DISTINTA "
      << " WHERE QZ02_IDPARENT_QZ02 = ";
    s.number(padre.numero());
    s << "   AND QZ02_ID_QZ01 = ";
    return s.number(distinta.numero());
}

Statement istruzioneAggiornaDistinta(NodoId nodo, DistintaId da, DistintaId a) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_ID_QZ01 = '";
    s.number(a.numero());
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.number(da.numero());
    s << "'"
      << "   AND QZ02_ID = ";
    return s.number(nodo.numero());
}

Statement istruzioneChiudiLegame(NodoId nodo, DistintaId distinta, contract::Date fine, const Autore& autore) {
    // The date of the last change is left alone, on purpose.
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'";
    s.date(fine);
    s << "',103)"
      << "                              THEN QZ02_DATAINIZIOVAL "
      << "                              ELSE CONVERT(DateTime,'";
    s.date(fine);
    s << "',103)"
      << "                         END),"
      << "     QZ02_GRUPPOVAR = '";
    s.text(autore.gruppo);
    s << "',"
      << "     QZ02_UTENTEVAR = '";
    s.text(autore.utente);
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.number(distinta.numero());
    s << "'"
      << "   AND QZ02_ID = ";
    s.number(nodo.numero());
    s << "   AND QZ02_DATAFINEVAL > CONVERT(DateTime,'";
    s.date(fine);
    return s << "',103)";
}

namespace {

const Facoltativi& facoltativiDi(const NodoDaCopiare& nodo) {
    static const Facoltativi nessuno;
    return nodo.facoltativi ? *nodo.facoltativi : nessuno;
}

} // namespace

void aggiungiColonneLegame(Statement& s, const NodoDaCopiare& nodo) {
    s << "INSERT INTO QZ02_DISTINTA "
      << " ("
      << "  QZ02_ID_QZ01,"
      << "  QZ02_IDPARENT_QZ02,"
      << "  QZ02_DITTA_CG18,"
      << "  QZ02_TIPOCF_CG44,"
      << "  QZ02_CLIFOR_CG44,"
      << "  QZ02_INDREGPROV,"
      << "  QZ02_ID_WF02,"
      << "  QZ02_DATAINIZIOVAL,"
      << "  QZ02_DATAFINEVAL,"
      << "  QZ02_DATACRE,"
      << "  QZ02_GRUPPOCRE,"
      << "  QZ02_UTENTECRE,"
      << "  QZ02_DATAVAR,"
      << "  QZ02_GRUPPOVAR,"
      << "  QZ02_UTENTEVAR";
    const auto& facoltativi = facoltativiDi(nodo);
    if (!facoltativi[0].isMissing())
        s << ", QZ02_CLIFORFATT_CG44 ";
    if (!facoltativi[1].isMissing())
        s << ", QZ02_TIPOANAGFATT ";
    if (!facoltativi[2].isMissing())
        s << ", QZ02_IDSTRUTTURA_LP09 ";
    if (!facoltativi[3].isMissing())
        s << ", QZ02_IDLOCALIZZATA_LP09 ";
    if (!facoltativi[4].isMissing())
        s << ", QZ02_INDEREPROMO ";
    s << " , QZ02_GUID "
      << " ) VALUES ";
}

void aggiungiValoriLegame(Statement& s, const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view guid,
                          const Autore& autore) {
    s << "("
      << " '";
    s.number(legame.distinta.numero());
    s << "',"
      << "  ";
    s.number(nodo.padre.numero());
    s << ","
      << "  ";
    s.number(nodo.ditta);
    s << ","
      << "  ";
    s.number(nodo.tipo.numero());
    s << ","
      << "  ";
    s.number(nodo.account.numero());
    s << ","
      << "  0,"
      << "  ";
    s.number(legame.stato);
    s << ","
      << "  CONVERT(DateTime,'";
    s.date(legame.inizio);
    s << "',103),"
      << "  CONVERT(DateTime,'";
    s.text(legame.fine);
    s << "',103),"
      << "  CONVERT(DateTime,'";
    s.date(autore.oggi);
    s << "',103),"
      << "  '";
    s.text(autore.gruppo);
    s << "',"
      << "  '";
    s.text(autore.utente);
    s << "',"
      << "  CONVERT(DateTime,'";
    s.date(autore.oggi);
    s << "',103),"
      << "  '";
    s.text(autore.gruppo);
    s << "',"
      << "  '";
    s.text(autore.utente);
    s << "'";
    for (const auto& valore : facoltativiDi(nodo)) {
        if (valore.isMissing())
            continue;
        s << ",";
        s.bare(valore);
    }
    s << ", '";
    s.text(guid);
    s << "' "
      << " )";
}

Statement istruzioneInserisciLegame(const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view guid,
                                    const Autore& autore) {
    Statement s;
    aggiungiColonneLegame(s, nodo);
    aggiungiValoriLegame(s, nodo, legame, guid, autore);
    return s;
}

} // namespace qz

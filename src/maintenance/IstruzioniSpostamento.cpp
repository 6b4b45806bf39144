#include "maintenance/IstruzioniSpostamento.h"

#include "data/IstruzioniDistinta.h"

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

Statement istruzioneSpostaNodo(const SpostaNodo& nodo, const Autore& autore) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_IDPARENT_QZ02 = ";
    s.bare(nodo.idNuovoPadre);
    s << ","
      << "     QZ02_ID_QZ01 = '";
    s.text(nodo.idDistintaDest);
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
    s.text(nodo.idDistintaOrig);
    s << "'"
      << "   AND QZ02_ID = ";
    return s.bare(nodo.idNodo);
}

Statement istruzioneContaNodi(std::string_view idDistintaOrig) {
    Statement s;
    s << " SELECT Count(*) as Conta "
      << " FROM QZ02_DISTINTA "
      << " WHERE QZ02_ID_QZ01 = ";
    return s.number(idSenzaApici(idDistintaOrig));
}

Statement istruzioneFigli(std::int64_t idPadre, std::string_view idDistintaOrig) {
    Statement s;
    s << "SELECT  * "
      << " FROM  QZ02_DISTINTA "
      << " WHERE QZ02_IDPARENT_QZ02 = ";
    s.number(idPadre);
    s << "   AND QZ02_ID_QZ01 = ";
    return s.number(idSenzaApici(idDistintaOrig));
}

Statement istruzioneAggiornaDistinta(std::int64_t idNodo, std::string_view idDistintaOrig,
                                     std::string_view idDistintaDest) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_ID_QZ01 = '";
    s.text(idDistintaDest);
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.text(idDistintaOrig);
    s << "'"
      << "   AND QZ02_ID = ";
    return s.number(idNodo);
}

Statement istruzioneChiudiLegame(const ChiudiLegame& legame, const Autore& autore) {
    // The date of the last change is left alone, on purpose.
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'";
    s.date(legame.fine);
    s << "',103)"
      << "                              THEN QZ02_DATAINIZIOVAL "
      << "                              ELSE CONVERT(DateTime,'";
    s.date(legame.fine);
    s << "',103)"
      << "                         END),"
      << "     QZ02_GRUPPOVAR = '";
    s.text(autore.gruppo);
    s << "',"
      << "     QZ02_UTENTEVAR = '";
    s.text(autore.utente);
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.text(legame.idDistintaOrig);
    s << "'"
      << "   AND QZ02_ID = ";
    s.bare(legame.idNodo);
    s << "   AND QZ02_DATAFINEVAL > CONVERT(DateTime,'";
    s.date(legame.fine);
    return s << "',103)";
}

Statement istruzioneInserisciLegame(const NodoDaCopiare& nodo, const NuovoLegame& legame, const Autore& autore) {
    Statement s;
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
    if (!nodo.facoltativi[0].isMissing())
        s << ", QZ02_CLIFORFATT_CG44 ";
    if (!nodo.facoltativi[1].isMissing())
        s << ", QZ02_TIPOANAGFATT ";
    if (!nodo.facoltativi[2].isMissing())
        s << ", QZ02_IDSTRUTTURA_LP09 ";
    if (!nodo.facoltativi[3].isMissing())
        s << ", QZ02_IDLOCALIZZATA_LP09 ";
    if (!nodo.facoltativi[4].isMissing())
        s << ", QZ02_INDEREPROMO ";
    s << " , QZ02_GUID "
      << " ) VALUES ("
      << " '";
    s.text(legame.idDistintaDest);
    s << "',"
      << "  ";
    s.bare(nodo.idNuovoPadre);
    s << ","
      << "  ";
    s.number(nodo.ditta);
    s << ","
      << "  ";
    s.number(nodo.tipoCF);
    s << ","
      << "  ";
    s.bare(nodo.account);
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
    for (const auto& valore : nodo.facoltativi) {
        if (valore.isMissing())
            continue;
        s << ",";
        s.bare(valore);
    }
    s << ", '";
    s.text(legame.guid);
    return s << "' "
             << " )";
}

} // namespace qz

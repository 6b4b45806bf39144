#include "component/interaction/ModificaNodo.h"
#include "component/maintenance/IstruzioniSpostamento.h"

namespace qz {

using contract::Statement;

namespace {

void aggiungiData(Statement& s, contract::Date data) {
    s << "CONVERT(DateTime,'";
    s.date(data);
    s << "',103)";
}

void aggiungiUguale(Statement& s, contract::Fragment uguale, contract::Fragment nullo, const contract::Value& valore) {
    if (const auto data = valore.date()) {
        s << uguale;
        aggiungiData(s, *data);
    } else {
        s << nullo;
    }
}

} // namespace

Statement istruzioneDateLegame(NodoId nodo, const DateLegame& lette, contract::Date inizio, contract::Date fine,
                               const Autore& autore) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_DATAINIZIOVAL = ";
    aggiungiData(s, inizio);
    s << ","
      << "     QZ02_DATAFINEVAL = ";
    aggiungiData(s, fine);
    s << ","
      << "     QZ02_DATAVAR = ";
    aggiungiData(s, autore.oggi);
    s << ","
      << "     QZ02_GRUPPOVAR = '";
    s.text(autore.gruppo);
    s << "',"
      << "     QZ02_UTENTEVAR = '";
    s.text(autore.utente);
    s << "'"
      << " WHERE QZ02_ID = ";
    s.number(nodo.numero());
    aggiungiUguale(s, "   AND QZ02_DATAINIZIOVAL = ", "   AND QZ02_DATAINIZIOVAL IS NULL", lette.inizio);
    aggiungiUguale(s, "   AND QZ02_DATAFINEVAL = ", "   AND QZ02_DATAFINEVAL IS NULL", lette.fine);
    return s;
}

Statement istruzioneLeggiDate(NodoId nodo) {
    Statement s;
    s << "SELECT QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL"
      << " FROM QZ02_DISTINTA"
      << " WHERE QZ02_ID = ";
    return s.number(nodo.numero());
}

} // namespace qz

#include "component/interaction/RiletturaNodi.h"

#include "component/maintenance/IstruzioniSpostamento.h"

namespace qz {

namespace {

/// Puts the record set on the node's row; false when it is not there.
bool cerca(contract::Recordset& nodi, const contract::Value& id) {
    for (nodi.MoveFirst(); !nodi.Eof(); nodi.MoveNext())
        if (nodi["QZ02_ID"].integer() == id.integer())
            return true;
    return false;
}

/// Two days of the database; what is no day counts by its text.
bool stessoGiorno(const contract::Value& a, const contract::Value& b) {
    const auto giorno = a.date();
    return giorno ? giorno == b.date() : a.text() == b.text();
}

/// Whether a link hangs where the screen showed it, in the period that the screen showed.
bool comeMostrato(const contract::Recordset& riletto, const contract::Recordset& mostrato) {
    return riletto["QZ02_IDPARENT_QZ02"].integer() == mostrato["QZ02_IDPARENT_QZ02"].integer() &&
           stessoGiorno(riletto["QZ02_DATAINIZIOVAL"], mostrato["QZ02_DATAINIZIOVAL"]) &&
           stessoGiorno(riletto["QZ02_DATAFINEVAL"], mostrato["QZ02_DATAFINEVAL"]);
}

} // namespace

void rileggiNodi(const StatoForm& stato, std::string& messaggio) {
    const auto& orig = stato.origine;
    const auto& dest = stato.destinazione;
    const auto idOrig = (*orig.dati)["QZ02_ID"];
    const auto idDest = dest.senzaRecord() ? contract::Value::null() : (*dest.dati)["QZ02_ID"];

    contract::Recordset nodi;
    nodi.Open(istruzioneRilettura(idOrig, idDest), stato.database());
    const auto confronta = [&](const Lato& lato, const contract::Value& id, std::string_view nome) {
        const auto account = (*lato.dati)["QZ02_CLIFOR_CG44"].text();
        if (!cerca(nodi, id) || nodi["QZ02_ID_QZ01"].integer() != contract::Value(lato.IdDistinta).integer())
            messaggio += "Il nodo " + account + " non appartiene più alla " + std::string(nome) +
                         " visualizzata: è stato spostato o eliminato da un altro utente. "
                         "Spostamento annullato.\n";
        else if (!comeMostrato(nodi, *lato.dati))
            messaggio += "Il nodo " + account +
                         " è stato modificato da un altro utente: premere F5 per aggiornare. "
                         "Spostamento annullato.\n";
    };
    confronta(orig, idOrig, "distinta di origine");
    // A node that stands on both sides is named once.
    if (!idDest.isMissing() && !(idDest.integer() == idOrig.integer() && !messaggio.empty()))
        confronta(dest, idDest, "distinta di destinazione");
}

} // namespace qz

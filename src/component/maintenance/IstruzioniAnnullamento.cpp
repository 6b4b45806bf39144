#include "component/maintenance/IstruzioniAnnullamento.h"

#include "component/maintenance/IstruzioniBlocchi.h"

namespace qz {

using contract::Statement;

namespace {

void aggiungiValore(Statement& s, const contract::Value& valore) {
    if (valore.isMissing()) {
        s << "NULL";
    } else if (const auto* giorno = valore.as<contract::Date>()) {
        s << "CONVERT(DateTime,'";
        s.date(*giorno);
        s << "',103)";
    } else if (valore.isNumber()) {
        s.bare(valore);
    } else {
        s << "'";
        s.text(valore.text());
        s << "'";
    }
}

} // namespace

Statement istruzioneRipristina(std::span<const NodoId> nodi, const contract::RowValues& valori) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA SET ";
    for (std::size_t i = 0; i < valori.size(); ++i) {
        if (i > 0)
            s << ", ";
        s.identifier(valori[i].first);
        s << " = ";
        aggiungiValore(s, valori[i].second);
    }
    s << " WHERE QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneElimina(std::span<const NodoId> nodi) {
    Statement s;
    s << "DELETE FROM QZ02_DISTINTA WHERE QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneReinserisci(NodoId nodo, const contract::RowValues& valori) {
    Statement s;
    s << "INSERT INTO QZ02_DISTINTA (QZ02_ID";
    for (const auto& valore : valori) {
        s << ", ";
        s.identifier(valore.first);
    }
    s << ") VALUES (";
    s.number(nodo.numero());
    for (const auto& valore : valori) {
        s << ", ";
        aggiungiValore(s, valore.second);
    }
    return s << ")";
}

Statement istruzioneIdScelti(bool consentiti) {
    Statement s;
    s << "SET IDENTITY_INSERT QZ02_DISTINTA ";
    return consentiti ? s << "ON" : s << "OFF";
}

} // namespace qz

#include "component/interaction/DescrizioneSpostamento.h"

#include <algorithm>
#include <optional>

namespace qz {

namespace {

std::string nodi(std::size_t numero) {
    return std::to_string(numero) + (numero == 1 ? " nodo" : " nodi");
}

std::string giorni(contract::Date fine) {
    return "legami attuali fino al " + fine.text() + ", nuovi dal " + fine.plusDays(1).text();
}

std::optional<std::int64_t> fuoco(const Lato& lato) {
    const auto nodo = lato.albero->focused();
    return nodo ? std::optional(lato.albero->key(nodo)) : std::nullopt;
}

/// The node that stands for the moved one in what is loaded; none where it is not there.
contract::Node trova(const Lato& lato, const NodoSpostato& cercato) {
    const auto& albero = *lato.albero;
    if (!cercato.inizio)
        return albero.byKey(cercato.id.numero());
    const auto& righe = lato.dati->rows();
    const auto campo = [&](contract::Node nodo, std::string_view nome) {
        return righe.column(lato.dati->FieldIndex(nome)).value(albero.row(nodo));
    };
    const auto padre = albero.byKey(cercato.sotto.numero());
    if (!padre)
        return {};
    const int livello = albero.level(padre) + 1;
    for (auto nodo = albero.next(padre); nodo && albero.level(nodo) >= livello; nodo = albero.next(nodo))
        if (albero.level(nodo) == livello && campo(nodo, "QZ02_DATAINIZIOVAL").date() == cercato.inizio &&
            campo(nodo, "QZ02_CLIFOR_CG44").integer() == cercato.account.value_or(CodiceAccount(0)).numero())
            return nodo;
    return {};
}

} // namespace

std::string nomeNodo(const Lato& lato) {
    return (*lato.dati)["QZ02_CLIFOR_CG44"].text() + " " + (*lato.dati)["RagioneSociale"].text();
}

std::string descrizioneSpostamento(const StatoForm& stato) {
    const auto& orig = stato.origine;
    const auto& dest = stato.destinazione;
    if (orig.senzaRecord() || !orig.albero->focused())
        return "Scegliere un nodo nella distinta di origine.";
    if (dest.senzaRecord())
        return "Scegliere un nodo nella distinta di destinazione.";
    if (orig.TipoCF != dest.TipoCF)
        return "Le due distinte sono di tipologia diversa: non si può spostare.";
    return "Sposta: " + nomeNodo(orig) + " (" + nodi(orig.albero->descendants(orig.albero->focused()) + 1) +
           ")  →  sotto " + nomeNodo(dest);
}

std::string dettaglioSpostamento(const StatoForm& stato, bool validita) {
    auto testo = descrizioneSpostamento(stato);
    if (!validita)
        return testo;
    const auto fine = contract::Date::parse(stato.DataFineLegame);
    if (fine && *fine < contract::Date::of(9999, 12, 31)) // no day follows that one
        testo += '\n' + giorni(*fine);
    return testo;
}

std::string descrizioneEsito(const Piano& piano, const Richiesta& richiesta, std::string_view sotto) {
    const auto quanti = [&](Esito esito) {
        return static_cast<std::size_t>(std::count_if(piano.righe.begin(), piano.righe.end(),
                                                      [&](const RigaPiano& riga) { return riga.esito == esito; }));
    };
    const auto spostati = quanti(richiesta.validita ? Esito::siCopia : Esito::siSposta);
    auto testo = (spostati == 1 ? "Spostato " : "Spostati ") + nodi(spostati) + " sotto " + std::string(sotto);
    if (richiesta.validita)
        testo += ": " + giorni(richiesta.validita->fine);
    if (const auto restano = quanti(Esito::resta); restano > 0)
        testo += "; " + nodi(restano) + (restano == 1 ? " resta dov'era" : " restano dov'erano");
    return testo;
}

void annunciaEsito(StatoForm& stato, std::string_view testo) {
    stato.esito = {std::string(testo), fuoco(stato.origine), fuoco(stato.destinazione)};
    if (const auto barra = stato.ospite ? stato.ospite->StatusBar() : nullptr)
        barra->setText(testo);
}

bool esitoInVista(const StatoForm& stato) {
    return !stato.esito.testo.empty() && stato.esito.fuocoOrigine == fuoco(stato.origine) &&
           stato.esito.fuocoDestinazione == fuoco(stato.destinazione);
}

std::string mostraNodoSpostato(StatoForm& stato) {
    auto& dest = stato.destinazione;
    if (!stato.nodoSpostato)
        return "Nessun nodo è stato ancora spostato.";
    const auto nodo = dest.vuoto() ? contract::Node{} : trova(dest, *stato.nodoSpostato);
    if (!nodo)
        return "Il nodo spostato non è nella distinta di destinazione visualizzata.";
    dest.albero->setFocused(nodo);
    dest.albero->makeVisible(nodo);
    dest.albero->setFocus();
    const auto testo = [&](contract::Node quale) {
        return dest.albero->value(quale, dest.descrizione.colonnaCodice).text() + " " +
               dest.albero->value(quale, "RagioneSociale").text();
    };
    const auto padre = dest.albero->parent(nodo);
    return "Nodo spostato: " + testo(nodo) + (padre ? ", sotto " + testo(padre) : std::string());
}

} // namespace qz

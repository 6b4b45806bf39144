#include "component/maintenance/Controlli.h"

#include "component/shared/MODQZ_DISTINTA.h"

#include <unordered_set>

namespace qz {

namespace {

constexpr std::string_view legameInUnPadre = ": legame presente in un nodo padre nella struttura.\n";

/// Same account; a missing one equals nothing, not even another missing one.
bool stessoAccount(std::optional<CodiceAccount> a, std::optional<CodiceAccount> b) {
    return a && a == b;
}

std::string etichetta(TipoCF tipo, std::optional<CodiceAccount> account) {
    return (tipo.numero() == 0 ? "Cliente " : "Fornitore ") +
           (account ? std::to_string(account->numero()) : std::string());
}

} // namespace

std::int64_t ContaNodiDitta(Letture& letture, const AmbitoSpostamento& ambito) {
    // Counted on the origin, although the walk that it bounds runs in the destination.
    return letture.righe(ambito.ditta, ambito.da) + 1;
}

void AccodaPadri(std::span<const std::optional<CodiceAccount>> padri,
                 CodaLimitata<std::optional<CodiceAccount>>& coda) {
    for (const auto& padre : padri)
        coda.accoda(padre);
}

Motivo ControllaRicorsione(Letture& letture, const AmbitoSpostamento& ambito, std::optional<CodiceAccount> a,
                           std::optional<CodiceAccount> b) {
    if (stessoAccount(a, b))
        return etichetta(ambito.tipoDa, a) + " coincide con la destinazione. Spostamento annullato.\n";
    const auto limite = ContaNodiDitta(letture, ambito);
    CodaLimitata<std::optional<CodiceAccount>> coda(limite);
    auto corrente = b;
    while (coda.testa <= coda.coda()) {
        if (coda.testa >= limite)
            return std::nullopt;
        // A root link among an account's links yields a missing account, which has no links of its own.
        if (corrente) {
            const auto padri = letture.padri({ambito.ditta, ambito.tipoA, *corrente}, ambito.a);
            if (!padri.empty()) {
                // Only the first row is compared; the others are looked at when their turn comes.
                if (stessoAccount(padri.front(), a))
                    return etichetta(ambito.tipoDa, a) + std::string(legameInUnPadre);
                if (padri.front())
                    AccodaPadri(padri, coda);
            }
        }
        ++coda.testa;
        if (const auto* prossimo = coda.inTesta())
            corrente = *prossimo;
    }
    return std::nullopt;
}

Motivo ControllaDiscendenza(Letture& letture, const AmbitoSpostamento& ambito, const NodoLetto& nodo,
                            NodoId destinazione) {
    std::unordered_set<NodoId> visti;
    for (NodoId corrente = destinazione; visti.insert(corrente).second;) {
        if (corrente == nodo.id)
            return etichetta(ambito.tipoDa, nodo.account) + std::string(legameInUnPadre);
        const auto riga = letture.nodo(ambito.ditta, corrente);
        if (!riga || !riga->legame.padre)
            break;
        corrente = *riga->legame.padre;
    }
    return std::nullopt;
}

std::optional<PadreDecodificato> DecodificaPadre(Letture& letture, NodoId nodo, std::optional<contract::Date> inizio) {
    return letture.sostituto(nodo, inizio);
}

Motivo ControllaLegami(Letture& letture, const LegameDaControllare& legame) {
    const auto padre = letture.nodo(legame.dittaDelPadre, legame.padre.value_or(NodoId(0)));
    const auto sovrapposto =
        letture.sovrapposto({legame.ditta, legame.tipo, legame.account}, {legame.inizio, legame.fine}, legame.nodo);
    const auto nome = etichetta(legame.tipoOrigine, legame.account);
    if (sovrapposto && sovrapposto->sottoUnPadre)
        return nome + " già legato alla distinta " + sovrapposto->distinta + ": Nodo padre " +
               std::string(senzaBlanks(sovrapposto->accountPadre)) + " - " + sovrapposto->nomePadre +
               " nel periodo dal " + sovrapposto->inizio + " al " + sovrapposto->fine + "\n";
    if (padre && stessoAccount(padre->account, legame.account))
        return nome + " uguale al nodo padre, non è possibile salvare la struttura.\n";
    if (!legame.nodo)
        return std::nullopt;
    return PremioDefinitivo(letture, legame.dittaDelPadre, *legame.nodo, true, legame.fine);
}

Motivo PremioDefinitivo(Letture& letture, std::int64_t ditta, NodoId nodo, bool dataFine, std::string_view data) {
    if (!letture.premioDefinitivo(ditta, nodo, dataFine ? std::optional(data) : std::nullopt))
        return std::nullopt;
    return std::string(dataFine
                           ? std::string_view("La data fine è inferiore alla data scadenza di un premio definitivo")
                           : dataInizioBloccata);
}

} // namespace qz

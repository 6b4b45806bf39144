#include "data/TipiDistinta.h"

#include "data/CaricaDistinta.h"
#include "data/IstruzioniDistinta.h"
#include "form/shared/BloccoRidisegno.h"
#include "form/shared/MODQZ_DISTINTA.h"

#include <string>

namespace qz {

namespace {

// Both are 24 characters long, so that the names that follow stand one below the other.
constexpr std::string_view prefissoClienti = "DISTINTA CLIENTI        ";
constexpr std::string_view prefissoFornitori = "DISTINTA FORNITORI      ";
static_assert(prefissoClienti.size() == 24 && prefissoFornitori.size() == 24);

/// Position, counted from 1, of the entry selected after filling.
constexpr std::size_t posizioneIniziale = 2;

bool gruppo(const contract::TypeEntry& voce) {
    return voce.key.starts_with('P');
}

std::int32_t tipoDelGruppo(std::string_view chiave) {
    return static_cast<std::int32_t>(contract::Value(chiave.substr(1)).integer().value_or(0));
}

contract::TypeEntry scelta(const Lato& lato) {
    const auto voce = lato.tipi->selected();
    if (!voce)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Nessuna distinta selezionata.");
    return *voce;
}

/// Clears a list with the form locked against redrawing.
void svuota(StatoForm& stato, contract::TypeList& lista) {
    if (lista.count() == 0)
        return;
    const BloccoRidisegno blocco(*stato.form);
    lista.clear();
}

void aggiungi(StatoForm& stato, const contract::TypeEntry& voce) {
    stato.origine.tipi->add(voce);
    stato.destinazione.tipi->add(voce);
}

void aggiungiTipi(StatoForm& stato, int tipoCF, std::string_view chiaveGruppo, char lettera) {
    contract::Recordset tipi;
    tipi.Open(istruzioneTipi(stato.ditta(), tipoCF), stato.database());
    for (; !tipi.Eof(); tipi.MoveNext())
        aggiungi(stato, {.key = lettera + tipi["QZ01_ID"].text(),
                         .text = tipi["QZ01_CODICE"].text() + "-" + tipi["QZ01_DESCR"].text(),
                         .parent = std::string(chiaveGruppo),
                         .image = "schema",
                         .selectedImage = "open"});
    tipi.Close();
}

void scriviDidascalia(Lato& lato, std::string_view prefisso, const contract::TypeEntry& voce) {
    lato.didascaliaDistinta->setCaption(std::string(prefisso) + TestoDaValore(voce.text));
}

/// Deliberately not symmetrical: a supplier type chosen on the origin side captions the destination.
void didascalieDaOrigine(StatoForm& stato) {
    const auto voce = scelta(stato.origine);
    if (voce.key.starts_with('C'))
        scriviDidascalia(stato.origine, prefissoClienti, voce);
    else if (voce.key.starts_with('F'))
        scriviDidascalia(stato.destinazione, prefissoFornitori, scelta(stato.destinazione));
}

void didascaliaDaDestinazione(StatoForm& stato) {
    const auto voce = scelta(stato.destinazione);
    if (voce.key.starts_with('C'))
        scriviDidascalia(stato.destinazione, prefissoClienti, voce);
    else if (voce.key.starts_with('F'))
        scriviDidascalia(stato.destinazione, prefissoFornitori, voce);
}

} // namespace

void InizializzaDistinte(StatoForm& stato) {
    stato.procedura("Inizializza Distinte", [&](auto& passo) {
        passo([&] { svuota(stato, *stato.origine.tipi); });
        passo([&] { svuota(stato, *stato.destinazione.tipi); });
        passo([&] { aggiungi(stato, {"P0", "Clienti", "", "close", "close"}); });
        passo([&] { aggiungiTipi(stato, 0, "P0", 'C'); });
        passo([&] { aggiungi(stato, {"P1", "Fornitori", "", "close", "close"}); });
        passo([&] { aggiungiTipi(stato, 1, "P1", 'F'); });
        passo([&] {
            stato.origine.tipi->refresh();
            stato.destinazione.tipi->refresh();
        });
        passo([&] {
            stato.origine.tipi->select(posizioneIniziale);
            stato.destinazione.tipi->select(posizioneIniziale);
        });
        contract::TypeEntry voce;
        passo([&] { voce = scelta(stato.origine); });
        if (voce.key.empty() || gruppo(voce))
            return;
        passo([&] {
            stato.origine.TipoCF = tipoDelGruppo(voce.parent);
            stato.destinazione.TipoCF = stato.origine.TipoCF;
        });
        passo([&] { CaricaDistinta(stato, stato.origine, voce.key.substr(1)); });
        passo([&] { CaricaDistinta(stato, stato.destinazione, scelta(stato.destinazione).key.substr(1)); });
        passo([&] { didascalieDaOrigine(stato); });
        stato.selezioneNascosta = false;
    });
}

void TipoScelto(StatoForm& stato, Lato& lato) {
    stato.procedura(lato.descrizione.nomeClick, [&](auto& passo) {
        contract::TypeEntry voce;
        passo([&] { voce = scelta(lato); });
        if (voce.key.empty())
            return;
        if (gruppo(voce)) {
            passo([&] { lato.TipoCF = tipoDelGruppo(voce.key); });
        } else {
            passo([&] { lato.TipoCF = tipoDelGruppo(voce.parent); });
            passo([&] { CaricaDistinta(stato, lato, voce.key.substr(1)); });
        }
        passo([&] {
            if (lato.descrizione.destinazione)
                didascaliaDaDestinazione(stato);
            else
                didascalieDaOrigine(stato);
        });
    });
}

} // namespace qz

#include "component/data/TipiDistinta.h"

#include "component/data/CaricaDistinta.h"
#include "component/data/IstruzioniDistinta.h"
#include "component/shared/BloccoRidisegno.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <string>
#include <utility>

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
void svuota(StatoForm& stato, FormBase::Passo& passo, contract::TypeList& lista) {
    if (lista.count() == 0)
        return;
    BloccoRidisegno blocco(*stato.form);
    passo([&] { blocco.blocca(); });
    passo([&] { lista.clear(); });
    passo([&] { blocco.sblocca(); });
}

void aggiungi(StatoForm& stato, FormBase::Passo& passo, const contract::TypeEntry& voce) {
    passo([&] { stato.origine.tipi->add(voce); });
    passo([&] { stato.destinazione.tipi->add(voce); });
}

contract::TypeEntry voceDelTipo(const contract::Recordset& tipi, std::string_view chiaveGruppo, char lettera) {
    return {.key = lettera + tipi["QZ01_ID"].text(),
            .text = tipi["QZ01_CODICE"].text() + "-" + tipi["QZ01_DESCR"].text(),
            .parent = std::string(chiaveGruppo),
            .image = "schema",
            .selectedImage = "open"};
}

void aggiungiTipi(StatoForm& stato, FormBase::Passo& passo, int tipoCF, std::string_view chiaveGruppo, char lettera) {
    contract::Recordset tipi;
    passo([&] { tipi.Open(istruzioneTipi(stato.ditta(), tipoCF), stato.database()); });
    for (; !tipi.Eof(); tipi.MoveNext()) {
        passo([&] { stato.origine.tipi->add(voceDelTipo(tipi, chiaveGruppo, lettera)); });
        passo([&] { stato.destinazione.tipi->add(voceDelTipo(tipi, chiaveGruppo, lettera)); });
    }
    tipi.Close();
}

void scriviDidascalia(FormBase::Passo& passo, Lato& lato, std::string_view prefisso, const contract::TypeEntry& voce) {
    passo([&] { lato.didascaliaDistinta->setCaption(std::string(prefisso) + TestoDaValore(voce.text)); });
}

/// Deliberately not symmetrical: a supplier type chosen on the origin side captions the destination.
void didascalieDaOrigine(StatoForm& stato, FormBase::Passo& passo, const contract::TypeEntry& voce) {
    if (voce.key.starts_with('C')) {
        scriviDidascalia(passo, stato.origine, prefissoClienti, voce);
    } else if (voce.key.starts_with('F')) {
        contract::TypeEntry altra;
        passo([&] { altra = scelta(stato.destinazione); });
        if (!altra.key.empty())
            scriviDidascalia(passo, stato.destinazione, prefissoFornitori, altra);
    }
}

void didascaliaDaDestinazione(StatoForm& stato, FormBase::Passo& passo, const contract::TypeEntry& voce) {
    if (voce.key.starts_with('C'))
        scriviDidascalia(passo, stato.destinazione, prefissoClienti, voce);
    else if (voce.key.starts_with('F'))
        scriviDidascalia(passo, stato.destinazione, prefissoFornitori, voce);
}

/// Given up, the list stands again on the distinta that is shown; where none is, it stays on the one chosen.
void caricaScelta(StatoForm& stato, Lato& lato, const contract::TypeEntry& voce, std::int32_t tipoPrima) {
    try {
        CaricaDistintaAnnullabile(stato, lato, voce.key.substr(1));
    } catch (const contract::Cancelled&) {
        lato.TipoCF = tipoPrima;
        for (std::size_t posizione = 1; posizione <= lato.tipi->count(); ++posizione) {
            const auto altra = lato.tipi->entry(posizione);
            if (!gruppo(altra) && altra.key.substr(1) == lato.IdDistinta)
                lato.tipi->select(posizione);
        }
        throw;
    }
}

} // namespace

void InizializzaDistinte(StatoForm& stato) {
    stato.procedura("Inizializza Distinte", [&](auto& passo) {
        svuota(stato, passo, *stato.origine.tipi);
        svuota(stato, passo, *stato.destinazione.tipi);
        aggiungi(stato, passo, {"P0", "Clienti", "", "close", "close"});
        aggiungiTipi(stato, passo, 0, "P0", 'C');
        aggiungi(stato, passo, {"P1", "Fornitori", "", "close", "close"});
        aggiungiTipi(stato, passo, 1, "P1", 'F');
        passo([&] { stato.origine.tipi->refresh(); });
        passo([&] { stato.destinazione.tipi->refresh(); });
        passo([&] { stato.origine.tipi->select(posizioneIniziale); });
        passo([&] { stato.destinazione.tipi->select(posizioneIniziale); });
        contract::TypeEntry voce;
        passo([&] { voce = scelta(stato.origine); });
        if (voce.key.empty() || gruppo(voce))
            return;
        stato.origine.TipoCF = tipoDelGruppo(voce.parent);
        stato.destinazione.TipoCF = stato.origine.TipoCF;
        passo([&] { CaricaDistinta(stato, stato.origine, voce.key.substr(1)); });
        passo([&] { CaricaDistinta(stato, stato.destinazione, scelta(stato.destinazione).key.substr(1)); });
        didascalieDaOrigine(stato, passo, voce);
        stato.selezioneNascosta = false;
    });
}

void TipoScelto(StatoForm& stato, Lato& lato) {
    stato.procedura(lato.descrizione.nomeClick, [&](auto& passo) {
        contract::TypeEntry voce;
        passo([&] { voce = scelta(lato); });
        if (voce.key.empty())
            return;
        const auto tipoPrima = std::exchange(lato.TipoCF, tipoDelGruppo(gruppo(voce) ? voce.key : voce.parent));
        if (!gruppo(voce))
            passo([&] { caricaScelta(stato, lato, voce, tipoPrima); });
        if (lato.descrizione.destinazione)
            didascaliaDaDestinazione(stato, passo, voce);
        else
            didascalieDaOrigine(stato, passo, voce);
    });
}

} // namespace qz

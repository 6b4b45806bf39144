#include "component/maintenance/VociElenco.h"

#include "component/maintenance/Anteprima.h"
#include "component/maintenance/Blocchi.h"
#include "component/maintenance/IstruzioniElenco.h"
#include "component/maintenance/LettureSingole.h"
#include "component/shared/FormBase.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <algorithm>

namespace qz {

namespace {

/// Why a line of a list names no move.
struct VoceRifiutata {
    std::string motivo;
};

std::vector<NodoTrovato> leggiTrovati(const contract::Statement& istruzione, contract::Connection& database) {
    contract::Recordset righe;
    righe.Open(istruzione, database);
    std::vector<NodoTrovato> trovati;
    for (; !righe.Eof(); righe.MoveNext())
        trovati.push_back({nodoLetto(righe), FormBase::ValoreODefault(righe["QZ02_GUID"], contract::Value()).text()});
    return trovati;
}

bool sovrapposti(const Legame& a, const Legame& b) {
    const bool dopo = a.inizio && b.fine && *a.inizio > *b.fine;
    const bool prima = a.fine && b.inizio && *a.fine < *b.inizio;
    return !dopo && !prima;
}

bool vale(const Legame& legame, contract::Date giorno) {
    return (!legame.inizio || *legame.inizio <= giorno) && (!legame.fine || *legame.fine >= giorno);
}

bool stessoCodice(std::string_view uno, std::string_view altro) {
    const auto minuscola = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(uno.begin(), uno.end(), altro.begin(), altro.end(),
                      [&](char a, char b) { return minuscola(a) == minuscola(b); });
}

} // namespace

std::vector<NodoTrovato> IndiceSulDatabase::nodi(const Soggetto& soggetto, DistintaId distinta) {
    return leggiTrovati(istruzioneNodiDiAccount(soggetto, distinta), database_);
}

std::optional<NodoTrovato> IndiceSulDatabase::nodo(std::int64_t ditta, NodoId id) {
    auto trovati = leggiTrovati(istruzioneNodoConStato(ditta, id), database_);
    return trovati.empty() ? std::nullopt : std::optional(std::move(trovati.front()));
}

std::vector<NodoTrovato> IndiceSupposto::nodi(const Soggetto& soggetto, DistintaId distinta) {
    std::vector<NodoTrovato> trovati;
    for (auto& nodo : blocchi_.nodiDi(soggetto, distinta))
        trovati.push_back({std::move(nodo), {}});
    return trovati;
}

std::optional<NodoTrovato> IndiceSupposto::nodo(std::int64_t ditta, NodoId id) {
    auto nodo = blocchi_.nodo(ditta, id);
    return nodo ? std::optional(NodoTrovato{std::move(*nodo), {}}) : std::nullopt;
}

std::vector<TipoDistinta> distinteDi(contract::Connection& database, std::int64_t ditta) {
    contract::Recordset righe;
    righe.Open(istruzioneDistinteDi(ditta), database);
    std::vector<TipoDistinta> distinte;
    for (; !righe.Eof(); righe.MoveNext())
        distinte.push_back({obbligatorio<DistintaId>(righe, "QZ01_ID"),
                            std::string(senzaBlanks(righe["QZ01_CODICE"].text())),
                            facoltativo<TipoCF>(righe, "QZ01_INDTIPOSOGG").value_or(TipoCF(0))});
    return distinte;
}

const TipoDistinta& LettoreVoci::distinta(DistintaId id) const {
    for (const auto& distinta : distinte_)
        if (distinta.id == id)
            return distinta;
    throw VoceRifiutata{"La distinta " + std::to_string(id.numero()) + " non è dell'azienda di lavoro."};
}

const TipoDistinta& LettoreVoci::distinta(const std::string& codice, std::optional<DistintaId> altrimenti,
                                          std::int64_t account, Indice& indice) const {
    if (!codice.empty()) {
        for (const auto& distinta : distinte_)
            if (stessoCodice(distinta.codice, codice))
                return distinta;
        throw VoceRifiutata{"La distinta «" + codice + "» non c'è nell'azienda di lavoro."};
    }
    if (altrimenti)
        return distinta(*altrimenti);
    for (const auto& distinta : distinte_)
        if (!indice.nodi({ambito_.ditta, distinta.tipo, CodiceAccount(account)}, distinta.id).empty())
            return distinta;
    throw VoceRifiutata{"Il conto " + std::to_string(account) + " non è in nessuna distinta."};
}

NodoTrovato LettoreVoci::trova(const TipoDistinta& distinta, std::int64_t account, contract::Date giorno,
                               Indice& indice) const {
    auto trovati = indice.nodi({ambito_.ditta, distinta.tipo, CodiceAccount(account)}, distinta.id);
    if (trovati.empty())
        throw VoceRifiutata{"Il conto " + std::to_string(account) + " non è nella distinta " + distinta.codice + "."};
    for (std::size_t i = 0; i < trovati.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (sovrapposti(trovati[i].nodo.legame, trovati[j].nodo.legame))
                throw VoceRifiutata{"Il conto " + std::to_string(account) + " è ambiguo: nella distinta " +
                                    distinta.codice + " ha più legami in periodi sovrapposti."};
    // The link of that day; without one the last link is meant.
    const auto scelto = std::find_if(trovati.begin(), trovati.end(),
                                     [&](const NodoTrovato& trovato) { return vale(trovato.nodo.legame, giorno); });
    if (scelto != trovati.end())
        return *scelto;
    return *std::max_element(trovati.begin(), trovati.end(), [](const NodoTrovato& a, const NodoTrovato& b) {
        return a.nodo.legame.inizio < b.nodo.legame.inizio;
    });
}

NodoTrovato LettoreVoci::ritrova(const NodoScelto& scelto, std::string_view lato, Indice& indice) const {
    const auto account = scelto.account ? std::to_string(scelto.account->numero()) : std::string();
    const auto trovato = indice.nodo(ambito_.ditta, scelto.nodo);
    if (!trovato || trovato->nodo.legame.distinta != scelto.legame.distinta)
        throw VoceRifiutata{"Il nodo " + account + " non appartiene più alla " + std::string(lato) +
                            " visualizzata: è stato spostato o eliminato da un altro utente. Spostamento annullato."};
    if (trovato->nodo.legame != scelto.legame)
        throw VoceRifiutata{"Il nodo " + account +
                            " è stato modificato da un altro utente: premere F5 per aggiornare. Spostamento "
                            "annullato."};
    return *trovato;
}

Richiesta LettoreVoci::richiesta(const VoceElenco& voce, Indice& indice) const {
    const auto& scritta = voce.scritta;
    if (!scritta.wrong.empty())
        throw VoceRifiutata{scritta.wrong};
    const auto& modo = scritta.manner;
    if (modo.validity && !modo.end)
        throw VoceRifiutata{"Data fine legame non impostata!"};
    if (modo.validity && *modo.end >= contract::Date::of(9999, 12, 31))
        throw VoceRifiutata{"Dopo il " + modo.end->text() + " non viene nessun giorno."};
    const auto giorno = modo.validity ? *modo.end : ambito_.autore.oggi;
    const auto& da = voce.scelto ? distinta(*voce.scelto->legame.distinta)
                                 : distinta(scritta.originCode, ambito_.origine, scritta.account, indice);
    auto nodo =
        voce.scelto ? ritrova(*voce.scelto, "distinta di origine", indice) : trova(da, scritta.account, giorno, indice);
    const auto& a = voce.sotto ? distinta(*voce.sotto->legame.distinta)
                               : distinta(scritta.destinationCode, ambito_.destinazione, scritta.parentAccount, indice);
    if (da.tipo != a.tipo)
        throw VoceRifiutata{std::string(tipologieDiverse)};
    const auto sotto = voce.sotto
                           ? ritrova(*voce.sotto, "distinta di destinazione", indice)
                           : trova(a, scritta.parentAccount, modo.validity ? giorno.plusDays(1) : giorno, indice);
    const auto inizio = nodo.nodo.legame.inizio;
    if (modo.validity && inizio && *modo.end < *inizio)
        throw VoceRifiutata{std::string(finePrimaDellInizio)};
    Richiesta richiesta{
        std::move(nodo.nodo), sotto.nodo.id,    sotto.nodo.account, da.id, a.id, ambito_.ditta, da.tipo, a.tipo, {},
        ambito_.autore,       ambito_.parametri};
    if (modo.validity)
        richiesta.validita = Validita{*modo.end, modo.end->plusDays(1), std::move(nodo.guid)};
    return richiesta;
}

SpostamentoElenco LettoreVoci::leggi(const VoceElenco& voce, Indice& indice) const {
    SpostamentoElenco spostamento;
    spostamento.riga = voce.scritta.line;
    spostamento.account =
        voce.scelto ? voce.scelto->account
                    : (voce.scritta.account > 0 ? std::optional(CodiceAccount(voce.scritta.account)) : std::nullopt);
    try {
        spostamento.richiesta = richiesta(voce, indice);
    } catch (const VoceRifiutata& rifiuto) {
        spostamento.piano.messaggio = rifiuto.motivo;
    }
    return spostamento;
}

} // namespace qz

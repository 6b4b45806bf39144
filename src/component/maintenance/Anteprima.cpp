#include "component/maintenance/Anteprima.h"

#include "component/maintenance/Blocchi.h"
#include "component/maintenance/IstruzioniBlocchi.h"
#include "component/maintenance/Spostamento.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace qz {

namespace {

contract::MoveOutcome esito(Esito esito) {
    switch (esito) {
    case Esito::siSposta:
        return contract::MoveOutcome::moves;
    case Esito::siCopia:
        return contract::MoveOutcome::copies;
    case Esito::resta:
        return contract::MoveOutcome::stays;
    case Esito::rifiutato:
        break;
    }
    return contract::MoveOutcome::refused;
}

template <class Id> std::optional<std::int64_t> numero(const std::optional<Id>& id) {
    return id ? std::optional(id->numero()) : std::nullopt;
}

/// A link that is only supposed has no id yet.
std::optional<std::int64_t> numero(const std::optional<NodoId>& nodo) {
    return nodo && !FattiNoti::provvisorio(*nodo) ? std::optional(nodo->numero()) : std::nullopt;
}

/// Accounts and names of the nodes that a plan names.
class Nomi {
public:
    Nomi(const Piano& piano, const Richiesta& richiesta, contract::Connection& database)
        : database_(database), richiesta_(richiesta) {
        account_.reserve(piano.righe.size() + 2);
        for (const auto& riga : piano.righe)
            account_.insert_or_assign(riga.nodo, riga.account);
        account_.insert_or_assign(richiesta.sotto, richiesta.accountSotto);
        std::vector<NodoId> ignoti;
        for (const auto& riga : piano.righe)
            for (const auto& padre : {riga.prima.padre, riga.dopo.padre})
                if (padre && account_.try_emplace(*padre).second)
                    ignoti.push_back(*padre);
        leggiNodi(ignoti);
        std::unordered_set<CodiceAccount> visti;
        visti.reserve(account_.size());
        for (const auto& riga : piano.righe)
            if (riga.copia && riga.copia->accountPadre)
                visti.insert(*riga.copia->accountPadre);
        for (const auto& [nodo, account] : account_)
            if (account)
                visti.insert(*account);
        std::vector<CodiceAccount> tutti(visti.begin(), visti.end());
        std::sort(tutti.begin(), tutti.end());
        leggiNomi(tutti);
    }

    std::string_view nome(std::optional<CodiceAccount> account) const {
        const auto noto = account ? nomi_.find(*account) : nomi_.end();
        return noto == nomi_.end() ? std::string_view()
                                   : std::string_view(noto->second).substr(noto->second.find(' ') + 1);
    }
    /// Account and name, or the account alone where it is not registered.
    std::string conCodice(std::optional<CodiceAccount> account) const {
        const auto noto = account ? nomi_.find(*account) : nomi_.end();
        if (noto != nomi_.end())
            return std::string(senzaBlanksFinali(noto->second));
        return account ? std::to_string(account->numero()) : std::string();
    }
    std::string conCodice(std::optional<NodoId> nodo) const {
        const auto noto = nodo ? account_.find(*nodo) : account_.end();
        return noto == account_.end() ? std::string() : conCodice(noto->second);
    }

private:
    void leggiNodi(std::span<const NodoId> nodi) {
        for (; !nodi.empty(); nodi = nodi.subspan(prossimoBlocco(nodi.size()))) {
            contract::Recordset righe;
            righe.Open(istruzioneNodiNoti(nodi.first(prossimoBlocco(nodi.size()))), database_);
            for (; !righe.Eof(); righe.MoveNext())
                account_.insert_or_assign(obbligatorio<NodoId>(righe, "QZ02_ID"),
                                          facoltativo<CodiceAccount>(righe, "QZ02_CLIFOR_CG44"));
        }
    }
    void leggiNomi(std::span<const CodiceAccount> account) {
        nomi_.reserve(account.size());
        for (; !account.empty(); account = account.subspan(prossimoBlocco(account.size()))) {
            contract::Recordset righe;
            righe.Open(
                istruzioneNomi(richiesta_.ditta, richiesta_.tipoDa, account.first(prossimoBlocco(account.size()))),
                database_);
            for (; !righe.Eof(); righe.MoveNext())
                aggiungi(obbligatorio<CodiceAccount>(righe, "Anagrafica"), righe["RagSoc"].text());
        }
    }

    void aggiungi(CodiceAccount account, const std::string& nome) {
        nomi_.emplace(account, std::to_string(account.numero()) + " " + nome);
    }

    contract::Connection& database_;
    const Richiesta& richiesta_;
    std::unordered_map<NodoId, std::optional<CodiceAccount>> account_;
    std::unordered_map<CodiceAccount, std::string> nomi_; ///< behind the account's code and a blank
};

contract::MoveLink legame(const Legame& legame, const Nomi& nomi) {
    return {numero(legame.distinta), numero(legame.padre), legame.inizio, legame.fine, nomi.conCodice(legame.padre)};
}

void leggiCodici(std::map<std::int64_t, std::string>& codici, contract::Connection& database) {
    for (auto& [id, codice] : codici) {
        if (!codice.empty())
            continue;
        contract::Recordset riga;
        riga.Open(istruzioneCodiceDistinta(DistintaId(id)), database);
        codice = riga.Empty() ? std::to_string(id) : riga["QZ01_CODICE"].text();
    }
}

} // namespace

std::string_view senzaFineRiga(std::string_view testo) {
    return testo.ends_with('\n') ? testo.substr(0, testo.size() - 1) : testo;
}

void aggiungiAnteprima(contract::MovePlan& anteprima, const Piano& piano, const Richiesta& richiesta,
                       contract::Connection& database, std::optional<std::int64_t> riga) {
    const Nomi nomi(piano, richiesta, database);
    anteprima.rows.reserve(anteprima.rows.size() + piano.righe.size());
    for (const auto& nodo : piano.righe) {
        auto& nuova = anteprima.rows.emplace_back();
        nuova.line = riga;
        nuova.id = numero(std::optional(nodo.nodo));
        nuova.account = numero(nodo.account);
        nuova.name = nomi.nome(nodo.account);
        nuova.outcome = esito(nodo.esito);
        nuova.reason = nodo.motivo;
        nuova.before = legame(nodo.prima, nomi);
        nuova.after = legame(nodo.dopo, nomi);
        if (nodo.copia)
            nuova.copy = contract::MoveCopy{numero(nodo.copia->legame.distinta), numero(nodo.copia->accountPadre),
                                            nodo.copia->legame.inizio, nodo.copia->legame.fine,
                                            nomi.conCodice(nodo.copia->accountPadre)};
        for (const auto& distinta : {nuova.before.type, nuova.after.type})
            if (distinta)
                anteprima.types.try_emplace(*distinta);
    }
    anteprima.types.try_emplace(richiesta.a.numero());
    leggiCodici(anteprima.types, database);
    if (piano.rifiutato())
        aggiungiRifiuto(anteprima, riga ? senzaFineRiga(piano.messaggio) : std::string_view(piano.messaggio), riga);
}

void aggiungiRifiuto(contract::MovePlan& anteprima, std::string_view motivo, std::optional<std::int64_t> riga) {
    if (!anteprima.refused.empty())
        anteprima.refused += '\n';
    if (riga)
        anteprima.refused += "Riga " + std::to_string(*riga) + ": ";
    anteprima.refused += motivo;
}

Piano pianoRifiutato(const NodoLetto& nodo, std::string_view motivo) {
    Piano piano;
    piano.messaggio = motivo;
    piano.righe.push_back(
        {nodo.id, nodo.account, Esito::rifiutato, std::string(senzaFineRiga(motivo)), nodo.legame, nodo.legame, {}});
    return piano;
}

Piano supponi(contract::Connection& database, const Richiesta& richiesta) {
    Piano piano;
    Blocchi blocchi(database, richiesta);
    sposta(blocchi, blocchi, richiesta, piano);
    return piano;
}

} // namespace qz

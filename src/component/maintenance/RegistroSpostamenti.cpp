#include "component/maintenance/RegistroSpostamenti.h"

#include "component/maintenance/IstruzioniBlocchi.h"
#include "component/maintenance/OstacoliAnnullamento.h"
#include "component/maintenance/ValoriRegistro.h"
#include "contract/Recordset.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <utility>

namespace qz {

using contract::RowOutcome;
using contract::RowValues;
using contract::Value;

namespace {

constexpr std::string_view colonnaDistinta = "QZ02_ID_QZ01";
constexpr std::string_view colonnaPadre = "QZ02_IDPARENT_QZ02";
constexpr std::string_view colonnaFine = "QZ02_DATAFINEVAL";
constexpr std::string_view colonnaUtente = "QZ02_UTENTEVAR";
constexpr std::string_view colonnaGruppo = "QZ02_GRUPPOVAR";
constexpr std::string_view colonnaData = "QZ02_DATAVAR";
constexpr std::array<std::string_view, 3> colonneVariazione{colonnaUtente, colonnaGruppo, colonnaData};

template <class Cosa> Value numeroONullo(const std::optional<Identificativo<Cosa>>& id) {
    return id ? Value(id->numero()) : Value::null();
}

Value giornoONullo(std::optional<contract::Date> giorno) {
    return giorno ? Value(*giorno) : Value::null();
}

/// Texts and codes as a record would give them back.
Value comeRegistrato(std::string_view colonna, const Value& valore) {
    for (const auto& nota : colonneRegistrate())
        if (nota.name == colonna)
            return valoreRegistrato(nota, valore);
    return valore;
}

void prendi(RowValues& valori, std::string_view colonna, const Value& valore) {
    valori.emplace_back(colonna, comeRegistrato(colonna, valore));
}

/// Leaves out of two lists of the same columns what is the same in both.
void senzaUguali(RowValues& prima, RowValues& dopo) {
    RowValues primaDiversi;
    RowValues dopoDiversi;
    for (auto& valore : prima) {
        const auto* altro = valoreDi(dopo, valore.first);
        if (altro == nullptr || *altro == valore.second)
            continue;
        dopoDiversi.emplace_back(valore.first, *altro);
        primaDiversi.push_back(std::move(valore));
    }
    prima = std::move(primaDiversi);
    dopo = std::move(dopoDiversi);
}

/// A random identifier, by which the operation is found again.
std::string guidNuovo() {
    std::random_device caso;
    std::string guid;
    static constexpr std::string_view cifre = "0123456789ABCDEF";
    for (std::size_t i = 0; i < 32; ++i) {
        if (i == 8 || i == 12 || i == 16 || i == 20)
            guid += '-';
        guid += cifre[caso() % cifre.size()];
    }
    return guid;
}

} // namespace

RegistroSpostamenti::RegistroSpostamenti(contract::Connection& database, std::int64_t ditta, Autore autore,
                                         std::string ora)
    : database_(database), ditta_(ditta), autore_(std::move(autore)), ora_(std::move(ora)) {
}

void RegistroSpostamenti::primaDiScrivere(std::span<const NodoId> nodi) {
    perBlocchi(nodi, [&](std::span<const NodoId> blocco) {
        contract::Recordset righe;
        righe.Open(istruzioneVariazioni(blocco), database_);
        for (; !righe.Eof(); righe.MoveNext()) {
            RowValues valori;
            for (const auto colonna : colonneVariazione)
                prendi(valori, colonna, righe[colonna]);
            variazioni_.insert_or_assign(obbligatorio<NodoId>(righe, "QZ02_ID"), std::move(valori));
        }
    });
}

RowValues RegistroSpostamenti::variazioni(NodoId nodo) const {
    const auto lette = variazioni_.find(nodo);
    return lette == variazioni_.end() ? RowValues() : lette->second;
}

void RegistroSpostamenti::aggiungi(const Piano& piano, const Richiesta& richiesta) {
    // On a cycle the walk comes to the moved node too: it goes over as a descendant, and keeps its parent.
    const auto volte = std::count_if(piano.righe.begin(), piano.righe.end(),
                                     [&](const RigaPiano& riga) { return riga.nodo == richiesta.nodo.id; });
    bool inCima = volte == 1;
    for (const auto& riga : piano.righe) {
        switch (riga.esito) {
        case Esito::siSposta:
            aggiungiSpostato(riga, inCima);
            break;
        case Esito::siCopia:
            aggiungiCopiato(riga, richiesta);
            break;
        case Esito::resta:
            aggiungiResto(riga);
            break;
        case Esito::rifiutato:
            break;
        }
        inCima = false;
    }
}

void RegistroSpostamenti::aggiungiResto(const RigaPiano& riga) {
    Riga nuova;
    nuova.nodo = riga.nodo;
    nuova.account = riga.account;
    nuova.esito = RowOutcome::stays;
    nuova.motivo = riga.motivo;
    nuova.prima.emplace();
    nuova.dopo.emplace();
    righe_.push_back(std::move(nuova));
}

void RegistroSpostamenti::aggiungiSpostato(const RigaPiano& riga, bool inCima) {
    RowValues prima;
    RowValues dopo;
    prendi(prima, colonnaDistinta, numeroONullo(riga.prima.distinta));
    prendi(dopo, colonnaDistinta, numeroONullo(riga.dopo.distinta));
    if (inCima) {
        prendi(prima, colonnaPadre, numeroONullo(riga.prima.padre));
        prendi(dopo, colonnaPadre, numeroONullo(riga.dopo.padre));
        aggiungiConVariazioni(riga.nodo, riga.account, RowOutcome::moves, std::move(prima), std::move(dopo));
        return;
    }
    aggiungi(riga.nodo, riga.account, RowOutcome::moves, prima, dopo);
}

void RegistroSpostamenti::aggiungiConVariazioni(NodoId nodo, std::optional<CodiceAccount> account, RowOutcome esito,
                                                RowValues prima, RowValues dopo) {
    for (auto& valore : variazioni(nodo))
        prima.push_back(std::move(valore));
    prendi(dopo, colonnaUtente, autore_.utente);
    prendi(dopo, colonnaGruppo, autore_.gruppo);
    prendi(dopo, colonnaData, autore_.oggi);
    aggiungi(nodo, account, esito, prima, dopo);
}

void RegistroSpostamenti::aggiungiCopiato(const RigaPiano& riga, const Richiesta& richiesta) {
    // A link that ends by then is left alone.
    if (riga.prima.fine && *riga.prima.fine > richiesta.validita->fine) {
        RowValues prima;
        RowValues dopo;
        prendi(prima, colonnaFine, giornoONullo(riga.prima.fine));
        prendi(dopo, colonnaFine, giornoONullo(riga.dopo.fine));
        for (auto& valore : variazioni(riga.nodo))
            prima.push_back(std::move(valore));
        prendi(dopo, colonnaUtente, autore_.utente);
        prendi(dopo, colonnaGruppo, autore_.gruppo);
        aggiungi(riga.nodo, riga.account, RowOutcome::copies, prima, dopo);
    }
    if (!riga.copia || riga.copia->guid.empty())
        return;
    Riga nuova;
    nuova.account = riga.account.value_or(CodiceAccount(0));
    nuova.esito = RowOutcome::opens;
    nuova.guid = comeRegistrato("QZ02_GUID", riga.copia->guid).text();
    nuova.ditta = riga.copia->ditta;
    nuova.tipo = riga.copia->tipo;
    righe_.push_back(std::move(nuova));
}

void RegistroSpostamenti::aggiungi(NodoId nodo, std::optional<CodiceAccount> account, RowOutcome esito,
                                   const std::optional<RowValues>& prima, const std::optional<RowValues>& dopo) {
    const auto nota = cambiate_.find(nodo);
    if (nota == cambiate_.end()) {
        Riga nuova;
        nuova.nodo = nodo;
        nuova.account = account;
        nuova.esito = esito;
        nuova.prima = prima;
        nuova.dopo = dopo;
        if (prima && dopo)
            senzaUguali(*nuova.prima, *nuova.dopo);
        if (prima && dopo && nuova.prima->empty())
            return;
        cambiate_.emplace(nodo, righe_.size());
        righe_.push_back(std::move(nuova));
        return;
    }
    // Again: what it held first stays, what it holds now is new.
    auto& riga = righe_[nota->second];
    if (!riga.prima || !riga.dopo || !prima || !dopo)
        return;
    for (const auto& valore : *prima)
        if (valoreDi(*riga.prima, valore.first) == nullptr) {
            riga.prima->push_back(valore);
            riga.dopo->push_back(valore);
        }
    for (const auto& [colonna, valore] : *dopo)
        for (auto& tenuto : *riga.dopo)
            if (tenuto.first == colonna)
                tenuto.second = valore;
    riga.esito = esito;
}

/// The new links as the database holds them, by their GUIDs.
void RegistroSpostamenti::cercaNuovi() {
    std::unordered_map<std::string, std::size_t> attesi;
    std::map<std::pair<std::int64_t, TipoCF>, std::vector<CodiceAccount>> account;
    for (std::size_t i = 0; i < righe_.size(); ++i) {
        if (righe_[i].guid.empty())
            continue;
        attesi.emplace(righe_[i].guid, i);
        account[{righe_[i].ditta, righe_[i].tipo}].push_back(*righe_[i].account);
    }
    for (auto& [chiave, codici] : account) {
        std::sort(codici.begin(), codici.end());
        codici.erase(std::unique(codici.begin(), codici.end()), codici.end());
        const auto& [ditta, tipo] = chiave;
        perBlocchi(std::span<const CodiceAccount>(codici),
                   [&, ditta = ditta, tipo = tipo](std::span<const CodiceAccount> blocco) {
                       contract::Recordset righe;
                       righe.Open(istruzioneLegamiInteri(ditta, tipo, blocco), database_);
                       for (; !righe.Eof(); righe.MoveNext()) {
                           const auto atteso = attesi.find(comeRegistrato("QZ02_GUID", righe["QZ02_GUID"]).text());
                           if (atteso == attesi.end())
                               continue;
                           auto& riga = righe_[atteso->second];
                           riga.nodo = obbligatorio<NodoId>(righe, "QZ02_ID");
                           riga.dopo = valoriDelRecord(righe, false);
                           riga.guid.clear();
                           attesi.erase(atteso);
                       }
                   });
    }
    if (!attesi.empty())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "I nuovi legami non si ritrovano: il registro degli spostamenti non si può "
                                     "scrivere. Spostamento annullato.");
}

bool RegistroSpostamenti::cambiata(const Riga& riga) const {
    return riga.esito != RowOutcome::stays;
}

/// What stands in the way already is no reason against taking the operation back.
std::unordered_map<NodoId, std::int64_t>
RegistroSpostamenti::ostacoliPresenti(const std::vector<const Riga*>& righe) const {
    std::vector<RigaDaRiprendere> daRiprendere;
    for (const auto* riga : righe) {
        if (!cambiata(*riga))
            continue;
        // Of a row that would go nobody asks what it holds.
        auto lasciati = !riga->prima && riga->dopo ? std::optional(RowValues()) : riga->dopo;
        daRiprendere.push_back({riga->nodo, riga->account, riga->esito, 0, std::move(lasciati), riga->prima});
    }
    return OstacoliAnnullamento(database_, ditta_, 0, daRiprendere).conta();
}

std::int64_t RegistroSpostamenti::scrivi(contract::OperationKind tipo, std::string_view descrizione,
                                         std::optional<std::int64_t> annulla) {
    cercaNuovi();
    std::unordered_map<NodoId, bool> inserite;
    for (const auto& riga : righe_)
        if (!riga.prima)
            inserite.emplace(riga.nodo, true);
    std::vector<const Riga*> righe;
    std::int64_t cambiate = 0;
    for (auto& riga : righe_) {
        // A link that the operation opened and changed again is told as it stands now, once.
        if (cambiata(riga) && riga.prima && riga.dopo) {
            if (inserite.contains(riga.nodo))
                continue;
            senzaUguali(*riga.prima, *riga.dopo);
            if (riga.prima->empty())
                continue;
        }
        cambiate += cambiata(riga) ? 1 : 0;
        righe.push_back(&riga);
    }
    const auto ostacoli = ostacoliPresenti(righe);

    const NuovaOperazione operazione{ditta_,   autore_, ora_,       tipo, std::string(descrizione),
                                     cambiate, annulla, guidNuovo()};
    database_.Execute(istruzioneInserisciOperazione(operazione));
    contract::Recordset id;
    id.Open(istruzioneIdOperazione(operazione.guid), database_);
    const auto numero = numeroObbligatorio(id, "QZ90_ID");

    std::vector<RigaDaRegistrare> blocco;
    for (std::size_t scritte = 0; scritte < righe.size(); scritte += blocco.size()) {
        blocco.clear();
        const auto quante = prossimoInserimento(righe.size() - scritte);
        for (std::size_t i = scritte; i < scritte + quante; ++i) {
            const auto& riga = *righe[i];
            const auto presenti = ostacoli.find(riga.nodo);
            blocco.push_back({riga.nodo, riga.account, riga.esito, riga.motivo,
                              cambiata(riga) && presenti != ostacoli.end() ? presenti->second : 0,
                              testoDeiValori(riga.prima), testoDeiValori(riga.dopo)});
        }
        database_.Execute(istruzioneInserisciRighe(numero, static_cast<std::int64_t>(scritte) + 1, blocco));
    }
    return numero;
}

} // namespace qz

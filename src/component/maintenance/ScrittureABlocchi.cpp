#include "component/maintenance/Blocchi.h"

#include "component/maintenance/IstruzioniSpostamento.h"
#include "contract/RuntimeError.h"

#include <algorithm>

namespace qz {

namespace {

void attese(std::int64_t righe, std::int64_t toccate) {
    if (righe != toccate)
        throw contract::RuntimeError(
            contract::RuntimeError::invalidCall,
            "I dati della distinta sono cambiati durante lo spostamento: " + std::to_string(toccate) +
                " righe modificate invece di " + std::to_string(righe) + ". Spostamento annullato.");
}

/// GUIDs are the same whatever their letters' case, with or without braces.
std::string normale(std::string_view guid) {
    std::string testo;
    for (const char c : guid)
        if (c != '{' && c != '}')
            testo += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return testo;
}

bool stessaForma(const NodoDaCopiare& a, const NodoDaCopiare& b) {
    for (std::size_t i = 0; i < std::tuple_size_v<Facoltativi>; ++i)
        if ((a.facoltativi && !(*a.facoltativi)[i].isMissing()) != (b.facoltativi && !(*b.facoltativi)[i].isMissing()))
            return false;
    return true;
}

} // namespace

void Blocchi::cambiaDistinta(NodoId nodo, DistintaId da, DistintaId a) {
    const auto* noto = conosciuto(nodo);
    if (noto == nullptr || noto->legame.distinta != da || da == a)
        return;
    if (!flusso_)
        contaPrima(noto->ditta, da, a);
    if (const auto nota = righe_.find(da); nota != righe_.end())
        --nota->second;
    if (const auto nota = noto->ditta ? righeDitta_.find({*noto->ditta, da}) : righeDitta_.end();
        nota != righeDitta_.end())
        --nota->second;
    if (flusso_) {
        righe_.erase(a);
        std::erase_if(righeDitta_, [&](const auto& conta) { return conta.first.second == a; });
    } else {
        ++righe_[a];
        if (noto->ditta)
            ++righeDitta_[{*noto->ditta, a}];
    }
    fatti_.cambiaDistinta(nodo, a, !flusso_);
    daSpostare_.push_back(nodo);
}

void Blocchi::sposta(NodoId nodo, NodoId sotto, DistintaId da, DistintaId a) {
    scrivi();
    // On a cycle the walk came to the moved node too, and it has gone over.
    const auto* noto = flusso_ ? fatti_.nodo(nodo) : conosciuto(nodo);
    const bool andato = noto != nullptr && noto->legame.distinta != da;
    if (!flusso_) {
        if (noto != nullptr && !andato) {
            conosciuto(sotto);
            cambiaDistinta(nodo, da, a);
            fatti_.sposta(nodo, sotto, a);
        }
        return;
    }
    annunciaScrittura({&nodo, 1});
    attese(andato ? 0 : 1, database_.Execute(istruzioneSpostaNodo(nodo, sotto, da, a, richiesta_->autore)));
}

void Blocchi::contaPrima(std::optional<std::int64_t> ditta, DistintaId da, DistintaId a) {
    for (const auto distinta : {da, a}) {
        righe(distinta);
        if (ditta)
            righe(*ditta, distinta);
    }
}

void Blocchi::chiudi(NodoId nodo, DistintaId distinta, contract::Date fine) {
    const auto* noto = conosciuto(nodo);
    if (noto == nullptr || noto->legame.distinta != distinta || !noto->legame.fine || *noto->legame.fine <= fine)
        return;
    const auto inizio = noto->legame.inizio;
    fatti_.chiudi(nodo, inizio && *inizio > fine ? *inizio : fine);
    daChiudere_.push_back(nodo);
}

std::string Blocchi::inserisci(const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view statoDi) {
    std::string guid;
    if (flusso_) {
        auto& flusso = flusso_();
        guid = flusso.GetNewGUID();
        riportaStato(flusso, statoDi, guid);
    } else {
        contaPrima(nodo.ditta, legame.distinta, legame.distinta);
    }
    const NodoId provvisorio(prossimoProvvisorio_++);
    fineNuovi_ = legame.fine;
    nuovo_ = NuovoLegame{legame.distinta, legame.stato, legame.inizio, fineNuovi_};
    const auto* padre = conosciuto(nodo.padre);
    const auto soggettoPadre = padre != nullptr ? soggettoDi(*padre) : std::nullopt;
    const bool padreRegistrato = soggettoPadre && fatti_.registrato(*soggettoPadre);
    const Soggetto soggetto{nodo.ditta, nodo.tipo, nodo.account};
    fatti_.aggiungi(soggetto,
                    {provvisorio,
                     {legame.distinta, nodo.padre, legame.inizio, contract::Date::parse(legame.fine)},
                     padreRegistrato ? padre->account : std::nullopt,
                     padreRegistrato ? soggettoPadre->ditta : 0,
                     padreRegistrato ? soggettoPadre->tipo : TipoCF(0),
                     padre != nullptr ? padre->legame.distinta : std::nullopt},
                    !flusso_ || legame.distinta == richiesta_->da);
    if (const auto nota = righe_.find(legame.distinta); nota != righe_.end())
        ++nota->second;
    if (const auto nota = righeDitta_.find({nodo.ditta, legame.distinta}); nota != righeDitta_.end())
        ++nota->second;
    daInserire_.push_back({{nodo, guid}, provvisorio});
    return guid;
}

void Blocchi::concludi() {
    scrivi();
}

void Blocchi::scrivi() {
    if (!flusso_)
        return;
    scriviDistinte();
    scriviChiusure();
    scriviNuovi();
}

void Blocchi::scriviDistinte() {
    for (std::span<const NodoId> nodi(daSpostare_); !nodi.empty();) {
        const auto quanti = prossimoBlocco(nodi.size());
        attese(static_cast<std::int64_t>(quanti),
               database_.Execute(istruzioneAggiornaDistinte(nodi.first(quanti), richiesta_->da, richiesta_->a)));
        nodi = nodi.subspan(quanti);
    }
    daSpostare_.clear();
}

void Blocchi::scriviChiusure() {
    std::sort(daChiudere_.begin(), daChiudere_.end());
    daChiudere_.erase(std::unique(daChiudere_.begin(), daChiudere_.end()), daChiudere_.end());
    for (std::span<const NodoId> nodi(daChiudere_); !nodi.empty();) {
        const auto quanti = prossimoBlocco(nodi.size());
        annunciaScrittura(nodi.first(quanti));
        attese(static_cast<std::int64_t>(quanti),
               database_.Execute(istruzioneChiudiLegami(nodi.first(quanti), richiesta_->da, richiesta_->validita->fine,
                                                        richiesta_->autore)));
        nodi = nodi.subspan(quanti);
    }
    daChiudere_.clear();
}

void Blocchi::scriviNuovi() {
    std::vector<RigaNuova> righe;
    for (std::size_t inizio = 0; inizio < daInserire_.size();) {
        righe.clear();
        auto fine = inizio;
        while (fine < daInserire_.size() && fine - inizio < righePerInserimento &&
               stessaForma(daInserire_[inizio].riga.nodo, daInserire_[fine].riga.nodo))
            ++fine;
        fine = inizio + prossimoInserimento(fine - inizio);
        for (auto i = inizio; i < fine; ++i)
            righe.push_back(daInserire_[i].riga);
        attese(static_cast<std::int64_t>(righe.size()),
               database_.Execute(istruzioneInserisciLegami(righe, *nuovo_, richiesta_->autore)));
        inizio = fine;
    }
    if (!daInserire_.empty())
        leggiIdNuovi();
    daInserire_.clear();
}

void Blocchi::leggiIdNuovi() {
    std::unordered_map<std::string, const Inserita*> attesi;
    std::map<std::pair<std::int64_t, TipoCF>, std::vector<CodiceAccount>> account;
    for (const auto& inserita : daInserire_) {
        attesi.emplace(normale(inserita.riga.guid), &inserita);
        const auto& nodo = inserita.riga.nodo;
        account[{nodo.ditta, nodo.tipo}].push_back(nodo.account);
    }
    std::int64_t trovati = 0;
    for (const auto& [chiave, codici] : account)
        for (std::span<const CodiceAccount> resto(codici); !resto.empty();) {
            const auto quanti = prossimoBlocco(resto.size());
            contract::Recordset righe;
            righe.Open(
                istruzioneIdNuovi(chiave.first, chiave.second, resto.first(quanti), nuovo_->distinta, nuovo_->inizio),
                database_);
            for (; !righe.Eof(); righe.MoveNext()) {
                const auto attesa = attesi.find(normale(righe["QZ02_GUID"].text()));
                if (attesa == attesi.end())
                    continue;
                const auto& nodo = attesa->second->riga.nodo;
                fatti_.rinumera({nodo.ditta, nodo.tipo, nodo.account}, attesa->second->provvisorio,
                                obbligatorio<NodoId>(righe, "QZ02_ID"));
                attesi.erase(attesa);
                ++trovati;
            }
            resto = resto.subspan(quanti);
        }
    attese(static_cast<std::int64_t>(daInserire_.size()), trovati);
}

} // namespace qz

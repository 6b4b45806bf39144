#include "component/maintenance/OstacoliAnnullamento.h"

#include "component/maintenance/IstruzioniBlocchi.h"
#include "component/maintenance/IstruzioniRegistro.h"
#include "component/maintenance/Letture.h"
#include "component/maintenance/ValoriRegistro.h"
#include "contract/Recordset.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace qz {

using contract::RowValues;
using contract::Value;

namespace {

std::string conto(std::optional<CodiceAccount> account) {
    return account ? "il conto " + std::to_string(account->numero()) : "un nodo senza conto";
}

std::string daA(const Legame& legame) {
    return "dal " + (legame.inizio ? legame.inizio->text() : std::string("?")) + " al " +
           (legame.fine ? legame.fine->text() : std::string("?"));
}

bool siSovrappongono(const Legame& a, const Legame& b) {
    return a.inizio && a.fine && b.inizio && b.fine && *a.inizio <= *b.fine && *b.inizio <= *a.fine;
}

std::string mostrato(const Value& valore) {
    return valore.isMissing() ? std::string("vuoto") : valore.text();
}

template <class Id> std::optional<Id> idDi(const Value& valore) {
    const auto numero = valore.integer();
    return numero ? std::optional(Id(*numero)) : std::nullopt;
}

} // namespace

OstacoliAnnullamento::OstacoliAnnullamento(contract::Connection& database, std::int64_t ditta, std::int64_t operazione,
                                           const std::vector<RigaDaRiprendere>& righe)
    : database_(database), ditta_(ditta), operazione_(operazione), righe_(righe) {
    for (std::size_t i = 0; i < righe_.size(); ++i)
        posizioni_.emplace(righe_[i].nodo, i);
}

std::vector<contract::Obstacle> OstacoliAnnullamento::trova() {
    leggiPresenti(true);
    cercaSeguenti();
    // What is not as it was left says enough; the rest would be about rows that do not exist.
    if (!fatti_.empty())
        return ostacoli();
    cercaAppesi();
    cercaPremi();
    cercaSovrapposti();
    cercaAnelli();
    std::unordered_map<std::size_t, std::int64_t> quanti;
    for (const auto& trovato : fatti_)
        ++quanti[trovato.riga];
    std::erase_if(fatti_, [&](const Fatto& trovato) { return quanti[trovato.riga] <= righe_[trovato.riga].ostacoli; });
    return ostacoli();
}

std::unordered_map<NodoId, std::int64_t> OstacoliAnnullamento::conta() {
    leggiPresenti(false);
    cercaPremi();
    cercaSovrapposti();
    cercaAnelli();
    std::unordered_map<NodoId, std::int64_t> quanti;
    for (const auto& trovato : fatti_)
        ++quanti[righe_[trovato.riga].nodo];
    return quanti;
}

void OstacoliAnnullamento::fatto(const RigaDaRiprendere& riga, std::string motivo) {
    fatti_.push_back({posizioni_.at(riga.nodo), std::move(motivo)});
}

std::vector<contract::Obstacle> OstacoliAnnullamento::ostacoli() const {
    std::vector<contract::Obstacle> ostacoli;
    std::set<std::pair<std::size_t, std::string_view>> detti;
    for (const auto& trovato : fatti_) {
        if (!detti.emplace(trovato.riga, trovato.motivo).second)
            continue;
        const auto& riga = righe_[trovato.riga];
        ostacoli.push_back(
            {riga.nodo.numero(), riga.account ? std::optional(riga.account->numero()) : std::nullopt, trovato.motivo});
    }
    return ostacoli;
}

bool OstacoliAnnullamento::cambiaLegame(const RigaDaRiprendere& riga) {
    if (!riga.tornano)
        return false;
    const auto cambia = [&](std::string_view colonna) { return valoreDi(*riga.tornano, colonna) != nullptr; };
    return !riga.lasciati || cambia("QZ02_IDPARENT_QZ02") || cambia("QZ02_DATAINIZIOVAL") || cambia("QZ02_DATAFINEVAL");
}

void OstacoliAnnullamento::perNodi(const std::function<bool(const RigaDaRiprendere&)>& quali,
                                   const std::function<void(std::span<const NodoId>)>& azione) const {
    std::vector<NodoId> nodi;
    for (const auto& riga : righe_)
        if (quali(riga))
            nodi.push_back(riga.nodo);
    perBlocchi(std::span<const NodoId>(nodi), azione);
}

OstacoliAnnullamento::Riga OstacoliAnnullamento::rigaDelRecord(const contract::Recordset& record) {
    Riga riga;
    applica(riga, valoriDelRecord(record, false));
    return riga;
}

void OstacoliAnnullamento::applica(Riga& riga, const RowValues& valori) {
    for (const auto& [colonna, valore] : valori) {
        if (colonna == "QZ02_ID_QZ01")
            riga.legame.distinta = idDi<DistintaId>(valore);
        else if (colonna == "QZ02_IDPARENT_QZ02")
            riga.legame.padre = idDi<NodoId>(valore);
        else if (colonna == "QZ02_DITTA_CG18")
            riga.ditta = valore.integer();
        else if (colonna == "QZ02_TIPOCF_CG44")
            riga.tipo = idDi<TipoCF>(valore);
        else if (colonna == "QZ02_CLIFOR_CG44")
            riga.account = idDi<CodiceAccount>(valore);
        else if (colonna == "QZ02_DATAINIZIOVAL")
            riga.legame.inizio = valore.date();
        else if (colonna == "QZ02_DATAFINEVAL")
            riga.legame.fine = valore.date();
    }
}

/// All of them are compared with what the operation left; else only those are read whose link changes.
void OstacoliAnnullamento::leggiPresenti(bool tutte) {
    const auto quali = [&](const RigaDaRiprendere& riga) { return tutte || cambiaLegame(riga); };
    perNodi(quali, [&](std::span<const NodoId> blocco) {
        contract::Recordset record;
        record.Open(istruzioneRighe(blocco), database_);
        for (; !record.Eof(); record.MoveNext()) {
            const auto nodo = obbligatorio<NodoId>(record, "QZ02_ID");
            ora_.insert_or_assign(nodo, rigaDelRecord(record));
            if (tutte)
                confrontaPresente(righe_[posizioni_.at(nodo)], record);
        }
    });
    for (const auto& riga : righe_) {
        if (!quali(riga))
            continue;
        const auto presente = ora_.find(riga.nodo);
        if (tutte && riga.lasciati && presente == ora_.end())
            fatto(riga, "Il legame non c'è più.");
        if (!riga.tornano)
            continue;
        Riga dopo = riga.lasciati && presente != ora_.end() ? presente->second : Riga();
        applica(dopo, *riga.tornano);
        poi_.insert_or_assign(riga.nodo, dopo);
    }
}

void OstacoliAnnullamento::confrontaPresente(const RigaDaRiprendere& riga, const contract::Recordset& record) {
    if (!riga.lasciati) {
        fatto(riga, "Il legame è stato aperto di nuovo.");
        return;
    }
    const bool intera = !riga.tornano;
    std::string diversi;
    for (const auto& colonna : colonneRegistrate()) {
        const auto* lasciato = valoreDi(*riga.lasciati, colonna.name);
        if (lasciato == nullptr && !intera)
            continue;
        const auto presente = valoreRegistrato(colonna, record[colonna.name]);
        const auto atteso = lasciato == nullptr ? Value::null() : valoreRegistrato(colonna, *lasciato);
        if (presente == atteso)
            continue;
        diversi += (diversi.empty() ? "" : ", ") + std::string(didascaliaColonna(colonna.name)) + " ora " +
                   mostrato(presente) + ", l'operazione aveva lasciato " + mostrato(atteso);
    }
    if (!diversi.empty())
        fatto(riga, "È stato cambiato in seguito: " + diversi + ".");
}

/// Later operations that were taken back again have left nothing behind.
void OstacoliAnnullamento::cercaSeguenti() {
    std::unordered_map<NodoId, std::set<std::int64_t>> seguenti;
    perNodi([](const RigaDaRiprendere&) { return true; },
            [&](std::span<const NodoId> blocco) {
                contract::Recordset record;
                record.Open(istruzioneOperazioniSeguenti(operazione_, blocco), database_);
                for (; !record.Eof(); record.MoveNext()) {
                    auto& operazioni = seguenti[obbligatorio<NodoId>(record, "QZ91_ID_QZ02")];
                    const auto annullata = numeroFacoltativo(record, "QZ90_ID_QZ90");
                    if (!annullata || operazioni.erase(*annullata) == 0)
                        operazioni.insert(numeroObbligatorio(record, "QZ91_ID_QZ90"));
                }
            });
    for (const auto& riga : righe_)
        if (const auto trovate = seguenti.find(riga.nodo); trovate != seguenti.end() && !trovate->second.empty())
            fatto(riga, "L'operazione " + std::to_string(*trovate->second.rbegin()) +
                            " lo ha cambiato in seguito: va annullata prima quella.");
}

void OstacoliAnnullamento::cercaAppesi() {
    perNodi([](const RigaDaRiprendere& riga) { return !riga.tornano; },
            [&](std::span<const NodoId> blocco) {
                contract::Recordset record;
                record.Open(istruzioneAppesi(blocco), database_);
                for (; !record.Eof(); record.MoveNext()) {
                    const auto figlio = obbligatorio<NodoId>(record, "QZ02_ID");
                    const auto letta = rigaDelRecord(record);
                    // One of the operation's own goes too, or elsewhere; what comes back there is looked at later.
                    const auto* dopo = poi(figlio);
                    if (appartiene(figlio) && (dopo == nullptr || dopo->legame.padre != letta.legame.padre))
                        continue;
                    fatto(righe_[posizioni_.at(*letta.legame.padre)], "Sotto il legame che andrebbe tolto c'è " +
                                                                          conto(letta.account) + ", " +
                                                                          daA(letta.legame) + ".");
                }
            });
}

void OstacoliAnnullamento::cercaPremi() {
    perNodi([](const RigaDaRiprendere& riga) { return riga.lasciati.has_value(); },
            [&](std::span<const NodoId> blocco) {
                contract::Recordset record;
                record.Open(istruzionePremiDefinitivi(ditta_, blocco), database_);
                for (; !record.Eof(); record.MoveNext())
                    fatto(righe_[posizioni_.at(obbligatorio<NodoId>(record, "QZ14_ID_QZ02"))],
                          "Sul legame c'è un premio definitivo.");
            });
}

void OstacoliAnnullamento::cercaSovrapposti() {
    std::map<std::pair<std::int64_t, TipoCF>, std::vector<CodiceAccount>> account;
    std::map<std::tuple<std::int64_t, TipoCF, CodiceAccount>, std::vector<const RigaDaRiprendere*>> righe;
    for (const auto& riga : righe_) {
        const auto dopo = poi_.find(riga.nodo);
        if (dopo == poi_.end() || !dopo->second.ditta || !dopo->second.tipo || !dopo->second.account)
            continue;
        const auto prima = ora_.find(riga.nodo);
        if (prima != ora_.end() && prima->second.legame.inizio == dopo->second.legame.inizio &&
            prima->second.legame.fine == dopo->second.legame.fine)
            continue;
        account[{*dopo->second.ditta, *dopo->second.tipo}].push_back(*dopo->second.account);
        righe[{*dopo->second.ditta, *dopo->second.tipo, *dopo->second.account}].push_back(&riga);
    }
    for (const auto& [chiave, codici] : account) {
        const auto& [ditta, tipo] = chiave;
        perBlocchi(std::span<const CodiceAccount>(codici),
                   [&, ditta = ditta, tipo = tipo](std::span<const CodiceAccount> blocco) {
                       contract::Recordset record;
                       record.Open(istruzioneLegamiInteri(ditta, tipo, blocco), database_);
                       for (; !record.Eof(); record.MoveNext()) {
                           const auto altro = obbligatorio<NodoId>(record, "QZ02_ID");
                           if (appartiene(altro)) // what comes back together stood together
                               continue;
                           const auto letta = rigaDelRecord(record);
                           for (const auto* riga : righe[{ditta, tipo, *letta.account}])
                               confrontaPeriodo(*riga, altro, letta);
                       }
                   });
    }
}

/// Only what does not overlap already: a root link, which hangs under no parent, counts for no check.
void OstacoliAnnullamento::confrontaPeriodo(const RigaDaRiprendere& riga, NodoId altro, const Riga& altra) {
    if (!altra.legame.padre || !siSovrappongono(poi_.at(riga.nodo).legame, altra.legame))
        return;
    if (const auto ora = ora_.find(riga.nodo); ora != ora_.end() && siSovrappongono(ora->second.legame, altra.legame))
        return;
    fatto(riga, "Tornerebbe a valere " + daA(poi_.at(riga.nodo).legame) + ", insieme al legame " +
                    std::to_string(altro.numero()) + " dello stesso conto, " + daA(altra.legame) + ".");
}

const OstacoliAnnullamento::Riga* OstacoliAnnullamento::poi(NodoId nodo) {
    const auto posizione = posizioni_.find(nodo);
    const auto* propria = posizione == posizioni_.end() ? nullptr : &righe_[posizione->second];
    if (propria != nullptr && !propria->tornano)
        return nullptr;
    if (const auto dopo = poi_.find(nodo); dopo != poi_.end())
        return &dopo->second;
    auto nota = altre_.find(nodo);
    if (nota == altre_.end()) {
        contract::Recordset record;
        record.Open(istruzioneRighe({&nodo, 1}), database_);
        nota = altre_.emplace(nodo, record.Empty() ? std::nullopt : std::optional(rigaDelRecord(record))).first;
        if (propria != nullptr && nota->second)
            applica(*nota->second, *propria->tornano);
    }
    return nota->second ? &*nota->second : nullptr;
}

void OstacoliAnnullamento::cercaAnelli() {
    for (const auto& riga : righe_) {
        const auto dopo = poi_.find(riga.nodo);
        if (dopo == poi_.end() || !dopo->second.legame.padre || *dopo->second.legame.padre == NodoId(0))
            continue;
        const auto prima = ora_.find(riga.nodo);
        if (prima == ora_.end() || prima->second.legame.padre != dopo->second.legame.padre)
            risali(riga);
    }
}

void OstacoliAnnullamento::risali(const RigaDaRiprendere& riga) {
    const auto padre = *poi_.at(riga.nodo).legame.padre;
    if (poi(padre) == nullptr) {
        fatto(riga, "Il nodo " + std::to_string(padre.numero()) + ", sotto cui tornerebbe, non c'è più.");
        return;
    }
    std::unordered_set<NodoId> visti;
    for (std::optional<NodoId> corrente = padre; corrente && visti.insert(*corrente).second;) {
        if (*corrente == riga.nodo) {
            const auto* sopra = poi(padre);
            fatto(riga, "Tornerebbe sotto " + conto(sopra->account) + ", che ora gli sta sotto.");
            return;
        }
        const auto* nodo = poi(*corrente);
        corrente = nodo != nullptr ? nodo->legame.padre : std::nullopt;
    }
}

} // namespace qz

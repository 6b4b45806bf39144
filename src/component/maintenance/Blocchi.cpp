#include "component/maintenance/Blocchi.h"

#include "component/maintenance/IstruzioniControlli.h"

#include <algorithm>
#include <unordered_set>

namespace qz {

namespace {

/// Hands a list over in runs that fit one statement.
template <class Elemento, class Azione> void aBlocchi(std::span<const Elemento> elementi, Azione&& azione) {
    while (!elementi.empty()) {
        const auto quanti = prossimoBlocco(elementi.size());
        azione(elementi.first(quanti));
        elementi = elementi.subspan(quanti);
    }
}

template <class Elemento, class Azione> void aBlocchi(const std::vector<Elemento>& elementi, Azione&& azione) {
    aBlocchi(std::span<const Elemento>(elementi), azione);
}

} // namespace

Blocchi::Blocchi(contract::Connection& database, const Richiesta& richiesta, FlussoStati flusso)
    : database_(database), singole_(database), richiesta_(&richiesta), flusso_(std::move(flusso)) {
}

Blocchi::Blocchi(contract::Connection& database, const Richiesta& richiesta)
    : Blocchi(database, richiesta, FlussoStati()) {
}

// Facts

std::int64_t Blocchi::righe(DistintaId distinta) {
    const auto nota = righe_.find(distinta);
    if (nota != righe_.end())
        return nota->second;
    scrivi();
    return righe_.emplace(distinta, singole_.righe(distinta)).first->second;
}

std::int64_t Blocchi::righe(std::int64_t ditta, DistintaId distinta) {
    const auto nota = righeDitta_.find({ditta, distinta});
    if (nota != righeDitta_.end())
        return nota->second;
    scrivi();
    return righeDitta_.emplace(std::pair(ditta, distinta), singole_.righe(ditta, distinta)).first->second;
}

void Blocchi::leggiRighe(const contract::Statement& istruzione, std::vector<NodoLetto>* lette) {
    contract::Recordset righe;
    righe.Open(istruzione, database_);
    for (; !righe.Eof(); righe.MoveNext()) {
        auto nodo = nodoLetto(righe);
        // What is only supposed stands in memory alone.
        if (flusso_ || fatti_.nodo(nodo.id) == nullptr)
            fatti_.impara(nodo, !righe["Anagrafica"].isMissing());
        if (lette != nullptr)
            lette->push_back(std::move(nodo));
    }
}

void Blocchi::leggiNodi(std::span<const NodoId> nodi) {
    aBlocchi(nodi, [&](std::span<const NodoId> blocco) { leggiRighe(istruzioneNodiNoti(blocco), nullptr); });
}

const NodoLetto* Blocchi::conosciuto(NodoId id) {
    if (const auto* nodo = fatti_.nodo(id))
        return nodo;
    leggiNodi({&id, 1});
    return fatti_.nodo(id);
}

std::optional<NodoLetto> Blocchi::nodo(std::int64_t ditta, NodoId id) {
    const auto* nodo = conosciuto(id);
    return nodo != nullptr && nodo->ditta == ditta ? std::optional(*nodo) : std::nullopt;
}

void Blocchi::preparaFigli(std::span<const NodoId> padri) {
    scrivi();
    fatti_.dimenticaFigli();
    leggiFigli(padri);
}

void Blocchi::leggiFigli(std::span<const NodoId> padri) {
    std::unordered_map<NodoId, std::vector<NodoId>> figli;
    for (const auto padre : padri)
        figli.try_emplace(padre);
    std::vector<Soggetto> soggetti;
    aBlocchi(padri, [&](std::span<const NodoId> blocco) {
        std::vector<NodoLetto> lette;
        leggiRighe(istruzioneFigliDi(blocco, richiesta_->da), &lette);
        for (const auto& figlio : lette) {
            figli[*figlio.legame.padre].push_back(figlio.id);
            if (const auto soggetto = soggettoDi(figlio))
                soggetti.push_back(*soggetto);
            // The recursion is looked for among the form's company's accounts of the destination's kind.
            if (figlio.account)
                soggetti.push_back({richiesta_->ditta, richiesta_->tipoA, *figlio.account});
        }
    });
    for (auto& [padre, ids] : figli)
        fatti_.imparaFigli(padre, std::move(ids));
    conosci(std::move(soggetti));
}

std::vector<NodoLetto> Blocchi::figli(NodoId padre, DistintaId distinta) {
    const auto* noti = fatti_.figli(padre);
    if (noti == nullptr && !flusso_) {
        leggiFigli({&padre, 1});
        noti = fatti_.figli(padre);
    }
    const bool inSospeso = noti != nullptr && std::any_of(noti->begin(), noti->end(), &FattiNoti::provvisorio);
    if (inSospeso && flusso_)
        scrivi();
    std::vector<NodoLetto> figli;
    if (noti == nullptr) {
        scrivi();
        leggiRighe(istruzioneFigliDi({&padre, 1}, distinta), &figli);
        return figli;
    }
    for (const auto id : *noti)
        if (const auto* nodo = fatti_.nodo(id); nodo->legame.distinta == distinta && nodo->legame.padre == padre)
            figli.push_back(*nodo);
    return figli;
}

void Blocchi::conosci(std::vector<Soggetto> soggetti) {
    std::map<std::pair<std::int64_t, TipoCF>, std::vector<CodiceAccount>> ignoti;
    while (!soggetti.empty()) {
        std::unordered_set<Soggetto> visti;
        ignoti.clear();
        for (const auto& soggetto : soggetti)
            if (!fatti_.noto(soggetto) && visti.insert(soggetto).second)
                ignoti[{soggetto.ditta, soggetto.tipo}].push_back(soggetto.account);
        soggetti.clear();
        for (const auto& [chiave, account] : ignoti)
            aBlocchi(account, [&, ditta = chiave.first, tipo = chiave.second](std::span<const CodiceAccount> blocco) {
                leggiLegami(ditta, tipo, blocco, soggetti);
            });
    }
}

void Blocchi::leggiLegami(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account,
                          std::vector<Soggetto>& sopra) {
    contract::Recordset righe;
    righe.Open(istruzioneLegamiDi(ditta, tipo, account), database_);
    std::unordered_map<CodiceAccount, std::vector<FattiNoti::LegameNoto>> legami;
    const bool versoAlto = ditta == richiesta_->ditta && tipo == richiesta_->tipoA;
    for (; !righe.Eof(); righe.MoveNext()) {
        FattiNoti::LegameNoto legame{obbligatorio<NodoId>(righe, "QZ02_ID"),
                                     {facoltativo<DistintaId>(righe, "QZ02_ID_QZ01"),
                                      facoltativo<NodoId>(righe, "QZ02_IDPARENT_QZ02"),
                                      righe["QZ02_DATAINIZIOVAL"].date(), righe["QZ02_DATAFINEVAL"].date()},
                                     facoltativo<CodiceAccount>(righe, "Anagrafica"),
                                     numeroFacoltativo(righe, "DittaPadre").value_or(0),
                                     facoltativo<TipoCF>(righe, "TipoPadre").value_or(TipoCF(0)),
                                     facoltativo<DistintaId>(righe, "DistintaPadre")};
        // What is only supposed of a row stands in memory alone.
        if (const auto* noto = flusso_ ? nullptr : fatti_.nodo(legame.id))
            legame.legame = noto->legame;
        if (versoAlto && legame.accountPadre && legame.legame.distinta == richiesta_->a)
            sopra.push_back({ditta, tipo, *legame.accountPadre});
        legami[obbligatorio<CodiceAccount>(righe, "QZ02_CLIFOR_CG44")].push_back(legame);
    }
    for (const auto codice : account)
        fatti_.impara({ditta, tipo, codice}, std::move(legami[codice]));
}

std::span<const std::optional<CodiceAccount>> Blocchi::padri(const Soggetto& soggetto, DistintaId distinta) {
    if (!fatti_.noto(soggetto)) {
        scrivi();
        conosci({soggetto});
    }
    padri_.clear();
    for (const auto& legame : fatti_.legami(soggetto))
        if (legame.legame.distinta == distinta)
            padri_.push_back(flusso_ ? legame.accountPadre : attuale(legame).accountPadre);
    return padri_;
}

std::optional<PadreDecodificato> Blocchi::sostituto(NodoId nodo, std::optional<contract::Date> inizio) {
    const auto* noto = conosciuto(nodo);
    const auto soggetto = noto != nullptr ? soggettoDi(*noto) : std::nullopt;
    if (!soggetto)
        return std::nullopt;
    if (!fatti_.noto(*soggetto)) {
        scrivi();
        conosci({*soggetto});
    }
    const auto primo = [&]() -> std::optional<NodoId> {
        for (const auto& legame : fatti_.legami(*soggetto))
            if (!inizio || legame.legame.inizio == inizio)
                return legame.id;
        return std::nullopt;
    };
    auto trovato = primo();
    if (trovato && FattiNoti::provvisorio(*trovato) && flusso_) {
        scrivi();
        trovato = primo();
    }
    return trovato ? std::optional(PadreDecodificato{*trovato, soggetto->account}) : std::nullopt;
}

std::optional<LegameSovrapposto> Blocchi::sovrapposto(const Soggetto& soggetto, const Periodo& periodo,
                                                      std::optional<NodoId> escluso) {
    if (!fatti_.noto(soggetto)) {
        scrivi();
        conosci({soggetto});
    }
    const auto fine = contract::Date::parse(periodo.fine);
    for (const auto& legame : fatti_.legami(soggetto)) {
        const auto& [distinta, padre, inizioNoto, fineNota] = legame.legame;
        if (!inizioNoto || !fineNota || !fine || legame.id == escluso)
            continue;
        const auto dentro = [primo = *inizioNoto, ultimo = *fineNota](contract::Date giorno) {
            return primo <= giorno && giorno <= ultimo;
        };
        if (!dentro(periodo.inizio) && !dentro(*fine) && !(periodo.inizio <= *inizioNoto && *fine >= *fineNota))
            continue;
        const auto noto = flusso_ ? legame : attuale(legame);
        const auto codice = noto.distintaPadre ? codiceDistinta(*noto.distintaPadre) : std::nullopt;
        if (!codice)
            return LegameSovrapposto{};
        return LegameSovrapposto{true,
                                 *codice,
                                 noto.accountPadre ? std::to_string(noto.accountPadre->numero()) : std::string(),
                                 noto.accountPadre ? nome({noto.dittaPadre, noto.tipoPadre, *noto.accountPadre})
                                                   : std::string(),
                                 inizioNoto->text(),
                                 fineNota->text()};
    }
    return std::nullopt;
}

FattiNoti::LegameNoto Blocchi::attuale(FattiNoti::LegameNoto legame) {
    const auto* padre = legame.legame.padre ? fatti_.nodo(*legame.legame.padre) : nullptr;
    if (padre == nullptr)
        return legame;
    const auto soggetto = soggettoDi(*padre);
    const bool registrato = soggetto && fatti_.registrato(*soggetto);
    legame.accountPadre = registrato ? padre->account : std::nullopt;
    legame.dittaPadre = registrato ? soggetto->ditta : 0;
    legame.tipoPadre = registrato ? soggetto->tipo : TipoCF(0);
    legame.distintaPadre = padre->legame.distinta;
    return legame;
}

void Blocchi::prossima(const Richiesta& richiesta) {
    richiesta_ = &richiesta;
    fatti_.dimenticaFigli();
    daSpostare_.clear();
    daChiudere_.clear();
    daInserire_.clear();
}

void Blocchi::prepara(std::vector<Soggetto> soggetti) {
    conosci(std::move(soggetti));
}

std::vector<NodoLetto> Blocchi::nodiDi(const Soggetto& soggetto, DistintaId distinta) {
    if (!fatti_.noto(soggetto)) {
        scrivi();
        conosci({soggetto});
    }
    std::vector<NodoLetto> nodi;
    for (const auto& legame : fatti_.legami(soggetto))
        if (legame.legame.distinta == distinta)
            if (const auto* nodo = conosciuto(legame.id))
                nodi.push_back(*nodo);
    return nodi;
}

bool Blocchi::premioDefinitivo(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) {
    return singole_.premioDefinitivo(ditta, nodo, scadenzaDopo);
}

std::optional<std::string> Blocchi::codiceDistinta(DistintaId distinta) {
    const auto noto = codici_.find(distinta);
    if (noto != codici_.end())
        return noto->second;
    contract::Recordset riga;
    riga.Open(istruzioneCodiceDistinta(distinta), database_);
    const bool manca = riga.Empty() || riga["QZ01_CODICE"].isNull();
    return codici_.emplace(distinta, manca ? std::nullopt : std::optional(riga["QZ01_CODICE"].text())).first->second;
}

std::string Blocchi::nome(const Soggetto& soggetto) {
    const auto noto = nomi_.find(soggetto);
    if (noto != nomi_.end())
        return noto->second;
    contract::Recordset riga;
    riga.Open(istruzioneNomi(soggetto.ditta, soggetto.tipo, {&soggetto.account, 1}), database_);
    return nomi_.emplace(soggetto, riga.Empty() ? std::string() : riga["RagSoc"].text()).first->second;
}

} // namespace qz

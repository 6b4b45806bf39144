#include "component/maintenance/FattiNoti.h"

#include <algorithm>
#include <tuple>

namespace qz {

std::optional<Soggetto> soggettoDi(const NodoLetto& nodo) {
    if (!nodo.ditta || !nodo.tipo || !nodo.account)
        return std::nullopt;
    return Soggetto{*nodo.ditta, *nodo.tipo, *nodo.account};
}

void FattiNoti::impara(const NodoLetto& nodo, bool registrato) {
    nodi_.insert_or_assign(nodo.id, nodo);
    const auto soggetto = soggettoDi(nodo);
    if (registrato && soggetto)
        registrati_.insert(*soggetto);
}

const NodoLetto* FattiNoti::nodo(NodoId id) const {
    const auto trovato = nodi_.find(id);
    return trovato == nodi_.end() ? nullptr : &trovato->second;
}

void FattiNoti::ordina(std::vector<LegameNoto>& legami) {
    std::sort(legami.begin(), legami.end(), [](const LegameNoto& a, const LegameNoto& b) {
        return std::tie(a.legame.distinta, a.id) < std::tie(b.legame.distinta, b.id);
    });
}

void FattiNoti::impara(const Soggetto& soggetto, std::vector<LegameNoto> legami) {
    ordina(legami);
    legami_.insert_or_assign(soggetto, std::move(legami));
}

std::span<const FattiNoti::LegameNoto> FattiNoti::legami(const Soggetto& soggetto) const {
    const auto trovati = legami_.find(soggetto);
    return trovati == legami_.end() ? std::span<const LegameNoto>() : std::span<const LegameNoto>(trovati->second);
}

void FattiNoti::imparaFigli(NodoId padre, std::vector<NodoId> figli) {
    if (const auto nuovi = figliNuovi_.find(padre); nuovi != figliNuovi_.end())
        figli.insert(figli.end(), nuovi->second.begin(), nuovi->second.end());
    std::sort(figli.begin(), figli.end());
    figli.erase(std::unique(figli.begin(), figli.end()), figli.end());
    figli_.insert_or_assign(padre, std::move(figli));
}

const std::vector<NodoId>* FattiNoti::figli(NodoId padre) const {
    const auto trovati = figli_.find(padre);
    return trovati == figli_.end() ? nullptr : &trovati->second;
}

FattiNoti::LegameNoto* FattiNoti::legameDi(const NodoLetto& nodo) {
    const auto soggetto = soggettoDi(nodo);
    const auto legami = soggetto ? legami_.find(*soggetto) : legami_.end();
    if (legami == legami_.end())
        return nullptr;
    const auto trovato = std::find_if(legami->second.begin(), legami->second.end(),
                                      [&](const LegameNoto& legame) { return legame.id == nodo.id; });
    return trovato == legami->second.end() ? nullptr : &*trovato;
}

void FattiNoti::cambiaDistinta(NodoId id, DistintaId a, bool supposto) {
    const auto nodo = nodi_.find(id);
    if (nodo == nodi_.end())
        return;
    nodo->second.legame.distinta = a;
    if (supposto && nodo->second.legame.padre)
        tieniFiglio(*nodo->second.legame.padre, id);
    if (auto* legame = legameDi(nodo->second)) {
        legame->legame.distinta = a;
        ordina(legami_.find(*soggettoDi(nodo->second))->second);
    }
}

void FattiNoti::sposta(NodoId id, NodoId sotto, DistintaId a) {
    const auto nodo = nodi_.find(id);
    if (nodo == nodi_.end())
        return;
    nodo->second.legame.padre = sotto;
    if (auto* legame = legameDi(nodo->second))
        legame->legame.padre = sotto;
    cambiaDistinta(id, a);
    tieniFiglio(sotto, id);
}

void FattiNoti::tieniFiglio(NodoId padre, NodoId figlio) {
    figliNuovi_[padre].push_back(figlio);
}

void FattiNoti::chiudi(NodoId id, contract::Date fine) {
    const auto nodo = nodi_.find(id);
    if (nodo == nodi_.end())
        return;
    nodo->second.legame.fine = fine;
    if (auto* legame = legameDi(nodo->second))
        legame->legame.fine = fine;
}

void FattiNoti::aggiungi(const Soggetto& soggetto, const LegameNoto& legame, bool traIFigli) {
    NodoLetto nodo{legame.id, soggetto.ditta, soggetto.tipo, soggetto.account, legame.legame, nullptr};
    nodi_.insert_or_assign(legame.id, nodo);
    if (const auto legami = legami_.find(soggetto); legami != legami_.end()) {
        legami->second.push_back(legame);
        ordina(legami->second);
    }
    if (!traIFigli || !legame.legame.padre)
        return;
    if (const auto figli = figli_.find(*legame.legame.padre); figli != figli_.end())
        figli->second.push_back(legame.id);
    figliNuovi_[*legame.legame.padre].push_back(legame.id);
}

void FattiNoti::rinumera(const Soggetto& soggetto, NodoId provvisorio, NodoId id) {
    auto nodo = nodi_.extract(provvisorio);
    nodo.key() = id;
    nodo.mapped().id = id;
    const auto padre = nodo.mapped().legame.padre;
    nodi_.insert(std::move(nodo));
    if (const auto legami = legami_.find(soggetto); legami != legami_.end()) {
        for (auto& legame : legami->second)
            if (legame.id == provvisorio)
                legame.id = id;
        ordina(legami->second);
    }
    if (padre)
        figliNuovi_.erase(*padre);
    const auto figli = padre ? figli_.find(*padre) : figli_.end();
    if (figli == figli_.end())
        return;
    std::replace(figli->second.begin(), figli->second.end(), provvisorio, id);
    std::sort(figli->second.begin(), figli->second.end());
}

} // namespace qz

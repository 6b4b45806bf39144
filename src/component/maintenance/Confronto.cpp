#include "component/maintenance/Confronto.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace qz {

namespace {

using contract::ComparisonOutcome;

/// A link of one side with what it is compared by.
struct Voce {
    std::int64_t account;
    std::int64_t padre;
    std::int32_t inizio;
    std::int32_t fine;
    std::uint32_t riga;
    std::int64_t id;
    bool accoppiata = false;

    auto periodo() const { return std::tie(padre, inizio, fine); }
};

std::vector<Voce> voci(const AlberoConfronto& albero, contract::Date giorno) {
    std::vector<Voce> voci;
    for (const auto riga : albero.valide(giorno)) {
        const LegameVerifica& legame = albero.righe()[riga];
        voci.push_back({legame.account, albero.accountPadre(riga), legame.inizio, legame.fine, riga, legame.id});
    }
    std::sort(voci.begin(), voci.end(), [](const Voce& a, const Voce& b) {
        return std::tie(a.account, a.padre, a.inizio, a.fine, a.id) <
               std::tie(b.account, b.padre, b.inizio, b.fine, b.id);
    });
    return voci;
}

/// The links of the first account of a side.
std::span<Voce> primoConto(std::span<Voce> voci) {
    std::size_t quante = 0;
    while (quante < voci.size() && voci[quante].account == voci.front().account)
        ++quante;
    return voci.first(quante);
}

/// Walks over both lists, which stand in the order of a key, and calls for the two of each pair of one key that is not
/// paired yet.
template <class Chiave, class Coppia>
void accoppia(std::span<Voce> sinistra, std::span<Voce> destra, Chiave chiave, Coppia coppia) {
    std::size_t s = 0;
    std::size_t d = 0;
    while (s < sinistra.size() && d < destra.size()) {
        if (sinistra[s].accoppiata || (!destra[d].accoppiata && chiave(sinistra[s]) < chiave(destra[d])))
            ++s;
        else if (destra[d].accoppiata || chiave(destra[d]) < chiave(sinistra[s]))
            ++d;
        else {
            sinistra[s].accoppiata = destra[d].accoppiata = true;
            coppia(sinistra[s], destra[d]);
        }
    }
}

void confrontaConto(std::span<Voce> sinistra, std::span<Voce> destra, std::vector<Differenza>& differenze) {
    const auto differiscono = [&](ComparisonOutcome esito) {
        return [&differenze, esito](const Voce& a, const Voce& b) { differenze.push_back({esito, a.riga, b.riga}); };
    };
    accoppia(
        sinistra, destra, [](const Voce& voce) { return voce.periodo(); }, [](const Voce&, const Voce&) {});
    accoppia(
        sinistra, destra, [](const Voce& voce) { return voce.padre; }, differiscono(ComparisonOutcome::period));
    accoppia(
        sinistra, destra, [](const Voce& voce) { return voce.account; }, differiscono(ComparisonOutcome::parent));
    for (const Voce& voce : sinistra)
        if (!voce.accoppiata)
            differenze.push_back({ComparisonOutcome::left, voce.riga, LegameVerifica::nessuno});
    for (const Voce& voce : destra)
        if (!voce.accoppiata)
            differenze.push_back({ComparisonOutcome::right, LegameVerifica::nessuno, voce.riga});
}

} // namespace

std::vector<Differenza> confronta(const AlberoConfronto& sinistra, const AlberoConfronto& destra, bool stessoTipo,
                                  contract::Date giorno) {
    auto vociSinistre = voci(sinistra, giorno);
    auto vociDestre = voci(destra, giorno);
    std::vector<Differenza> differenze;
    std::span<Voce> s = vociSinistre;
    std::span<Voce> d = vociDestre;
    while (!s.empty() || !d.empty()) {
        const bool prendeS = d.empty() || (!s.empty() && s.front().account <= d.front().account);
        const bool prendeD = s.empty() || (!d.empty() && d.front().account <= s.front().account);
        const auto contoS = prendeS ? primoConto(s) : std::span<Voce>();
        const auto contoD = prendeD ? primoConto(d) : std::span<Voce>();
        if (stessoTipo)
            confrontaConto(contoS, contoD, differenze);
        else {
            confrontaConto(contoS, {}, differenze);
            confrontaConto({}, contoD, differenze);
        }
        s = s.subspan(contoS.size());
        d = d.subspan(contoD.size());
    }
    return differenze;
}

} // namespace qz

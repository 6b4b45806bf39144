#include "component/maintenance/GruppiVerifica.h"

#include <tuple>

namespace qz {

namespace {

constexpr std::uint32_t nessuno = LegameVerifica::nessuno;

bool finisceDopo(const std::vector<LegameVerifica>& righe, std::uint32_t legame, std::uint32_t altro) {
    return altro == nessuno || righe[legame].fine > righe[altro].fine;
}

} // namespace

GruppiVerifica::GruppiVerifica(const std::vector<LegameVerifica>& righe, std::int64_t ditta) {
    voci_.reserve(righe.size());
    for (std::size_t i = 0; i < righe.size(); ++i) {
        const LegameVerifica& riga = righe[i];
        if (riga.ditta == ditta && riga.account != LegameVerifica::manca && riga.tipo != LegameVerifica::manca &&
            riga.haPeriodo())
            voci_.push_back({riga.account, riga.tipo, riga.inizio, static_cast<std::uint32_t>(i)});
    }
    std::sort(voci_.begin(), voci_.end(), [](const Voce& a, const Voce& b) {
        return std::tie(a.account, a.tipo, a.inizio, a.posizione) < std::tie(b.account, b.tipo, b.inizio, b.posizione);
    });
}

void cercaSovrapposti(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                      const std::function<bool(std::uint32_t)>& conta, const Segnala& segnala) {
    // Of those that start earlier the one that ends last overlaps if any does; of those that start later the first one.
    std::vector<std::uint32_t> successivi(gruppo.size(), nessuno);
    for (std::size_t i = gruppo.size() - 1; i > 0; --i)
        successivi[i - 1] = conta(gruppo[i]) ? gruppo[i] : successivi[i];
    std::uint32_t ultimo = nessuno;
    for (std::size_t i = 0; i < gruppo.size(); ++i) {
        const LegameVerifica& legame = righe[gruppo[i]];
        if (ultimo != nessuno && righe[ultimo].fine >= legame.inizio)
            segnala(gruppo[i], ultimo);
        else if (successivi[i] != nessuno && righe[successivi[i]].inizio <= legame.fine)
            segnala(gruppo[i], successivi[i]);
        if (conta(gruppo[i]) && finisceDopo(righe, gruppo[i], ultimo))
            ultimo = gruppo[i];
    }
}

void cercaDoppi(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                const Segnala& segnala) {
    std::vector<std::uint32_t> perPadre;
    for (const auto legame : gruppo)
        if (!righe[legame].radice())
            perPadre.push_back(legame);
    std::stable_sort(perPadre.begin(), perPadre.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return righe[a].padre < righe[b].padre; });
    for (auto inizio = perPadre.begin(); inizio != perPadre.end();) {
        const auto fine = std::find_if(
            inizio, perPadre.end(), [&](std::uint32_t legame) { return righe[legame].padre != righe[*inizio].padre; });
        if (fine - inizio > 1)
            cercaSovrapposti(
                righe, {inizio, fine}, [](std::uint32_t) { return true; }, segnala);
        inizio = fine;
    }
}

void cercaIntervalli(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                     const Segnala& segnala) {
    std::uint32_t ultimo = nessuno;
    for (const auto legame : gruppo) {
        if (ultimo != nessuno && righe[legame].inizio > righe[ultimo].fine + 1)
            segnala(legame, ultimo);
        if (finisceDopo(righe, legame, ultimo))
            ultimo = legame;
    }
}

} // namespace qz

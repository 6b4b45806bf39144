#pragma once

#include "component/maintenance/LegamiVerifica.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace qz {

/// A finding about a link, because of another one: their positions.
using Segnala = std::function<void(std::uint32_t legame, std::uint32_t altro)>;

/// The links of a company that have an account with its kind and a period, account by account, each account's by start.
class GruppiVerifica {
public:
    GruppiVerifica(const std::vector<LegameVerifica>& righe, std::int64_t ditta);

    /// Calls for every account that has two links or more, with their positions by ascending start.
    template <class Opera> void perOgnuno(Opera opera) const {
        std::vector<std::uint32_t> gruppo;
        for (std::size_t inizio = 0; inizio < voci_.size();) {
            std::size_t fine = inizio + 1;
            while (fine < voci_.size() && voci_[fine].account == voci_[inizio].account &&
                   voci_[fine].tipo == voci_[inizio].tipo)
                ++fine;
            if (fine - inizio > 1) {
                gruppo.clear();
                for (std::size_t i = inizio; i < fine; ++i)
                    gruppo.push_back(voci_[i].posizione);
                opera(std::span<const std::uint32_t>(gruppo));
            }
            inizio = fine;
        }
    }

private:
    struct Voce {
        std::int64_t account;
        std::int64_t tipo;
        std::int32_t inizio;
        std::uint32_t posizione;
    };
    std::vector<Voce> voci_;
};

// Over one account's links by start. Each link is reported once, however many others there are.

/// The links that share a day with another one that counts, both ends included.
void cercaSovrapposti(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                      const std::function<bool(std::uint32_t)>& conta, const Segnala& segnala);

/// The links that share a day with another one under the same parent.
void cercaDoppi(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                const Segnala& segnala);

/// The links before which the account has none, on at least one day since an earlier one ended.
void cercaIntervalli(const std::vector<LegameVerifica>& righe, std::span<const std::uint32_t> gruppo,
                     const Segnala& segnala);

} // namespace qz

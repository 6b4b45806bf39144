#pragma once

#include "contract/Connection.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace qz {

/// A link as an audit looks at it: 64 bytes, whatever the row holds.
struct LegameVerifica {
    static constexpr std::int64_t manca = std::numeric_limits<std::int64_t>::min();
    static constexpr std::int32_t giornoManca = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int32_t giornoIlleggibile = giornoManca + 1;
    static constexpr std::uint32_t nessuno = std::numeric_limits<std::uint32_t>::max();

    std::int64_t id = 0;
    std::int64_t distinta = manca; ///< each of these: manca where the row has none
    std::int64_t padre = manca;
    std::int64_t ditta = manca;
    std::int64_t tipo = manca;
    std::int64_t account = manca;
    std::int32_t inizio = giornoManca; ///< days as contract::Date::days(), or one of the two above
    std::int32_t fine = giornoManca;
    std::uint32_t posizionePadre = nessuno; ///< of the parent's row; nessuno without a parent, or where it is not there
    bool senzaGuid = false;

    bool radice() const { return padre == manca; }
    bool orfano() const { return !radice() && posizionePadre == nessuno; }
    /// Whether both days are days of any calendar.
    bool giorniLeggibili() const { return inizio > giornoIlleggibile && fine > giornoIlleggibile; }
    /// Whether it holds on some day.
    bool haPeriodo() const { return giorniLeggibili() && inizio <= fine; }
};

/// A GUID by its value, without regard to case, braces and blanks around it; what is no GUID by a hash of its letters.
struct ChiaveGuid {
    std::uint64_t alta = 0;
    std::uint64_t bassa = 0;
    std::uint32_t posizione = 0; ///< of the link's row

    bool stessoGuid(const ChiaveGuid& altra) const { return alta == altra.alta && bassa == altra.bassa; }
};

/// The links of every company, by ascending id.
struct LegamiVerifica {
    std::vector<LegameVerifica> righe;
    std::vector<ChiaveGuid> guid; ///< of the links that have one, in no order
};

/// Reads the table in one pass and finds each link's parent. What is no whole number counts as missing.
LegamiVerifica leggiLegami(contract::Connection& database);

/// A distinta as an audit looks at it.
struct DistintaVerifica {
    std::int64_t ditta = LegameVerifica::manca;
    std::int64_t tipo = LegameVerifica::manca;
    std::optional<std::string> codice;
};

} // namespace qz

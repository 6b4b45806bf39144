#pragma once

#include "component/maintenance/AlberoConfronto.h"

#include <cstdint>
#include <vector>

namespace qz {

/// What differs of an account: its rows in the two trees, LegameVerifica::nessuno where a side has none.
struct Differenza {
    contract::ComparisonOutcome esito;
    std::uint32_t sinistra = LegameVerifica::nessuno;
    std::uint32_t destra = LegameVerifica::nessuno;
};

/// The differences of two trees on a day by ascending account. Sorts the rows that hold on the day, then one walk over
/// both sides; see contract::Comparison for how several links of an account are paired. Accounts of different kinds are
/// different accounts.
std::vector<Differenza> confronta(const AlberoConfronto& sinistra, const AlberoConfronto& destra, bool stessoTipo,
                                  contract::Date giorno);

} // namespace qz

#pragma once

#include "component/maintenance/LegamiVerifica.h"
#include "component/maintenance/PercorsiVerifica.h"
#include "contract/Comparison.h"
#include "contract/Snapshot.h"

#include <cstdint>
#include <vector>

namespace qz {

/// A distinta's links as its tree shows them: of the distinta's kind of accounts, with an account, each under the
/// parent that is shown with it.
class AlberoConfronto {
public:
    AlberoConfronto(contract::Connection& database, std::int64_t ditta, const contract::ComparedDistinta& distinta);

    const std::vector<LegameVerifica>& righe() const { return righe_; }
    /// The rows whose period holds a day, in the order in which they were read.
    std::vector<std::uint32_t> valide(contract::Date giorno) const;
    /// The same in the order of the tree; links on a cycle and below it, which no tree shows, at the end.
    std::vector<std::uint32_t> valideNellAlbero(contract::Date giorno) const;

    /// Account of the parent; LegameVerifica::manca without one.
    std::int64_t accountPadre(std::uint32_t riga) const;
    std::string nome(std::uint32_t riga) const;
    contract::ComparisonSide lato(std::uint32_t riga) const;

private:
    contract::Snapshot lette_;
    std::vector<LegameVerifica> righe_; ///< as they were read
    std::vector<Percorso> percorsi_;
};

/// The company's distinte by ascending id.
std::vector<contract::ComparedDistinta> distinteDaConfrontare(contract::Connection& database, std::int64_t ditta);

} // namespace qz

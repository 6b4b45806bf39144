#pragma once

#include "component/maintenance/LegamiVerifica.h"
#include "component/maintenance/RegoleVerifica.h"
#include "contract/Audit.h"
#include "contract/Snapshot.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qz {

/// One thing found, in the few bytes that its sentence is composed from.
struct Rilievo {
    Regola regola;
    std::uint32_t legame = LegameVerifica::nessuno; ///< the row it is about
    std::int64_t altro = 0;                         ///< position of the other row, or what the rule needs besides
};

/// The registry names of a company's accounts.
class Anagrafiche {
public:
    /// Takes the rows of istruzioneAnagrafiche().
    explicit Anagrafiche(contract::Snapshot righe);

    bool contiene(std::int64_t tipo, std::int64_t account) const { return trova(tipo, account).has_value(); }
    /// Empty where there is none.
    std::string_view nome(std::int64_t tipo, std::int64_t account) const;

private:
    std::optional<std::size_t> trova(std::int64_t tipo, std::int64_t account) const;

    struct Chiave {
        std::int64_t tipo;
        std::int64_t account;
        std::uint32_t riga;
        friend auto operator<=>(const Chiave&, const Chiave&) = default;
    };
    contract::Snapshot righe_;
    std::vector<Chiave> chiavi_; ///< ascending
};

/// What an audit has read, and what it found.
struct EsitoVerifica {
    std::vector<LegameVerifica> righe;
    std::unordered_map<std::int64_t, DistintaVerifica> distinte; ///< by QZ01_ID
    Anagrafiche anagrafiche{contract::Snapshot()};
    std::vector<Rilievo> rilievi; ///< in the order in which they are reported
};

/// Looks for everything that is wrong with the links of a company. Reads the table of links once and sorts by account,
/// by GUID and by rule; everything else is one walk. Writes nothing. Throws what the database and the progress throw.
///
/// Links with a date that is missing, unreadable or before the other one have no period: the rules about periods pass
/// them over. Of a link on a cycle that alone is reported.
EsitoVerifica verificaDistinte(contract::Connection& database, std::int64_t ditta, contract::Progress& avanzamento);

/// The finding with its sentence.
contract::AuditFinding composto(const EsitoVerifica& esito, const Rilievo& rilievo);

} // namespace qz

#include "host/database/Companies.h"

#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"

#include <array>

namespace host {

using contract::Fragment;
using contract::Statement;

std::vector<std::int64_t> companiesOf(contract::Connection& connection) {
    constexpr std::array<Fragment, 3> sources = {
        Fragment("SELECT DISTINCT QZ01_DITTA_CG18 FROM QZ01_TIPODISTINTA ORDER BY QZ01_DITTA_CG18"),
        Fragment("SELECT QZ03_DITTA_CG18 FROM QZ03_PARAMETRI ORDER BY QZ03_DITTA_CG18"),
        Fragment("SELECT DISTINCT CG44_DITTA_CG18 FROM CG44_CLIFOR ORDER BY CG44_DITTA_CG18"),
    };
    std::vector<std::int64_t> found;
    for (const auto& source : sources) {
        contract::Snapshot rows;
        readAgainWhenLost(connection, Statement(source), rows);
        for (std::size_t row = 0; row < rows.rowCount(); ++row)
            if (const auto company = rows.column(0).integer(row))
                found.push_back(*company);
        if (!found.empty())
            break;
    }
    return found;
}

} // namespace host

#pragma once

#include "contract/Connection.h"
#include "contract/MoveRegistry.h"

#include <cstdint>
#include <vector>

namespace qz {

/// A row of an operation as the registry keeps it.
struct RigaRegistrata {
    contract::OperationRow riga;
    std::int64_t ostacoli = 0; ///< facts that would stand in its way, and stood there when it was written
};

/// Operations of a company, newest first.
std::vector<contract::Operation> leggiOperazioni(contract::Connection& database, std::int64_t ditta,
                                                 const contract::OperationFilter& filtro);
/// One operation. Throws RuntimeError 5 where the company has none of that number.
contract::Operation leggiOperazione(contract::Connection& database, std::int64_t ditta, std::int64_t operazione);
/// The rows of an operation, in order.
std::vector<RigaRegistrata> leggiRigheOperazione(contract::Connection& database, std::int64_t operazione);

} // namespace qz

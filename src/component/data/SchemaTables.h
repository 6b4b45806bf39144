#pragma once

#include "contract/Schema.h"

namespace qz {

/// Types, nodes and parameters of the distinte, and the workflow states.
void addDistintaTables(contract::Schema& schema);
/// The registry of moves; optional.
void addRegistryTables(contract::Schema& schema);
/// Bonuses, their subjects and settlements; only read.
void addBonusTables(contract::Schema& schema);
/// Accounts with registry, banks, payment terms, agents, sales data and per-division data; only read.
void addAccountTables(contract::Schema& schema);
/// Geographic and commercial classifications and free groupings; only read.
void addClassificationTables(contract::Schema& schema);

} // namespace qz

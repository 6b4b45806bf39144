#pragma once

#include "host/tables/TableFile.h"
#include "host/tables/TreeTable.h"
#include "platform/qt/forms/Session.h"

#include <cstdint>

namespace host {

/// The two trees of the component's form.
enum class Side : std::uint8_t { origin, destination };

/// The tree's control; null where the form has none.
platform::qt::TreeListControl* treeOf(platform::qt::FormWindow& form, Side side);

/// The distinta that a side of the component's form shows, as a list with its title. Without a tree an empty one.
TitledTable distintaList(platform::qt::FormWindow& form, Side side, TreeTable::Rows rows, std::int64_t company);

} // namespace host

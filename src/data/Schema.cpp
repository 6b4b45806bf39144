#include "data/Schema.h"

#include "data/SchemaTables.h"

namespace qz {

const contract::Schema& schema() {
    static const contract::Schema tables = [] {
        contract::Schema all;
        addDistintaTables(all);
        addBonusTables(all);
        addAccountTables(all);
        addClassificationTables(all);
        return all;
    }();
    return tables;
}

} // namespace qz

#include "component/data/Schema.h"

#include "component/data/SchemaTables.h"

namespace qz {

const contract::Schema& schema() {
    static const contract::Schema tables = [] {
        contract::Schema all;
        addDistintaTables(all);
        addBonusTables(all);
        addAccountTables(all);
        addClassificationTables(all);
        addRegistryTables(all);
        return all;
    }();
    return tables;
}

} // namespace qz

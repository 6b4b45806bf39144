#include "host/audit/Audits.h"

#include "contract/RuntimeError.h"
#include "host/database/AskAgain.h"

namespace host {

std::vector<std::size_t> AuditResult::counts() const {
    std::vector<std::size_t> counts(rules.size());
    for (std::size_t i = 0; i < report->size(); ++i)
        ++counts[report->rule(i)];
    return counts;
}

AuditResult auditDistinte(contract::PluginClass& component, contract::Connection& connection, std::int64_t company,
                          contract::Progress& progress) {
    auto* audit = dynamic_cast<contract::Audit*>(&component);
    if (audit == nullptr)
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il componente non verifica le distinte: serve una versione più recente.");
    return askAgainWhenLost(connection, [&] {
        return AuditResult{audit->auditRules(), audit->audit(connection, company, progress)};
    });
}

} // namespace host

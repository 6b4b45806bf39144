#include "host/audit/Audits.h"

#include "contract/RuntimeError.h"

#include <algorithm>

namespace host {

namespace {

bool lost(const contract::Connection& connection) {
    const auto records = connection.Errors();
    return std::any_of(records.begin(), records.end(),
                       [](const auto& record) { return record.category == contract::ErrorCategory::lostConnection; });
}

} // namespace

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
    try {
        return {audit->auditRules(), audit->audit(connection, company, progress)};
    } catch (const contract::RuntimeError&) {
        // It only reads: what was lost is asked again, over the connection that the next statement opens.
        if (!lost(connection) || connection.InTransaction())
            throw;
    }
    return {audit->auditRules(), audit->audit(connection, company, progress)};
}

} // namespace host

#pragma once

#include "contract/Audit.h"
#include "contract/Cinterface.h"
#include "contract/Connection.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace host {

/// What an audit found, with the rules that it went by.
struct AuditResult {
    std::span<const contract::AuditRule> rules;
    std::shared_ptr<const contract::AuditReport> report;

    const contract::AuditRule& ruleOf(std::size_t finding) const { return rules[report->rule(finding)]; }
    /// Findings by rule, in the order of the rules.
    std::vector<std::size_t> counts() const;
};

/// Audits a company's distinte over an open connection, outside of transactions; once more where the connection was
/// lost meanwhile. Throws RuntimeError (5 for a component that makes no audits) and contract::Cancelled.
AuditResult auditDistinte(contract::PluginClass& component, contract::Connection& connection, std::int64_t company,
                          contract::Progress& progress);

/// Listens to a long work and lets it go on.
class NoProgress : public contract::Progress {
public:
    void reached(std::string_view, std::uint64_t, std::optional<std::uint64_t>) override {}
};

} // namespace host

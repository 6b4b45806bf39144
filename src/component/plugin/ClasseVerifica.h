#pragma once

#include "contract/Audit.h"

#include <memory>

namespace qz {

/// The public class's audit.
class ClasseVerifica : public contract::Audit {
public:
    std::span<const contract::AuditRule> auditRules() const override;
    std::unique_ptr<contract::AuditReport> audit(contract::Connection& connection, std::int64_t company,
                                                 contract::Progress& progress) override;
};

} // namespace qz

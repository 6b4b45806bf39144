#pragma once

#include "contract/Progress.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace contract {

class Connection;

/// How much a finding matters: an error is wrong, a warning most likely is, a hint may be meant.
enum class AuditSeverity : std::uint8_t { error, warning, hint };

/// One thing that an audit looks for.
struct AuditRule {
    std::string_view name; ///< as scripts know it ("parent-missing")
    AuditSeverity severity = AuditSeverity::error;
    std::string_view title;  ///< as the user reads it ("Padre inesistente")
    std::string_view remedy; ///< what to do about it, one sentence
};

/// One thing that an audit found.
struct AuditFinding {
    std::size_t rule = 0;                ///< place in Audit::auditRules(), from 0
    std::optional<std::int64_t> type;    ///< QZ01_ID of the distinta; nothing where the finding is about no link
    std::string typeCode;                ///< QZ01_CODICE; empty where it is not known
    std::optional<std::int64_t> node;    ///< QZ02_ID of the link
    std::optional<std::int64_t> account; ///< nothing for a link without account
    std::string name;                    ///< of the account; empty where the registry has none
    std::string text;                    ///< one sentence in the user's language
};

/// What an audit found, the most severe first, then by rule, distinta and node. Each finding is composed when it is
/// asked for.
class AuditReport {
public:
    AuditReport() = default;
    AuditReport(const AuditReport&) = delete;
    AuditReport& operator=(const AuditReport&) = delete;
    virtual ~AuditReport() = default;

    virtual std::size_t size() const = 0;
    /// The rule of a finding, without composing it; index below size().
    virtual std::size_t rule(std::size_t index) const = 0;
    virtual AuditFinding finding(std::size_t index) const = 0;
};

/// The audit of a company's distinte. A plug-in class may implement it beside its other interfaces; a host asks for it
/// with dynamic_cast. It needs no form.
class Audit {
public:
    Audit() = default;
    Audit(const Audit&) = delete;
    Audit& operator=(const Audit&) = delete;
    virtual ~Audit() = default;

    /// In the order in which findings stand.
    virtual std::span<const AuditRule> auditRules() const = 0;
    /// Reads over an open connection and writes nothing. Throws RuntimeError for what the database refuses, and
    /// Cancelled.
    virtual std::unique_ptr<AuditReport> audit(Connection& connection, std::int64_t company, Progress& progress) = 0;
};

} // namespace contract

#pragma once

#include "contract/Date.h"
#include "contract/Progress.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace contract {

class Connection;

/// A distinta that may be compared.
struct ComparedDistinta {
    std::int64_t id = 0;   ///< QZ01_ID
    std::int64_t kind = 0; ///< of its accounts: 0 customers, 1 suppliers
    std::string code;
    std::string description;
};

/// In what an account's links on both sides differ.
enum class ComparisonOutcome : std::uint8_t {
    left,   ///< the account is linked there only
    right,  ///< there only
    parent, ///< under another parent
    period, ///< under the same parent, for another period
};

/// An account's link on one side.
struct ComparisonSide {
    std::int64_t node = 0;                     ///< QZ02_ID
    std::optional<std::int64_t> parentAccount; ///< nothing for a link without parent in its tree
    Date start;
    Date end;
    std::vector<std::int64_t> path; ///< accounts from the root down to the account itself
};

/// One difference; of a tree on a day, one link, with its left side alone.
struct ComparisonRow {
    std::int64_t account = 0;
    std::string name; ///< empty where the registry has none
    ComparisonOutcome outcome = ComparisonOutcome::left;
    std::optional<ComparisonSide> left;
    std::optional<ComparisonSide> right;
};

/// Differences by ascending account, or the links of one tree in its order. Each row is composed when it is asked for.
class ComparisonReport {
public:
    ComparisonReport() = default;
    ComparisonReport(const ComparisonReport&) = delete;
    ComparisonReport& operator=(const ComparisonReport&) = delete;
    virtual ~ComparisonReport() = default;

    virtual std::size_t size() const = 0;
    /// Without composing the row; index below size().
    virtual ComparisonOutcome outcome(std::size_t index) const = 0;
    virtual ComparisonRow row(std::size_t index) const = 0;
};

/// The comparison of two of a company's distinte on a day. A plug-in class may implement it beside its other
/// interfaces; a host asks for it with dynamic_cast. It needs no form.
///
/// A link counts on a day when its period holds the day, both ends included; one with a missing date never does. Of
/// several links that an account has on one side on that day, those that agree with one of the other side go first,
/// then those under the same parent are paired by their start, then the rest by parent and start; what is left over is
/// on its side only.
class Comparison {
public:
    Comparison() = default;
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;
    virtual ~Comparison() = default;

    // All of these read over an open connection and write nothing. They throw RuntimeError for what the database
    // refuses and for a distinta that the company does not have (number 5), and Cancelled.

    /// The company's distinte by ascending id.
    virtual std::vector<ComparedDistinta> comparedDistinte(Connection& connection, std::int64_t company) = 0;
    /// What differs between two distinte. Accounts that agree are left out.
    virtual std::unique_ptr<ComparisonReport> compare(Connection& connection, std::int64_t company, std::int64_t left,
                                                      std::int64_t right, Date day, Progress& progress) = 0;
    /// Every link that a distinta had on a day.
    virtual std::unique_ptr<ComparisonReport> treeOn(Connection& connection, std::int64_t company, std::int64_t type,
                                                     Date day, Progress& progress) = 0;
};

} // namespace contract

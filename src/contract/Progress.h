#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>

namespace contract {

/// Thrown through a long work that its user has given up: no error, nothing to report. Whoever holds a transaction
/// rolls it back.
class Cancelled : public std::exception {
public:
    const char* what() const noexcept override { return "Operazione annullata: nessuna modifica è stata salvata."; }
};

/// Told by a long work how far it is.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    virtual ~Progress() = default;

    /// what: the present step in the user's language ("Lettura dei legami"); done of total steps, where the total is
    /// known. Called as often as the work likes. Throws Cancelled when the user wants no more of it.
    virtual void reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total) = 0;

    /// What the steps count from now on, in the user's language and in the plural ("nodi"); nothing at first.
    virtual void counts(std::string_view) {}
};

} // namespace contract

#pragma once

#include "component/Guasti.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace prove {

/// One thing that a user or a host does, and the state in which it is done.
struct Caso {
    std::string nome;
    /// Before the form is shown.
    std::function<void(ProgrammaConGuasti&)> prima = nullptr;
    /// Once it is shown; nothing where the showing itself is walked.
    std::function<void(ProgrammaConGuasti&)> prepara = nullptr;
    std::function<void(ProgrammaConGuasti&)> fai = nullptr;
    /// Answers to the message boxes on the way.
    std::vector<int> risposte{};
    /// Whether a dialog opens in which the user does something.
    bool conDialogo = false;

    friend std::ostream& operator<<(std::ostream& flusso, const Caso& caso) { return flusso << caso.nome; }
};

struct Corsa {
    std::vector<std::string> chiamate;             ///< in their order, the failed one included
    std::vector<std::optional<std::size_t>> madri; ///< for each the call during which it was made
    std::vector<std::string> errori;               ///< procedures named in the error displays
};

/// Does it with one call, counted from 0, failing once, and this answer to every error display.
Corsa esegui(const Caso& caso, std::optional<std::size_t> guasto, int risposta);

const std::vector<Caso>& casi();

/// Whether a call may be left out after another one failed and was passed over, since it needs what that one gives.
bool puoMancare(const std::string& fallita, const std::string& chiamata);
/// Whether a call may come that does not come otherwise.
bool puoVenire(const std::string& fallita, const std::string& chiamata);
/// Procedures that do something more when they are left.
bool rimediaSempre(const std::string& procedura);
/// Procedures that others call several times.
bool chiamataPiuVolte(const std::string& procedura);
/// All names under which errors are reported, sorted, one a line.
std::string nomiDelleProcedure();

} // namespace prove

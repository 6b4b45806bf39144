#pragma once

#include "component/maintenance/Piano.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qz {

/// Node and account that stand for a parent of the origin.
struct PadreDecodificato {
    NodoId id;
    std::optional<CodiceAccount> account;
};

/// An account of a company.
struct Soggetto {
    std::int64_t ditta = 0;
    TipoCF tipo{0};
    CodiceAccount account{0};

    friend bool operator==(const Soggetto&, const Soggetto&) = default;
};

/// Period of a link under test; the end stays the text that the user gave ("dd/mm/yyyy").
struct Periodo {
    contract::Date inizio;
    std::string_view fine;
};

/// An existing link whose period overlaps another one, in the words of a refusal.
struct LegameSovrapposto {
    bool sottoUnPadre = false; ///< a root link hangs under no parent and is not reported
    std::string distinta;      ///< code of the distinta in which the parent stands
    std::string accountPadre;
    std::string nomePadre;
    std::string inizio;
    std::string fine;
};

/// The facts that checks and moves ask of the database. Every answer is of the moment, changes of the same move
/// included. Database errors come through.
class Letture {
public:
    Letture() = default;
    Letture(const Letture&) = delete;
    Letture& operator=(const Letture&) = delete;
    virtual ~Letture() = default;

    /// Rows of a distinta, of whatever company.
    virtual std::int64_t righe(DistintaId distinta) = 0;
    /// Rows of a distinta that belong to a company.
    virtual std::int64_t righe(std::int64_t ditta, DistintaId distinta) = 0;

    /// The row of that id, if it belongs to the company.
    virtual std::optional<NodoLetto> nodo(std::int64_t ditta, NodoId id) = 0;
    /// The children of a node that stand in a distinta.
    virtual std::vector<NodoLetto> figli(NodoId padre, DistintaId distinta) = 0;

    /// For every link of an account in a distinta, over all periods, the account of the parent that it hangs under;
    /// nothing for a root link. Valid until the next question.
    virtual std::span<const std::optional<CodiceAccount>> padri(const Soggetto& soggetto, DistintaId distinta) = 0;

    /// The node that stands for another one: the first link of the same account, in whatever distinta; with a start
    /// date only one that starts on it.
    virtual std::optional<PadreDecodificato> sostituto(NodoId nodo, std::optional<contract::Date> inizio) = 0;

    /// The first link of an account, by distinta, whose period overlaps another one, both ends included; one node may
    /// be left out.
    virtual std::optional<LegameSovrapposto> sovrapposto(const Soggetto& soggetto, const Periodo& periodo,
                                                         std::optional<NodoId> escluso) = 0;

    /// Whether a definitive settlement of a node's bonuses stands; with a date ("dd/mm/yyyy") only one that falls due
    /// after it.
    virtual bool premioDefinitivo(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) = 0;

    /// Said before the children of these nodes are asked for, one node after the other.
    virtual void preparaFigli(std::span<const NodoId> /*padri*/) {}
};

} // namespace qz

#pragma once

#include "component/maintenance/Piano.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace qz {

/// What every new link of one move has in common.
struct NuovoLegame {
    DistintaId distinta;
    std::int64_t stato = 0; ///< WF02_ID
    contract::Date inizio;
    std::string_view fine; ///< "dd/mm/yyyy"
};

/// A link that is opened for an account under a parent.
struct NodoDaCopiare {
    NodoId padre;
    std::int64_t ditta = 0;
    TipoCF tipo{0};
    CodiceAccount account{0};
    std::shared_ptr<const Facoltativi> facoltativi{}; ///< nothing where all are missing
};

/// Told of rows of QZ02_DISTINTA just before a move rewrites them with their audit columns.
class Testimone {
public:
    Testimone() = default;
    Testimone(const Testimone&) = delete;
    Testimone& operator=(const Testimone&) = delete;
    virtual ~Testimone() = default;

    /// Not empty. What it throws comes through the move.
    virtual void primaDiScrivere(std::span<const NodoId> nodi) = 0;
};

/// The changes that a move states. Database errors come through.
class Scritture {
public:
    Scritture() = default;
    Scritture(const Scritture&) = delete;
    Scritture& operator=(const Scritture&) = delete;
    virtual ~Scritture() = default;

    /// A descendant goes from one distinta to another.
    virtual void cambiaDistinta(NodoId nodo, DistintaId da, DistintaId a) = 0;
    /// The moved node goes under its new parent.
    virtual void sposta(NodoId nodo, NodoId sotto, DistintaId da, DistintaId a) = 0;
    /// A link of that distinta is closed at a date, or on its own start day when it starts later; one that ends by then
    /// stays.
    virtual void chiudi(NodoId nodo, DistintaId distinta, contract::Date fine) = 0;
    /// A new link; its workflow state is the one of a link by its GUID, or the default one for an empty GUID.
    /// The new link's GUID; empty where it is only supposed.
    virtual std::string inserisci(const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view statoDi) = 0;
    /// Whatever was stated is written when this returns.
    virtual void concludi() {}

    /// Who is told before rows are rewritten; null for nobody. It must outlive the move.
    void testimone(Testimone* testimone) { testimone_ = testimone; }

protected:
    void annunciaScrittura(std::span<const NodoId> nodi) {
        if (testimone_ != nullptr)
            testimone_->primaDiScrivere(nodi);
    }

private:
    Testimone* testimone_ = nullptr;
};

} // namespace qz

#pragma once

#include "component/maintenance/Elenco.h"
#include "component/maintenance/Letture.h"

#include <optional>
#include <string>
#include <vector>

namespace qz {

class Blocchi;

/// A node as a line of a list finds it.
struct NodoTrovato {
    NodoLetto nodo;
    std::string guid; ///< of its workflow state; empty for none, and where moves are only supposed
};

/// Where the lines of a list look for their nodes.
class Indice {
public:
    Indice() = default;
    Indice(const Indice&) = delete;
    Indice& operator=(const Indice&) = delete;
    virtual ~Indice() = default;

    /// The links of an account in a distinta. Database errors come through.
    virtual std::vector<NodoTrovato> nodi(const Soggetto& soggetto, DistintaId distinta) = 0;
    /// The row of that id, if it belongs to the company. Database errors come through.
    virtual std::optional<NodoTrovato> nodo(std::int64_t ditta, NodoId id) = 0;
};

/// As the database stands.
class IndiceSulDatabase : public Indice {
public:
    explicit IndiceSulDatabase(contract::Connection& database) : database_(database) {}
    std::vector<NodoTrovato> nodi(const Soggetto& soggetto, DistintaId distinta) override;
    std::optional<NodoTrovato> nodo(std::int64_t ditta, NodoId id) override;

private:
    contract::Connection& database_;
};

/// Through the changes that were only supposed so far.
class IndiceSupposto : public Indice {
public:
    explicit IndiceSupposto(Blocchi& blocchi) : blocchi_(blocchi) {}
    std::vector<NodoTrovato> nodi(const Soggetto& soggetto, DistintaId distinta) override;
    std::optional<NodoTrovato> nodo(std::int64_t ditta, NodoId id) override;

private:
    Blocchi& blocchi_;
};

/// A distinta of the company.
struct TipoDistinta {
    DistintaId id{0};
    std::string codice; ///< without blanks at its ends
    TipoCF tipo{0};
};

/// The company's distinte by their ids. Database errors come through.
std::vector<TipoDistinta> distinteDi(contract::Connection& database, std::int64_t ditta);

/// Turns the lines of a list into moves.
class LettoreVoci {
public:
    LettoreVoci(const AmbitoElenco& ambito, std::vector<TipoDistinta> distinte)
        : ambito_(ambito), distinte_(std::move(distinte)) {}

    const std::vector<TipoDistinta>& distinte() const { return distinte_; }
    /// The move that a line asks for, or the reason for which there is none.
    SpostamentoElenco leggi(const VoceElenco& voce, Indice& indice) const;

private:
    const TipoDistinta& distinta(const std::string& codice, std::optional<DistintaId> altrimenti, std::int64_t account,
                                 Indice& indice) const;
    const TipoDistinta& distinta(DistintaId id) const;
    NodoTrovato trova(const TipoDistinta& distinta, std::int64_t account, contract::Date giorno, Indice& indice) const;
    NodoTrovato ritrova(const NodoScelto& scelto, std::string_view lato, Indice& indice) const;
    Richiesta richiesta(const VoceElenco& voce, Indice& indice) const;

    const AmbitoElenco& ambito_;
    std::vector<TipoDistinta> distinte_;
};

} // namespace qz

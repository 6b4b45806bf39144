#pragma once

#include "component/maintenance/Letture.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

template <> struct std::hash<qz::Soggetto> {
    std::size_t operator()(const qz::Soggetto& soggetto) const noexcept {
        auto valore = static_cast<std::uint64_t>(soggetto.account.numero()) * 0x9E3779B97F4A7C15U;
        valore ^= static_cast<std::uint64_t>(soggetto.ditta) * 0xC2B2AE3D27D4EB4FU;
        return static_cast<std::size_t>(valore ^ static_cast<std::uint64_t>(soggetto.tipo.numero()));
    }
};

namespace qz {

/// What is known of the rows of QZ02_DISTINTA, kept exact through the changes of a move, and where these are only
/// supposed, of several moves one after the other. Rows come in the order of
/// the table's indexes: an account's links by distinta and id, children by id.
class FattiNoti {
public:
    /// A link of an account.
    struct LegameNoto {
        NodoId id;
        Legame legame;
        std::optional<CodiceAccount> accountPadre; ///< registered account of the parent
        std::int64_t dittaPadre = 0;               ///< of a registered account
        TipoCF tipoPadre{0};
        std::optional<DistintaId> distintaPadre; ///< of the parent's row
    };

    /// Ids of links that have no row yet begin here, far beyond those of a database.
    static constexpr std::int64_t primoProvvisorio = std::int64_t{1} << 62;
    static bool provvisorio(NodoId id) { return id.numero() >= primoProvvisorio; }

    // Nodes

    void impara(const NodoLetto& nodo, bool registrato);
    const NodoLetto* nodo(NodoId id) const;
    /// Whether the account of a node that is known is registered.
    bool registrato(const Soggetto& soggetto) const { return registrati_.contains(soggetto); }

    // Links of an account: all of them are known, or none

    bool noto(const Soggetto& soggetto) const { return legami_.contains(soggetto); }
    void impara(const Soggetto& soggetto, std::vector<LegameNoto> legami);
    /// Empty for an account that is not known.
    std::span<const LegameNoto> legami(const Soggetto& soggetto) const;

    // Children within the origin distinta: all those of a node are known, or none

    void imparaFigli(NodoId padre, std::vector<NodoId> figli);
    const std::vector<NodoId>* figli(NodoId padre) const;
    void dimenticaFigli() { figli_.clear(); }

    // Changes; what is not known is passed over

    /// supposto: the database goes on giving the row where it stands.
    void cambiaDistinta(NodoId id, DistintaId a, bool supposto = false);
    /// A node goes under another one.
    void sposta(NodoId id, NodoId sotto, DistintaId a);
    void chiudi(NodoId id, contract::Date fine);
    /// A new link; its id is above all others of the account.
    void aggiungi(const Soggetto& soggetto, const LegameNoto& legame, bool traIFigli);
    /// A link got its row.
    void rinumera(const Soggetto& soggetto, NodoId provvisorio, NodoId id);

private:
    void tieniFiglio(NodoId padre, NodoId figlio);
    LegameNoto* legameDi(const NodoLetto& nodo);
    static void ordina(std::vector<LegameNoto>& legami);

    std::unordered_map<NodoId, NodoLetto> nodi_;
    std::unordered_set<Soggetto> registrati_;
    std::unordered_map<Soggetto, std::vector<LegameNoto>> legami_;
    std::unordered_map<NodoId, std::vector<NodoId>> figli_;
    /// Children that the database does not give, or not in their distinta: those without a row yet, and those whose
    /// change is only supposed.
    std::unordered_map<NodoId, std::vector<NodoId>> figliNuovi_;
};

/// Company, kind and account of a node, where it has all three.
std::optional<Soggetto> soggettoDi(const NodoLetto& nodo);

} // namespace qz

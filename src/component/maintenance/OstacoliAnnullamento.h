#pragma once

#include "component/maintenance/LetturaRegistro.h"
#include "component/maintenance/Piano.h"
#include "contract/Connection.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace qz {

/// A row that an operation changed, on its way back to what it held before.
struct RigaDaRiprendere {
    NodoId nodo;
    std::optional<CodiceAccount> account;
    contract::RowOutcome esito;                  ///< what the operation did with it
    std::int64_t ostacoli = 0;                   ///< what conta() found just after the operation
    std::optional<contract::RowValues> lasciati; ///< what the operation left; nothing: it deleted the row
    std::optional<contract::RowValues> tornano;  ///< what comes back; nothing: the row goes
};

/// What stands in the way of taking an operation back. Reads, and writes nothing.
class OstacoliAnnullamento {
public:
    /// All of them must outlive the object.
    OstacoliAnnullamento(contract::Connection& database, std::int64_t ditta, std::int64_t operazione,
                         const std::vector<RigaDaRiprendere>& righe);

    /// Empty where it may be taken back. What stood in the way just after the operation does not count: taking it back
    /// then gives back what was. Database errors come through.
    std::vector<contract::Obstacle> trova();

    /// How many facts would stand in the way of each row, of an operation that is just being written.
    std::unordered_map<NodoId, std::int64_t> conta();

private:
    /// What a row of QZ02_DISTINTA says of its link.
    struct Riga {
        std::optional<std::int64_t> ditta;
        std::optional<TipoCF> tipo;
        std::optional<CodiceAccount> account;
        Legame legame;
    };

    /// A fact about a row.
    struct Fatto {
        std::size_t riga;
        std::string motivo;
    };

    void leggiPresenti(bool tutte);
    void confrontaPresente(const RigaDaRiprendere& riga, const contract::Recordset& record);
    void cercaSeguenti();
    void cercaAppesi();
    void cercaPremi();
    void cercaSovrapposti();
    void confrontaPeriodo(const RigaDaRiprendere& riga, NodoId altro, const Riga& altra);
    void cercaAnelli();
    void risali(const RigaDaRiprendere& riga);

    static void applica(Riga& riga, const contract::RowValues& valori);
    static Riga rigaDelRecord(const contract::Recordset& record);
    /// A row as it would stand afterwards; nothing where there would be none.
    const Riga* poi(NodoId nodo);
    bool appartiene(NodoId nodo) const { return posizioni_.contains(nodo); }
    void fatto(const RigaDaRiprendere& riga, std::string motivo);
    /// The facts as obstacles, each once.
    std::vector<contract::Obstacle> ostacoli() const;
    /// Whether taking a row back changes where or when it holds.
    static bool cambiaLegame(const RigaDaRiprendere& riga);
    /// Blocks of rows that an action takes the ids of.
    void perNodi(const std::function<bool(const RigaDaRiprendere&)>& quali,
                 const std::function<void(std::span<const NodoId>)>& azione) const;

    contract::Connection& database_;
    std::int64_t ditta_;
    std::int64_t operazione_;
    const std::vector<RigaDaRiprendere>& righe_;
    std::unordered_map<NodoId, std::size_t> posizioni_;     ///< of the operation's rows
    std::unordered_map<NodoId, Riga> ora_;                  ///< those that are there now
    std::unordered_map<NodoId, Riga> poi_;                  ///< as they would stand afterwards
    std::unordered_map<NodoId, std::optional<Riga>> altre_; ///< other rows that were looked up
    std::vector<Fatto> fatti_;
};

} // namespace qz

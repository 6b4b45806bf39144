#pragma once

#include "component/maintenance/OstacoliAnnullamento.h"
#include "component/maintenance/Piano.h"
#include "contract/Connection.h"
#include "contract/MoveRegistry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qz {

/// Takes operations of the registry back: every row gets the values that it held before, as long as it still holds
/// what the operation left. What was taken back is itself an operation.
class Annullamento {
public:
    /// The connection must outlive the object. ora: "HH:MM:SS".
    Annullamento(contract::Connection& database, std::int64_t ditta, Autore autore, std::string ora);

    /// What esegui() would do. Throws RuntimeError 5 for an unknown operation.
    contract::Undoing prova(std::int64_t operazione);
    /// In one transaction of its own. Throws RuntimeError 5 for an unknown operation and where rows change under it;
    /// nothing is written then.
    contract::Undoing esegui(std::int64_t operazione);

private:
    static std::vector<RigaDaRiprendere> daRiprendere(const std::vector<RigaRegistrata>& registrate);
    static std::vector<contract::OperationRow> comeRighe(const std::vector<RigaDaRiprendere>& righe);
    static contract::Obstacle giaAnnullata(const contract::Operation& operazione);
    void scrivi(const std::vector<RigaDaRiprendere>& righe);
    void reinserisci(const std::vector<RigaDaRiprendere>& righe);
    void ripristina(const std::vector<RigaDaRiprendere>& righe);
    void elimina(const std::vector<RigaDaRiprendere>& righe);

    contract::Connection& database_;
    std::int64_t ditta_;
    Autore autore_;
    std::string ora_;
};

} // namespace qz

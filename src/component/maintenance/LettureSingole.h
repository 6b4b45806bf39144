#pragma once

#include "component/maintenance/Letture.h"
#include "contract/Connection.h"
#include "contract/Recordset.h"

#include <vector>

namespace qz {

/// What a new link gets from the link of the current record; nothing where all five are missing or blank.
std::shared_ptr<const Facoltativi> facoltativiDelLegame(const contract::Recordset& record);

/// The node of the current record. Throws RuntimeError 13 where the id is missing, or a number is none.
NodoLetto nodoLetto(const contract::Recordset& record);

/// Facts read with one statement each, at the moment they are asked for.
class LettureSingole : public Letture {
public:
    explicit LettureSingole(contract::Connection& database) : database_(database) {}

    std::int64_t righe(DistintaId distinta) override;
    std::int64_t righe(std::int64_t ditta, DistintaId distinta) override;
    std::optional<NodoLetto> nodo(std::int64_t ditta, NodoId id) override;
    std::vector<NodoLetto> figli(NodoId padre, DistintaId distinta) override;
    std::span<const std::optional<CodiceAccount>> padri(const Soggetto& soggetto, DistintaId distinta) override;
    std::optional<PadreDecodificato> sostituto(NodoId nodo, std::optional<contract::Date> inizio) override;
    std::optional<LegameSovrapposto> sovrapposto(const Soggetto& soggetto, const Periodo& periodo,
                                                 std::optional<NodoId> escluso) override;
    bool premioDefinitivo(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) override;

private:
    contract::Connection& database_;
    std::vector<std::optional<CodiceAccount>> padri_;
};

} // namespace qz

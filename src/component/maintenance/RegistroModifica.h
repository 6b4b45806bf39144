#pragma once

#include "component/maintenance/RegistroSpostamenti.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qz {

/// The operation of the registry for the dates of one node, edited in place within a transaction.
class RegistroModifica {
public:
    /// A pair of dates as a record holds them; null where it has none.
    struct Date {
        contract::Value inizio;
        contract::Value fine;
    };

    /// The connection must outlive the object. ora: "HH:MM:SS"; nothing where no registry is kept: then nothing is
    /// read or written.
    RegistroModifica(contract::Connection& database, std::int64_t ditta, const Autore& autore,
                     std::optional<std::string> ora);

    /// Before the row is written.
    void primaDiScrivere(NodoId nodo);
    /// After it was.
    void scrivi(NodoId nodo, CodiceAccount account, const Date& prima, const Date& dopo);

private:
    std::optional<RegistroSpostamenti> registro_;
};

} // namespace qz

#pragma once

#include "form/shared/StatoForm.h"
#include "maintenance/IstruzioniControlli.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qz {

/// A bounded queue with the bounds 1 to capacity; what would stand beyond is dropped.
template <class Elemento> class CodaLimitata {
public:
    /// Throws RuntimeError 6 for a negative capacity or one beyond memory.
    explicit CodaLimitata(std::int64_t capacita) : capacita_(capacita) {}

    std::int64_t testa = 0; ///< position read last; 0 before the first
    std::int64_t coda() const { return static_cast<std::int64_t>(elementi_.size()); }
    std::int64_t capacita() const { return capacita_; }
    bool piena() const { return coda() >= capacita_; }

    void accoda(const Elemento& elemento) {
        if (!piena())
            elementi_.push_back(elemento);
    }
    /// The element at the head; nothing when the head stands outside what was stored.
    const Elemento* inTesta() const {
        return testa >= 1 && testa <= coda() ? &elementi_[static_cast<std::size_t>(testa - 1)] : nullptr;
    }

private:
    std::int64_t capacita_;
    std::vector<Elemento> elementi_;
};

/// Node and account that stand for a parent of the origin; both 0 when nothing was found.
struct PadreDecodificato {
    std::int64_t id = 0;
    contract::Value account = std::int32_t{0};
};

/// Link whose period and parent are tested.
struct LegameDaControllare {
    contract::Value idPadre;
    std::int64_t ditta = 0;
    std::int64_t tipoCF = 0;
    contract::Value account;
    contract::Date inizio;
    std::string fine;                   ///< "dd/mm/yyyy"
    std::optional<std::int64_t> nodo{}; ///< the edited node, in the mode "Edit"; nothing in the mode "Sposta"
};

/// Why the start of a link with a definitive bonus stays as it is.
inline constexpr std::string_view dataInizioBloccata =
    "La data inizio non può essere modificata perchè è presente un premio definitivo";

/// The checks that keep a distinta without cycles and overlaps. They report by appending to the move message, each
/// reason ending with a line feed; database errors come through.
class Controlli {
public:
    explicit Controlli(StatoForm& stato) : stato_(stato) {}

    /// Whether account a may hang under account b in the destination: appends a reason if b is a or hangs below a.
    /// A missing account equals nothing.
    void ControllaRicorsione(const contract::Value& a, const contract::Value& b);

    /// Whether a node may hang under another one: appends the reason of ControllaRicorsione if it stands above it. That
    /// one compares accounts, and of several links of an account only the first; this one follows the links themselves,
    /// so that no branch ever closes into a ring, which no tree would show. One statement a level, read under the
    /// move's transaction; a ring that stands already ends the way.
    void ControllaDiscendenza(std::int64_t idNodo, const contract::Value& account, std::int64_t idDestinazione);

    /// Rows of the origin distinta of the company, plus one.
    std::int64_t ContaNodiDitta();

    /// Node of the destination that stands for a node of the origin; with a start date, the copy that starts on it.
    PadreDecodificato DecodificaPadre(std::int64_t idNodo, std::optional<contract::Date> inizio);

    /// True when the link may be saved; otherwise a reason was appended.
    bool ControllaLegami(const LegameDaControllare& legame);

    /// Whether a definitive bonus blocks a change of a node's validity; then the form's text says so. Only an end date
    /// looks at the date ("dd/mm/yyyy").
    bool PremioDefinitivo(std::int64_t idNodo, bool dataFine, std::string_view data);

private:
    void AccodaPadri(const contract::Recordset& padri, CodaLimitata<contract::Value>& coda) const;
    std::string etichetta(const contract::Value& account) const;

    StatoForm& stato_;
};

} // namespace qz

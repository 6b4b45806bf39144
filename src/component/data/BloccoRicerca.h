#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qz {

/// The texts of a column, one after the other without regard to case, so that a search is one scan over one block.
class BloccoRicerca {
public:
    void svuota();
    void prenota(std::size_t testi, std::size_t byte);
    /// Appends the text of the next node; nothing for a node without a value, which no search finds.
    void aggiungi(std::optional<std::string_view> testo);
    std::size_t numero() const { return inizi_.size(); }

    /// First text at or after position da that contains the text sought (already without capitals; the empty text is
    /// contained in every value). Nothing when there is none before position fino.
    std::optional<std::size_t> trova(std::string_view cercato, std::size_t da, std::size_t fino) const;

private:
    std::string blocco_;
    std::vector<std::uint64_t> inizi_;
    std::vector<std::size_t> mancanti_; // ascending
};

} // namespace qz

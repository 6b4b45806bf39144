#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qz {

/// A bounded queue with the bounds 1 to capacity; what would stand beyond is dropped.
template <class Elemento> class CodaLimitata {
public:
    /// Nothing can be queued where the capacity is not positive.
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
    /// All that was queued, the first at position 1.
    const std::vector<Elemento>& elementi() const { return elementi_; }

private:
    std::int64_t capacita_;
    std::vector<Elemento> elementi_;
};

} // namespace qz

#include "component/data/BloccoRicerca.h"

#include "component/data/Lettere.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace qz {

namespace {

// Stands between the texts; a line of a search field never holds it.
constexpr char separatore = '\n';

std::uint64_t ottoByte(const char* da) {
    std::uint64_t byte = 0;
    std::memcpy(&byte, da, sizeof byte);
    return byte;
}

constexpr std::uint64_t ripetuto(char c) {
    return 0x0101010101010101U * static_cast<unsigned char>(c);
}

/// Where a text of at least one byte stands in a block, nothing when it does not. Looks at its first and its last byte
/// for eight places at once (a byte of a word is zero if the usual (x - 0x01…) & ~x & 0x80… says so; see
/// https://graphics.stanford.edu/~seander/bithacks.html#ZeroInWord), so that the time does not depend on how frequent
/// the letters are.
const char* trovaTesto(const char* inizio, const char* fine, std::string_view cercato) {
    const auto ultimo = cercato.size() - 1;
    if (static_cast<std::size_t>(fine - inizio) < cercato.size())
        return nullptr;
    const std::uint64_t primi = ripetuto(cercato.front());
    const std::uint64_t ultimi = ripetuto(cercato.back());
    const char* const limite = fine - ultimo; // one past the last place where it can begin
    const auto qui = [&](const char* da) { return std::memcmp(da, cercato.data(), cercato.size()) == 0; };
    const char* da = inizio;
    for (; limite - da >= 8; da += 8) {
        const auto diversi = (ottoByte(da) ^ primi) | (ottoByte(da + ultimo) ^ ultimi);
        if (((diversi - ripetuto(1)) & ~diversi & ripetuto('\x80')) == 0)
            continue;
        for (int i = 0; i < 8; ++i)
            if (qui(da + i))
                return da + i;
    }
    for (; da < limite; ++da)
        if (qui(da))
            return da;
    return nullptr;
}

} // namespace

void BloccoRicerca::svuota() {
    blocco_.clear();
    inizi_.clear();
    mancanti_.clear();
}

void BloccoRicerca::prenota(std::size_t testi, std::size_t byte) {
    inizi_.reserve(testi);
    blocco_.reserve(byte + testi);
}

void BloccoRicerca::aggiungi(std::optional<std::string_view> testo) {
    if (!testo)
        mancanti_.push_back(inizi_.size());
    inizi_.push_back(blocco_.size());
    if (testo)
        aggiungiSenzaMaiuscole(blocco_, *testo);
    blocco_.push_back(separatore);
}

std::optional<std::size_t> BloccoRicerca::trova(std::string_view cercato, std::size_t da, std::size_t fino) const {
    fino = std::min(fino, inizi_.size());
    if (da >= fino || cercato.find(separatore) != std::string_view::npos)
        return std::nullopt;
    if (cercato.empty()) {
        for (auto posizione = da; posizione < fino; ++posizione)
            if (!std::binary_search(mancanti_.begin(), mancanti_.end(), posizione))
                return posizione;
        return std::nullopt;
    }
    const char* const fine = blocco_.data() + (fino == inizi_.size() ? blocco_.size() : inizi_[fino]);
    const char* const trovato = trovaTesto(blocco_.data() + inizi_[da], fine, cercato);
    if (!trovato)
        return std::nullopt;
    const auto posizione = static_cast<std::uint64_t>(trovato - blocco_.data());
    return static_cast<std::size_t>(std::upper_bound(inizi_.begin(), inizi_.end(), posizione) - inizi_.begin()) - 1;
}

} // namespace qz

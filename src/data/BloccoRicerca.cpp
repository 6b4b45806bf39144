#include "data/BloccoRicerca.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace qz {

namespace {

// Stands between the texts; a line of a search field never holds it.
constexpr char separatore = '\n';

/// Small letter of a capital, for the letters that UTF-8 writes in two bytes (U+0080 to U+07FF); the pairs are those of
/// the Unicode character database, https://www.unicode.org/Public/UCD/latest/ucd/CaseFolding.txt.
char32_t minuscola(char32_t c) {
    const auto fra = [c](char32_t primo, char32_t ultimo) { return c >= primo && c <= ultimo; };
    if ((fra(0xC0, 0xDE) && c != 0xD7) || fra(0x391, 0x3A1) || fra(0x3A3, 0x3AB) || fra(0x410, 0x42F))
        return c + 32;
    if (c == 0x178)
        return 0xFF;
    if (fra(0x139, 0x148) || fra(0x179, 0x17E))
        return c % 2 == 1 ? c + 1 : c;
    if ((fra(0x100, 0x137) && c != 0x130 && c != 0x131) || fra(0x14A, 0x177))
        return c % 2 == 0 ? c + 1 : c;
    if (c == 0x386)
        return 0x3AC;
    if (fra(0x388, 0x38A))
        return c + 37;
    if (c == 0x38C)
        return 0x3CC;
    if (c == 0x38E || c == 0x38F)
        return c + 63;
    if (fra(0x400, 0x40F))
        return c + 80;
    return c;
}

void aggiungiMinuscole(std::string& risultato, std::string_view testo) {
    for (std::size_t i = 0; i < testo.size(); ++i) {
        const auto primo = static_cast<unsigned char>(testo[i]);
        if (primo >= 'A' && primo <= 'Z') {
            risultato.push_back(static_cast<char>(primo + 32));
            continue;
        }
        const auto secondo = i + 1 < testo.size() ? static_cast<unsigned char>(testo[i + 1]) : 0U;
        if (primo < 0xC2 || primo > 0xDF || (secondo & 0xC0U) != 0x80U) {
            risultato.push_back(testo[i]);
            continue;
        }
        const auto lettera = minuscola(static_cast<char32_t>(((primo & 0x1FU) << 6U) | (secondo & 0x3FU)));
        risultato.push_back(static_cast<char>(0xC0U | (lettera >> 6U)));
        risultato.push_back(static_cast<char>(0x80U | (lettera & 0x3FU)));
        ++i;
    }
}

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

std::string senzaMaiuscole(std::string_view testo) {
    std::string risultato;
    risultato.reserve(testo.size());
    aggiungiMinuscole(risultato, testo);
    return risultato;
}

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
        aggiungiMinuscole(blocco_, *testo);
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

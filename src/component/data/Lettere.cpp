#include "component/data/Lettere.h"

#include "component/data/TabellaLettere.h"

#include <cstddef>
#include <cstdint>

namespace qz {

namespace {

constexpr std::size_t letterePerPagina = 256;
constexpr std::size_t finePagine = trattiLettere.back().ultima / letterePerPagina + 1;

constexpr std::size_t contaPagine() {
    std::array<bool, finePagine> usata{};
    std::size_t pagine = 0;
    for (const auto& tratto : trattiLettere)
        for (auto lettera = tratto.prima; lettera <= tratto.ultima; lettera += tratto.passo)
            if (auto& pagina = usata[lettera / letterePerPagina]; !pagina) {
                pagina = true;
                ++pagine;
            }
    return pagine;
}

/// The distance of each letter to the one that it folds to, by pages; most pages have no such letter, and share the
/// first one, which is empty.
struct Tabella {
    std::array<std::uint8_t, finePagine> pagina{};
    std::array<std::array<std::int32_t, letterePerPagina>, contaPagine() + 1> distanza{};
};

constexpr Tabella faTabella() {
    Tabella tabella;
    std::uint8_t pagine = 0;
    for (const auto& tratto : trattiLettere)
        for (auto lettera = tratto.prima; lettera <= tratto.ultima; lettera += tratto.passo) {
            auto& pagina = tabella.pagina[lettera / letterePerPagina];
            if (pagina == 0)
                pagina = ++pagine;
            tabella.distanza[pagina][lettera % letterePerPagina] = tratto.distanza;
        }
    return tabella;
}

constexpr Tabella tabella = faTabella();

/// 0 for a letter that stays.
std::int32_t distanza(std::uint32_t lettera) {
    const auto pagina = lettera / letterePerPagina;
    return pagina < finePagine ? tabella.distanza[tabella.pagina[pagina]][lettera % letterePerPagina] : 0;
}

/// The letter that begins a text and its length in bytes; 0 where it is none.
struct Letta {
    std::uint32_t lettera = 0;
    std::size_t byte = 0;
};

Letta prossima(std::string_view testo) {
    const auto primo = static_cast<unsigned char>(testo.front());
    std::size_t byte = 0;
    std::uint32_t lettera = 0;
    std::uint32_t minima = 0; // what is shorter is no letter
    if (primo >= 0xC2 && primo <= 0xDF) {
        byte = 2;
        lettera = primo & 0x1FU;
        minima = 0x80;
    } else if ((primo & 0xF0U) == 0xE0) {
        byte = 3;
        lettera = primo & 0x0FU;
        minima = 0x800;
    } else if ((primo & 0xF8U) == 0xF0) {
        byte = 4;
        lettera = primo & 0x07U;
        minima = 0x10000;
    }
    if (byte == 0 || testo.size() < byte)
        return {};
    for (std::size_t i = 1; i < byte; ++i) {
        const auto altro = static_cast<unsigned char>(testo[i]);
        if ((altro & 0xC0U) != 0x80U)
            return {};
        lettera = lettera << 6U | (altro & 0x3FU);
    }
    return lettera < minima ? Letta{} : Letta{lettera, byte};
}

void aggiungiLettera(std::string& risultato, std::uint32_t lettera) {
    const auto aggiungi = [&](std::uint32_t byte) { risultato.push_back(static_cast<char>(byte)); };
    if (lettera < 0x80) {
        aggiungi(lettera);
    } else if (lettera < 0x800) {
        aggiungi(0xC0U | lettera >> 6U);
        aggiungi(0x80U | (lettera & 0x3FU));
    } else if (lettera < 0x10000) {
        aggiungi(0xE0U | lettera >> 12U);
        aggiungi(0x80U | (lettera >> 6U & 0x3FU));
        aggiungi(0x80U | (lettera & 0x3FU));
    } else {
        aggiungi(0xF0U | lettera >> 18U);
        aggiungi(0x80U | (lettera >> 12U & 0x3FU));
        aggiungi(0x80U | (lettera >> 6U & 0x3FU));
        aggiungi(0x80U | (lettera & 0x3FU));
    }
}

} // namespace

void aggiungiSenzaMaiuscole(std::string& risultato, std::string_view testo) {
    for (std::size_t i = 0; i < testo.size();) {
        const auto primo = static_cast<unsigned char>(testo[i]);
        if (primo < 0x80) {
            risultato.push_back(static_cast<char>(primo >= 'A' && primo <= 'Z' ? primo + 32 : primo));
            ++i;
            continue;
        }
        const auto letta = prossima(testo.substr(i));
        const auto fino = letta.byte == 0 ? 1 : letta.byte;
        if (const auto via = distanza(letta.lettera); via != 0)
            aggiungiLettera(risultato, static_cast<std::uint32_t>(static_cast<std::int32_t>(letta.lettera) + via));
        else
            risultato.append(testo, i, fino);
        i += fino;
    }
}

std::string senzaMaiuscole(std::string_view testo) {
    std::string risultato;
    risultato.reserve(testo.size());
    aggiungiSenzaMaiuscole(risultato, testo);
    return risultato;
}

} // namespace qz

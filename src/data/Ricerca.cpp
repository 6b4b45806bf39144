#include "data/Ricerca.h"

#include "data/Lettere.h"
#include <optional>
#include <string>

namespace qz {

namespace {

constexpr std::string_view colonnaNome = "RagioneSociale";
// Both menus use this name, although the destination tree's code column has another.
constexpr std::string_view colonnaCodice = "trQZ02_CLIFOR_CG44";
constexpr int invio = 13;

/// First node from the focused one on that holds the text, then from the first node on; none when there is none.
contract::Node trova(const BloccoRicerca& testi, const std::string& testo, contract::Node fuoco) {
    const auto da = fuoco ? static_cast<std::size_t>(fuoco.position) : 0;
    const std::string cercato = senzaMaiuscole(testo);
    auto trovato = testi.trova(cercato, da, testi.numero());
    if (!trovato)
        trovato = testi.trova(cercato, 0, testi.numero());
    return trovato ? contract::Node{static_cast<std::int32_t>(*trovato)} : contract::Node{};
}

} // namespace

const BloccoRicerca& Ricerca::blocco(std::string_view colonna) {
    if (datiDelBlocco_.lock() != lato_.dati) {
        blocchi_.clear();
        datiDelBlocco_ = lato_.dati;
    }
    if (const auto pronto = blocchi_.find(colonna); pronto != blocchi_.end())
        return pronto->second;

    const auto& valori = lato_.dati->rows().column(lato_.dati->FieldIndex(lato_.albero->fieldOf(colonna)));
    BloccoRicerca nuovo;
    const auto numero = lato_.albero->nodeCount();
    nuovo.prenota(numero, numero * 32);
    const bool testo = valori.storage() == contract::Column::Storage::text;
    for (auto nodo = lato_.albero->firstNode(); nodo; nodo = lato_.albero->next(nodo)) {
        const auto riga = lato_.albero->row(nodo);
        if (valori.isNull(riga))
            nuovo.aggiungi(std::nullopt);
        else if (testo)
            nuovo.aggiungi(valori.text(riga));
        else
            nuovo.aggiungi(valori.value(riga).text());
    }
    return blocchi_.emplace(std::string(colonna), std::move(nuovo)).first->second;
}

void Ricerca::CercaNellaDistinta(std::string_view colonna) {
    stato_.procedura("CercaNellaDistinta", [&](auto& passo) {
        if (lato_.vuoto())
            return;
        const BloccoRicerca* testi = nullptr;
        passo([&] { testi = &blocco(colonna); });
        std::optional<std::string> cercato;
        passo([&] { cercato = lato_.cerca->text(); });
        if (testi == nullptr || !cercato)
            return; // passed over: there is nothing to compare
        const auto fuoco = lato_.albero->focused();
        const auto trovato = trova(*testi, *cercato, fuoco);
        if (!trovato) {
            passo([&] {
                if (const auto barra = stato_.ospite ? stato_.ospite->StatusBar() : nullptr)
                    barra->setText("Nessun nodo contiene \"" + *cercato + "\".");
            });
            return;
        }
        if (trovato != fuoco)
            passo([&] { lato_.albero->setFocused(trovato); });
        passo([&] { lato_.albero->makeVisible(trovato); });
    });
}

void Ricerca::menuScelto(std::string_view chiave) {
    stato_.procedura(lato_.descrizione.nomeMenuCerca, [&](auto& passo) {
        if (chiave == "RagSoc")
            passo([&] { CercaNellaDistinta(colonnaNome); });
        else if (chiave == "Codice")
            passo([&] { CercaNellaDistinta(colonnaCodice); });
        passo([&] { lato_.albero->setFocus(); });
    });
}

void Ricerca::tastoPremuto(int codice) {
    if (codice != invio)
        return;
    stato_.procedura(lato_.descrizione.nomeTastoCerca, [&](auto& passo) {
        passo([&] { CercaNellaDistinta(colonnaNome); });
        passo([&] { lato_.albero->setFocus(); });
    });
}

} // namespace qz

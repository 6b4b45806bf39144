#include "data/Ricerca.h"

#include "data/Lettere.h"

namespace qz {

namespace {

constexpr std::string_view colonnaNome = "RagioneSociale";
// Both menus use this name, although the destination tree's code column has another.
constexpr std::string_view colonnaCodice = "trQZ02_CLIFOR_CG44";
constexpr int invio = 13;

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
        passo([&] {
            if (lato_.vuoto())
                return;
            const auto& testi = blocco(colonna);
            const auto fuoco = lato_.albero->focused();
            const auto da = fuoco ? static_cast<std::size_t>(fuoco.position) : 0;
            const std::string cercato = senzaMaiuscole(lato_.cerca->text());
            auto trovato = testi.trova(cercato, da, testi.numero());
            if (!trovato)
                trovato = testi.trova(cercato, 0, testi.numero());
            if (!trovato) {
                if (stato_.ospite && stato_.ospite->StatusBar())
                    stato_.ospite->StatusBar()->setText("Nessun nodo contiene \"" + lato_.cerca->text() + "\".");
                return;
            }
            const contract::Node nodo{static_cast<std::int32_t>(*trovato)};
            if (nodo != fuoco)
                lato_.albero->setFocused(nodo);
            lato_.albero->makeVisible(nodo);
        });
    });
}

void Ricerca::menuScelto(std::string_view chiave) {
    if (chiave == "RagSoc")
        CercaNellaDistinta(colonnaNome);
    else if (chiave == "Codice")
        CercaNellaDistinta(colonnaCodice);
    lato_.albero->setFocus();
}

void Ricerca::tastoPremuto(int codice) {
    if (codice != invio)
        return;
    CercaNellaDistinta(colonnaNome);
    lato_.albero->setFocus();
}

} // namespace qz

#include "component/data/Ricerca.h"

#include "component/data/Lettere.h"

#include <optional>
#include <string>
#include <utility>

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

/// A match, its number among all of them, and how many they are.
struct Posto {
    contract::Node nodo;
    std::size_t numero = 0;
    std::size_t tutti = 0;
};

/// The match behind the focused node, or the one before it, round the end.
Posto vicino(const BloccoRicerca& testi, const std::string& cercato, contract::Node fuoco, bool indietro) {
    const auto qui = fuoco ? static_cast<std::size_t>(fuoco.position) : 0;
    std::size_t tutti = 0;
    std::size_t primo = 0;
    std::size_t ultimo = 0;
    std::optional<std::pair<std::size_t, std::size_t>> trovato; // position and number
    for (auto at = testi.trova(cercato, 0, testi.numero()); at; at = testi.trova(cercato, *at + 1, testi.numero())) {
        if (++tutti == 1)
            primo = *at;
        ultimo = *at;
        if (indietro ? *at < qui : (*at > qui && !trovato))
            trovato = {*at, tutti};
    }
    if (tutti == 0)
        return {};
    if (!trovato)
        trovato = indietro ? std::pair{ultimo, tutti} : std::pair{primo, std::size_t{1}};
    return {contract::Node{static_cast<std::int32_t>(trovato->first)}, trovato->second, tutti};
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
        ultimaColonna_ = colonna;
        ultimoTesto_ = *cercato;
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

std::string Ricerca::nome(contract::Node nodo) const {
    const auto testo = [&](std::string_view colonna) { return lato_.albero->value(nodo, colonna).text(); };
    return testo(lato_.descrizione.colonnaCodice) + " " + testo(colonnaNome);
}

std::string Ricerca::percorso(contract::Node nodo) const {
    constexpr int vicini = 6;
    std::string testo = nome(nodo);
    auto padre = lato_.albero->parent(nodo);
    for (int scritti = 1; padre && scritti < vicini; ++scritti, padre = lato_.albero->parent(padre))
        testo = nome(padre) + " › " + testo;
    if (!padre)
        return testo;
    auto primo = padre;
    for (auto sopra = primo; sopra; sopra = lato_.albero->parent(sopra))
        primo = sopra;
    return nome(primo) + (primo == padre ? " › " : " › … › ") + testo;
}

std::string Ricerca::CercaAncora(bool indietro) {
    std::string nota;
    stato_.procedura("CercaAncora", [&](auto& passo) { cercaAncora(passo, indietro, nota); });
    return nota;
}

void Ricerca::cercaAncora(FormBase::Passo& passo, bool indietro, std::string& nota) {
    if (lato_.vuoto())
        return;
    if (ultimaColonna_.empty()) {
        passo([&] { ultimoTesto_ = lato_.cerca->text(); });
        if (ultimoTesto_.empty()) {
            nota = "Scrivere prima che cosa cercare.";
            passo([&] { lato_.cerca->setFocus(); });
            return;
        }
        ultimaColonna_ = colonnaNome;
    }
    const BloccoRicerca* testi = nullptr;
    passo([&] { testi = &blocco(ultimaColonna_); });
    if (testi == nullptr)
        return; // passed over: there is nothing to compare
    const auto fuoco = lato_.albero->focused();
    const auto posto = vicino(*testi, senzaMaiuscole(ultimoTesto_), fuoco, indietro);
    if (posto.tutti == 0) {
        nota = "Nessun nodo contiene \"" + ultimoTesto_ + "\".";
        return;
    }
    if (posto.nodo != fuoco)
        passo([&] { lato_.albero->setFocused(posto.nodo); });
    passo([&] { lato_.albero->makeVisible(posto.nodo); });
    const std::string numero = std::to_string(posto.numero) + " di " + std::to_string(posto.tutti);
    nota = numero;
    passo([&] { nota = numero + ": " + percorso(posto.nodo); });
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

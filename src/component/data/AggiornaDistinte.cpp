#include "component/data/AggiornaDistinte.h"

#include "component/data/CaricaDistinta.h"

#include <optional>
#include <string>
#include <unordered_set>

namespace qz {

namespace {

/// How a side stands on the screen, by the keys of its nodes.
struct Aspetto {
    std::unordered_set<std::int64_t> chiusi;
    std::optional<std::int64_t> prima; ///< the uppermost row
    std::int32_t livello = 0;
    std::string didascalia;
};

Aspetto aspettoDi(const Lato& lato) {
    auto& albero = *lato.albero;
    Aspetto aspetto;
    for (auto nodo = albero.firstNode(); nodo; nodo = albero.next(nodo))
        if (!albero.expanded(nodo) && albero.descendants(nodo) > 0)
            aspetto.chiusi.insert(albero.key(nodo));
    if (albero.firstNode())
        aspetto.prima = albero.key(contract::Node{albero.topRow()});
    aspetto.livello = lato.LivelloCorrente;
    aspetto.didascalia = lato.livelli->caption();
    return aspetto;
}

void ripristina(Lato& lato, const Aspetto& aspetto) {
    if (lato.vuoto() || !aspetto.prima)
        return;
    auto& albero = *lato.albero;
    {
        const SospensioneAlbero sospensione(albero);
        for (auto nodo = albero.firstNode(); nodo; nodo = albero.next(nodo))
            albero.setExpanded(nodo, !aspetto.chiusi.contains(albero.key(nodo)));
    }
    lato.LivelloCorrente = aspetto.livello;
    lato.livelli->setCaption(aspetto.didascalia);
    if (const auto prima = albero.byKey(*aspetto.prima))
        albero.setTopRow(prima.position);
}

} // namespace

bool AggiornaDistinte(StatoForm& stato) {
    bool rilette = true;
    for (auto* lato : {&stato.origine, &stato.destinazione}) {
        if (lato->IdDistinta.empty())
            continue;
        const auto aspetto = aspettoDi(*lato);
        const auto prima = lato->dati;
        CaricaDistintaAnnullabile(stato, *lato, lato->IdDistinta);
        // A load that was left keeps the record set, and one that failed and was passed over has none that is open.
        rilette = rilette && lato->dati != prima && lato->dati->IsOpen();
        stato.procedura("mnuAggiorna_Click", [&](auto& passo) { passo([&] { ripristina(*lato, aspetto); }); });
    }
    return rilette;
}

} // namespace qz

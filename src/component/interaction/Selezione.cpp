#include "component/interaction/Selezione.h"

#include "component/interaction/Livelli.h"

namespace qz {

namespace {

constexpr std::string_view colonnaSeleziona = "Seleziona";
// The destination's code column has another name, so its "Codice" cells open no menu.
constexpr std::string_view colonnaCodice = "trQZ02_CLIFOR_CG44";
constexpr std::string_view colonnaNome = "RagioneSociale";
constexpr std::string_view colonnaStato = "Stato";

std::int64_t codiceCorrente(const Lato& lato) {
    return FormBase::ValoreODefault((*lato.dati)["QZ02_CLIFOR_CG44"], std::int32_t{0}).integer().value_or(0);
}

} // namespace

void Selezione::PropagaFigli(contract::Node nodo, int statoCasella) {
    stato_.procedura("PropagaFigli", [&](auto& passo) {
        auto& albero = *stato_.origine.albero;
        const contract::Value valore = statoCasella == 1 ? "True" : "False";
        SospensioneAlbero sospensione(albero);
        passo([&] { sospensione.sospendi(); });
        for (auto altro = albero.next(nodo); altro && albero.level(altro) != 0; altro = albero.next(altro))
            passo([&] { albero.setValue(altro, colonnaSeleziona, valore); });
        passo([&] { sospensione.riprendi(); });
        if (albero.focused() != nodo)
            passo([&] { albero.setFocused(nodo); });
    });
}

bool Selezione::apreMenu(const Lato& lato, const std::string& colonna) const {
    return colonna == colonnaCodice || colonna == colonnaNome ||
           (lato.descrizione.destinazione && colonna == colonnaStato);
}

void Selezione::OnMouseDown(Lato& lato, contract::MouseButton tasto, contract::Twips x, contract::Twips y) {
    stato_.procedura(lato.descrizione.nomeMouse, [&](auto& passo) {
        contract::TreeHit punto;
        passo([&] { punto = lato.albero->hitTest(x, y); });
        if (!punto.node)
            return;
        if (tasto == contract::MouseButton::left) {
            lato.livelloCliccato = lato.albero->level(punto.node);
            passo([&] { AggiornaDidascaliaLivello(lato); });
            if (lato.descrizione.destinazione && punto.column == colonnaStato && spostaEditorStato)
                spostaEditorStato(passo, punto.node);
            return;
        }
        if (punto.column.empty() || !apreMenu(lato, punto.column))
            return;
        if (lato.descrizione.destinazione) {
            stato_.NodoStatoDest = punto.node;
            stato_.posizioneNodoStato = punto.node.position;
        }
        passo([&] { stato_.CodiceAnagMenu = codiceCorrente(lato); });
        stato_.TipoAnagMenu = lato.TipoCF;
        passo([&] { lato.menu->showAtMouse(); });
    });
}

void Selezione::OnHyperLink(Lato& lato) {
    stato_.procedura(lato.descrizione.nomeLink, [&](auto& passo) {
        passo([&] { stato_.CodiceAnagMenu = codiceCorrente(lato); });
        passo([&] { apriScheda(); });
    });
}

} // namespace qz

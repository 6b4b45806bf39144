#include "data/CaricaDistinta.h"

#include "data/IstruzioniDistinta.h"

#include <algorithm>
#include <optional>
#include <string>

namespace qz {

namespace {

constexpr std::string_view campoChiave = "QZ02_ID";
constexpr std::string_view campoPadre = "QZ02_IDPARENT_QZ02";

void leggiDivisione(StatoForm& stato, Lato& lato, std::string_view idTipo) {
    contract::Recordset tipo;
    tipo.Open(istruzioneDivisione(lato.descrizione, idTipo), stato.database());
    if (tipo.Bof() || tipo.Eof()) {
        lato.Divisione.clear();
        if (lato.descrizione.leggeGuid)
            lato.GuidDistinta.clear();
    } else {
        lato.Divisione = FormBase::ValoreODefault(tipo["QZ01_IDDIV_CO1A"], "").text();
        if (lato.descrizione.leggeGuid)
            lato.GuidDistinta = FormBase::ValoreODefault(tipo["QZ01_GUID"], "").text();
    }
    tipo.Close();
}

std::optional<std::int64_t> nodoInFuoco(const Lato& lato) {
    const auto nodo = lato.vuoto() ? contract::Node{} : lato.albero->focused();
    return nodo ? std::optional(lato.albero->key(nodo)) : std::nullopt;
}

/// The depth counter is deliberately not reset first: it holds the largest depth seen since the form opened. Levels of
/// what is loaded now.
int contaProfondita(Lato& lato) {
    int livelli = 0;
    auto nodo = lato.albero->firstNode();
    for (std::size_t visite = lato.dati->RecordCount(); visite > 0 && nodo; --visite) {
        const int livello = lato.albero->level(nodo);
        if (livello > lato.LivelloMax)
            lato.LivelloMax = livello;
        livelli = std::max(livelli, livello + 1);
        nodo = lato.albero->next(nodo);
    }
    return livelli;
}

/// A tree that is deeper than it is opened says so.
void avvisaProfondita(const StatoForm& stato, int livelli) {
    if (livelli <= contract::TreeList::levelsOpened || stato.ospite == nullptr || !stato.ospite->StatusBar())
        return;
    stato.ospite->StatusBar()->setText("La distinta ha " + std::to_string(livelli) + " livelli: sono aperti i primi " +
                                       std::to_string(contract::TreeList::levelsOpened) + ".");
}

} // namespace

void scriviDidascaliaLivello(Lato& lato, bool comprimi) {
    lato.livelli->setCaption((comprimi ? "Comprimi liv." : "Espandi liv.") + std::to_string(lato.LivelloCorrente + 1));
}

void CaricaDistinta(StatoForm& stato, Lato& lato, std::string_view idTipo) {
    // The id may live in the side itself, which changes below.
    const std::string id(idTipo);
    stato.procedura(lato.descrizione.nomeCarica, [&](auto& passo) {
        std::optional<std::int64_t> fuoco;
        auto righe = std::make_shared<contract::Recordset>();
        passo([&] { leggiDivisione(stato, lato, id); });
        passo([&] {
            if (lato.IdDistinta == id)
                fuoco = nodoInFuoco(lato);
            lato.IdDistinta = id;
            lato.istruzione = istruzioneNodi(lato.descrizione, stato.ditta(), lato.TipoCF, id);
        });
        passo([&] { righe->Open(lato.istruzione, stato.database()); });
        if (righe->Empty()) {
            // The empty record set becomes the side's: a command must not act on a row that is no longer shown.
            lato.dati = righe;
            passo([&] {
                lato.albero->clearNodes();
                lato.albero->unbind();
            });
            return;
        }
        passo([&] { lato.dati = lato.frame->load(lato.istruzione, righe); });
        passo([&] { lato.albero->bind(lato.dati, campoChiave, campoPadre, fuoco); });
        int livelli = 0;
        passo([&] { livelli = contaProfondita(lato); });
        passo([&] {
            lato.LivelloCorrente = lato.LivelloMax;
            scriviDidascaliaLivello(lato, true);
        });
        passo([&] { avvisaProfondita(stato, livelli); });
    });
}

void RicaricaAlberi(StatoForm& stato) {
    for (auto* lato : {&stato.origine, &stato.destinazione})
        if (!lato->IdDistinta.empty())
            CaricaDistinta(stato, *lato, lato->IdDistinta);
}

} // namespace qz

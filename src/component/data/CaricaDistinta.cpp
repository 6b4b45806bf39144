#include "component/data/CaricaDistinta.h"

#include "component/data/IstruzioniDistinta.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace qz {

namespace {

constexpr std::string_view campoChiave = "QZ02_ID";
constexpr std::string_view campoPadre = "QZ02_IDPARENT_QZ02";

/// What could not be read, and was passed over, is empty: never what the distinta before had.
void leggiDivisione(StatoForm& stato, FormBase::Passo& passo, Lato& lato, std::string_view idTipo) {
    contract::Recordset tipo;
    passo([&] { tipo.Open(istruzioneDivisione(lato.descrizione, idTipo), stato.database()); });
    const bool manca = tipo.Bof() || tipo.Eof();
    std::string divisione;
    if (!manca)
        passo([&] { divisione = FormBase::ValoreODefault(tipo["QZ01_IDDIV_CO1A"], "").text(); });
    lato.Divisione = divisione;
    if (lato.descrizione.leggeGuid) {
        std::string guid;
        if (!manca)
            passo([&] { guid = FormBase::ValoreODefault(tipo["QZ01_GUID"], "").text(); });
        lato.GuidDistinta = guid;
    }
    tipo.Close();
}

/// The tree and the side's record set change together, since what the focus raises while the tree is bound reads it.
void lega(Lato& lato, const std::shared_ptr<contract::Recordset>& righe, std::optional<std::int64_t> fuoco) {
    const auto prima = std::exchange(lato.dati, righe);
    try {
        lato.albero->bind(righe, campoChiave, campoPadre, fuoco);
    } catch (...) {
        lato.dati = prima;
        throw;
    }
}

/// The side's record set becomes this empty one: a command must not act on a row that is no longer shown.
void svuotaAlbero(FormBase::Passo& passo, Lato& lato, const std::shared_ptr<contract::Recordset>& vuoto) {
    lato.dati = vuoto;
    passo([&] { lato.albero->clearNodes(); });
    passo([&] { lato.albero->unbind(); });
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

void CaricaDistinta(StatoForm& stato, Lato& lato, std::string_view idTipo, Lettura lettura) {
    // The id may live in the side itself, which changes below.
    const std::string id(idTipo);
    stato.procedura(lato.descrizione.nomeCarica, [&](auto& passo) {
        // Once the rows are there the tree is filled to its end.
        std::optional<contract::Cancellable> annullabile;
        if (lettura == Lettura::annullabile && stato.connessione)
            annullabile.emplace(*stato.connessione);
        std::optional<std::int64_t> fuoco;
        auto righe = std::make_shared<contract::Recordset>();
        leggiDivisione(stato, passo, lato, id);
        if (lato.IdDistinta == id)
            passo([&] { fuoco = nodoInFuoco(lato); });
        lato.IdDistinta = id;
        lato.istruzione = {};
        passo([&] { lato.istruzione = istruzioneNodi(lato.descrizione, stato.ditta(), lato.TipoCF, id); });
        passo([&] { righe->Open(lato.istruzione, stato.database()); });
        annullabile.reset();
        if (righe->Empty()) {
            svuotaAlbero(passo, lato, righe);
            return;
        }
        passo([&] { lato.oggettoDati = lato.frame->load(lato.istruzione, righe); });
        bool legato = false;
        passo([&] {
            lega(lato, righe, fuoco);
            legato = true;
        });
        if (!legato) // passed over: the nodes of the distinta before must not stand under this one's name
            svuotaAlbero(passo, lato, std::make_shared<contract::Recordset>());
        int livelli = 0;
        passo([&] { livelli = contaProfondita(lato); });
        lato.LivelloCorrente = lato.LivelloMax;
        passo([&] { scriviDidascaliaLivello(lato, true); });
        passo([&] { avvisaProfondita(stato, livelli); });
    });
}

void CaricaDistintaAnnullabile(StatoForm& stato, Lato& lato, std::string_view idTipo) {
    const auto id = lato.IdDistinta;
    const auto divisione = lato.Divisione;
    const auto guid = lato.GuidDistinta;
    const auto istruzione = lato.istruzione;
    try {
        CaricaDistinta(stato, lato, idTipo, Lettura::annullabile);
    } catch (const contract::Cancelled&) {
        lato.IdDistinta = id;
        lato.Divisione = divisione;
        lato.GuidDistinta = guid;
        lato.istruzione = istruzione;
        throw;
    }
}

void RicaricaAlberi(StatoForm& stato) {
    for (auto* lato : {&stato.origine, &stato.destinazione})
        if (!lato->IdDistinta.empty())
            CaricaDistinta(stato, *lato, lato->IdDistinta);
}

} // namespace qz

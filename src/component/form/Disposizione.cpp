#include "component/form/Disposizione.h"

#include <algorithm>
#include <cmath>

namespace qz {

namespace {

using contract::Rect;
using contract::Twips;

// Measures for 8 points.
constexpr Twips margine = 120;
constexpr Twips altezzaIntestazione = 420;
constexpr Twips altezzaTipi = 1500;
constexpr Twips altezzaCampo = 375;
constexpr Twips altezzaPulsanti = 660;
constexpr Twips altezzaPulsante = 435;
constexpr Twips larghezzaRuolo = 1350;
constexpr Twips larghezzaMenu = 1100;
constexpr Twips larghezzaLivelli = 1650;
constexpr Twips larghezzaSposta = 2350;
constexpr Twips larghezzaParametri = 1550;
constexpr Twips larghezzaVisto = 480;

// Distances of the trees from the content start; 10 more with the lists shown.
constexpr Twips distanzaSenzaTipi = 200;
constexpr Twips distanzaConTipi = 210;
constexpr Twips aggiuntaSenzaTipi = 50;

// Room that the trees take when the detail grids are hidden and give back when they are shown; the measures of the
// panel to which they are added leave them out.
constexpr Twips aggiuntaNascondiSenzaTipi = 1300;
constexpr Twips aggiuntaNascondiConTipi = 1370;
constexpr Twips sottrattaMostra = 315;

constexpr Twips minimoAlbero = 500;
constexpr Twips minimoDettaglio = 300;
constexpr Twips minimoPannello = 2000;

class Scala {
public:
    explicit Scala(int zoom) : zoom_(zoom) {}
    Twips operator()(Twips misura) const { return misura * zoom_ / 8; }

private:
    int zoom_;
};

/// Share of a room for the first of two neighbours, neither below its limit while the room suffices.
Twips dividi(Twips spazio, double quota, Twips minimoPrimo, Twips minimoSecondo) {
    const auto primo = static_cast<Twips>(std::lround(spazio * quota / 100.0));
    return std::max(std::min(primo, spazio - minimoSecondo), std::min(minimoPrimo, spazio));
}

/// Tree and grid with the lists shown and the grids shown.
void alberoEDettaglio(DisposizioneLato& lato, Twips contenuto, Twips altezza, double quota) {
    const auto alto = contenuto + lato.tipi.height + distanzaConTipi;
    const auto spazio = std::max(altezza - alto - dimensioneBarra, 0);
    lato.albero.top = alto;
    lato.albero.height = dividi(spazio, quota, minimoAlbero, minimoDettaglio);
    lato.dettaglio.top = alto + lato.albero.height + dimensioneBarra;
    lato.dettaglio.height = spazio - lato.albero.height;
}

/// Height of a tree that takes the grid's room as well.
Twips altezzaSenzaDettagli(const DisposizioneLato& lato, Twips contenuto, Twips altezza, bool senzaTipi) {
    const auto conTipi = altezza - contenuto - lato.tipi.height - distanzaConTipi;
    if (senzaTipi) {
        const auto misura = conTipi + lato.tipi.height + aggiuntaSenzaTipi - aggiuntaNascondiSenzaTipi;
        return misura + aggiuntaNascondiSenzaTipi;
    }
    const auto misura = conTipi - aggiuntaNascondiConTipi;
    return misura + aggiuntaNascondiConTipi;
}

/// Height of a tree whose grid is shown again.
Twips altezzaConDettagli(const DisposizioneLato& lato) {
    const auto misura = lato.albero.height + sottrattaMostra;
    return misura - sottrattaMostra;
}

void disponiLato(DisposizioneLato& lato, const DatiDisposizione& dati, const Rect& pannello, double quota,
                 Twips contenuto) {
    const Scala scala(dati.zoom);
    const auto bordo = margine / 2;
    const auto largo = std::max(pannello.width - 2 * bordo, 0);
    const auto testa = scala(altezzaIntestazione);
    const auto campo = scala(altezzaCampo);

    lato.intestazione = {bordo, bordo, largo, testa};
    lato.ruolo = {0, 0, scala(larghezzaRuolo), testa};
    lato.didascalia = {scala(larghezzaRuolo), 0, std::max(largo - scala(larghezzaRuolo), 0), testa};
    lato.tipi = {bordo, bordo + testa + bordo, largo, scala(altezzaTipi)};

    lato.albero = {bordo, 0, largo, 0};
    lato.dettaglio = {bordo, 0, largo, 0};
    alberoEDettaglio(lato, contenuto, pannello.height - bordo, quota);
    lato.albero.height = altezzaConDettagli(lato);
    if (dati.dettagliNascosti)
        lato.albero.height = altezzaSenzaDettagli(lato, contenuto, pannello.height - bordo, false);
    if (dati.selezioneNascosta) {
        lato.albero.top = contenuto + distanzaSenzaTipi;
        lato.albero.height += lato.tipi.height + aggiuntaSenzaTipi;
        if (dati.dettagliNascosti)
            lato.albero.height = altezzaSenzaDettagli(lato, contenuto, pannello.height - bordo, true);
    }

    // The search row stands between the lists, or the head where they are hidden, and the tree.
    const auto riga = lato.albero.top - campo - bordo;
    const auto livelli = std::min(scala(larghezzaLivelli), largo / 3);
    const auto menu = std::min(scala(larghezzaMenu), largo / 4);
    lato.livelli = {bordo + largo - livelli, riga, livelli, campo};
    lato.menuCerca = {lato.livelli.left - bordo - menu, riga, menu, campo};
    lato.cerca = {bordo, riga, std::max(lato.menuCerca.left - bordo - bordo, 0), campo};

    lato.area = {bordo, lato.albero.top, largo, lato.dettaglio.top + lato.dettaglio.height - lato.albero.top};
    const auto sotto = lato.albero.top + lato.albero.height;
    lato.barra = {bordo, sotto, largo, std::max(lato.dettaglio.top - sotto, 0)};
}

void disponiPulsanti(Disposizione& d, const DatiDisposizione& dati) {
    const Scala scala(dati.zoom);
    const auto alto = scala(altezzaPulsante);
    const auto riga = (d.pulsanti.height - alto) / 2;
    const auto visto = scala(larghezzaVisto);
    const auto sposta = scala(larghezzaSposta);
    const auto parametri = scala(larghezzaParametri);
    d.sfondo = {0, 0, d.pulsanti.width, d.pulsanti.height};
    d.vistoSinistra = {margine, riga, visto, alto};
    d.spostaStruttura = {2 * margine + visto, riga, sposta, alto};
    d.spostaValidita = {3 * margine + visto + sposta, riga, sposta, alto};
    d.vistoDestra = {d.pulsanti.width - margine - visto, riga, visto, alto};
    d.parametri = {d.vistoDestra.left - margine - parametri, riga, parametri, alto};
}

} // namespace

Disposizione disponiPannelli(const DatiDisposizione& dati) {
    const Scala scala(dati.zoom);
    Disposizione d;
    const auto pulsanti = scala(altezzaPulsanti);
    const auto altoPannelli = std::max(dati.altezza - pulsanti, 0);
    const auto spazio = std::max(dati.larghezza - dimensioneBarra, 0);
    const auto largoOrig = dividi(spazio, dati.quotaVerticale, minimoPannello, minimoPannello);

    d.pannelloOrig = {0, 0, largoOrig, altoPannelli};
    d.pannelloDest = {largoOrig + dimensioneBarra, 0, spazio - largoOrig, altoPannelli};
    d.areaVerticale = {0, 0, dati.larghezza, altoPannelli};
    d.barraVerticale = {largoOrig, 0, dimensioneBarra, altoPannelli};
    d.pulsanti = {0, altoPannelli, dati.larghezza, pulsanti};
    disponiPulsanti(d, dati);

    // Head and search row, less the distance that the trees keep from it.
    const auto bordo = margine / 2;
    d.inizioContenuto =
        bordo + scala(altezzaIntestazione) + bordo + scala(altezzaCampo) + bordo - distanzaSenzaTipi + bordo;
    disponiLato(d.orig, dati, d.pannelloOrig, dati.quotaOrig, d.inizioContenuto);
    disponiLato(d.dest, dati, d.pannelloDest, dati.quotaDest, d.inizioContenuto);
    return d;
}

} // namespace qz

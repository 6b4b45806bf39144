#pragma once

#include "contract/Control.h"

namespace qz {

/// What the panel layout depends on. Measures in twips.
struct DatiDisposizione {
    contract::Twips larghezza = 0; ///< of the form's client area
    contract::Twips altezza = 0;
    int zoom = 8;               ///< font size in points
    double quotaVerticale = 50; ///< share of the left panel, in percent
    double quotaOrig = 90;      ///< share of the tree against the detail grid, in percent
    double quotaDest = 90;
    bool selezioneNascosta = false; ///< the type lists are hidden
    bool dettagliNascosti = false;  ///< the detail grids are hidden
};

/// Rectangles of one panel's parts, relative to the panel.
struct DisposizioneLato {
    contract::Rect intestazione;
    contract::Rect ruolo;      ///< relative to the head
    contract::Rect didascalia; ///< relative to the head
    contract::Rect tipi;
    contract::Rect cerca;
    contract::Rect menuCerca;
    contract::Rect livelli;
    contract::Rect albero;
    contract::Rect dettaglio;
    contract::Rect area;  ///< of tree and grid together
    contract::Rect barra; ///< of the splitter between them
};

/// Rectangles of the form's parts; those of a panel are relative to it, the others to the client area.
struct Disposizione {
    contract::Rect pannelloOrig;
    contract::Rect pannelloDest;
    contract::Rect areaVerticale;
    contract::Rect barraVerticale;
    contract::Rect pulsanti;
    contract::Rect sfondo; ///< relative to the button group, as are the five buttons
    contract::Rect vistoSinistra;
    contract::Rect spostaStruttura;
    contract::Rect spostaValidita;
    contract::Rect parametri;
    contract::Rect vistoDestra;
    contract::Twips inizioContenuto = 0; ///< vertical position from which the panels' lists and trees are measured
    DisposizioneLato orig;
    DisposizioneLato dest;
};

constexpr contract::Twips dimensioneBarra = 100;

/// Where everything stands. With the lists hidden the trees stand 200 under the panel's content start and are as high
/// as before plus the lists' height and 50; with the lists shown they stand the lists' height and 210 under it. So a
/// hidden list leaves the trees reaching 40 further down, and hiding and showing again restores every measure.
Disposizione disponiPannelli(const DatiDisposizione& dati);

} // namespace qz

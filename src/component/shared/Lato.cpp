#include "component/shared/Lato.h"

#include <exception>

namespace qz {

const DescrizioneLato& latoOrigine() {
    static const DescrizioneLato descrizione{.destinazione = false,
                                             .nomeCarica = "CaricaDistintaOrig",
                                             .nomeClick = "TRW_DISTINTEORIG_Click",
                                             .colonnaCodice = "trQZ02_CLIFOR_CG44",
                                             .colonnaFine = "QZ02_DATAFINEVAL",
                                             .nomeCambioNodo = "TRW_ELEMDISTINTAORIG_OnChangeNode",
                                             .nomeCambioNodoEx = "TRW_ELEMDISTINTAORIG_OnChangeNodeEx",
                                             .nomeMouse = "TRW_ELEMDISTINTAORIG_OnMouseDown",
                                             .nomeLink = "TRW_ELEMDISTINTAORIG_OnHyperLink",
                                             .nomeMenuCerca = "MenuCercaOrig_MenuClick",
                                             .nomeTastoCerca = "txtCercaOrig_KeyPress",
                                             .leggeGuid = false,
                                             .leggeFatturazione = true};
    return descrizione;
}

const DescrizioneLato& latoDestinazione() {
    static const DescrizioneLato descrizione{.destinazione = true,
                                             .nomeCarica = "CaricaDistintaDest",
                                             .nomeClick = "TRW_DISTINTEDEST_Click",
                                             .colonnaCodice = "QZ02_CLIFOR_CG44",
                                             .colonnaFine = "trQZ02_DATAFINEVAL",
                                             .nomeCambioNodo = "TRW_ELEMDISTINTADEST_OnChangeNode",
                                             .nomeCambioNodoEx = "TRW_ELEMDISTINTADEST_OnChangeNodeEx",
                                             .nomeMouse = "TRW_ELEMDISTINTADEST_OnMouseDown",
                                             .nomeLink = "TRW_ELEMDISTINTADEST_OnHyperLink",
                                             .nomeMenuCerca = "MenuCercaDest_MenuClick",
                                             .nomeTastoCerca = "txtCercaDest_KeyPress",
                                             .leggeGuid = true,
                                             .leggeFatturazione = false};
    return descrizione;
}

CursoreSulFuoco::~CursoreSulFuoco() {
    if (lato_.vuoto())
        return;
    const auto nodo = lato_.albero->focused();
    if (nodo)
        lato_.dati->MoveTo(lato_.albero->row(nodo));
    else
        lato_.dati->MoveEnd();
}

SospensioneAlbero::~SospensioneAlbero() {
    try {
        riprendi();
    } catch (const std::exception&) {
        sospeso_ = false; // what brought us here is the error to report
    }
}

void SospensioneAlbero::sospendi() {
    albero_.beginUpdate();
    sospeso_ = true;
}

void SospensioneAlbero::riprendi() {
    if (!sospeso_)
        return;
    albero_.endUpdate();
    sospeso_ = false;
}

} // namespace qz

#pragma once

#include "component/shared/StatoForm.h"

#include <functional>
#include <string>

namespace qz {

/// What the mouse and the check column do in the trees.
class Selezione {
public:
    explicit Selezione(StatoForm& stato) : stato_(stato) {}

    /// Passes a check given to an origin node on to the nodes after it, up to the next top-level node: its own subtree,
    /// and for a node below the top level also the siblings after it and their subtrees, and those of its ancestors.
    void PropagaFigli(contract::Node nodo, int statoCasella);

    /// Left: remembers the clicked level. Right, over an account cell: opens the side's popup menu.
    void OnMouseDown(Lato& lato, contract::MouseButton tasto, contract::Twips x, contract::Twips y);

    /// The link of an account cell was clicked: opens the account's card, of the kind last stored by a menu.
    void OnHyperLink(Lato& lato);

    /// Opens the card of the account and kind remembered.
    std::function<void()> apriScheda;
    /// A "Stato" cell of the destination was pressed: the state editor comes there.
    std::function<void(FormBase::Passo&, contract::Node)> spostaEditorStato;

private:
    bool apreMenu(const Lato& lato, const std::string& colonna) const;

    StatoForm& stato_;
};

} // namespace qz

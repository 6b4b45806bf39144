#pragma once

#include "component/shared/StatoForm.h"

#include <string>
#include <string_view>

namespace qz {

/// The commands of the trees' context menus, and the state editor.
class MenuContestuali {
public:
    explicit MenuContestuali(StatoForm& stato) : stato_(stato) {}

    void mnuSchedaCF_Click(Lato& lato);
    void mnuAnagCF_Click(Lato& lato);
    void mnuStatoLegame_Click();
    void mnuRilasciaFigli_Click();

    /// Opens the customer or supplier card of the account and kind remembered; other kinds open none.
    void CollegamentoSchedaAnag();
    /// Hands the account remembered to the host's account link; kinds other than customer and supplier call nothing.
    void CollegaAnag();

    /// Places the state editor over the "Stato" cell of a destination node and opens its list of states: steps of the
    /// procedure that asks for it.
    void apriEditorStato(FormBase::Passo& passo, contract::Node nodo);
    /// A left press on the "Stato" cell of a destination node: the editor comes there, unless it stands there already.
    void spostaEditorStato(FormBase::Passo& passo, contract::Node nodo);
    /// The destination's cells stand elsewhere: the editor follows its own, and goes where that is not seen in full.
    void TRW_ELEMDISTINTADEST_OnViewMoved();
    /// Steps of the procedure in which it has to go.
    void nascondiEditorStato(FormBase::Passo& passo);
    /// The user left the state editor: a state chosen there is confirmed.
    void TXT_QZ02_STATO_AfterItem();

private:
    /// finita: whether it came to its end.
    void rilasciaFigli(bool& finita);
    void RichiamaScheda(std::string_view procedura, std::string_view programma);
    contract::Rect postoEditor(const contract::Rect& cella) const;
    std::string guidDelNodo(contract::Node nodo) const;

    StatoForm& stato_;
    contract::Node nodoEditor_;   ///< node over whose cell the state editor was last placed
    contract::Rect cellaEditor_;  ///< what was seen of that cell then
    contract::Node appenaAperto_; ///< node for which the editor was asked for since the mouse was last pressed
};

} // namespace qz

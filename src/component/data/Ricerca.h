#pragma once

#include "component/data/BloccoRicerca.h"
#include "component/shared/StatoForm.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace qz {

/// Search of a side's tree for the text of its search field.
class Ricerca {
public:
    Ricerca(StatoForm& stato, Lato& lato) : stato_(stato), lato_(lato) {}

    /// Moves the focus to the next node, the focused one first, whose value in that tree column contains the text,
    /// without regard to case; after the last node it goes on at the first. Nothing changes when there is none.
    /// Reports an unknown column.
    void CercaNellaDistinta(std::string_view colonna);

    /// Moves the focus to the next match of the last search, or to the one before, round the end; without a search so
    /// far it is one by name for the text of the field. What the status line says of it: the match's place among all
    /// and its path, or why there is none.
    std::string CercaAncora(bool indietro);

    /// An item of the search menu was chosen; the focus goes to the tree.
    void menuScelto(std::string_view chiave);
    /// A key was pressed in the search field: Enter searches by name, the focus goes to the tree.
    void tastoPremuto(int codice);

private:
    void cercaAncora(FormBase::Passo& passo, bool indietro, std::string& nota);
    const BloccoRicerca& blocco(std::string_view colonna);
    /// Codes and names from the top-level node down; of a very deep node the first and the nearest ones.
    std::string percorso(contract::Node nodo) const;
    std::string nome(contract::Node nodo) const;

    StatoForm& stato_;
    Lato& lato_;
    std::weak_ptr<contract::Recordset> datiDelBlocco_;
    std::map<std::string, BloccoRicerca, std::less<>> blocchi_;
    std::string ultimaColonna_; ///< of the last search that could be carried out; empty before
    std::string ultimoTesto_;
};

} // namespace qz

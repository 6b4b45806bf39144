#pragma once

#include "component/shared/FormBase.h"
#include "component/shared/Lato.h"
#include "component/shared/MODQZ_DISTINTA.h"
#include "component/shared/NodoSpostato.h"
#include "contract/Date.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qz {

/// The company's rules for new links and for what the account detail shows, as last read.
struct LinkParameters {
    std::int16_t StatoLegame = 0;
    std::int16_t TipoCaricaDATA = 0; ///< 0 dates from the parent node, otherwise the fixed dates
    std::optional<contract::Date> DataFissaINIZIO;
    std::optional<contract::Date> DataFissaFINE;
    bool flg_Anagrafica = false;
    bool flg_CondVendita = false;
    bool flg_Provvigioni = false;
    bool flg_Classificazioni = false;
};

/// The main form's state, shared by its collaborators.
class StatoForm : public FormBase {
public:
    StatoForm() : origine(latoOrigine()), destinazione(latoDestinazione()) {}

    std::string didascalia() const override { return form ? form->caption() : std::string(); }

    /// The working company's number. Throws RuntimeError 13 when it is no whole number.
    std::int64_t ditta() const;
    std::string utente() const;
    std::string gruppo() const;
    contract::ClsGlobal& globale() const;
    /// The workflow of the links' states. Throws RuntimeError 91 when it could not be made.
    contract::WorkflowState& flusso() const;

    std::unique_ptr<contract::Form> form;
    contract::Cinterface* ospite = nullptr;
    contract::Value dittaDiLavoro;

    contract::ResizeControl* ridimensionamento = nullptr;
    contract::TextField* campoId = nullptr;
    contract::WorkflowStateField* campoStato = nullptr;

    Lato origine;
    Lato destinazione;
    LinkParameters parametri;

    /// Empty means nothing has failed so far. The move and its checks fill it, and node editing reads it.
    std::string MessaggioSpostamento;
    /// End-of-link text: the date that the user typed, and from a move with validity on the end of its new links.
    std::string DataFineLegame;

    /// Nothing until a move was kept.
    std::optional<NodoSpostato> nodoSpostato;
    EsitoInVista esito;

    std::optional<contract::Date> DataInizioNodoDest;
    std::optional<contract::Date> DataFineNodoDest;
    std::int64_t CodiceAnagMenu = 0;
    contract::Value TipoAnagMenu = std::int32_t{0};
    contract::Node NodoStatoDest;
    std::int32_t posizioneNodoStato = -1;
    bool sospendiCambioNodo = false;

    /// A move of more nodes below the moved one than this is read and written in blocks; 0: every move, negative: none.
    std::int32_t nodiPerBlocchi = 100;

    bool selezioneNascosta = false; ///< the panel-toggle flag
    bool dettagliNascosti = false;

    /// Today, as the audit columns get it.
    std::function<contract::Date()> oggi = contract::Date::today;
    /// The time of day, as the registry of moves gets it.
    std::function<std::string()> ora = oraDiAdesso;

    /// Whether moves and edits are written into the registry of moves.
    bool tieneRegistro = false;

    /// Where the host shows how far a long work is; null where it does not.
    contract::Progress* avanzamento() const;

    Lato& lato(bool dest) { return dest ? destinazione : origine; }

protected:
    void annullato() noexcept override;
};

} // namespace qz

#pragma once

#include "component/data/Ricerca.h"
#include "component/form/ControlliForm.h"
#include "component/form/Disposizione.h"
#include "component/interaction/Comandi.h"
#include "component/interaction/MenuContestuali.h"
#include "component/interaction/ModificaNodo.h"
#include "component/interaction/Selezione.h"
#include "component/shared/StatoForm.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qz {

class CLSQZ_COPIADISTINTA;

/// The main form: two distinte side by side. It owns the shared state and the collaborators that work on it, and wires
/// the controls' events to them.
///
/// Order of calls: the host interface and the class are handed over, then the caption, then show(). unload() may follow
/// at any time; afterwards the references are released and only destruction is left.
class FRMQZ_COPIADISTINTA {
public:
    FRMQZ_COPIADISTINTA();
    FRMQZ_COPIADISTINTA(const FRMQZ_COPIADISTINTA&) = delete;
    FRMQZ_COPIADISTINTA& operator=(const FRMQZ_COPIADISTINTA&) = delete;
    ~FRMQZ_COPIADISTINTA();

    /// The interface through which the form reads its context; nothing once it was released.
    void ActiveDll(contract::Cinterface* ospite) { stato_.ospite = ospite; }
    contract::Cinterface* ActiveDll() const { return stato_.ospite; }
    void Classe(CLSQZ_COPIADISTINTA* classe) { classe_ = classe; }

    /// Makes the window when it is not there yet. Throws what the host's factory throws.
    void Caption(std::string_view didascalia);
    /// Throws RuntimeError 91 before Caption().
    void Show(bool modale);
    /// True when the form is gone.
    bool Unload();
    /// The window, as the host's object models get it; nothing before Caption() and after the release.
    contract::Form*& finestra() { return finestra_; }
    std::shared_ptr<contract::LogClass> classeLog() const { return stato_.classeLog; }

    void EsciForm();
    void ExecuteFormEvent(std::string_view evento);
    void NascondiSelezioneDistinta();
    void VisualizzaSelezioneDistinta();
    void NascondiDettagli();
    void VisualizzaDettagli();
    void CaricaDistintaOrig(std::string_view idTipo);
    void CaricaDistintaDest(std::string_view idTipo);
    /// Runs the panel layout routine.
    void Ridisponi();

    /// Names and values of the shared state.
    std::vector<std::pair<std::string, contract::Value>> valoriStato() const;
    /// A command of the host's menu bar; false for an unknown name.
    bool comandoMenu(std::string_view nome);

    /// Does what a click on a move button does. The end-of-link date dialog proposes the day, where one is given.
    void Sposta(bool validita, std::optional<contract::Date> fine);

    StatoForm& stato() { return stato_; }
    /// The form's colour table, as 0x00BBGGRR; all 0 before it was loaded.
    const std::array<contract::Color, 4>& colori() const { return colori_; }

private:
    // Life
    void Form_Load();
    void MDIActiveX1_FormLoad();
    void Form_Activate();
    void primaAttivazione();
    void Form_QueryUnload(bool& annulla);
    void Form_UnLoad();
    void InizializzaScriptELayout();
    void ImpostaVirtualFrame();
    void apriConnessione(FormBase::Passo& passo);
    void aggiornaAttivazione();
    void ColoriSTD();
    contract::Rect posizione(FormBase::Passo& passo) const;
    std::vector<std::function<void()>> rilasci();

    // Set-up and layout
    void collegaEventi();
    void collegaLato(Lato& lato, Ricerca& ricerca);
    void registraRidimensionamento();
    void disponiPannello(FormBase::Passo& passo);
    void disponiLato(FormBase::Passo& passo, Lato& lato, const DisposizioneLato& posto);
    void trasferisciAltezza(FormBase::Passo& passo, contract::Twips alto, contract::Twips differenza);
    DatiDisposizione datiDisposizione() const;

    // Commands
    void CMD_VISTOP_ButtonClick(std::string_view nome);
    void CMD_PARAMETRI_ButtonClick();
    void FME_CopiaDistintaDest_ChangeStatus(int stato);
    void chiediDataFine();
    void aggiornaDettaglio(FormBase::Passo& passo, Lato& lato);
    void descriviSpostamento();
    void nuovoComando();
    void mostraSpostato();
    void spiegaBlocco();
    void cercaAncora(Lato& lato, Ricerca& ricerca, bool indietro);
    bool comandoRicerca(std::string_view nome);
    void aggiorna();
    void scriviStato(const std::string& testo);

    StatoForm stato_;
    ControlliForm controlli_;
    contract::Form* finestra_ = nullptr;
    CLSQZ_COPIADISTINTA* classe_ = nullptr;

    Comandi comandi_;
    ModificaNodo modifica_;
    Selezione selezione_;
    MenuContestuali menu_;
    Ricerca ricercaOrig_;
    Ricerca ricercaDest_;

    std::shared_ptr<contract::ConnectionProvider> fornitore_;
    std::shared_ptr<contract::VirtualFrame> virtualFrame_;
    std::shared_ptr<contract::VirtualFrameHandler> gestoreOrig_;
    std::shared_ptr<contract::VirtualFrameHandler> gestoreDest_;
    std::shared_ptr<contract::Recordset> recordOrig_;
    std::shared_ptr<contract::Recordset> recordDest_;
    std::array<contract::Color, 4> colori_{};
    std::optional<contract::Date> fineProposta_; ///< of the next end-of-link date dialog
    std::string notaRicerca_;                    ///< shown once in the place of what a move would do; empty for none
    bool primaAttivazioneFatta_ = false;
    int contatore_ = 0; ///< cleared with the first activation
};

} // namespace qz

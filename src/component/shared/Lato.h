#pragma once

#include "contract/Form.h"
#include "contract/Recordset.h"
#include "contract/Statement.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace qz {

/// What is meant to differ between the two sides. Everything else is one implementation.
struct DescrizioneLato {
    bool destinazione = false;
    std::string_view nomeCarica;    ///< name of the loader in error reports
    std::string_view nomeClick;     ///< name of the type list's click in error reports
    std::string_view colonnaCodice; ///< only the origin's code column and the destination's end column carry "tr"
    std::string_view colonnaFine;
    std::string_view nomeCambioNodo;
    std::string_view nomeCambioNodoEx;
    std::string_view nomeMouse;
    std::string_view nomeLink;
    std::string_view nomeMenuCerca;
    std::string_view nomeTastoCerca;
    /// The destination reads the type's GUID too; there is no counterpart on the origin side.
    bool leggeGuid = false;
    /// Only the origin reads the invoicing and reference columns, which a move with validity copies.
    bool leggeFatturazione = false;
};

const DescrizioneLato& latoOrigine();
const DescrizioneLato& latoDestinazione();

/// One side of the main form: its controls, what is loaded, and its level counters.
struct Lato {
    explicit Lato(const DescrizioneLato& descrizioneLato) : descrizione(descrizioneLato) {}

    const DescrizioneLato& descrizione;

    // Controls; set when the form is built, never empty afterwards.
    contract::Frame* pannello = nullptr;
    contract::Frame* intestazione = nullptr;
    contract::Label* ruolo = nullptr;
    contract::Label* didascaliaDistinta = nullptr;
    contract::TypeList* tipi = nullptr;
    contract::TreeList* albero = nullptr;
    contract::DetailGrid* dettaglio = nullptr;
    contract::TextField* cerca = nullptr;
    contract::MenuButton* menuCerca = nullptr;
    contract::Button* livelli = nullptr;
    contract::Splitter* divisorio = nullptr;
    contract::DataFrame* frame = nullptr;
    contract::PopupMenu* menu = nullptr;

    // What is loaded
    std::string IdDistinta;         ///< QZ01_ID last loaded, as text; empty before
    std::int32_t TipoCF = 0;        ///< 0 customers, 1 suppliers
    std::string Divisione;          ///< empty for none
    std::string GuidDistinta;       ///< destination only
    contract::Statement istruzione; ///< statement of the nodes loaded
    /// The data object that the side's virtual frame gave for what is loaded; nothing when it gave none.
    std::shared_ptr<contract::Recordset> oggettoDati;
    /// Nodes loaded: the record set to which the tree is bound, so that its current record is the focused node's. There
    /// is always an object, but the record set may be empty.
    std::shared_ptr<contract::Recordset> dati = std::make_shared<contract::Recordset>();

    // Levels, 0 for the top-level nodes
    std::int32_t LivelloMax = 0;
    std::int32_t LivelloCorrente = 0;
    std::int32_t livelloCliccato = 0;

    /// Whether nothing is loaded.
    bool vuoto() const { return !dati || dati->Empty(); }
    /// Whether there is no record to act on: nothing loaded, or only rows that are no nodes.
    bool senzaRecord() const { return !dati || !dati->Row(); }
};

/// Puts the record set's cursor back on the focused node's record when a walk is over, however it ends.
class CursoreSulFuoco {
public:
    explicit CursoreSulFuoco(Lato& lato) : lato_(lato) {}
    CursoreSulFuoco(const CursoreSulFuoco&) = delete;
    CursoreSulFuoco& operator=(const CursoreSulFuoco&) = delete;
    ~CursoreSulFuoco();

private:
    Lato& lato_;
};

/// Lays what a walk changes in a tree out once, when it is over, however it ends.
class SospensioneAlbero {
public:
    explicit SospensioneAlbero(contract::TreeList& albero) : albero_(albero) {}
    SospensioneAlbero(const SospensioneAlbero&) = delete;
    SospensioneAlbero& operator=(const SospensioneAlbero&) = delete;
    ~SospensioneAlbero();

    void sospendi();
    /// Does nothing while the tree is not suspended.
    void riprendi();

private:
    contract::TreeList& albero_;
    bool sospeso_ = false;
};

} // namespace qz

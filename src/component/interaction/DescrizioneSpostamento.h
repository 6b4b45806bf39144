#pragma once

#include "component/maintenance/Piano.h"
#include "component/shared/StatoForm.h"

#include <string>
#include <string_view>

namespace qz {

/// What the status line says where a command was refused.
inline constexpr std::string_view nessunaModifica = "Spostamento annullato: nessuna modifica.";

/// Account and name of the current record. Throws what Recordset throws.
std::string nomeNodo(const Lato& lato);

/// What the move buttons would do, or what is missing for it: account, name, number of nodes and destination.
std::string descrizioneSpostamento(const StatoForm& stato);

/// What the question of a move is about: the same, and for a move with validity the days that the end-of-link text
/// means.
std::string dettaglioSpostamento(const StatoForm& stato, bool validita);

/// What a move that was kept did: how many nodes went under the node of that name, with the days of a move with
/// validity, and how many a check left behind.
std::string descrizioneEsito(const Piano& piano, const Richiesta& richiesta, std::string_view sotto);

/// Puts a text into the status line that stays until the next command, also while the focus comes to rest.
void annunciaEsito(StatoForm& stato, std::string_view testo);

/// Whether the status line still shows what the last command did: nobody has moved a focus since.
bool esitoInVista(const StatoForm& stato);

/// Moves the destination's focus to the node of the last move, after a move with validity to its new link; what the
/// status line is to say.
std::string mostraNodoSpostato(StatoForm& stato);

} // namespace qz

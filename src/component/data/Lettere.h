#pragma once

#include <string>
#include <string_view>

namespace qz {

/// Appends a UTF-8 text without regard to case: each letter that Unicode folds to one other letter becomes that one
/// (È, Ș, Σ and ς become è, ș, σ; accents stay). What folds to several letters (ß, İ) and bytes that are no UTF-8 stay
/// as they are.
void aggiungiSenzaMaiuscole(std::string& risultato, std::string_view testo);

/// The same as a text of its own.
std::string senzaMaiuscole(std::string_view testo);

} // namespace qz

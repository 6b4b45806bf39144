#pragma once

#include "contract/Value.h"

#include <string>
#include <string_view>

namespace qz {

/// The text without blanks at both ends; blanks are spaces only.
std::string_view senzaBlanks(std::string_view testo);

/// The text without blanks at its end.
std::string_view senzaBlanksFinali(std::string_view testo);

/// The value without blanks at both ends, as text, unless it is empty, null or blank: then the default.
contract::Value ValoreODefaultTrim(const contract::Value& valore, const contract::Value& predefinito);

/// The value as text without blanks at its end (those in front stay); the empty text for an empty or null value.
std::string TestoDaValore(const contract::Value& valore);

/// The day of a text "dd/mm/yyyy". Throws RuntimeError 13 for any other text.
contract::Date dataDelTesto(std::string_view testo);

/// The time of day by the clock and the time zone of this machine, "HH:MM:SS".
std::string oraDiAdesso();

} // namespace qz

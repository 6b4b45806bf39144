#pragma once

#include "contract/MoveRegistry.h"
#include "contract/Recordset.h"
#include "contract/Schema.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qz {

/// The columns of QZ02_DISTINTA that the registry keeps, in the order of the table: all but the key.
const std::vector<contract::ColumnDef>& colonneRegistrate();

/// A value as the registry keeps it: whole numbers, days, texts without blanks at their end, or Null. A GUID is in
/// upper case, without braces.
contract::Value valoreRegistrato(const contract::ColumnDef& colonna, const contract::Value& valore);

/// What the current record of QZ02_DISTINTA holds. missing: whether columns without a value are told too.
contract::RowValues valoriDelRecord(const contract::Recordset& record, bool missing);

/// The value of a column; nothing where it is not among them.
const contract::Value* valoreDi(const contract::RowValues& valori, std::string_view colonna);

/// What a person knows a column of QZ02_DISTINTA by; its own name for an unknown one.
std::string_view didascaliaColonna(std::string_view colonna);

/// Values as a flat JSON object: numbers bare, days as "dd/mm/yyyy", missing values as null. Nothing: an empty text.
std::string testoDeiValori(const std::optional<contract::RowValues>& valori);
/// The values that such a text holds. Throws RuntimeError 13 for a text that is none, and for a column or a value that
/// QZ02_DISTINTA does not have.
std::optional<contract::RowValues> valoriDelTesto(std::string_view testo);

} // namespace qz

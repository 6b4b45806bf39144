#include "platform/shared/ColumnTypes.h"

namespace platform::shared {

using contract::FieldType;

bool holdsDate(FieldType type) {
    return type == FieldType::date || type == FieldType::dbDate || type == FieldType::dbTimeStamp;
}

bool holdsNumber(FieldType type) {
    switch (type) {
    case FieldType::smallInt:
    case FieldType::integer:
    case FieldType::tinyInt:
    case FieldType::bigInt:
    case FieldType::unsignedTinyInt:
    case FieldType::unsignedSmallInt:
    case FieldType::unsignedInt:
    case FieldType::unsignedBigInt:
    case FieldType::boolean:
    case FieldType::numeric:
    case FieldType::decimal:
        return true;
    default:
        return false;
    }
}

bool comparable(FieldType type) {
    switch (type) {
    case FieldType::guid:
    case FieldType::character:
    case FieldType::wideCharacter:
    case FieldType::varChar:
    case FieldType::varWChar:
        return true;
    default:
        return holdsNumber(type) || holdsDate(type);
    }
}

} // namespace platform::shared

#include "platform/odbc/ResultLayout.h"

#include "platform/dialect/SqliteValues.h"
#include "platform/odbc/Text.h"

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::Column;
using contract::FieldInfo;
using contract::FieldType;
using dialect::ValueKind;

constexpr SQLULEN longest = 4000;  ///< characters of a text that still has an array of its full length
constexpr std::size_t guess = 512; ///< characters of an array for texts of unbounded length

ValueKind kindOf(SQLSMALLINT type) {
    switch (type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        return ValueKind::whole;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return ValueKind::amount;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return ValueKind::date;
    default:
        return ValueKind::text;
    }
}

FieldType fieldType(SQLSMALLINT type) {
    switch (type) {
    case SQL_BIT:
        return FieldType::boolean;
    case SQL_TINYINT:
        return FieldType::unsignedTinyInt;
    case SQL_SMALLINT:
        return FieldType::smallInt;
    case SQL_INTEGER:
        return FieldType::integer;
    case SQL_BIGINT:
        return FieldType::bigInt;
    case SQL_REAL:
        return FieldType::single;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return FieldType::doublePrecision;
    case SQL_NUMERIC:
        return FieldType::numeric;
    case SQL_DECIMAL:
        return FieldType::decimal;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return FieldType::date;
    case SQL_GUID:
        return FieldType::guid;
    case SQL_CHAR:
        return FieldType::character;
    case SQL_WCHAR:
        return FieldType::wideCharacter;
    case SQL_VARCHAR:
        return FieldType::varChar;
    case SQL_LONGVARCHAR:
        return FieldType::longVarChar;
    case SQL_BINARY:
        return FieldType::binary;
    case SQL_VARBINARY:
        return FieldType::varBinary;
    case SQL_LONGVARBINARY:
        return FieldType::longVarBinary;
    default:
        // Drivers do not agree whether a wide text without a length is a long one; here it is a text like the others.
        return FieldType::varWChar;
    }
}

bool isBinary(SQLSMALLINT type) {
    return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

} // namespace

SQLSMALLINT cTypeOf(Form form) {
    switch (form) {
    case Form::whole:
        return SQL_C_SBIGINT;
    case Form::real:
        return SQL_C_DOUBLE;
    case Form::timestamp:
        return SQL_C_TYPE_TIMESTAMP;
    case Form::guid:
        return SQL_C_GUID;
    case Form::narrow:
        return SQL_C_CHAR;
    case Form::wide:
        break;
    }
    return SQL_C_WCHAR;
}

bool ResultLayout::describe(SQLHSTMT statement, SQLSMALLINT count, Engine engine,
                            const std::optional<std::vector<dialect::ResultColumn>>& known) {
    auto described = std::make_shared<contract::FieldList>();
    described->reserve(static_cast<std::size_t>(count));
    columns.assign(static_cast<std::size_t>(count), BoundColumn());
    const bool useKnown = known && known->size() == columns.size();
    for (SQLSMALLINT i = 0; i < count; ++i) {
        BoundColumn& bound = columns[static_cast<std::size_t>(i)];
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT scale = 0;
        SQLSMALLINT nullable = 0;
        constexpr SQLSMALLINT room = 512;
        const auto number = static_cast<SQLUSMALLINT>(i + 1);
        if (engine == Engine::sqlite) {
            SQLCHAR name[room] = {};
            if (!SQL_SUCCEEDED(SQLDescribeCol(statement, number, name, room, &length, &type, &size, &scale, &nullable)))
                return false;
            auto kind = useKnown ? (*known)[static_cast<std::size_t>(i)].kind : ValueKind::unknown;
            if (kind == ValueKind::unknown)
                kind = kindOf(type);
            described->push_back(dialect::fieldOf(useKnown ? (*known)[static_cast<std::size_t>(i)].name
                                                           : std::string(reinterpret_cast<const char*>(name)),
                                                  kind));
            bound = {Form::narrow, true, kind == ValueKind::amount, guess, 0, {}, {}, false};
            continue;
        }
        SQLWCHAR name[room] = {};
        if (!SQL_SUCCEEDED(SQLDescribeColW(statement, number, name, room, &length, &type, &size, &scale, &nullable)))
            return false;
        FieldInfo field;
        field.name = narrow(name, static_cast<std::size_t>(std::clamp<SQLSMALLINT>(length, 0, room - 1)));
        field.type = fieldType(type);
        if (type == SQL_NUMERIC || type == SQL_DECIMAL) {
            field.precision = static_cast<int>(size);
            field.numericScale = scale;
        }
        const auto storage = contract::Column(field.type).storage();
        if (storage == Column::Storage::integer) {
            bound = {Form::whole, false, false, sizeof(SQLBIGINT), 0, {}, {}, false};
        } else if (storage == Column::Storage::real) {
            bound = {Form::real, false, false, sizeof(SQLDOUBLE), 0, {}, {}, false};
        } else if (storage == Column::Storage::date) {
            bound = {Form::timestamp, false, false, sizeof(SQL_TIMESTAMP_STRUCT), 0, {}, {}, false};
        } else if (type == SQL_GUID) {
            // As it comes from the server: a driver takes thousands of instructions to write one.
            bound = {Form::guid, false, false, sizeof(SQLGUID), 0, {}, {}, false};
        } else if (type == SQL_NUMERIC || type == SQL_DECIMAL) {
            constexpr std::size_t signPointAndZeros = 4;
            bound = {Form::narrow, false, false, size + signPointAndZeros, 0, {}, {}, false};
        } else {
            const bool unbounded = size == 0 || size > longest;
            // The digits of binary values come as hexadecimal ones.
            const std::size_t characters = unbounded ? guess : (isBinary(type) ? 2 * size : size);
            const bool isWide = !isBinary(type);
            bound = {isWide ? Form::wide : Form::narrow,
                     false,
                     false,
                     (characters + 1) * (isWide ? sizeof(SQLWCHAR) : 1),
                     0,
                     {},
                     {},
                     false};
        }
        described->push_back(std::move(field));
    }
    fields = std::move(described);
    return true;
}

} // namespace platform::odbc

#include "contract/Date.h"
#include "platform/dialect/Writer.h"

#include <algorithm>
#include <array>

namespace platform::dialect {

namespace {

// Names that the server allows bare and SQLite takes for keywords.
constexpr std::array<std::string_view, 24> engineWords = {
    "ADD",     "ALTER",      "CHECK",     "COLLATE", "COMMIT", "CONSTRAINT",  "DEFAULT", "DEFERRABLE",
    "ESCAPE",  "FOREIGN",    "INDEX",     "ISNULL",  "LIMIT",  "NATURAL",     "NOTHING", "NOTNULL",
    "PRIMARY", "REFERENCES", "RETURNING", "ROWID",   "TO",     "TRANSACTION", "UNIQUE",  "USING"};

bool isPlain(std::string_view name) {
    const auto ordinary = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    };
    return std::all_of(name.begin(), name.end(), ordinary) && !(name[0] >= '0' && name[0] <= '9') &&
           std::none_of(engineWords.begin(), engineWords.end(),
                        [name](std::string_view word) { return sameName(word, name); });
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isWholeNumber(std::string_view text) {
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        text.remove_prefix(1);
    return !text.empty() && text.size() <= 18 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

void Writer::writeName(std::string_view name) {
    if (isPlain(name)) {
        out_ += name;
        return;
    }
    out_ += '[';
    out_ += name;
    out_ += ']';
}

void Writer::writeLiteral(std::string_view characters) {
    out_ += '\'';
    for (const char c : characters) {
        out_ += c;
        if (c == '\'')
            out_ += c;
    }
    out_ += '\'';
}

void Writer::writeParameter(std::size_t piece, Binding binding) {
    parameters_.push_back({piece, binding});
    out_ += '?';
    out_ += std::to_string(parameters_.size());
}

void Writer::writeExpression(const Expression& expression, const Scope& scope) {
    using Kind = Expression::Kind;
    switch (expression.kind) {
    case Kind::column:
        writeColumn(expression);
        break;
    case Kind::allColumns:
        out_ += '*';
        break;
    case Kind::number:
        out_ += expression.name;
        break;
    case Kind::text:
        writeText(expression, Binding::text);
        break;
    case Kind::argument:
        writeParameter(expression.argument, Binding::number);
        break;
    case Kind::null:
        out_ += "NULL";
        break;
    case Kind::negative:
        out_ += "- ";
        writeOperand(*expression.operands[0], atomLevel, false, scope);
        break;
    case Kind::arithmetic:
        writeArithmetic(expression, scope);
        break;
    case Kind::function:
        writeFunction(expression, scope);
        break;
    case Kind::cast:
        writeCast(expression, scope);
        break;
    case Kind::date:
        writeDate(expression, scope);
        break;
    case Kind::query:
        if (expression.query->items.size() != 1 ||
            expression.query->items.front().value->kind == Expression::Kind::allColumns)
            refuse(source_, expression.place, "una sottoquery deve dare una colonna sola");
        out_ += '(';
        writeSelect(*expression.query, &scope, nullptr);
        out_ += ')';
        break;
    case Kind::cases:
        writeCases(expression, scope);
        break;
    default:
        writeCondition(expression, scope);
        break;
    }
}

void Writer::writeColumn(const Expression& column) {
    if (!column.table.empty()) {
        writeName(column.table);
        out_ += '.';
    }
    writeName(column.name);
}

void Writer::writeText(const Expression& text, Binding binding) {
    if (text.segments.empty()) {
        out_ += "''";
        return;
    }
    const bool several = text.segments.size() > 1;
    if (several)
        out_ += '(';
    for (std::size_t i = 0; i < text.segments.size(); ++i) {
        if (i > 0)
            out_ += " || ";
        const Segment& segment = text.segments[i];
        if (segment.argument)
            writeParameter(*segment.argument, binding);
        else
            writeLiteral(segment.literal);
    }
    if (several)
        out_ += ')';
}

// A text becomes what the server makes of it beside a value of that kind.
void Writer::writeConverted(const Expression& value, ValueKind kind, const Scope& scope) {
    if (value.kind == Expression::Kind::text && kind == ValueKind::date)
        writeTextAsDate(value);
    else if (value.kind == Expression::Kind::text && kind == ValueKind::whole)
        writeTextAsWhole(value);
    else
        writeExpression(value, scope);
}

// Between a text and a number the server compares numbers; SQLite would compare texts, where '05034' is not 5034.
void Writer::writeCompared(const Expression& value, ValueKind kind, const Scope& scope) {
    const bool number = kind == ValueKind::whole || kind == ValueKind::amount;
    if (!number || value.kind == Expression::Kind::text || scope.kindOf(value) != ValueKind::text) {
        writeConverted(value, kind, scope);
        return;
    }
    out_ += "CAST(";
    writeExpression(value, scope);
    out_ += " AS NUMERIC)";
}

void Writer::writeTextAsDate(const Expression& text) {
    if (text.segments.size() == 1 && text.segments[0].argument) {
        writeParameter(*text.segments[0].argument, Binding::date);
        return;
    }
    const auto date = text.segments.size() == 1 ? contract::Date::parse(text.segments[0].literal) : std::nullopt;
    if (!date)
        refuse(source_, text.place, "qui è attesa una data gg/mm/aaaa");
    writeLiteral(date->iso());
}

void Writer::writeTextAsWhole(const Expression& text) {
    if (text.segments.size() == 1 && text.segments[0].argument) {
        writeParameter(*text.segments[0].argument, Binding::whole);
        return;
    }
    if (text.segments.size() > 1)
        refuse(source_, text.place, "qui è atteso un numero");
    const auto digits = text.segments.empty() ? std::string_view() : trimmed(text.segments[0].literal);
    if (digits.empty())
        out_ += '0';
    else if (isWholeNumber(digits))
        out_ += digits[0] == '+' ? digits.substr(1) : digits;
    else
        refuse(source_, text.place, "qui è atteso un numero intero");
}

bool Writer::isConcatenation(const Expression& sum, const Scope& scope) const {
    if (sum.name != "+")
        return false;
    const ValueKind left = scope.kindOf(*sum.operands[0]);
    const ValueKind right = scope.kindOf(*sum.operands[1]);
    if (left != ValueKind::text && right != ValueKind::text) {
        if (left == ValueKind::unknown && right == ValueKind::unknown)
            refuse(source_, sum.place, "non si sa se qui si sommano numeri o si uniscono testi");
        return false;
    }
    const auto joins = [](ValueKind kind) { return kind == ValueKind::text || kind == ValueKind::unknown; };
    if (!joins(left) || !joins(right))
        refuse(source_, sum.place, "qui si unisce un testo a un valore che non è un testo");
    return true;
}

int Writer::precedenceOf(const Expression& expression, const Scope& scope) const {
    if (expression.kind != Expression::Kind::arithmetic)
        return expression.isCondition() ? conditionLevel : atomLevel;
    if (expression.name == "+" || expression.name == "-")
        return isConcatenation(expression, scope) ? concatenationLevel : sumLevel;
    return productLevel;
}

void Writer::writeOperand(const Expression& operand, int precedence, bool right, const Scope& scope) {
    const int own = precedenceOf(operand, scope);
    const bool parentheses = own < precedence || (right && own == precedence && own < atomLevel);
    if (parentheses)
        out_ += '(';
    writeExpression(operand, scope);
    if (parentheses)
        out_ += ')';
}

void Writer::writeArithmetic(const Expression& sum, const Scope& scope) {
    const int precedence = precedenceOf(sum, scope);
    if (precedence != concatenationLevel)
        for (const auto& operand : sum.operands) {
            const ValueKind kind = scope.kindOf(*operand);
            if (kind == ValueKind::date || kind == ValueKind::text)
                refuse(source_, operand->place, "qui è atteso un numero");
        }
    writeOperand(*sum.operands[0], precedence, false, scope);
    out_ += ' ';
    out_ += precedence == concatenationLevel ? "||" : sum.name;
    out_ += ' ';
    writeOperand(*sum.operands[1], precedence, true, scope);
}

void Writer::writeFunction(const Expression& call, const Scope& scope) {
    if (call.name == "ISNULL") {
        out_ += "ifnull(";
        writeExpression(*call.operands[0], scope);
        out_ += ", ";
        writeConverted(*call.operands[1], scope.kindOf(*call.operands[0]), scope);
        out_ += ')';
        return;
    }
    for (const char c : call.name)
        out_ += static_cast<char>(c - 'A' + 'a');
    out_ += call.distinct ? "(DISTINCT " : "(";
    writeExpression(*call.operands[0], scope);
    out_ += ')';
}

void Writer::writeCast(const Expression& cast, const Scope& scope) {
    const Expression& value = *cast.operands[0];
    const ValueKind kind = scope.kindOf(value);
    if (kind == ValueKind::date)
        refuse(source_, cast.place, "una data non si converte con CAST");
    if (cast.name.find("CHAR") == std::string::npos) {
        if (kind == ValueKind::text)
            refuse(source_, cast.place, "un testo non si converte in numero con CAST");
        out_ += "CAST(";
        writeExpression(value, scope);
        out_ += " AS INTEGER)";
        return;
    }
    if (kind == ValueKind::text && cast.length > 0) {
        out_ += "substr(";
        writeExpression(value, scope);
        out_ += ", 1, " + std::to_string(cast.length) + ")";
        return;
    }
    out_ += "CAST(";
    writeExpression(value, scope);
    out_ += " AS TEXT)";
}

void Writer::writeDate(const Expression& date, const Scope& scope) {
    const Expression& value = *date.operands[0];
    if (value.kind == Expression::Kind::text)
        writeTextAsDate(value);
    else if (value.kind == Expression::Kind::null || scope.kindOf(value) == ValueKind::date)
        writeExpression(value, scope);
    else
        refuse(source_, value.place, "CONVERT è ammesso solo per un testo gg/mm/aaaa o per una data");
}

void Writer::writeCases(const Expression& cases, const Scope& scope) {
    const ValueKind kind = scope.kindOf(cases);
    std::size_t i = 0;
    out_ += "CASE";
    ValueKind base = ValueKind::unknown;
    if (cases.hasBase) {
        out_ += ' ';
        writeExpression(*cases.operands[i], scope);
        base = scope.kindOf(*cases.operands[i++]);
    }
    for (; i + 1 < cases.operands.size(); i += 2) {
        out_ += " WHEN ";
        if (cases.hasBase)
            writeConverted(*cases.operands[i], base, scope);
        else
            writeCondition(*cases.operands[i], scope);
        out_ += " THEN ";
        writeConverted(*cases.operands[i + 1], kind, scope);
    }
    if (i < cases.operands.size()) {
        out_ += " ELSE ";
        writeConverted(*cases.operands[i], kind, scope);
    }
    out_ += " END";
}

} // namespace platform::dialect

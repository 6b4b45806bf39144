#include "platform/dialect/Parser.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform::dialect {

namespace {

std::string upper(std::string_view word) {
    std::string text(word);
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

struct FunctionRule {
    std::string_view name;
    std::size_t operands;
};
constexpr std::array<FunctionRule, 9> functions = {{{"ISNULL", 2},
                                                    {"RTRIM", 1},
                                                    {"LTRIM", 1},
                                                    {"UPPER", 1},
                                                    {"LOWER", 1},
                                                    {"COUNT", 1},
                                                    {"MIN", 1},
                                                    {"MAX", 1},
                                                    {"SUM", 1}}};

ExpressionPtr make(Expression::Kind kind, Place place) {
    auto expression = std::make_unique<Expression>();
    expression->kind = kind;
    expression->place = place;
    return expression;
}

} // namespace

ExpressionPtr Parser::parseCondition() {
    return asCondition(parseEither());
}

ExpressionPtr Parser::parseValue() {
    return asValue(parseEither());
}

ExpressionPtr Parser::asValue(ExpressionPtr expression) {
    if (expression->isCondition())
        refuse(source_, expression->place, "qui è atteso un valore, non una condizione");
    return expression;
}

ExpressionPtr Parser::asCondition(ExpressionPtr expression) {
    if (!expression->isCondition())
        refuse(source_, expression->place, "qui è attesa una condizione");
    return expression;
}

ExpressionPtr Parser::binary(Expression::Kind kind, const Token& sign, ExpressionPtr left, ExpressionPtr right) {
    auto expression = make(kind, left->place);
    expression->name = upper(sign.text);
    expression->operands.push_back(std::move(left));
    expression->operands.push_back(std::move(right));
    return expression;
}

ExpressionPtr Parser::parseEither() {
    const Depth depth(*this);
    auto left = parseBoth();
    while (isWord("OR")) {
        const Token sign = take();
        left = binary(Expression::Kind::either, sign, asCondition(std::move(left)), asCondition(parseBoth()));
    }
    return left;
}

ExpressionPtr Parser::parseBoth() {
    auto left = parseNegation();
    while (isWord("AND")) {
        const Token sign = take();
        left = binary(Expression::Kind::both, sign, asCondition(std::move(left)), asCondition(parseNegation()));
    }
    return left;
}

ExpressionPtr Parser::parseNegation() {
    if (!isWord("NOT"))
        return parsePredicate();
    const Depth depth(*this);
    auto negation = make(Expression::Kind::negation, take().place);
    negation->operands.push_back(asCondition(parseNegation()));
    return negation;
}

ExpressionPtr Parser::parsePredicate() {
    auto left = parseSum();
    static constexpr std::array<std::string_view, 7> signs = {"=", "<>", "!=", "<", ">", "<=", ">="};
    if (peek().kind == Token::Kind::symbol && std::find(signs.begin(), signs.end(), peek().text) != signs.end()) {
        const Token sign = take();
        return binary(Expression::Kind::comparison, sign, asValue(std::move(left)), asValue(parseSum()));
    }
    if (acceptWord("IS")) {
        auto test = make(Expression::Kind::isNull, left->place);
        test->negated = acceptWord("NOT");
        expectWord("NULL");
        test->operands.push_back(asValue(std::move(left)));
        return test;
    }
    const bool negated = isWord("NOT") && (isWord("IN", 1) || isWord("BETWEEN", 1));
    if (negated)
        take();
    if (acceptWord("IN"))
        return parseIn(asValue(std::move(left)), negated);
    if (acceptWord("BETWEEN")) {
        auto test = make(Expression::Kind::between, left->place);
        test->negated = negated;
        test->operands.push_back(asValue(std::move(left)));
        test->operands.push_back(asValue(parseSum()));
        expectWord("AND");
        test->operands.push_back(asValue(parseSum()));
        return test;
    }
    if (isWord("LIKE") || isWord("NOT"))
        fail();
    return left;
}

ExpressionPtr Parser::parseIn(ExpressionPtr value, bool negated) {
    expectSymbol("(");
    const bool query = isWord("SELECT");
    auto test = make(query ? Expression::Kind::inQuery : Expression::Kind::inList, value->place);
    test->negated = negated;
    test->operands.push_back(std::move(value));
    if (query)
        test->query = std::make_unique<Select>(parseSelect());
    else
        do
            test->operands.push_back(parseValue());
        while (acceptSymbol(","));
    expectSymbol(")");
    return test;
}

ExpressionPtr Parser::parseSum() {
    auto left = parseProduct();
    while (isSymbol("+") || isSymbol("-")) {
        const Token sign = take();
        left = binary(Expression::Kind::arithmetic, sign, asValue(std::move(left)), asValue(parseProduct()));
    }
    return left;
}

ExpressionPtr Parser::parseProduct() {
    auto left = parseSign();
    while (isSymbol("*") || isSymbol("/") || isSymbol("%")) {
        const Token sign = take();
        left = binary(Expression::Kind::arithmetic, sign, asValue(std::move(left)), asValue(parseSign()));
    }
    return left;
}

ExpressionPtr Parser::parseSign() {
    const Depth depth(*this);
    if (acceptSymbol("+"))
        return asValue(parseSign());
    if (!isSymbol("-"))
        return parsePrimary();
    auto negative = make(Expression::Kind::negative, take().place);
    negative->operands.push_back(asValue(parseSign()));
    return negative;
}

ExpressionPtr Parser::parsePrimary() {
    const Token& token = peek();
    switch (token.kind) {
    case Token::Kind::number: {
        auto number = make(Expression::Kind::number, token.place);
        number->name = take().text;
        return number;
    }
    case Token::Kind::argument: {
        auto argument = make(Expression::Kind::argument, token.place);
        argument->argument = take().argument;
        return argument;
    }
    case Token::Kind::text: {
        auto text = make(Expression::Kind::text, token.place);
        text->segments = take().segments;
        return text;
    }
    case Token::Kind::word:
        return parseName();
    case Token::Kind::symbol:
    case Token::Kind::end:
        break;
    }
    const Place place = token.place;
    if (!acceptSymbol("("))
        fail();
    ExpressionPtr inner;
    if (isWord("SELECT")) {
        inner = make(Expression::Kind::query, place);
        inner->query = std::make_unique<Select>(parseSelect());
    } else {
        inner = parseEither();
    }
    expectSymbol(")");
    return inner;
}

ExpressionPtr Parser::parseName() {
    const Token name = peek();
    if (isWord("NULL"))
        return make(Expression::Kind::null, take().place);
    if (isWord("CASE"))
        return parseCases();
    if (isSymbol("(", 1) && !name.bracketed) {
        take();
        if (sameName(name.text, "CONVERT"))
            return parseConvert(name);
        if (sameName(name.text, "CAST"))
            return parseCast(name);
        return parseFunction(name);
    }
    auto column = make(Expression::Kind::column, name.place);
    const Token first = expectName();
    column->name = first.text;
    column->bracketed = first.bracketed;
    if (acceptSymbol(".")) {
        column->table = std::move(column->name);
        const Token second = expectName();
        column->name = second.text;
        column->bracketed = second.bracketed;
    }
    return column;
}

ExpressionPtr Parser::parseFunction(const Token& name) {
    const auto* rule = std::find_if(functions.begin(), functions.end(),
                                    [&](const FunctionRule& f) { return sameName(f.name, name.text); });
    if (rule == functions.end())
        refuse(source_, name.place, "funzione non ammessa");
    auto call = make(Expression::Kind::function, name.place);
    call->name = rule->name;
    expectSymbol("(");
    if (rule->name == "COUNT" && isSymbol("*")) {
        call->operands.push_back(make(Expression::Kind::allColumns, take().place));
    } else {
        if (rule->name == "COUNT")
            call->distinct = acceptWord("DISTINCT");
        do
            call->operands.push_back(parseValue());
        while (acceptSymbol(","));
    }
    expectSymbol(")");
    if (call->operands.size() != rule->operands)
        refuse(source_, name.place, "il numero degli argomenti non è giusto");
    return call;
}

ExpressionPtr Parser::parseConvert(const Token& name) {
    expectSymbol("(");
    if (!acceptWord("DateTime"))
        fail("CONVERT è ammesso solo per DateTime");
    expectSymbol(",");
    auto date = make(Expression::Kind::date, name.place);
    date->operands.push_back(parseValue());
    expectSymbol(",");
    if (peek().kind != Token::Kind::number || peek().text != "103")
        fail("qui è atteso lo stile 103");
    take();
    expectSymbol(")");
    return date;
}

ExpressionPtr Parser::parseCast(const Token& name) {
    static constexpr std::array<std::string_view, 6> types = {"CHAR", "VARCHAR", "NCHAR", "NVARCHAR", "INT", "INTEGER"};
    expectSymbol("(");
    auto cast = make(Expression::Kind::cast, name.place);
    cast->operands.push_back(parseValue());
    expectWord("AS");
    const auto* type = std::find_if(types.begin(), types.end(), [&](std::string_view t) { return isWord(t); });
    if (type == types.end())
        fail("tipo non ammesso");
    cast->name = *type;
    take();
    if (cast->name.find("CHAR") != std::string::npos && acceptSymbol("(")) {
        const Token length = take();
        const auto end = length.text.data() + length.text.size();
        const auto [rest, error] = std::from_chars(length.text.data(), end, cast->length);
        if (length.kind != Token::Kind::number || error != std::errc() || rest != end || cast->length < 1 ||
            cast->length > 8000)
            refuse(source_, length.place, "lunghezza non ammessa");
        expectSymbol(")");
    }
    expectSymbol(")");
    return cast;
}

ExpressionPtr Parser::parseCases() {
    auto cases = make(Expression::Kind::cases, take().place);
    cases->hasBase = !isWord("WHEN");
    if (cases->hasBase)
        cases->operands.push_back(parseValue());
    if (!isWord("WHEN"))
        fail("qui è atteso WHEN");
    while (acceptWord("WHEN")) {
        cases->operands.push_back(cases->hasBase ? parseValue() : parseCondition());
        expectWord("THEN");
        cases->operands.push_back(parseValue());
    }
    if (acceptWord("ELSE"))
        cases->operands.push_back(parseValue());
    expectWord("END");
    return cases;
}

} // namespace platform::dialect

#include "platform/dialect/Parser.h"

#include <algorithm>
#include <array>

namespace platform::dialect {

namespace {

constexpr int deepest = 200; // nested parentheses, joins and selects

// Words that the server reserves and that therefore never name a column or a table without brackets.
constexpr std::array<std::string_view, 54> reserved = {
    "ALL",   "AND",    "ANY",    "AS",       "ASC",      "BETWEEN", "BY",        "CASE",   "CAST",  "CONVERT", "CREATE",
    "CROSS", "DELETE", "DESC",   "DISTINCT", "DROP",     "ELSE",    "END",       "EXCEPT", "EXEC",  "EXISTS",  "FROM",
    "FULL",  "GROUP",  "HAVING", "IN",       "INNER",    "INSERT",  "INTERSECT", "INTO",   "IS",    "JOIN",    "LEFT",
    "LIKE",  "MERGE",  "NOT",    "NULL",     "ON",       "OR",      "ORDER",     "OUTER",  "RIGHT", "SELECT",  "SET",
    "SOME",  "TABLE",  "THEN",   "TOP",      "TRUNCATE", "UNION",   "UPDATE",    "VALUES", "WHEN",  "WHERE"};

bool isReserved(std::string_view word) {
    return std::any_of(reserved.begin(), reserved.end(), [word](std::string_view r) { return sameName(r, word); });
}

} // namespace

Parser::Parser(const Source& source) : source_(source), tokens_(tokenize(source)) {
}

SyntaxTree Parser::parse() {
    SyntaxTree tree;
    if (isWord("SELECT"))
        tree.select = parseSelect();
    else if (acceptWord("UPDATE"))
        parseUpdate(tree);
    else if (acceptWord("INSERT"))
        parseInsert(tree);
    else if (acceptWord("DELETE"))
        parseDelete(tree);
    else if (acceptWord("SET"))
        parseSetting(tree);
    else
        fail();
    acceptSymbol(";");
    if (peek().kind != Token::Kind::end)
        fail();
    return tree;
}

void Parser::parseUpdate(SyntaxTree& tree) {
    tree.kind = SyntaxTree::Kind::update;
    tree.table = parseTable(false);
    expectWord("SET");
    do {
        Assignment assignment;
        assignment.column = expectName().text;
        expectSymbol("=");
        assignment.value = parseValue();
        tree.assignments.push_back(std::move(assignment));
    } while (acceptSymbol(","));
    if (acceptWord("WHERE"))
        tree.where = parseCondition();
}

void Parser::parseInsert(SyntaxTree& tree) {
    tree.kind = SyntaxTree::Kind::insert;
    acceptWord("INTO");
    tree.table = parseTable(false);
    if (acceptSymbol("(")) {
        do
            tree.columns.push_back(expectName().text);
        while (acceptSymbol(","));
        expectSymbol(")");
    }
    expectWord("VALUES");
    do {
        const Token open = peek();
        expectSymbol("(");
        std::vector<ExpressionPtr> row;
        do
            row.push_back(parseValue());
        while (acceptSymbol(","));
        expectSymbol(")");
        if (!tree.columns.empty() && row.size() != tree.columns.size())
            refuse(source_, open.place, "il numero dei valori non è quello delle colonne");
        tree.rows.push_back(std::move(row));
    } while (acceptSymbol(","));
}

/// SQLite takes a key that is given without being asked first.
void Parser::parseSetting(SyntaxTree& tree) {
    tree.kind = SyntaxTree::Kind::nothing;
    expectWord("IDENTITY_INSERT");
    tree.table = parseTable(false);
    if (!acceptWord("ON"))
        expectWord("OFF");
}

void Parser::parseDelete(SyntaxTree& tree) {
    tree.kind = SyntaxTree::Kind::remove;
    acceptWord("FROM");
    tree.table = parseTable(false);
    if (acceptWord("WHERE"))
        tree.where = parseCondition();
}

Select Parser::parseSelect() {
    const Depth depth(*this);
    expectWord("SELECT");
    Select select;
    if (acceptWord("DISTINCT"))
        select.distinct = true;
    else
        acceptWord("ALL");
    if (acceptWord("TOP")) {
        const bool parenthesis = acceptSymbol("(");
        if (peek().kind != Token::Kind::number && peek().kind != Token::Kind::argument)
            fail();
        select.top = parsePrimary();
        if (parenthesis)
            expectSymbol(")");
        if (isWord("PERCENT") || isWord("WITH"))
            fail();
    }
    do
        select.items.push_back(parseSelectItem());
    while (acceptSymbol(","));
    if (acceptWord("FROM")) {
        select.from = parseJoins();
        if (isSymbol(","))
            fail("le tabelle si uniscono con JOIN");
    }
    if (acceptWord("WHERE"))
        select.where = parseCondition();
    if (isWord("GROUP") || isWord("HAVING") || isWord("UNION"))
        fail();
    if (acceptWord("ORDER")) {
        expectWord("BY");
        select.order = parseOrder();
    }
    return select;
}

SelectItem Parser::parseSelectItem() {
    SelectItem item;
    const bool qualified = isName() && isSymbol(".", 1) && isSymbol("*", 2);
    if (qualified || isSymbol("*")) {
        item.value = std::make_unique<Expression>();
        item.value->kind = Expression::Kind::allColumns;
        item.value->place = peek().place;
        if (qualified) {
            item.value->table = take().text;
            take();
        }
        take();
        return item;
    }
    item.value = parseValue();
    item.alias = parseAlias();
    return item;
}

std::vector<OrderItem> Parser::parseOrder() {
    std::vector<OrderItem> order;
    do {
        OrderItem item;
        item.value = parseValue();
        if (acceptWord("DESC"))
            item.descending = true;
        else
            acceptWord("ASC");
        order.push_back(std::move(item));
    } while (acceptSymbol(","));
    return order;
}

// The ON clauses nest like parentheses: the operand on the right of a join takes every join that follows until an ON
// is left over, which is this join's own.
std::unique_ptr<JoinTree> Parser::parseJoins() {
    const Depth depth(*this);
    auto tree = parseJoinOperand();
    JoinKind kind = JoinKind::inner;
    for (Place place = peek().place; parseJoinWord(kind); place = peek().place) {
        auto join = std::make_unique<JoinTree>();
        join->kind = kind;
        join->place = place;
        join->left = std::move(tree);
        join->right = parseJoins();
        expectWord("ON");
        join->on = parseCondition();
        tree = std::move(join);
    }
    return tree;
}

std::unique_ptr<JoinTree> Parser::parseJoinOperand() {
    if (acceptSymbol("(")) {
        auto tree = parseJoins();
        expectSymbol(")");
        return tree;
    }
    auto tree = std::make_unique<JoinTree>();
    tree->table = parseTable(true);
    tree->place = tree->table.place;
    return tree;
}

bool Parser::parseJoinWord(JoinKind& kind) {
    if (acceptWord("INNER") || isWord("JOIN"))
        kind = JoinKind::inner;
    else if (isWord("LEFT") || isWord("RIGHT")) {
        kind = isWord("LEFT") ? JoinKind::left : JoinKind::right;
        take();
        acceptWord("OUTER");
    } else
        return false;
    expectWord("JOIN");
    return true;
}

TableReference Parser::parseTable(bool withAlias) {
    TableReference table;
    table.place = peek().place;
    table.name = expectName().text;
    if (isSymbol(".") || (withAlias && isSymbol("(")))
        fail();
    if (withAlias)
        table.alias = parseAlias();
    if (table.alias.empty())
        table.alias = table.name;
    return table;
}

std::string Parser::parseAlias() {
    if (acceptWord("AS"))
        return expectName().text;
    return isName() ? take().text : std::string();
}

const Token& Parser::peek(std::size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

Token Parser::take() {
    Token token = peek();
    if (at_ + 1 < tokens_.size())
        ++at_;
    return token;
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == Token::Kind::word && !token.bracketed && sameName(token.text, word);
}

bool Parser::isSymbol(std::string_view symbol, std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == Token::Kind::symbol && token.text == symbol;
}

bool Parser::acceptWord(std::string_view word) {
    const bool found = isWord(word);
    if (found)
        take();
    return found;
}

bool Parser::acceptSymbol(std::string_view symbol) {
    const bool found = isSymbol(symbol);
    if (found)
        take();
    return found;
}

void Parser::expectWord(std::string_view word) {
    if (!acceptWord(word))
        fail("qui è atteso " + std::string(word));
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!acceptSymbol(symbol))
        fail("qui è atteso \"" + std::string(symbol) + "\"");
}

bool Parser::isName(std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == Token::Kind::word && (token.bracketed || !isReserved(token.text));
}

Token Parser::expectName() {
    if (!isName())
        fail("qui è atteso un nome");
    return take();
}

void Parser::fail(std::string_view why) const {
    refuse(source_, peek().place, why);
}

Parser::Depth::Depth(Parser& parser) : parser_(parser) {
    if (++parser_.depth_ > deepest) {
        --parser_.depth_;
        parser_.fail("troppi livelli annidati");
    }
}

} // namespace platform::dialect

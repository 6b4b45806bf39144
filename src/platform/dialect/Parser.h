#pragma once

#include "platform/dialect/SyntaxTree.h"

#include <initializer_list>

namespace platform::dialect {

/// Reads one statement of the server's dialect: a recursive descent over its words. What is not in the subset in use is
/// refused with a TranslationError.
class Parser {
public:
    /// The source must outlive the parser.
    explicit Parser(const Source& source);

    /// The whole statement; a semicolon may end it.
    SyntaxTree parse();

private:
    // Parser.cpp: statements and joins
    void parseUpdate(SyntaxTree& tree);
    void parseInsert(SyntaxTree& tree);
    void parseDelete(SyntaxTree& tree);
    void parseSetting(SyntaxTree& tree);
    Select parseSelect();
    SelectItem parseSelectItem();
    std::vector<OrderItem> parseOrder();
    std::unique_ptr<JoinTree> parseJoins();
    std::unique_ptr<JoinTree> parseJoinOperand();
    bool parseJoinWord(JoinKind& kind);
    TableReference parseTable(bool withAlias);
    std::string parseAlias();

    // ExpressionParser.cpp: values and conditions
    ExpressionPtr parseCondition();
    ExpressionPtr parseValue();
    ExpressionPtr parseEither();
    ExpressionPtr parseBoth();
    ExpressionPtr parseNegation();
    ExpressionPtr parsePredicate();
    ExpressionPtr parseIn(ExpressionPtr value, bool negated);
    ExpressionPtr parseSum();
    ExpressionPtr parseProduct();
    ExpressionPtr parseSign();
    ExpressionPtr parsePrimary();
    ExpressionPtr parseName();
    ExpressionPtr parseFunction(const Token& name);
    ExpressionPtr parseConvert(const Token& name);
    ExpressionPtr parseCast(const Token& name);
    ExpressionPtr parseCases();
    ExpressionPtr binary(Expression::Kind kind, const Token& sign, ExpressionPtr left, ExpressionPtr right);
    ExpressionPtr asValue(ExpressionPtr expression);
    ExpressionPtr asCondition(ExpressionPtr expression);

    // both: the words
    const Token& peek(std::size_t ahead = 0) const;
    Token take();
    bool isWord(std::string_view word, std::size_t ahead = 0) const;
    bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
    bool acceptWord(std::string_view word);
    bool acceptSymbol(std::string_view symbol);
    void expectWord(std::string_view word);
    void expectSymbol(std::string_view symbol);
    bool isName(std::size_t ahead = 0) const;
    Token expectName();
    [[noreturn]] void fail(std::string_view why = {}) const;

    /// Counts the depth of the descent, so that no text can exhaust the stack.
    class Depth {
    public:
        explicit Depth(Parser& parser);
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
        ~Depth() { --parser_.depth_; }

    private:
        Parser& parser_;
    };

    const Source& source_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

} // namespace platform::dialect

#include "platform/dialect/Token.h"

#include <algorithm>
#include <array>

namespace platform::dialect {

namespace {

using Kind = contract::Statement::Kind;

constexpr std::size_t longest = 8000; // words: the trees built of them are walked by descent

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80U;
}

bool isWordPart(char c) {
    return isWordStart(c) || isDigit(c) || c == '$' || c == '#' || c == '@';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

class Tokenizer {
public:
    explicit Tokenizer(const Source& source) : source_(source) {}

    std::vector<Token> run() {
        for (;;) {
            const bool gap = skipBlanks();
            Token token = next();
            if (!gap)
                checkJoint(token);
            tokens_.push_back(std::move(token));
            if (tokens_.back().kind == Token::Kind::end)
                return std::move(tokens_);
            if (tokens_.size() > longest)
                refuse(source_, tokens_.back().place, "l'istruzione è troppo lunga");
        }
    }

private:
    bool atEnd() {
        while (place_.piece < source_.size() && isFragment() && place_.offset >= current().text.size())
            place_ = {place_.piece + 1, 0};
        return place_.piece >= source_.size();
    }
    const SourcePiece& current() const { return source_[place_.piece]; }
    bool isFragment() const { return current().kind == Kind::fragment; }

    /// The next character of fixed text; 0 at the end and before an argument.
    char peek() { return atEnd() || !isFragment() ? '\0' : current().text[place_.offset]; }
    char take() {
        const char c = peek();
        ++place_.offset;
        return c;
    }

    bool skipBlanks() {
        bool skipped = false;
        while (isBlank(peek())) {
            ++place_.offset;
            skipped = true;
        }
        return skipped;
    }

    Token next() {
        Token token;
        if (atEnd()) {
            token.place = {source_.size(), 0};
            return token;
        }
        token.place = place_;
        if (!isFragment()) {
            readArgument(token);
            return token;
        }
        const char c = peek();
        if (c == '\'')
            readText(token);
        else if (c == '[')
            readBracketed(token);
        else if (isWordStart(c))
            readWhile(token, Token::Kind::word, isWordPart);
        else if (isDigit(c))
            readNumber(token);
        else
            readSymbol(token);
        return token;
    }

    void readArgument(Token& token) {
        if (current().kind != Kind::number && current().kind != Kind::decimal)
            refuse(source_, token.place, "un testo o una data sta fuori dagli apici");
        token.kind = Token::Kind::argument;
        token.argument = place_.piece;
        place_ = {place_.piece + 1, 0};
    }

    void readText(Token& token) {
        token.kind = Token::Kind::text;
        take();
        std::string literal;
        const auto flush = [&] {
            if (!literal.empty())
                token.segments.push_back({std::move(literal), std::nullopt});
            literal.clear();
        };
        for (;;) {
            if (atEnd())
                refuse(source_, token.place, "manca l'apice di chiusura");
            if (!isFragment()) {
                flush();
                token.segments.push_back({{}, place_.piece});
                place_ = {place_.piece + 1, 0};
                continue;
            }
            const char c = take();
            if (c == '\'') {
                if (peek() != '\'')
                    break;
                take();
            }
            literal.push_back(c);
        }
        flush();
    }

    void readBracketed(Token& token) {
        token.kind = Token::Kind::word;
        token.bracketed = true;
        take();
        while (peek() != ']') {
            if (peek() == '\0' || peek() == '[')
                refuse(source_, token.place, "manca la parentesi quadra di chiusura");
            token.text.push_back(take());
        }
        take();
        if (token.text.empty())
            refuse(source_, token.place, "nome vuoto");
    }

    template <class Test> void readWhile(Token& token, Token::Kind kind, Test test) {
        token.kind = kind;
        while (test(peek()))
            token.text.push_back(take());
    }

    void readNumber(Token& token) {
        readWhile(token, Token::Kind::number, isDigit);
        if (peek() != '.')
            return;
        token.text.push_back(take());
        if (!isDigit(peek()))
            refuse(source_, token.place, "numero incompleto");
        while (isDigit(peek()))
            token.text.push_back(take());
    }

    void readSymbol(Token& token) {
        token.kind = Token::Kind::symbol;
        token.text.push_back(take());
        const char first = token.text[0];
        const char second = peek();
        if ((first == '-' && second == '-') || (first == '/' && second == '*'))
            refuse(source_, token.place, "i commenti non sono ammessi");
        static constexpr std::array<std::string_view, 4> pairs = {"<>", "!=", "<=", ">="};
        const std::string pair = token.text + second;
        if (std::find(pairs.begin(), pairs.end(), pair) != pairs.end())
            token.text.push_back(take());
        else if (std::string_view("(),.*+-/%=<>;").find(first) == std::string_view::npos)
            refuse(source_, token.place, "carattere non ammesso");
    }

    // What the server would read as one word must not be taken for two.
    void checkJoint(const Token& token) const {
        if (tokens_.empty())
            return;
        const auto solid = [](const Token& t) { return t.kind != Token::Kind::symbol && t.kind != Token::Kind::end; };
        const Token& before = tokens_.back();
        if (!solid(before) || !solid(token))
            return;
        const auto numeric = [](const Token& t) {
            return t.kind == Token::Kind::argument || t.kind == Token::Kind::number;
        };
        if (numeric(before) || numeric(token))
            refuse(source_, before.place, "manca uno spazio accanto a un numero");
    }

    const Source& source_;
    Place place_;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(const Source& source) {
    return Tokenizer(source).run();
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

} // namespace platform::dialect

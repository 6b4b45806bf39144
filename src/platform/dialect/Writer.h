#pragma once

#include "platform/dialect/JoinChain.h"
#include "platform/dialect/Translator.h"

namespace platform::dialect {

/// Writes a syntax tree as SQLite's text.
class Writer {
public:
    /// Both must outlive the writer.
    Writer(const Catalog& catalog, const Source& source) : catalog_(catalog), source_(source) {}

    Translation write(const SyntaxTree& tree);

private:
    // Writer.cpp: statements
    void writeUpdate(const SyntaxTree& tree);
    void writeInsert(const SyntaxTree& tree);
    void writeDelete(const SyntaxTree& tree);
    void writeSelect(const Select& select, const Scope* outer, std::optional<std::vector<ResultColumn>>* columns);
    void writeItems(const Select& select, const Scope& scope, bool reordered);
    std::optional<std::vector<ResultColumn>> columnsOf(const Select& select, const Scope& scope) const;
    void writeFrom(const JoinChain& chain, const Scope& scope);
    void writeTable(const TableReference& table);

    // How tightly operands are bound in SQLite's text
    static constexpr int conditionLevel = 0;
    static constexpr int sumLevel = 1;
    static constexpr int productLevel = 2;
    static constexpr int concatenationLevel = 3;
    static constexpr int atomLevel = 4;

    // ExpressionWriter.cpp: values
    void writeExpression(const Expression& expression, const Scope& scope);
    void writeColumn(const Expression& column);
    void writeText(const Expression& text, Binding binding);
    void writeConverted(const Expression& value, ValueKind kind, const Scope& scope);
    void writeCompared(const Expression& value, ValueKind kind, const Scope& scope);
    void writeTextAsDate(const Expression& text);
    void writeTextAsWhole(const Expression& text);
    void writeArithmetic(const Expression& sum, const Scope& scope);
    void writeOperand(const Expression& operand, int precedence, bool right, const Scope& scope);
    int precedenceOf(const Expression& expression, const Scope& scope) const;
    bool isConcatenation(const Expression& sum, const Scope& scope) const;
    void writeFunction(const Expression& call, const Scope& scope);
    void writeCast(const Expression& cast, const Scope& scope);
    void writeDate(const Expression& date, const Scope& scope);
    void writeCases(const Expression& cases, const Scope& scope);
    void writeParameter(std::size_t piece, Binding binding);
    void writeName(std::string_view name);
    void writeLiteral(std::string_view characters);

    // ConditionWriter.cpp: conditions
    void writeCondition(const Expression& condition, const Scope& scope);
    void writeComparison(const Expression& condition, const Scope& scope);
    void writeBetween(const Expression& condition, const Scope& scope);
    void writeIn(const Expression& condition, const Scope& scope);
    ValueKind commonKind(const std::vector<const Expression*>& values, const Scope& scope) const;

    const Catalog& catalog_;
    const Source& source_;
    std::string out_;
    std::vector<Parameter> parameters_;
};

} // namespace platform::dialect

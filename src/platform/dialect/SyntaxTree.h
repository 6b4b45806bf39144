#pragma once

#include "platform/dialect/Token.h"

#include <memory>
#include <string>
#include <vector>

namespace platform::dialect {

struct Select;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

/// A value or a condition.
struct Expression {
    enum class Kind {
        // values
        column,     ///< name, table (qualifier, may be empty)
        allColumns, ///< the star of a select list or of Count(*); table may qualify it
        number,     ///< name is the number as written
        text,       ///< segments
        argument,   ///< argument is the piece of the source
        null,
        negative,   ///< operands[0]
        arithmetic, ///< name is + - * / or %; two operands
        function,   ///< name (upper case), operands; distinct for Count(DISTINCT x)
        cast,       ///< name is the type (upper case), length its length or 0; operands[0]
        date,       ///< CONVERT(DateTime, operands[0], 103)
        query,      ///< a select of one value
        cases,      ///< pairs condition, value; then the value of ELSE if there is one. With base: values first
        // conditions
        comparison, ///< name is the operator; two operands
        both,       ///< AND; two operands
        either,     ///< OR; two operands
        negation,   ///< NOT operands[0]
        isNull,     ///< operands[0]; negated for IS NOT NULL
        between,    ///< three operands; negated for NOT BETWEEN
        inList,     ///< operands[0] among the others; negated for NOT IN
        inQuery     ///< operands[0] among the rows of query; negated for NOT IN
    };

    Kind kind = Kind::null;
    std::string name;
    std::string table;
    bool bracketed = false; ///< Kind::column: the name came between brackets
    bool negated = false;
    bool distinct = false;
    bool hasBase = false; ///< Kind::cases: operands[0] is compared with each WHEN
    int length = 0;
    std::size_t argument = 0;
    std::vector<Segment> segments;
    std::vector<ExpressionPtr> operands;
    std::unique_ptr<Select> query;
    Place place;

    bool isCondition() const { return kind >= Kind::comparison; }
};

/// A table of a FROM clause.
struct TableReference {
    std::string name;
    std::string alias; ///< the name again when none was given
    Place place;
};

enum class JoinKind { inner, left, right };

/// A table, or two sources joined.
struct JoinTree {
    TableReference table; ///< when left and right are null
    JoinKind kind = JoinKind::inner;
    std::unique_ptr<JoinTree> left;
    std::unique_ptr<JoinTree> right;
    ExpressionPtr on;
    Place place;

    bool isTable() const { return !left; }
};

struct SelectItem {
    ExpressionPtr value;
    std::string alias; ///< empty when none was given
};

struct OrderItem {
    ExpressionPtr value;
    bool descending = false;
};

/// One SELECT.
struct Select {
    bool distinct = false;
    ExpressionPtr top; ///< null without TOP
    std::vector<SelectItem> items;
    std::unique_ptr<JoinTree> from; ///< null without FROM
    ExpressionPtr where;            ///< null without WHERE
    std::vector<OrderItem> order;
};

struct Assignment {
    std::string column;
    ExpressionPtr value;
};

/// One whole statement.
struct SyntaxTree {
    enum class Kind {
        select,
        update,
        insert,
        remove,
        nothing ///< a setting of the server's that SQLite needs not
    };
    Kind kind = Kind::select;
    Select select;                                ///< Kind::select
    TableReference table;                         ///< the others
    std::vector<Assignment> assignments;          ///< Kind::update
    std::vector<std::string> columns;             ///< Kind::insert; empty: all the table's columns
    std::vector<std::vector<ExpressionPtr>> rows; ///< Kind::insert
    ExpressionPtr where;                          ///< Kind::update, remove; may be null
};

} // namespace platform::dialect

// The linearised joins give the rows that the standard gives: compared with nested loops over the tree as it is
// written, on small random tables with nulls.

#include "platform/dialect/Translator.h"
#include "sqlite/SqliteFixture.h"

#include <array>
#include <map>
#include <optional>
#include <random>

#include <sqlite3.h>

namespace sqlite_test {
namespace {

using Cell = std::optional<int>;
using Row = std::vector<Cell>;
using Rows = std::vector<Row>;

constexpr std::size_t tableCount = 5;
constexpr std::size_t noTable = 99;
constexpr std::size_t columnCount = 2; // of each table: K and N

enum class Join { inner, left, right };

/// A join tree as a person writes it, with its meaning by the standard.
struct Tree {
    std::size_t table = 0; // of a leaf
    Join join = Join::inner;
    std::unique_ptr<Tree> left;
    std::unique_ptr<Tree> right;
    struct Term {
        std::array<std::size_t, 2> tables;
        std::array<std::size_t, 2> columns;
    };
    std::vector<Term> on; // equalities, all to hold

    bool isLeaf() const { return !left; }
};

std::unique_ptr<Tree> leaf(std::size_t table) {
    auto tree = std::make_unique<Tree>();
    tree->table = table;
    return tree;
}

void collect(const Tree& tree, std::vector<std::size_t>& tables) {
    if (tree.isLeaf()) {
        tables.push_back(tree.table);
        return;
    }
    collect(*tree.left, tables);
    collect(*tree.right, tables);
}

std::vector<std::size_t> tablesOf(const Tree& tree) {
    std::vector<std::size_t> tables;
    collect(tree, tables);
    return tables;
}

std::string nameOf(std::size_t table) {
    return "T" + std::to_string(table);
}

std::string columnOf(std::size_t table, std::size_t column) {
    return nameOf(table) + (column == 0 ? ".K" : ".N");
}

std::string textOf(const Tree& tree, bool parentheses) {
    if (tree.isLeaf())
        return nameOf(tree.table);
    static const std::map<Join, std::string> words = {
        {Join::inner, " INNER JOIN "}, {Join::left, " LEFT OUTER JOIN "}, {Join::right, " RIGHT JOIN "}};
    std::string text = textOf(*tree.left, parentheses) + words.at(tree.join);
    const bool block = parentheses && !tree.right->isLeaf();
    text += block ? "(" + textOf(*tree.right, parentheses) + ")" : textOf(*tree.right, parentheses);
    text += " ON ";
    for (std::size_t i = 0; i < tree.on.size(); ++i) {
        const auto& term = tree.on[i];
        text += (i > 0 ? " AND " : "") + columnOf(term.tables[0], term.columns[0]) + " = " +
                columnOf(term.tables[1], term.columns[1]);
    }
    return text;
}

/// Nested loops. A row has the cells of every table in its place; those of tables outside the tree are null.
class Evaluator {
public:
    explicit Evaluator(const std::array<Rows, tableCount>& data) : data_(data) {}

    Rows evaluate(const Tree& tree) const {
        if (tree.isLeaf()) {
            Rows rows;
            for (const auto& row : data_[tree.table]) {
                Row wide(tableCount * columnCount);
                std::copy(row.begin(), row.end(), wide.begin() + static_cast<std::ptrdiff_t>(tree.table * columnCount));
                rows.push_back(wide);
            }
            return rows;
        }
        const Rows left = evaluate(*tree.left);
        const Rows right = evaluate(*tree.right);
        const bool fromRight = tree.join == Join::right;
        const Rows& preserved = fromRight ? right : left;
        const Rows& other = fromRight ? left : right;
        Rows rows;
        for (const auto& a : preserved) {
            bool matched = false;
            for (const auto& b : other) {
                const Row both = merged(a, b);
                if (!holds(tree, both))
                    continue;
                matched = true;
                rows.push_back(both);
            }
            if (!matched && tree.join != Join::inner)
                rows.push_back(a);
        }
        return rows;
    }

private:
    static Row merged(const Row& a, const Row& b) {
        Row row = a;
        for (std::size_t i = 0; i < row.size(); ++i)
            if (b[i])
                row[i] = b[i];
        return row;
    }
    static bool holds(const Tree& tree, const Row& row) {
        for (const auto& term : tree.on) {
            const Cell& a = row[term.tables[0] * columnCount + term.columns[0]];
            const Cell& b = row[term.tables[1] * columnCount + term.columns[1]];
            if (!a || !b || *a != *b)
                return false;
        }
        return true;
    }

    const std::array<Rows, tableCount>& data_;
};

class JoinPropertyTest : public testing::Test {
protected:
    JoinPropertyTest() {
        sqlite3* raw = nullptr;
        EXPECT_EQ(sqlite3_open(":memory:", &raw), SQLITE_OK);
        database_.reset(raw);
        contract::Schema schema;
        static constexpr std::array<std::string_view, tableCount> names = {"T0", "T1", "T2", "T3", "T4"};
        for (const auto name : names) {
            schema.tables.push_back(
                {name, {{"K", contract::ColumnType::integer}, {"N", contract::ColumnType::integer}}, {}, {}});
            run("CREATE TABLE " + std::string(name) + " (K INTEGER, N INTEGER)");
        }
        catalog_ = std::make_unique<platform::dialect::SchemaCatalog>(schema);
    }

    void run(const std::string& text) {
        ASSERT_EQ(sqlite3_exec(database_.get(), text.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << text;
    }

    std::size_t upTo(std::size_t bound) { return random_() % bound; }

    void fillTables() {
        for (std::size_t t = 0; t < tableCount; ++t) {
            run("DELETE FROM " + nameOf(t));
            data_[t].clear();
            const auto rows = upTo(6);
            for (std::size_t r = 0; r < rows; ++r) {
                Row row;
                std::string values;
                for (std::size_t c = 0; c < columnCount; ++c) {
                    const bool null = upTo(4) == 0;
                    row.push_back(null ? Cell() : Cell(static_cast<int>(upTo(4))));
                    values += (c > 0 ? ", " : "") + (null ? std::string("NULL") : std::to_string(*row.back()));
                }
                data_[t].push_back(row);
                run("INSERT INTO " + nameOf(t) + " VALUES (" + values + ")");
            }
        }
    }

    Rows rowsOf(const std::string& text) {
        sqlite3_stmt* raw = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &raw, nullptr), SQLITE_OK)
            << text << ": " << sqlite3_errmsg(database_.get());
        const platform::sqlite::StatementHandle statement(raw);
        Rows rows;
        while (raw && sqlite3_step(raw) == SQLITE_ROW) {
            Row row;
            for (int i = 0; i < sqlite3_column_count(raw); ++i)
                row.push_back(sqlite3_column_type(raw, i) == SQLITE_NULL ? Cell() : Cell(sqlite3_column_int(raw, i)));
            rows.push_back(row);
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    /// The rows that the standard gives, each cut to the columns of the tree's tables as written.
    Rows expectedOf(const Tree& tree, std::size_t nullTable) {
        const auto tables = tablesOf(tree);
        Rows rows;
        for (const auto& wide : Evaluator(data_).evaluate(tree)) {
            if (nullTable != noTable && wide[nullTable * columnCount])
                continue;
            Row row;
            for (const auto table : tables)
                for (std::size_t c = 0; c < columnCount; ++c)
                    row.push_back(wide[table * columnCount + c]);
            rows.push_back(row);
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    /// Compares; false when the translator refuses the tree.
    bool compare(const Tree& tree, bool parentheses, std::size_t nullTable) {
        std::string text = "SELECT * FROM " + textOf(tree, parentheses);
        if (nullTable != noTable)
            text += " WHERE " + columnOf(nullTable, 0) + " IS NULL";
        std::string translated;
        try {
            translated = platform::dialect::Translator(*catalog_)
                             .translate(platform::dialect::Source{{contract::Statement::Kind::fragment, text}})
                             .text;
        } catch (const platform::dialect::TranslationError&) {
            return false;
        }
        EXPECT_EQ(translated.find('(', translated.find(" FROM ")), std::string::npos) << translated;
        EXPECT_EQ(rowsOf(translated), expectedOf(tree, nullTable)) << text << "\n" << translated;
        return true;
    }

    std::unique_ptr<Tree> join(Join kind, std::unique_ptr<Tree> left, std::unique_ptr<Tree> right,
                               std::vector<Tree::Term> on) {
        auto tree = std::make_unique<Tree>();
        tree->join = kind;
        tree->left = std::move(left);
        tree->right = std::move(right);
        tree->on = std::move(on);
        return tree;
    }

    std::unique_ptr<Tree> randomTree(std::vector<std::size_t> tables) {
        if (tables.size() == 1)
            return leaf(tables[0]);
        const auto cut = static_cast<std::ptrdiff_t>(1 + upTo(tables.size() - 1));
        const std::vector<std::size_t> first(tables.begin(), tables.begin() + cut);
        const std::vector<std::size_t> second(tables.begin() + cut, tables.end());
        std::vector<Tree::Term> on;
        for (std::size_t i = 0; i < 1 + upTo(2); ++i)
            on.push_back({{first[upTo(first.size())], second[upTo(second.size())]}, {upTo(2), upTo(2)}});
        static constexpr std::array<Join, 5> kinds = {Join::left, Join::left, Join::right, Join::right, Join::inner};
        return join(kinds[upTo(kinds.size())], randomTree(first), randomTree(second), std::move(on));
    }

    std::array<Rows, tableCount> data_;
    std::mt19937 random_{20240630};

private:
    platform::sqlite::DatabaseHandle database_;
    std::unique_ptr<platform::dialect::SchemaCatalog> catalog_;
};

TEST_F(JoinPropertyTest, ShapesInUse) {
    const auto on = [](std::size_t a, std::size_t ca, std::size_t b, std::size_t cb) {
        return std::vector<Tree::Term>{{{a, b}, {ca, cb}}};
    };
    std::vector<std::unique_ptr<Tree>> shapes;
    // Parent, type, child turned round, and the account with its registry entry as a block.
    shapes.push_back(
        join(Join::left, join(Join::right, join(Join::left, leaf(0), leaf(1), on(0, 1, 1, 0)), leaf(2), on(0, 0, 2, 1)),
             join(Join::left, leaf(3), leaf(4), on(3, 1, 4, 0)), on(0, 0, 3, 0)));
    // The account with a block of right joins whose innermost table is preserved, and one more table after it.
    shapes.push_back(
        join(Join::left,
             join(Join::left, leaf(0),
                  join(Join::right, leaf(1), join(Join::right, leaf(2), leaf(3), on(2, 0, 3, 1)), on(1, 0, 3, 0)),
                  on(0, 0, 3, 0)),
             leaf(4), on(0, 1, 4, 0)));
    // Two rows of one account; settlement, bonus and subject.
    shapes.push_back(join(Join::inner, leaf(0), leaf(1), {{{0, 1}, {0, 0}}, {{0, 1}, {1, 1}}}));
    shapes.push_back(join(Join::inner, join(Join::inner, leaf(0), leaf(1), on(0, 0, 1, 0)), leaf(2), on(1, 0, 2, 0)));
    // A chain of outer joins, some on tables that may be missing.
    shapes.push_back(join(Join::left,
                          join(Join::left, join(Join::left, leaf(0), leaf(1), on(0, 0, 1, 0)), leaf(2), on(1, 1, 2, 0)),
                          leaf(3), on(0, 1, 3, 0)));
    for (int round = 0; round < 300; ++round) {
        fillTables();
        for (const auto& shape : shapes) {
            EXPECT_TRUE(compare(*shape, false, noTable)) << textOf(*shape, false);
            EXPECT_TRUE(compare(*shape, true, noTable)) << textOf(*shape, true);
            EXPECT_TRUE(compare(*shape, false, tablesOf(*shape).back()));
        }
    }
}

TEST_F(JoinPropertyTest, RandomTreesAreRightOrRefused) {
    int translated = 0;
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        if (round % 5 == 0)
            fillTables();
        std::vector<std::size_t> tables = {0, 1, 2, 3, 4};
        std::shuffle(tables.begin(), tables.end(), random_);
        tables.resize(2 + upTo(tableCount - 1));
        const auto tree = randomTree(tables);
        const auto nullTable = upTo(2) == 0 ? tables[upTo(tables.size())] : noTable;
        ++(compare(*tree, upTo(2) == 0, nullTable) ? translated : refused);
    }
    EXPECT_GT(translated, 1000);
    EXPECT_GT(refused, 100);
}

} // namespace
} // namespace sqlite_test

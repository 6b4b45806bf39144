// Whatever stands in a text, the translator answers with a translation or a refusal that quotes the place.

#include "dialect/DialectFixture.h"

#include <random>

namespace dialect_test {
namespace {

class MutationTest : public DialectTest {
protected:
    std::size_t upTo(std::size_t bound) { return random_() % bound; }

    std::string mutated(std::string text) {
        static const std::vector<std::string> words = {"(",       ")",      "'",
                                                       "''",      ",",      ".",
                                                       "*",       "=",      "<>",
                                                       "+",       "-",      " AND ",
                                                       " OR ",    " NOT ",  " IN ",
                                                       " NULL ",  " ON ",   " AS ",
                                                       " CASE ",  " WHEN ", " END ",
                                                       " 1 ",     "[",      "]",
                                                       "SELECT ", " FROM ", " JOIN ",
                                                       "LEFT ",   "RIGHT ", "è",
                                                       "\t",      "--",     "CONVERT(DateTime,'",
                                                       "',103)",  ";",      "%"};
        for (std::size_t i = 0; i < 1 + upTo(4); ++i) {
            const auto at = upTo(text.size() + 1);
            switch (upTo(3)) {
            case 0:
                text.insert(at, words[upTo(words.size())]);
                break;
            case 1:
                text.erase(at, 1 + upTo(8));
                break;
            default:
                text.insert(at, text.substr(upTo(text.size() + 1), upTo(20)));
                break;
            }
        }
        return text;
    }

    /// The text cut into fixed fragments and arguments at random places.
    Source cut(const std::string& text) {
        Source source;
        std::size_t at = 0;
        while (at < text.size()) {
            const auto length = 1 + upTo(60);
            source.push_back({Statement::Kind::fragment, text.substr(at, length)});
            at += length;
            if (upTo(3) != 0)
                continue;
            static constexpr Statement::Kind kinds[] = {Statement::Kind::number, Statement::Kind::decimal,
                                                        Statement::Kind::text, Statement::Kind::date};
            static const std::string values[] = {"-12", "3.50", "D''Angiò", "31/12/2099"};
            const auto kind = upTo(4);
            source.push_back({kinds[kind], values[kind]});
        }
        return source;
    }

    std::mt19937 random_{7};
};

TEST_F(MutationTest, AnswersOrRefuses) {
    const std::vector<std::string> texts = {
        "SELECT TOP 1 * FROM A RIGHT OUTER JOIN B LEFT JOIN C ON B.K = C.K ON A.N = B.N WHERE A.T = 'x' ORDER BY A.K",
        " SELECT ISNULL(G,'01/01/2000') AS D, RTrim(CAST(N AS Char)) + ' ' + ISNULL(T,'') AS S FROM A WHERE K = 1",
        "UPDATE A SET G = (CASE WHEN G > CONVERT(DateTime,'30/06/2024',103) THEN G ELSE CONVERT(DateTime,'01/07/2024'"
        ",103) END), T = 'O''Brien' WHERE N = '12'",
        "INSERT INTO A (K, N, T, G) VALUES (1, '2', 'tre', CONVERT(DateTime,'01/02/2003',103))",
        "SELECT K, (SELECT B.T FROM B INNER JOIN C ON B.K = C.K AND A.N = B.N) AS X FROM A WHERE K NOT IN (SELECT N "
        "FROM B) AND (CONVERT(DateTime,'01/02/2003',103) BETWEEN G AND G OR NOT (K = 1))"};
    int translated = 0;
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = mutated(texts[upTo(texts.size())]);
        try {
            const auto translation = translate(upTo(2) == 0 ? cut(text) : cut(text + " "));
            EXPECT_FALSE(translation.text.empty());
            ++translated;
        } catch (const platform::dialect::TranslationError& error) {
            EXPECT_EQ(error.description().rfind("Istruzione SQL non compresa presso «", 0), 0U) << text;
            ++refused;
        }
    }
    EXPECT_GT(translated, 0);
    EXPECT_GT(refused, 0);
}

} // namespace
} // namespace dialect_test

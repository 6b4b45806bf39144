#include "host/script/ScriptReader.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

using host::ScriptReader;

/// A pipe into which the test writes as an outside program would.
class Pipe {
public:
    Pipe() { EXPECT_EQ(0, ::pipe(ends_.data())); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        ::close(ends_[0]);
        finish();
    }

    int readEnd() const { return ends_[0]; }
    void write(std::string_view text) const {
        EXPECT_EQ(static_cast<ssize_t>(text.size()), ::write(ends_[1], text.data(), text.size()));
    }
    void finish() {
        if (ends_[1] >= 0)
            ::close(ends_[1]);
        ends_[1] = -1;
    }

private:
    std::array<int, 2> ends_{-1, -1};
};

struct Read {
    int number;
    std::string text;
    bool operator==(const Read&) const = default;
};

std::vector<Read> linesOf(std::string_view text) {
    Pipe pipe;
    pipe.write(text);
    pipe.finish();
    ScriptReader reader(pipe.readEnd(), QStringLiteral("prova"));
    std::vector<Read> lines;
    while (const auto line = reader.next({}))
        lines.push_back({line->number, line->text.toStdString()});
    EXPECT_TRUE(reader.failure().isEmpty());
    return lines;
}

TEST(ScriptReader, GivesTheLinesWithTheirNumbers) {
    EXPECT_EQ((std::vector<Read>{{1, "a"}, {2, "b"}}), linesOf("a\nb\n"));
}

TEST(ScriptReader, PassesOverBlankLinesAndComments) {
    EXPECT_EQ((std::vector<Read>{{4, "a"}, {7, "b"}}), linesOf("\n  \t \n# note\na\n#\n\r\nb\n"));
}

TEST(ScriptReader, TakesALineThatOnlyLaterContainsTheCommentSign) {
    EXPECT_EQ((std::vector<Read>{{1, " # a"}, {2, "a#"}}), linesOf(" # a\na#\n"));
}

TEST(ScriptReader, AcceptsTheEndOfLineOfOtherSystems) {
    EXPECT_EQ((std::vector<Read>{{1, "a"}, {2, "b"}}), linesOf("a\r\nb\r\n"));
}

TEST(ScriptReader, TakesALastLineWithoutEnd) {
    EXPECT_EQ((std::vector<Read>{{1, "a"}, {2, "b"}}), linesOf("a\nb"));
}

TEST(ScriptReader, IsEmptyForAnEmptyScript) {
    EXPECT_TRUE(linesOf("").empty());
}

TEST(ScriptReader, LeavesAByteOrderMarkOut) {
    EXPECT_EQ((std::vector<Read>{{1, "à"}}), linesOf("\xEF\xBB\xBFà\n"));
}

TEST(ScriptReader, TakesLinesLongerThanItsBuffer) {
    const std::string longLine(50000, 'x');
    EXPECT_EQ((std::vector<Read>{{1, longLine}, {2, "b"}}), linesOf(longLine + "\nb\n"));
}

TEST(ScriptReader, GivesALineAsSoonAsItIsComplete) {
    Pipe pipe;
    ScriptReader reader(pipe.readEnd(), QStringLiteral("prova"));
    pipe.write("first\nsec");
    ASSERT_EQ("first", reader.next({})->text.toStdString()); // the writer has not finished
    int idle = 0;
    const auto second = reader.next([&] {
        if (++idle == 2)
            pipe.write("ond\n");
    });
    EXPECT_EQ("second", second->text.toStdString());
    EXPECT_EQ(2, idle);
    pipe.finish();
    EXPECT_FALSE(reader.next({}).has_value());
}

TEST(ScriptReader, SaysWhyAFileCannotBeRead) {
    QString error;
    EXPECT_EQ(nullptr, ScriptReader::open(QStringLiteral("/nowhere/script.jsonl"), error));
    EXPECT_TRUE(error.contains(QStringLiteral("/nowhere/script.jsonl"))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("non esiste"))) << error.toStdString();

    EXPECT_EQ(nullptr, ScriptReader::open(QStringLiteral("/"), error));
    EXPECT_TRUE(error.contains(QStringLiteral("cartella"))) << error.toStdString();
}

} // namespace

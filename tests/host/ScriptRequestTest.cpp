#include "host/script/ScriptRequest.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using host::ScriptRefusal;
using host::ScriptRequest;

/// The reason for which it is refused, "" when it is not.
std::string refusal(const std::function<void()>& access) {
    try {
        access();
    } catch (const ScriptRefusal& error) {
        return error.reason().toStdString();
    }
    return {};
}

std::string refusalOf(const char* line) {
    return refusal([&] { ScriptRequest::parse(line); });
}

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

TEST(ScriptRequest, TellsItsVerb) {
    EXPECT_EQ(QStringLiteral("quit"), ScriptRequest::parse(R"( {"do":"quit"} )").verb());
}

TEST(ScriptRequest, RefusesWhatIsNoObject) {
    for (const char* line : {"quit", "{", "{\"do\":\"quit\"", "{\"do\":\"quit\"} x", "'do'", "\"do"})
        EXPECT_TRUE(contains(refusalOf(line), "non è JSON valido")) << line << ": " << refusalOf(line);
    for (const char* line : {"[]", R"([{"do":"quit"}])"})
        EXPECT_TRUE(contains(refusalOf(line), "non è un oggetto")) << line << ": " << refusalOf(line);
    EXPECT_TRUE(contains(refusalOf("{\"do\":\"\xFF\"}"), "UTF-8"));
}

TEST(ScriptRequest, RefusesAMissingOrOtherVerb) {
    EXPECT_EQ("manca \"do\"", refusalOf("{}"));
    EXPECT_EQ("\"do\" deve essere un testo", refusalOf(R"({"do":1})"));
    EXPECT_EQ("\"do\" deve essere un testo", refusalOf(R"({"do":null})"));
}

TEST(ScriptRequest, ReadsTexts) {
    const auto request = ScriptRequest::parse(R"({"do":"x","a":"è","b":3})");
    EXPECT_EQ(QStringLiteral("è"), request.text(QStringLiteral("a")));
    EXPECT_EQ("\"b\" deve essere un testo", refusal([&] { request.text(QStringLiteral("b")); }));
    EXPECT_EQ("manca \"c\"", refusal([&] { request.text(QStringLiteral("c")); }));
    EXPECT_FALSE(request.optionalText(QStringLiteral("c")).has_value());
    EXPECT_EQ("\"b\" deve essere un testo", refusal([&] { request.optionalText(QStringLiteral("b")); }));
}

TEST(ScriptRequest, ReadsWholeNumbersOnly) {
    const auto request = ScriptRequest::parse(
        R"({"do":"x","n":12,"neg":-3,"whole":4.0,"big":9007199254740993,"text":"12","half":1.5,"huge":1e300,"no":null,"t":true})");
    EXPECT_EQ(12, request.integer(QStringLiteral("n")));
    EXPECT_EQ(-3, request.integer(QStringLiteral("neg")));
    EXPECT_EQ(4, request.integer(QStringLiteral("whole")));
    EXPECT_EQ(9007199254740993LL, request.integer(QStringLiteral("big")));
    for (const char* name : {"text", "half", "huge", "no", "t"})
        EXPECT_TRUE(contains(refusal([&] { request.integer(QLatin1String(name)); }), "numero intero")) << name;
    EXPECT_EQ("\"n\" deve stare tra 0 e 1, non 12", refusal([&] { request.integer(QStringLiteral("n"), 0, 1); }));
    EXPECT_FALSE(request.optionalInteger(QStringLiteral("missing")).has_value());
    EXPECT_FALSE(refusal([&] { request.optionalInteger(QStringLiteral("text")); }).empty());
}

TEST(ScriptRequest, ReadsLists) {
    const auto request = ScriptRequest::parse(R"({"do":"x","l":["a","b"],"mixed":["a",1],"text":"a"})");
    EXPECT_EQ((QStringList{QStringLiteral("a"), QStringLiteral("b")}), request.optionalTexts(QStringLiteral("l")));
    EXPECT_TRUE(request.optionalTexts(QStringLiteral("missing")).isEmpty());
    EXPECT_FALSE(refusal([&] { request.optionalTexts(QStringLiteral("mixed")); }).empty());
    EXPECT_FALSE(refusal([&] { request.array(QStringLiteral("text")); }).empty());
    EXPECT_FALSE(refusal([&] { request.array(QStringLiteral("missing")); }).empty());
    EXPECT_TRUE(request.optionalObject(QStringLiteral("missing")).isEmpty());
    EXPECT_FALSE(refusal([&] { request.optionalObject(QStringLiteral("text")); }).empty());
}

} // namespace

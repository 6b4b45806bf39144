#include "docs/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <regex>
#include <set>
#include <string>

namespace {

using docs_test::inSources;
using docs_test::read;

std::string document() {
    return read(inSources("docs/host-contract.md"));
}

std::string program() {
    return read(inSources("examples/minimal_host/main.cpp"));
}

/// What a command writes to its standard output; its exit status is checked.
std::string output(const std::string& command) {
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return "no pipe";
    std::array<char, 4096> part{};
    while (const auto read = std::fread(part.data(), 1, part.size(), pipe))
        text.append(part.data(), read);
    EXPECT_EQ(0, pclose(pipe)) << command;
    return text;
}

/// The code blocks of a document that are marked with a language.
std::vector<std::string> blocks(const std::string& text, const std::string& language) {
    const std::string opening = "\n```" + language + "\n";
    std::vector<std::string> found;
    for (auto at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
        const auto begin = at + opening.size();
        found.push_back(text.substr(begin, text.find("\n```\n", begin) + 1 - begin));
    }
    return found;
}

TEST(HostContract, ShowsTheMinimalHostAsItIsCompiled) {
    const auto code = blocks(document(), "cpp");
    ASSERT_EQ(1U, code.size());
    EXPECT_EQ(program(), code[0]);
}

TEST(HostContract, KeepsTheMinimalHostSmall) {
    const auto text = program();
    EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 150);
}

TEST(HostContract, SaysWhatTheMinimalHostWrites) {
    const auto said = blocks(document(), "text");
    const auto written = output("'" DISTINTE_MINIMAL_HOST "' '" DISTINTE_COMPONENT "'");
    EXPECT_NE(std::string::npos, written.find("closed: True\nobjects left: 0\n")) << written;
    EXPECT_NE(said.end(), std::find(said.begin(), said.end(), written)) << written;
}

/// Every interface of the contract, and every operation that a host's context gives or a host calls.
TEST(HostContract, NamesEveryInterface) {
    const auto text = document();
    const std::regex declared(R"(\n(?:class|struct) (\w+)(?: : [^{;]*)? \{)");
    std::set<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(inSources("src/contract"))) {
        if (file.path().extension() != ".h")
            continue;
        const auto header = read(file.path());
        for (std::sregex_iterator match(header.begin(), header.end(), declared), end; match != end; ++match)
            names.insert((*match)[1]);
    }
    EXPECT_GT(names.size(), 50U);
    for (const auto& name : names)
        EXPECT_TRUE(std::regex_search(text, std::regex("`(?:contract::)?" + name + "`"))) << name << " is not named";
}

TEST(HostContract, NamesWhatAHostImplementsAndCalls) {
    const auto text = document();
    const std::regex operation(R"(\n    virtual [^;]*?(\w+)\([^;]*= 0;)");
    std::size_t seen = 0;
    for (const auto* file : {"Cinterface.h", "Host.h"}) {
        const auto header = read(inSources("src/contract") / file);
        for (std::sregex_iterator match(header.begin(), header.end(), operation), end; match != end; ++match, ++seen)
            EXPECT_NE(std::string::npos, text.find((*match)[1])) << file << ": " << (*match)[1];
    }
    EXPECT_GT(seen, 80U);
}

TEST(HostContract, NamesEveryEntryPoint) {
    const auto text = document();
    const auto header = read(inSources("src/contract/EntryPoints.h"));
    const std::regex function(R"(using (\w+)Function = )");
    std::size_t seen = 0;
    for (std::sregex_iterator match(header.begin(), header.end(), function), end; match != end; ++match, ++seen)
        EXPECT_NE(std::string::npos, text.find("`" + (*match)[1].str() + "`")) << (*match)[1];
    EXPECT_EQ(6U, seen);
}

} // namespace

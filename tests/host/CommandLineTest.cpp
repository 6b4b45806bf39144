#include "host/start/CommandLine.h"
#include "host/start/StartFailure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using host::CommandLine;
using host::readCommandLine;

std::string refusal(const std::vector<std::string>& arguments) {
    try {
        readCommandLine(arguments);
    } catch (const host::StartFailure& failure) {
        EXPECT_EQ(host::ExitStatus::usage, failure.status());
        return failure.what();
    }
    ADD_FAILURE() << "not refused";
    return {};
}

TEST(CommandLine, DefaultsWithoutArguments) {
    const CommandLine line = readCommandLine({});
    EXPECT_EQ(CommandLine::Action::window, line.action);
    EXPECT_FALSE(line.database.has_value());
    EXPECT_FALSE(line.odbc.has_value());
    EXPECT_EQ(2000, line.demoSize);
    EXPECT_FALSE(line.company.has_value());
    EXPECT_EQ("ADMIN", line.user);
    EXPECT_EQ("ADMIN", line.group);
    EXPECT_FALSE(line.trace.has_value());
    EXPECT_FALSE(line.log.has_value());
}

TEST(CommandLine, ReadsEveryOption) {
    const CommandLine line = readCommandLine({"--database", "a.sqlite", "--company", "7", "--user", "ROSSI", "--group",
                                              "VENDITE", "--trace", "t.jsonl", "--log", "e.log", "--script", "-"});
    EXPECT_EQ(CommandLine::Action::script, line.action);
    EXPECT_EQ("a.sqlite", line.database);
    EXPECT_EQ(7, line.company);
    EXPECT_EQ("ROSSI", line.user);
    EXPECT_EQ("VENDITE", line.group);
    EXPECT_EQ("t.jsonl", line.trace);
    EXPECT_EQ("e.log", line.log);
    EXPECT_EQ("-", line.script);
    EXPECT_EQ("Driver=x;Server=y", readCommandLine({"--odbc", "Driver=x;Server=y"}).odbc);
}

TEST(CommandLine, TakesAValueAfterAnEqualsSign) {
    const CommandLine line = readCommandLine({"--database=a=b.sqlite", "--create-demo", "--demo-size=12"});
    EXPECT_EQ("a=b.sqlite", line.database);
    EXPECT_EQ(CommandLine::Action::createDemo, line.action);
    EXPECT_EQ(12, line.demoSize);
}

TEST(CommandLine, TellsTheActionsApart) {
    EXPECT_EQ(CommandLine::Action::create, readCommandLine({"--create"}).action);
    EXPECT_EQ(CommandLine::Action::createDemo, readCommandLine({"--create-demo"}).action);
    EXPECT_EQ(CommandLine::Action::version, readCommandLine({"--version"}).action);
    EXPECT_EQ(CommandLine::Action::help, readCommandLine({"--help"}).action);
}

TEST(CommandLine, RefusesWhatExcludesEachOther) {
    EXPECT_NE(std::string::npos, refusal({"--database", "a", "--odbc", "b"}).find("--odbc"));
    refusal({"--create", "--create-demo"});
    refusal({"--script", "a", "--create"});
    refusal({"--script", "a", "--create-demo"});
    refusal({"--demo-size", "5"});
    refusal({"--create", "--demo-size", "5"});
}

TEST(CommandLine, ReadsTheTasksThatNeedNoScreen) {
    const auto check = readCommandLine({"--check", "--severity", "hint", "--format", "csv", "--company", "3"});
    EXPECT_EQ(CommandLine::Action::check, check.action);
    EXPECT_EQ(contract::AuditSeverity::hint, check.severity);
    EXPECT_EQ(CommandLine::Format::csv, check.format);
    EXPECT_EQ(3, check.company);
    EXPECT_EQ(contract::AuditSeverity::warning, readCommandLine({"--check"}).severity);
    EXPECT_FALSE(readCommandLine({"--check"}).format);
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"--compare", "AG", "12", "--date", "31/12/2026"}, {"--compare=AG", "12", "--date=31/12/2026"}}) {
        const auto compare = readCommandLine(arguments);
        EXPECT_EQ(CommandLine::Action::compare, compare.action);
        EXPECT_EQ((std::array<std::string, 2>{"AG", "12"}), compare.compared);
        EXPECT_EQ(contract::Date::of(2026, 12, 31), compare.date);
    }
}

TEST(CommandLine, RefusesWhatATaskDoesNotKnow) {
    EXPECT_NE(std::string::npos, refusal({"--severity", "error"}).find("serve solo con --check"));
    EXPECT_NE(std::string::npos, refusal({"--format", "csv"}).find("serve solo con --check o --compare o --moves"));
    EXPECT_NE(std::string::npos, refusal({"--check", "--date", "01/01/2024"}).find("serve solo con --compare"));
    EXPECT_NE(std::string::npos, refusal({"--check", "--severity", "all"}).find("all"));
    EXPECT_NE(std::string::npos, refusal({"--check", "--format", "xlsx"}).find("xlsx"));
    EXPECT_NE(std::string::npos, refusal({"--compare", "A"}).find("due distinte"));
    refusal({"--compare", "A", "--format", "json"});
    refusal({"--compare", "A", ""});
    refusal({"--compare", "A", "B", "--date", "30/02/2024"});
    refusal({"--compare", "A", "B", "--format", "text"});
    refusal({"--compare", "A", "B", "C"});
    refusal({"--check", "--compare", "A", "B"});
    for (const char* task : {"--script", "--create", "--create-demo"})
        refusal(std::string(task) == "--script" ? std::vector<std::string>{"--check", task, "-"}
                                                : std::vector<std::string>{"--check", task});
}

TEST(CommandLine, ReadsAListOfMoves) {
    auto line = readCommandLine({"--moves", "elenco.csv", "--dry-run", "--company", "2"});
    EXPECT_EQ(CommandLine::Action::moves, line.action);
    EXPECT_EQ("elenco.csv", line.moves);
    EXPECT_FALSE(line.apply);
    EXPECT_FALSE(line.format);
    line = readCommandLine({"--format=json", "--apply", "--moves=elenco.csv"});
    EXPECT_TRUE(line.apply);
    EXPECT_EQ(CommandLine::Format::json, line.format);
    refusal({"--moves", "a"});
    refusal({"--moves", "a", "--dry-run", "--apply"});
    refusal({"--moves", "a", "--dry-run", "--script", "b"});
    refusal({"--moves", "a", "--dry-run", "--create"});
    refusal({"--moves", "a", "--dry-run", "--format", "xml"});
    refusal({"--dry-run"});
    refusal({"--script", "a", "--apply"});
    refusal({"--format", "csv"});
}

TEST(CommandLine, RefusesUnknownAndRepeatedOptionsAndStrayArguments) {
    EXPECT_NE(std::string::npos, refusal({"--databse", "a"}).find("--databse"));
    EXPECT_NE(std::string::npos, refusal({"a.sqlite"}).find("a.sqlite"));
    refusal({"--user", "A", "--user", "B"});
    refusal({"--create=yes"});
}

TEST(CommandLine, NoPasswordStandsInARefusal) {
    const std::string string = "Driver={FreeTDS};Server=erp;UID=sa;pwd = {seg;reto};Database=Conti";
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {string}, {"--odcb=" + string}, {"--company", string}, {"--demo-size=" + string, "--create-demo"}}) {
        const std::string reason = refusal(arguments);
        EXPECT_EQ(std::string::npos, reason.find("reto")) << reason;
        EXPECT_NE(std::string::npos, reason.find("Server=erp")) << reason;
    }
}

TEST(CommandLine, RefusesMissingAndEmptyValues) {
    for (const std::string option :
         {"--database", "--odbc", "--demo-size", "--company", "--user", "--group", "--trace", "--log", "--script"}) {
        EXPECT_NE(std::string::npos, refusal({option}).find(option));
        EXPECT_NE(std::string::npos, refusal({option, ""}).find(option));
    }
}

TEST(CommandLine, RefusesNumbersThatAreNone) {
    for (const std::string value : {"uno", "1.5", "5x", " 5", "99999999999999999999"})
        EXPECT_NE(std::string::npos, refusal({"--company", value}).find(value)) << value;
    EXPECT_NE(std::string::npos,
              refusal({"--create-demo", "--demo-size", "99999999999999999999"}).find("--demo-size va da 1 a "));
    refusal({"--create-demo", "--demo-size", "0"});
    refusal({"--create-demo", "--demo-size", "-3"});
    refusal({"--company", "-1"});
}

TEST(CommandLine, ReasonsStandOnOneLine) {
    EXPECT_EQ(std::string::npos, refusal({"--x"}).find('\n'));
}

TEST(CommandLine, HelpNamesEveryOption) {
    const std::string help = host::helpText();
    for (const char* option :
         {"--database", "--odbc",     "--demo-size", "--company",     "--user",    "--group",   "--trace",
          "--log",      "--script",   "--create",    "--create-demo", "--version", "--help",    "--check",
          "--compare",  "--severity", "--date",      "--format",      "--moves",   "--dry-run", "--apply"})
        EXPECT_NE(std::string::npos, help.find(option)) << option;
}

} // namespace

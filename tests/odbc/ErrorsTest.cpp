#include "platform/odbc/Errors.h"

#include <gtest/gtest.h>

namespace {

using contract::ErrorCategory;
using platform::odbc::categoryOf;
using platform::odbc::describe;
using platform::odbc::endsConnection;
using platform::odbc::Engine;

ErrorCategory server(std::string_view state, std::int64_t native) {
    return categoryOf(Engine::server, state, native, "text");
}

TEST(OdbcErrors, TheServersNumbersHaveCategories) {
    EXPECT_EQ(ErrorCategory::deadlock, server("40001", 1205));
    EXPECT_EQ(ErrorCategory::deadlock, server("42000", 1205));
    EXPECT_EQ(ErrorCategory::locked, server("42000", 1222));
    EXPECT_EQ(ErrorCategory::duplicate, server("23000", 2627));
    EXPECT_EQ(ErrorCategory::duplicate, server("23000", 2601));
    EXPECT_EQ(ErrorCategory::other, server("23000", 547)) << "a constraint, but no duplicate";
    EXPECT_EQ(ErrorCategory::permission, server("42000", 229));
    EXPECT_EQ(ErrorCategory::permission, server("42000", 230));
    EXPECT_EQ(ErrorCategory::permission, server("42000", 262));
    EXPECT_EQ(ErrorCategory::permission, server("28000", 18456));
    EXPECT_EQ(ErrorCategory::syntax, server("42000", 102));
    EXPECT_EQ(ErrorCategory::syntax, server("42000", 156));
    EXPECT_EQ(ErrorCategory::syntax, server("42S22", 207));
    EXPECT_EQ(ErrorCategory::missingTable, server("42S02", 208));
    EXPECT_EQ(ErrorCategory::missingTable, server("42000", 208));
    EXPECT_EQ(ErrorCategory::readOnly, server("25000", 3906));
    EXPECT_EQ(ErrorCategory::full, server("42000", 9002));
    EXPECT_EQ(ErrorCategory::permission, server("42000", 4060)) << "a database that can not be opened";
    EXPECT_EQ(ErrorCategory::permission, server("08004", 911)) << "a database that does not exist";
    EXPECT_EQ(ErrorCategory::permission, server("08004", 18456)) << "a login that was refused";
    for (const std::int64_t native : {515, 3902, 3903, 8114, 8115, 8152})
        EXPECT_EQ(ErrorCategory::other, server("42000", native)) << native;
}

TEST(OdbcErrors, StatesOfTheDriverHaveCategories) {
    EXPECT_EQ(ErrorCategory::lostConnection, server("08S01", 0));
    EXPECT_EQ(ErrorCategory::lostConnection, server("08001", 20009));
    EXPECT_EQ(ErrorCategory::timeout, server("HYT00", 20003));
    EXPECT_EQ(ErrorCategory::timeout, server("HYT01", 0));
    EXPECT_EQ(ErrorCategory::syntax, server("42000", 0));
    EXPECT_EQ(ErrorCategory::other, server("42000", 50000)) << "an error that a program on the server raised";
    EXPECT_EQ(ErrorCategory::other, server("HY000", 0));
}

TEST(OdbcErrors, ALockThatWasNotGrantedIsNoTimeOutWhateverItsState) {
    EXPECT_EQ(ErrorCategory::locked, server("HYT00", 1222));
    EXPECT_FALSE(endsConnection({{"HYT00", 1222, "", server("HYT00", 1222)}}));
    EXPECT_EQ(ErrorCategory::deadlock, server("HYT00", 1205));
    EXPECT_EQ(ErrorCategory::lostConnection, server("08S01", 10054));
    EXPECT_EQ(ErrorCategory::lostConnection, server("08S01", 1222)) << "the connection has gone all the same";
    EXPECT_EQ(ErrorCategory::timeout, server("HYT00", -2));
}

TEST(OdbcErrors, AServerWithNumbersOfItsOwnIsToldByItsWords) {
    const auto other = [](std::string_view text) { return categoryOf(Engine::server, "42000", 33557097, text); };
    EXPECT_EQ(ErrorCategory::missingTable, other("[FreeTDS][SQL Server]relation \"x\" does not exist"));
    EXPECT_EQ(ErrorCategory::syntax, other("column \"y\" of relation \"x\" does not exist"));
    EXPECT_EQ(ErrorCategory::syntax, other("syntax error near 'where' at line 1"));
    EXPECT_EQ(ErrorCategory::duplicate, other("duplicate key value violates unique constraint \"k\""));
    EXPECT_EQ(ErrorCategory::deadlock, other("deadlock detected"));
    EXPECT_EQ(ErrorCategory::permission, other("permission denied for table x"));
    EXPECT_EQ(ErrorCategory::other, other("division by zero"));
    EXPECT_EQ(ErrorCategory::other, categoryOf(Engine::server, "42000", 50000, "a syntax error of ours"));
}

TEST(OdbcErrors, SqlitesCodesHaveCategories) {
    const auto sqlite = [](std::int64_t native, std::string_view text) {
        return categoryOf(Engine::sqlite, "HY000", native, text);
    };
    EXPECT_EQ(ErrorCategory::missingTable, sqlite(1, "[SQLite]no such table: X (1)"));
    EXPECT_EQ(ErrorCategory::syntax, sqlite(1, "[SQLite]near \"X\": syntax error (1)"));
    EXPECT_EQ(ErrorCategory::locked, sqlite(5, "[SQLite]database is locked (5)"));
    EXPECT_EQ(ErrorCategory::duplicate, sqlite(19, "[SQLite]UNIQUE constraint failed: A.B (19)"));
    EXPECT_EQ(ErrorCategory::other, sqlite(19, "[SQLite]NOT NULL constraint failed: A.B (19)"));
    EXPECT_EQ(ErrorCategory::full, sqlite(13, "[SQLite]database or disk is full (13)"));
}

TEST(OdbcErrors, ATimeOutEndsTheConnectionToo) {
    EXPECT_TRUE(endsConnection({{"HYT00", 0, "", ErrorCategory::timeout}}));
    EXPECT_TRUE(
        endsConnection({{"42000", 1, "", ErrorCategory::other}, {"08S01", 0, "", ErrorCategory::lostConnection}}));
    EXPECT_FALSE(endsConnection({{"40001", 1205, "", ErrorCategory::deadlock}}));
    EXPECT_FALSE(endsConnection({}));
}

TEST(OdbcErrors, WhatKeepsAConnectionFromBeingOpenedIsToldApart) {
    const auto reason = [](std::string_view state, std::int64_t native, std::string_view text) {
        return describe(
            "Apertura", "erp",
            {{std::string(state), native, std::string(text), categoryOf(Engine::server, state, native, text)}});
    };
    const auto has = [](const std::string& text, const char* part) { return text.find(part) != std::string::npos; };
    for (const auto& text :
         {reason("42000", 18456, "Login failed for user 'sa'."), reason("28000", 18456, "Login failed"),
          reason("28000", 0, "Login incorrect"), reason("08004", 18456, "Login failed")})
        EXPECT_TRUE(has(text, "utente o password non accettati dal server")) << text;
    for (const auto& text : {reason("42000", 4060, "Cannot open database"), reason("08004", 911, "does not exist"),
                             reason("S1000", 916, "not able to access the database")})
        EXPECT_TRUE(has(text, "il database non esiste o l'utente non vi può entrare")) << text;
    for (const auto& text : {reason("IM002", 0, "Data source name not found and no default driver specified"),
                             reason("01000", 0, "Can't open lib 'NoSuch' : file not found")})
        EXPECT_TRUE(has(text, "il driver ODBC o l'origine dati non si trova")) << text;
    EXPECT_TRUE(has(reason("42000", 229, "SELECT permission denied"), "l'utente del database non ha il permesso"));
    EXPECT_TRUE(has(reason("08S01", 20009, "Unable to connect"), "il collegamento con il server"));
}

TEST(OdbcErrors, TheDescriptionSaysWhatWhereAndWhy) {
    EXPECT_EQ(
        "Lettura non riuscita sul database «erp/Conti»: una tabella non esiste (42S02, errore 208: Invalid object "
        "name 'X'.).",
        describe("Lettura", "erp/Conti",
                 {{"01000", 0, "[FreeTDS]note", ErrorCategory::other},
                  {"42S02", 208, "[FreeTDS][SQL Server]Invalid object name 'X'.", ErrorCategory::missingTable}}));
    EXPECT_NE(std::string::npos, describe("Lettura", "erp", {}).find("ODBC"));
    EXPECT_EQ(0U, describe("Annullamento della transazione", "erp", {})
                      .find("Annullamento della transazione non riuscito sul database «erp»: "));
}

} // namespace

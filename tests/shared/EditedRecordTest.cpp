#include "platform/shared/EditedRecord.h"

#include "platform/headless/ScriptedConnection.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using contract::FieldType;
using contract::RuntimeError;
using contract::Statement;
using contract::Value;
using platform::headless::ScriptedConnection;
using platform::shared::ColumnValues;
using platform::shared::EditedRecord;
using platform::shared::RecordChanged;

using Statements = std::vector<std::string>;

/// A table with the key DITTA, a number, and a text that no database compares.
class EditedRecordTest : public testing::Test {
protected:
    static platform::headless::ScriptedRows answerOf(std::vector<std::vector<Value>> values) {
        platform::headless::ScriptedRows rows;
        rows.fields = {{"DITTA", FieldType::integer}, {"TIPO", FieldType::integer}, {"NOTA", FieldType::longVarWChar}};
        rows.rows = std::move(values);
        return rows;
    }

    void open(std::vector<std::vector<Value>> values) {
        connection->Open();
        connection->answer("SELECT", answerOf(std::move(values)));
        record.open(connection, nullptr, select, "ID");
        record.setTable("PARAMETRI", {"DITTA"});
        record.setDefault("TIPO", std::int64_t{4});
        record.setDefault("ALTRO", std::int64_t{5});
        rows = record.load(select, nullptr);
        record.show();
        connection->take();
    }

    static ColumnValues typed(std::int64_t kind, const char* note) {
        return {{"TIPO", kind}, {"NOTA", std::string(note)}};
    }

    const Statement select{"SELECT * FROM PARAMETRI"};
    std::shared_ptr<ScriptedConnection> connection = std::make_shared<ScriptedConnection>();
    std::shared_ptr<contract::Recordset> rows;
    EditedRecord record{"FME"};
};

TEST_F(EditedRecordTest, HoldsTheRowUnderTheCursor) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}, {std::int64_t{2}, std::int64_t{3}, "seconda"}});
    EXPECT_TRUE(record.exists());
    EXPECT_EQ(record.value("NOTA").text(), "prima");
    record.showRow(1);
    EXPECT_EQ(record.value("NOTA").text(), "seconda");
    EXPECT_EQ(record.value("ALTRO").integer(), 5); // no field of the rows
    EXPECT_TRUE(record.value("NIENTE").isEmpty());
}

TEST_F(EditedRecordTest, WithoutARowItIsANewOneWithItsDefaults) {
    open({});
    EXPECT_FALSE(record.exists());
    EXPECT_EQ(record.value("TIPO").integer(), 4);
    EXPECT_TRUE(record.value("NOTA").isEmpty());
}

TEST_F(EditedRecordTest, AnUpdateLeavesTheKeyAndAsksForWhatWasRead) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}});
    record.setValue("DITTA", std::int64_t{1});
    record.setValue("UTENTE", "ADMIN");
    record.save(typed(7, "dopo"));
    EXPECT_EQ(connection->take(), Statements{"UPDATE PARAMETRI SET UTENTE = 'ADMIN', TIPO = 7, NOTA = 'dopo' WHERE "
                                             "DITTA = 1 AND TIPO = 2"});
    EXPECT_EQ((*rows)["TIPO"].integer(), 7);
    record.save(typed(8, "dopo"));
    EXPECT_TRUE(connection->take().at(0).ends_with("WHERE DITTA = 1 AND TIPO = 7"));
}

TEST_F(EditedRecordTest, AnInsertWritesWhatNoFieldShowsFirstAndTheOtherDefaultsLast) {
    open({});
    record.setValue("DITTA", std::int64_t{1});
    record.save(typed(7, "nuova"));
    EXPECT_EQ(connection->take(),
              Statements{"INSERT INTO PARAMETRI (DITTA, TIPO, NOTA, ALTRO) VALUES (1, 7, 'nuova', 5)"});
    EXPECT_TRUE(record.exists());
    EXPECT_EQ(rows->RecordCount(), 1U);
    record.save(typed(8, "nuova"));
    EXPECT_TRUE(connection->take().at(0).starts_with("UPDATE PARAMETRI SET "));
}

TEST_F(EditedRecordTest, OneThatHasChangedMeanwhileIsReadAgain) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}});
    connection->change("UPDATE", [](const std::string&) { return 0; });
    connection->answer("SELECT", answerOf({{std::int64_t{9}, std::int64_t{9}, "altra"},
                                           {std::int64_t{1}, std::int64_t{3}, "di un altro"}}));
    EXPECT_THROW(record.save(typed(7, "dopo")), RecordChanged);
    EXPECT_EQ(record.value("TIPO").integer(), 3);
    EXPECT_EQ(record.value("NOTA").text(), "di un altro");
}

TEST_F(EditedRecordTest, OneThatIsGoneIsSaidAndKeepsItsValues) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}});
    connection->change("UPDATE", [](const std::string&) { return 0; });
    connection->answer("SELECT", answerOf({}));
    try {
        record.save(typed(7, "dopo"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), RuntimeError::noCurrentRecord);
    }
    EXPECT_EQ(record.value("TIPO").integer(), 2);
}

TEST_F(EditedRecordTest, ADeletionReadsTheRowsAgain) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}});
    connection->answer("SELECT", answerOf({}));
    record.erase();
    EXPECT_EQ(connection->take(), (Statements{"DELETE FROM PARAMETRI WHERE DITTA = 1", "SELECT * FROM PARAMETRI"}));
    EXPECT_FALSE(record.exists());
    record.erase();
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(EditedRecordTest, WithoutAConnectionNothingIsWritten) {
    record.setTable("PARAMETRI", {"DITTA"});
    record.show();
    try {
        record.save(typed(7, "dopo"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), RuntimeError::objectNotSet);
    }
    EXPECT_TRUE(record.errors().empty());
}

TEST_F(EditedRecordTest, AfterItsCloseItHoldsNothing) {
    open({{std::int64_t{1}, std::int64_t{2}, "prima"}});
    record.close();
    EXPECT_FALSE(record.exists());
    EXPECT_EQ(record.records(), nullptr);
    EXPECT_EQ(record.connection(), nullptr);
}

} // namespace

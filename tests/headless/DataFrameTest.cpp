#include "platform/headless/HeadlessDataFrame.h"
#include "platform/headless/ScriptedConnection.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using contract::DataFrame;
using contract::Value;
using platform::headless::HeadlessCheckBox;
using platform::headless::HeadlessComboBox;
using platform::headless::HeadlessDataFrame;
using platform::headless::HeadlessDateField;
using platform::headless::rows;
using platform::headless::ScriptedConnection;

namespace {

class DataFrameTest : public testing::Test {
protected:
    DataFrameTest() {
        connection->Open();
        frame.ChangeStatus = [this](int status) { statuses.push_back(status); };
    }

    void open(platform::headless::ScriptedRows answer) {
        connection->answer("SELECT", std::move(answer));
        records->Open(contract::Statement("SELECT"), *connection);
        contract::Cinterface* host = nullptr;
        frame.initialise(host, connection, records, contract::Statement("SELECT"), "DITTA");
        frame.setTable("PARAMETRI", {"DITTA"});
        frame.bindField(combo, "TIPO");
        frame.bindField(date, "INIZIO");
        frame.bindField(check, "FLAG");
        combo.addItem("zero");
        combo.addItem("uno");
        frame.setDefault("TIPO", 0);
        frame.setDefault("FLAG", true);
        frame.show();
        connection->take();
    }
    static platform::headless::ScriptedRows noRow() {
        auto none = oneRow();
        none.rows.clear();
        return none;
    }
    static platform::headless::ScriptedRows oneRow() {
        return rows({"DITTA", "TIPO", "INIZIO", "FLAG"}, {{7, 1, *contract::Date::of(2024, 5, 9), 0}});
    }

    platform::headless::FormContext context;
    std::shared_ptr<ScriptedConnection> connection = std::make_shared<ScriptedConnection>();
    std::shared_ptr<contract::Recordset> records = std::make_shared<contract::Recordset>();
    HeadlessComboBox combo{"COMBO", context};
    HeadlessDateField date{"DATE", context};
    HeadlessCheckBox check{"CHECK", context};
    HeadlessDataFrame frame{"FRAME", context, std::make_shared<platform::headless::HostJournal>()};
    std::vector<int> statuses;
};

TEST_F(DataFrameTest, ShowsItsRecord) {
    open(oneRow());
    EXPECT_EQ(combo.position(), 1);
    EXPECT_EQ(date.text(), "09/05/2024");
    EXPECT_FALSE(check.checked());
    EXPECT_EQ(frame.status(), DataFrame::browsing);
    EXPECT_FALSE(frame.changed());
}

TEST_F(DataFrameTest, ShowsTheDefaultsOfANewRecord) {
    open(rows({"DITTA", "TIPO", "INIZIO", "FLAG"}));
    EXPECT_EQ(combo.position(), 0);
    EXPECT_EQ(date.text(), "");
    EXPECT_TRUE(check.checked());
    EXPECT_EQ(frame.status(), DataFrame::inserting);
}

TEST_F(DataFrameTest, KnowsAChangeOfTheUser) {
    open(oneRow());
    check.toggle();
    EXPECT_TRUE(frame.changed());
    EXPECT_EQ(frame.status(), DataFrame::editing);
    frame.undo();
    EXPECT_FALSE(frame.changed());
    EXPECT_FALSE(check.checked());
    EXPECT_EQ(frame.status(), DataFrame::browsing);
}

TEST_F(DataFrameTest, UpdatesItsRecord) {
    open(oneRow());
    date.type("10/05/2024");
    EXPECT_TRUE(frame.save());
    EXPECT_EQ(connection->take(), std::vector<std::string>{"UPDATE PARAMETRI SET TIPO = 1, INIZIO = "
                                                           "CONVERT(DateTime,'10/05/2024',103), FLAG = 0 WHERE DITTA "
                                                           "= 7 AND TIPO = 1 AND INIZIO = "
                                                           "CONVERT(DateTime,'09/05/2024',103) AND FLAG = 0"});
    EXPECT_EQ((*records)["INIZIO"].text(), "10/05/2024");
    EXPECT_FALSE(frame.changed());
    EXPECT_EQ(frame.status(), DataFrame::browsing);
}

TEST_F(DataFrameTest, InsertsANewRecordWithTheValuesThatNoControlShows) {
    open(noRow());
    frame.BeforeUpdate = [this](bool&) { frame.setRecordValue("DITTA", 7); };
    EXPECT_TRUE(frame.save());
    EXPECT_EQ(connection->take(),
              std::vector<std::string>{"INSERT INTO PARAMETRI (DITTA, TIPO, INIZIO, FLAG) VALUES (7, 0, NULL, 1)"});
    EXPECT_EQ(records->RecordCount(), 1U);
    EXPECT_EQ((*records)["DITTA"].integer(), 7);
    check.toggle();
    EXPECT_TRUE(frame.save());
    EXPECT_TRUE(connection->take().at(0).ends_with("WHERE DITTA = 7 AND TIPO = 0 AND INIZIO IS NULL AND FLAG = 1"));
}

TEST_F(DataFrameTest, WritesNothingWhenTheSaveIsRefused) {
    open(oneRow());
    frame.BeforeUpdate = [](bool& cancel) { cancel = true; };
    check.toggle();
    EXPECT_FALSE(frame.save());
    EXPECT_TRUE(connection->take().empty());
    EXPECT_TRUE(frame.changed());
    EXPECT_EQ(frame.status(), DataFrame::editing);
}

TEST_F(DataFrameTest, ShowsARecordThatHasChangedMeanwhile) {
    open(oneRow());
    connection->change("UPDATE", [](const std::string&) { return 0; });
    connection->answer("SELECT", rows({"DITTA", "TIPO", "INIZIO", "FLAG"},
                                      {{6, 1, Value::null(), 1}, {7, 0, *contract::Date::of(2025, 1, 2), 1}}));
    check.toggle();
    EXPECT_THROW(frame.save(), contract::RuntimeError);
    EXPECT_EQ(combo.position(), 0);
    EXPECT_EQ(date.text(), "02/01/2025");
    EXPECT_TRUE(check.checked());
    EXPECT_FALSE(frame.changed());
    EXPECT_EQ(frame.status(), DataFrame::browsing);
}

TEST_F(DataFrameTest, KeepsTheChangeWhenTheRecordIsGone) {
    open(oneRow());
    connection->change("UPDATE", [](const std::string&) { return 0; });
    connection->answer("SELECT", rows({"DITTA", "TIPO", "INIZIO", "FLAG"}));
    check.toggle();
    EXPECT_THROW(frame.save(), contract::RuntimeError);
    EXPECT_TRUE(check.checked());
    EXPECT_TRUE(frame.changed());
}

TEST_F(DataFrameTest, KeepsTheChangeWhenTheWriteFails) {
    open(oneRow());
    check.toggle();
    connection->failNth(1, {"HY000", 1, "guasto", contract::ErrorCategory::other});
    EXPECT_THROW(frame.save(), contract::RuntimeError);
    EXPECT_TRUE(frame.changed());
    EXPECT_TRUE(frame.save());
}

} // namespace

#include "qt/DataFrameFixture.h"

namespace qt_tests {

namespace {

using contract::RuntimeError;

TEST_F(DataFrameTest, LoadReadsTheRowsOnceUnlessTheyAreRead) {
    openOn({record()});
    ASSERT_TRUE(data);
    EXPECT_EQ(data->RecordCount(), 1U);
    EXPECT_EQ(frame->load(contract::Statement("SELECT * FROM PARAMETRI"), data), data);
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, TheFieldsShowTheRecord) {
    openOn({record()});
    EXPECT_EQ(combo->position(), 1);
    EXPECT_EQ(date->text(), "01/03/2024");
    EXPECT_TRUE(check->checked());
    EXPECT_EQ(code->text(), "3");
    EXPECT_EQ(note->text(), "prima");
    EXPECT_EQ(frame->status(), contract::DataFrame::browsing);
    EXPECT_FALSE(frame->changed());
}

TEST_F(DataFrameTest, ADateThatIsNoneKeepsTheRecordFromBeingSaved) {
    openOn({record()});
    int updates = 0;
    frame->BeforeUpdate = [&](bool&) { ++updates; };
    QWidget* field = script("DATA").widget();
    EXPECT_EQ(script("DATA").set(id("31/02/2028")), QString());
    EXPECT_TRUE(frame->changed());
    note->setFocus();
    EXPECT_FALSE(frame->save());
    EXPECT_EQ(updates, 0);
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(date->text(), "31/02/2028");
    EXPECT_EQ(script("DATA").read().value("error"), "31/02/2028 non è una data");
    EXPECT_TRUE(connection->take().empty());
    frame->undo();
    EXPECT_EQ(script("DATA").read().value("error"), "");
    EXPECT_EQ(script("DATA").set(id("290228")), QString());
    EXPECT_TRUE(frame->save());
    EXPECT_EQ(date->text(), "29/02/2028");
}

TEST_F(DataFrameTest, WithoutARecordTheyShowTheDefaults) {
    openOn({});
    EXPECT_EQ(combo->position(), 0);
    EXPECT_EQ(date->text(), "");
    EXPECT_FALSE(check->checked());
    EXPECT_EQ(frame->status(), contract::DataFrame::inserting);
    EXPECT_FALSE(frame->changed());
}

TEST_F(DataFrameTest, ASaveUpdatesTheRecordOfThatKey) {
    openOn({record()});
    script("CMB").set(0);
    script("DATA").set(id(""));
    script("CHK").set(false);
    script("COD").set(4);
    script("NOTA").set(id("l'altra"));
    EXPECT_TRUE(frame->changed());
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(connection->take(),
              std::vector<std::string>{"UPDATE PARAMETRI SET TIPO = 0, INIZIO = NULL, FLAG = 0, STATO = 4, "
                                       "NOTA = 'l''altra' WHERE DITTA = 1 AND TIPO = 1 AND INIZIO = "
                                       "CONVERT(DateTime,'01/03/2024',103) AND FLAG = 1 AND STATO = 3 AND NOTA = "
                                       "'prima'"});
    EXPECT_FALSE(frame->changed());
    EXPECT_EQ((*data)["STATO"].integer(), 4);
    EXPECT_EQ(statuses, (std::vector<int>{0, 1, 0}));
    EXPECT_TRUE(errors.empty());
}

TEST_F(DataFrameTest, ADateBefore1900IsShownAndWrittenBackUnchanged) {
    auto old = record();
    old[2] = day("30/12/1899");
    openOn({old});
    EXPECT_EQ(date->text(), "30/12/1899");
    EXPECT_FALSE(frame->changed());
    script("COD").set(4);
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(connection->take(),
              std::vector<std::string>{"UPDATE PARAMETRI SET TIPO = 1, INIZIO = CONVERT(DateTime,'30/12/1899',103), "
                                       "FLAG = 1, STATO = 4, NOTA = 'prima' WHERE DITTA = 1 AND TIPO = 1 AND INIZIO = "
                                       "CONVERT(DateTime,'30/12/1899',103) AND FLAG = 1 AND STATO = 3 AND NOTA = "
                                       "'prima'"});
    EXPECT_EQ((*data)["INIZIO"], day("30/12/1899"));
    EXPECT_TRUE(errors.empty());
}

TEST_F(DataFrameTest, ASaveOfANewRecordInsertsItAndUpdatesItFromThenOn) {
    openOn({});
    script("DATA").set(id("31122024"));
    QTest::keyClick(windowOf("FRM_PARAMETRI").window(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(connection->take(),
              std::vector<std::string>{"INSERT INTO PARAMETRI (DITTA, TIPO, INIZIO, FLAG, STATO, NOTA, ALTRO) VALUES "
                                       "(1, 0, CONVERT(DateTime,'31/12/2024',103), 0, NULL, NULL, 5)"});
    EXPECT_EQ(frame->status(), contract::DataFrame::browsing);
    EXPECT_EQ(data->RecordCount(), 1U);
    script("NOTA").set(id("poi"));
    EXPECT_TRUE(frame->save());
    EXPECT_EQ(connection->take(),
              std::vector<std::string>{"UPDATE PARAMETRI SET TIPO = 0, INIZIO = CONVERT(DateTime,'31/12/2024',103), "
                                       "FLAG = 0, STATO = NULL, NOTA = 'poi' WHERE DITTA = 1 AND TIPO = 0 AND INIZIO "
                                       "= CONVERT(DateTime,'31/12/2024',103) AND FLAG = 0 AND STATO IS NULL AND NOTA "
                                       "IS NULL"});
}

TEST_F(DataFrameTest, ARefusedSaveWritesNothing) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    refuse = true;
    EXPECT_FALSE(frame->save());
    EXPECT_TRUE(connection->take().empty());
    EXPECT_TRUE(frame->changed());
    EXPECT_EQ(frame->status(), contract::DataFrame::editing);
}

TEST_F(DataFrameTest, RestoringShowsTheRecordAgain) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    script("CMB").set(0);
    EXPECT_EQ(script("CMD_RIPRISTINA").click(), QString());
    EXPECT_EQ(note->text(), "prima");
    EXPECT_EQ(combo->position(), 1);
    EXPECT_FALSE(frame->changed());
    EXPECT_EQ(statuses, (std::vector<int>{0, 1, 0}));
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, TypingTheOldTextAgainIsNoChange) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    script("NOTA").set(id("prima"));
    EXPECT_FALSE(frame->changed());
    EXPECT_EQ(frame->status(), contract::DataFrame::browsing);
}

TEST_F(DataFrameTest, ARecordThatIsGoneIsAnError) {
    openOn({record()});
    connection->change("UPDATE", [](const std::string&) { return 0; });
    connection->answer("SELECT * FROM PARAMETRI", answerOf({}));
    script("NOTA").set(id("seconda"));
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::noCurrentRecord});
    EXPECT_EQ(note->text(), "seconda");
    EXPECT_TRUE(frame->changed());
}

TEST_F(DataFrameTest, ARecordThatHasChangedMeanwhileIsShownAndNotOverwritten) {
    openOn({record()});
    connection->change("UPDATE", [](const std::string&) { return 0; });
    auto theirs = record();
    theirs[2] = day("05/06/2025");
    theirs[5] = "di un altro";
    connection->answer("SELECT * FROM PARAMETRI", answerOf({record(4), theirs}));
    script("COD").set(4);
    script("NOTA").set(id("seconda"));
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::invalidCall});
    EXPECT_EQ(note->text(), "di un altro");
    EXPECT_EQ(date->text(), "05/06/2025");
    EXPECT_EQ(code->text(), "3");
    EXPECT_FALSE(frame->changed());
    EXPECT_EQ(frame->status(), contract::DataFrame::browsing);
    // The next save starts from what is shown now.
    connection->change("UPDATE", [](const std::string&) { return 1; });
    connection->take();
    script("NOTA").set(id("terza"));
    EXPECT_TRUE(frame->save());
    EXPECT_TRUE(connection->take().at(0).ends_with(" AND NOTA = 'di un altro'"));
}

TEST_F(DataFrameTest, TheDialogShowsASaveThatFailed) {
    openOn({record()});
    connection->fail("UPDATE", {"40001", 1205, "deadlock", contract::ErrorCategory::deadlock});
    script("NOTA").set(id("seconda"));
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::database});
    EXPECT_EQ(errorRecords, 1U);
    EXPECT_TRUE(frame->changed());
    EXPECT_EQ(frame->status(), contract::DataFrame::editing);
}

TEST_F(DataFrameTest, ACodeThatIsNoNumberIsRefused) {
    openOn({record()});
    script("COD").set(id("tre"));
    EXPECT_EQ(script("CMD_SALVA").click(), QString());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::typeMismatch});
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, WithoutAConnectionNothingIsSaved) {
    form->show(false);
    frame->show();
    EXPECT_THROW(frame->save(), RuntimeError);
}

TEST_F(DataFrameTest, AfterItsCloseTheFrameFollowsNoField) {
    openOn({record()});
    frame->close();
    const auto before = statuses.size();
    script("NOTA").set(id("seconda"));
    EXPECT_EQ(statuses.size(), before);
    EXPECT_FALSE(frame->changed());
}

} // namespace

} // namespace qt_tests

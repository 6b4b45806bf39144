#include "qt/FormFixture.h"

#include "platform/headless/ScriptedConnection.h"
#include "plugin/contract/RuntimeError.h"

#include <QJsonArray>

#include <optional>

namespace qt_tests {

namespace {

using contract::Date;
using contract::FieldType;
using contract::RuntimeError;
using contract::Value;
using platform::headless::ScriptedConnection;
using platform::qt::DataEntryHooks;

Value day(const char* text) {
    return *Date::parse(text);
}

/// A dialog over a table of parameters: key DITTA, a combo, a date, a flag, a code and a text.
class DataFrameTest : public FormTest {
protected:
    void SetUp() override {
        DataEntryHooks::instance().showMessage = [this](const QString& title, const QString& text, int style) {
            asked.push_back(title + QStringLiteral(": ") + text);
            styles.push_back(style);
            return answer;
        };
        DataEntryHooks::instance().showError = [this](const RuntimeError& error, const contract::ErrorList& records) {
            errors.push_back(error.number());
            errorRecords = records.size();
        };
        auto& dlg = dialog("FRM_PARAMETRI");
        dlg.setCaption("Parametri");
        frame = &dlg.addDataFrame("FME", nullptr);
        frame->setBounds({0, 0, 7500, 3900});
        combo = &dlg.addComboBox("CMB", frame);
        combo->setBounds({100, 100, 2000, 400});
        combo->addItem("zero");
        combo->addItem("uno");
        date = &dlg.addDateField("DATA", frame);
        date->setBounds({100, 600, 2000, 400});
        check = &dlg.addCheckBox("CHK", frame);
        check->setBounds({100, 1100, 2000, 400});
        code = &dlg.addLookupField("COD", frame);
        code->setBounds({100, 1600, 2000, 400});
        note = &dlg.addTextField("NOTA", frame);
        note->setBounds({100, 2100, 2000, 400});
        frame->bindField(*combo, "TIPO");
        frame->bindField(*date, "INIZIO");
        frame->bindField(*check, "FLAG");
        frame->bindField(*code, "STATO");
        frame->bindField(*note, "NOTA");
        frame->setTable("PARAMETRI", {"DITTA"});
        frame->setDefault("TIPO", std::int64_t{0});
        frame->setDefault("ALTRO", std::int64_t{5});
        frame->ChangeStatus = [this](int status) { statuses.push_back(status); };
        frame->BeforeUpdate = [this](bool& cancel) {
            frame->setRecordValue("DITTA", std::int64_t{1});
            cancel = refuse;
        };
    }

    static platform::headless::ScriptedRows answerOf(std::vector<std::vector<Value>> records) {
        platform::headless::ScriptedRows rows;
        rows.fields = {{"DITTA", FieldType::integer}, {"TIPO", FieldType::integer},  {"INIZIO", FieldType::dbTimeStamp},
                       {"FLAG", FieldType::tinyInt},  {"STATO", FieldType::integer}, {"NOTA", FieldType::varWChar}};
        rows.rows = std::move(records);
        return rows;
    }

    void openOn(std::vector<std::vector<Value>> records) {
        connection->Open();
        connection->answer("SELECT * FROM PARAMETRI", answerOf(std::move(records)));
        contract::Cinterface* none = nullptr;
        const contract::Statement statement("SELECT * FROM PARAMETRI");
        frame->initialise(none, connection, nullptr, statement, "DITTA");
        data = frame->load(statement, nullptr);
        connection->take();
        form->show(false);
        frame->show();
        QCoreApplication::processEvents();
    }
    static std::vector<Value> record(std::int64_t company = 1) {
        return {company, std::int64_t{1}, day("01/03/2024"), std::int64_t{1}, std::int64_t{3}, "prima"};
    }

    std::shared_ptr<ScriptedConnection> connection = std::make_shared<ScriptedConnection>();
    std::shared_ptr<contract::Recordset> data;
    contract::DataFrame* frame = nullptr;
    contract::ComboBox* combo = nullptr;
    contract::DateField* date = nullptr;
    contract::CheckBox* check = nullptr;
    contract::LookupField* code = nullptr;
    contract::TextField* note = nullptr;
    std::vector<int> statuses;
    std::vector<QString> asked;
    std::vector<int> styles;
    std::vector<int> errors;
    std::size_t errorRecords = 0;
    int answer = 7;
    bool refuse = false;
};

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

TEST_F(DataFrameTest, ClosingWithoutChangesAsksNothing) {
    openOn({record()});
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_TRUE(asked.empty());
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, ClosingOnChangesAsksAndNoDiscards) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 7;
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(asked, std::vector<QString>{QStringLiteral("Parametri: Salvare le modifiche?")});
    EXPECT_EQ(styles, std::vector<int>{3});
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, YesSavesAndCloses) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 6;
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(connection->take().size(), 1U);
}

TEST_F(DataFrameTest, YesStaysWhenTheSaveIsRefusedOrFails) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 6;
    refuse = true;
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    refuse = false;
    connection->fail("UPDATE", {"08S01", 0, "lost", contract::ErrorCategory::lostConnection});
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::database});
    connection->forget();
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
}

TEST_F(DataFrameTest, CancelKeepsTheDialogOpen) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 2;
    bool queried = false;
    form->QueryUnload = [&](bool&) { queried = true; };
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_FALSE(queried);
    EXPECT_EQ(note->text(), "seconda");
    answer = 7;
    EXPECT_TRUE(form->unload());
    EXPECT_TRUE(queried);
}

TEST_F(DataFrameTest, TheButtonsStandBelowTheArea) {
    openOn({record()});
    EXPECT_EQ(form->clientHeight(), 4500 - 705); // at ten points
    EXPECT_EQ(form->clientWidth(), 7500);
    EXPECT_EQ(script("CMD_SALVA").read().value("caption"), "&Salva");
    EXPECT_EQ(script("CMD_RIPRISTINA").read().value("caption"), "&Ripristina");
    const auto* window = windowOf("FRM_PARAMETRI").window();
    for (const char* name : {"CMD_SALVA", "CMD_RIPRISTINA"}) {
        const auto* button = script(name).widget();
        const QRect place(button->mapTo(window, QPoint(0, 0)), button->size());
        EXPECT_TRUE(window->rect().contains(place)) << name;
        EXPECT_GE(place.top(), (4500 - 705) / 15) << name;
        const auto bounds = windowOf("FRM_PARAMETRI").controlBounds(id(name));
        EXPECT_EQ(platform::qt::Appearance::pixels(bounds.top), place.top()) << name;
        EXPECT_EQ(platform::qt::Appearance::pixels(bounds.left), place.left()) << name;
    }
}

TEST_F(DataFrameTest, TheButtonsGrowWithTheType) {
    using platform::qt::Appearance;
    openOn({record()});
    for (const int points : {8, 10, 12, 14}) {
        Appearance::instance().setZoom(points);
        EXPECT_EQ(form->clientHeight(), form->bounds().height - 420 * points / 8 - 180) << points;
        EXPECT_EQ(windowOf("FRM_PARAMETRI").controlBounds(id("CMD_SALVA")).height, 420 * points / 8) << points;
        const auto* window = windowOf("FRM_PARAMETRI").window();
        const auto* button = script("CMD_SALVA").widget();
        EXPECT_EQ(button->height(), Appearance::pixels(420 * points / 8)) << points;
        EXPECT_TRUE(window->rect().contains(QRect(button->mapTo(window, QPoint(0, 0)), button->size()))) << points;
    }
    Appearance::instance().setZoom(10);
}

TEST_F(DataFrameTest, TheFirstFieldHasTheKeyboardAtFirstAndTheRowComesLast) {
    openOn({record()});
    EXPECT_EQ(QApplication::focusWidget(), script("CMB").widget());
    for (const char* next : {"DATA", "CHK", "COD", "NOTA", "CMD_SALVA", "CMD_RIPRISTINA", "CMB"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), script(next).widget()) << next;
    }
}

TEST_F(DataFrameTest, ADocumentFormHasNoSuchButtons) {
    auto doc = stage.factory->newDocumentForm("FRM");
    doc->addDataFrame("FME_CopiaDistintaOrig", nullptr);
    doc->show(false);
    EXPECT_EQ(windowOf("FRM").control(id("CMD_SALVA")), nullptr);
}

TEST_F(DataFrameTest, TheNavigatorGoesFromRecordToRecord) {
    auto& navigator = form->addGridNavigator("NAV", nullptr);
    navigator.setBounds({100, 3000, 6000, 450});
    navigator.bind(*frame);
    navigator.setAskBeforeMove(true);
    openOn({record(1), record(2), record(3)});
    const auto company = [&] { return (*data)["DITTA"].integer().value_or(-1); };
    for (const auto& [button, there] : {std::pair{"successivo", 2},
                                        {"ultimo", 3},
                                        {"successivo", 3},
                                        {"precedente", 2},
                                        {"primo", 1},
                                        {"precedente", 1}}) {
        EXPECT_EQ(script("NAV").chooseItem(id(button)), QString());
        EXPECT_EQ(company(), there) << button;
    }
    script("NOTA").set(id("seconda"));
    answer = 2;
    script("NAV").chooseItem(id("successivo"));
    EXPECT_EQ(company(), 1);
    answer = 6;
    script("NAV").chooseItem(id("successivo"));
    EXPECT_EQ(company(), 2);
    EXPECT_EQ(connection->take().size(), 1U);
    EXPECT_EQ(script("NAV").read().value("buttons").toArray().size(), 4);
}

TEST_F(DataFrameTest, TheNavigatorInsertsAndDeletesWhereItMay) {
    auto& navigator = form->addGridNavigator("NAV", nullptr);
    navigator.setBounds({100, 3000, 7000, 450});
    navigator.bind(*frame);
    openOn({record(1)});
    EXPECT_FALSE(script("NAV").chooseItem(id("elimina")).isEmpty());
    navigator.setAllowInsert(true);
    navigator.setAllowDelete(true);
    QCoreApplication::processEvents();
    answer = 7;
    EXPECT_EQ(script("NAV").chooseItem(id("elimina")), QString());
    EXPECT_TRUE(connection->take().empty());
    answer = 6;
    EXPECT_EQ(script("NAV").chooseItem(id("elimina")), QString());
    EXPECT_EQ(connection->take().front(), "DELETE FROM PARAMETRI WHERE DITTA = 1");
    EXPECT_EQ(script("NAV").chooseItem(id("nuovo")), QString());
    EXPECT_EQ(frame->status(), contract::DataFrame::inserting);
    EXPECT_EQ(note->text(), "");
    navigator.release();
    EXPECT_EQ(script("NAV").chooseItem(id("primo")), QString());
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

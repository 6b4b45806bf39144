#include "qt/FormFixture.h"

#include <map>
#include <optional>

namespace qt_tests {

namespace {

using platform::qt::DataEntryHooks;

/// States by GUID; writes down the operations that act on one.
class StatesInMemory : public contract::WorkflowState {
public:
    std::string GetNewGUID() override { return guid = "nuovo"; }
    void DuplicaStato(std::string_view from, std::string_view to) override {
        states[std::string(to)] = states[std::string(from)];
    }
    void GetDefaultFlussoStato() override { selected = "iniziale"; }
    void ConfermaStato() override { states[guid] = selected; }
    std::string GetDescrizioneStatoFromGUID(std::string_view of) override {
        guid = of;
        return states[guid];
    }
    std::vector<std::string> descriptions(const std::vector<std::string>& guids) override {
        std::vector<std::string> all;
        for (const auto& one : guids)
            all.push_back(states[one]);
        return all;
    }

    std::map<std::string, std::string> states{{"A", "Attivo"}};
    std::string guid;
    std::string selected;
};

class WorkflowStateFieldTest : public FormTest {
protected:
    void SetUp() override {
        auto& doc = document("FRM");
        field = &doc.addWorkflowStateField("TXT_QZ02_STATO", nullptr);
        field->setCaption("Stato");
        field->setBounds({100, 100, 3000, 400});
        field->setObject(states);
        doc.addTextField("SEGUENTE", nullptr).setBounds({100, 1100, 3000, 400});
        doc.addTextField("ALTRO", nullptr).setBounds({100, 600, 3000, 400});
        field->AfterItem = [this] {
            chosen.push_back(field->stateChosen());
            if (field->stateChosen())
                field->object()->ConfermaStato();
        };
        DataEntryHooks::instance().chooseState = [this] {
            ++lists;
            if (pick)
                states->selected = "Chiuso";
            return pick;
        };
        doc.show(false);
        QCoreApplication::processEvents();
    }

    std::shared_ptr<StatesInMemory> states = std::make_shared<StatesInMemory>();
    contract::WorkflowStateField* field = nullptr;
    std::optional<std::int64_t> pick = 4;
    std::vector<bool> chosen;
    int lists = 0;
};

TEST_F(WorkflowStateFieldTest, ItShowsTheStateInWords) {
    field->setValue("A");
    EXPECT_EQ(script("TXT_QZ02_STATO").read().value("value"), "Attivo");
    EXPECT_EQ(field->value(), "A");
    field->setValue("senza");
    EXPECT_EQ(script("TXT_QZ02_STATO").read().value("value"), "");
    field->setObject(nullptr);
    field->setValue("A");
    EXPECT_EQ(script("TXT_QZ02_STATO").read().value("value"), "");
}

TEST_F(WorkflowStateFieldTest, ControlAndF1OpensItsListAndTheChoiceIsConfirmedForItsLink) {
    field->setValue("A");
    field->sendKeys("^{F1}");
    EXPECT_EQ(lists, 1);
    EXPECT_EQ(chosen, std::vector<bool>{true});
    EXPECT_EQ(states->states["A"], "Chiuso");
    EXPECT_EQ(script("TXT_QZ02_STATO").read().value("value"), "Chiuso");
    EXPECT_FALSE(field->stateChosen());
}

TEST_F(WorkflowStateFieldTest, OtherKeysAreNone) {
    field->setValue("A");
    field->sendKeys("{F1}");
    field->sendKeys("^{F2}");
    EXPECT_EQ(lists, 0);
}

TEST_F(WorkflowStateFieldTest, ALeftListChangesNothing) {
    field->setValue("A");
    pick.reset();
    field->sendKeys("^{F1}");
    EXPECT_EQ(chosen, std::vector<bool>{false});
    EXPECT_EQ(states->states["A"], "Attivo");
}

TEST_F(WorkflowStateFieldTest, AListThatCanNotBeReadIsReportedToWhoeverAskedForIt) {
    field->setValue("A");
    std::vector<std::string> told;
    auto& hooks = DataEntryHooks::instance();
    hooks.chooseState = []() -> std::optional<std::int64_t> {
        throw contract::RuntimeError(contract::RuntimeError::database, "lettura non riuscita");
    };
    hooks.showStatesError = [&](const contract::RuntimeError& error) { told.push_back(error.description()); };
    QTest::keyClick(script("TXT_QZ02_STATO").widget(), Qt::Key_F1);
    EXPECT_EQ(told, std::vector<std::string>{"lettura non riuscita"});
    // The component's own request tells the component.
    EXPECT_THROW(field->sendKeys("^{F1}"), contract::RuntimeError);
    EXPECT_EQ(told.size(), 1U);
    hooks = {};
}

TEST_F(WorkflowStateFieldTest, TheUserOpensItWithTheKeyboardOrItsButtonAndCannotType) {
    field->setValue("A");
    pick.reset();
    QTest::keyClick(script("TXT_QZ02_STATO").widget(), Qt::Key_F1, Qt::ControlModifier);
    QTest::keyClick(script("TXT_QZ02_STATO").widget(), Qt::Key_F1);
    EXPECT_EQ(script("TXT_QZ02_STATO").click(), QString());
    EXPECT_EQ(lists, 3);
    QTest::keyClicks(script("TXT_QZ02_STATO").widget(), QStringLiteral("x"));
    EXPECT_EQ(script("TXT_QZ02_STATO").read().value("value"), "Attivo");
}

TEST_F(WorkflowStateFieldTest, LeavingTheFieldTellsSo) {
    field->setValue("A");
    script("TXT_QZ02_STATO").widget()->setFocus();
    QTest::keyClick(script("TXT_QZ02_STATO").widget(), Qt::Key_Tab);
    EXPECT_EQ(chosen, std::vector<bool>{false});
}

TEST_F(WorkflowStateFieldTest, ItMayBeHiddenByWhoeverHearsOfTheChoice) {
    field->setValue("A");
    field->AfterItem = [this] {
        chosen.push_back(field->stateChosen());
        field->setVisible(false);
    };
    script("TXT_QZ02_STATO").widget()->setFocus();
    field->sendKeys("^{F1}");
    EXPECT_EQ(chosen, std::vector<bool>{true});
}

TEST_F(WorkflowStateFieldTest, HiddenItGivesTheKeyboardBack) {
    script("ALTRO").widget()->setFocus();
    field->setFocus();
    ASSERT_TRUE(script("TXT_QZ02_STATO").widget()->hasFocus());
    field->setVisible(false);
    EXPECT_TRUE(script("ALTRO").widget()->hasFocus());
}

} // namespace

} // namespace qt_tests

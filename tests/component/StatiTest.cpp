// The states of the public class, walked in the order in which a host goes through them.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <stdexcept>

using contract::Value;
using prove::Programma;

namespace {

TEST(Stati, CreatedItShowsNothing) {
    qz::CLSQZ_COPIADISTINTA classe;
    EXPECT_NO_THROW(classe.companyChanged());
    EXPECT_FALSE(classe.menuCommand("mnuDettagli"));
    EXPECT_TRUE(classe.state().empty());
    EXPECT_EQ(classe.CloseForm(), Value(false));
}

TEST(Stati, ClosedItCanBeShownAgainOverANewConnection) {
    Programma programma;
    programma.apri();
    ASSERT_EQ(programma.interfaccia().CloseForm(), Value(true));
    EXPECT_FALSE(programma.db->IsOpen());
    programma.host->journal->take();
    programma.interfaccia().ShowForm();
    EXPECT_TRUE(programma.form().isOpen());
    EXPECT_TRUE(programma.db->IsOpen());
    EXPECT_EQ(programma.host->journal->count("ConnectionProvider.newConnection"), 2U);
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 3U);
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(true));
}

TEST(Stati, ClosedByTheUserItSaysThatTheFormIsGone) {
    Programma programma;
    programma.mostra();
    EXPECT_TRUE(programma.form().pressClose());
    EXPECT_FALSE(programma.db->IsOpen());
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(true));
}

TEST(Stati, ARefusedCloseReleasesNothing) {
    Programma programma;
    programma.mostra();
    programma.host->scriptRefusesClose = true;
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(false));
    EXPECT_EQ(programma.host->journal->count("ScriptModel.runFormEvent(tsClose)"), 1U);
    EXPECT_TRUE(programma.form().isOpen());
    EXPECT_TRUE(programma.db->IsOpen());
    EXPECT_TRUE(programma.albero("TRW_ELEMDISTINTADEST").focusKey(2));
    EXPECT_TRUE(programma.errori().empty());
}

/// A host without screens at first: the second time it has them.
class OspiteSenzaMaschere : public platform::headless::HostGlobal {
public:
    using HostGlobal::HostGlobal;
    bool maschere = false;
    std::shared_ptr<contract::ControlFactory> controls() override {
        if (!maschere)
            throw std::runtime_error("nessuna maschera");
        return HostGlobal::controls();
    }
};

TEST(Stati, WithoutAWindowNothingIsShownUntilShowFormIsCalledAgain) {
    Programma programma;
    const auto ospite = std::make_shared<OspiteSenzaMaschere>(programma.host);
    programma.interfaccia().ClsGlobal(ospite);
    EXPECT_TRUE(programma.interfaccia().ShowForm().isEmpty());
    EXPECT_EQ(programma.host->controls->form("FRMQZ_COPIADISTINTA"), nullptr);
    EXPECT_TRUE(programma.host->errors.empty() && programma.host->messages.empty());
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(false));
    ospite->maschere = true;
    programma.interfaccia().ShowForm();
    EXPECT_TRUE(programma.form().isOpen());
}

/// A host that has none of what it may do without.
class OspitePovero : public platform::headless::HostGlobal {
public:
    using HostGlobal::HostGlobal;
    std::shared_ptr<contract::UserService> userService() override { return {}; }
    std::shared_ptr<contract::ScriptService> scriptService() override { return {}; }
    std::shared_ptr<contract::Theme> newTheme() override { return {}; }
    std::shared_ptr<contract::WorkflowState> newWorkflowState() override { return {}; }
    std::shared_ptr<contract::ParameterObject> newParameterObject() override { return {}; }
    std::shared_ptr<contract::AccountLink> newAccountLink() override { return {}; }
};

TEST(Stati, DoesWithoutTheServicesThatAHostMayLack) {
    Programma programma;
    auto& interfaccia = programma.interfaccia();
    interfaccia.ClsGlobal(std::make_shared<OspitePovero>(programma.host));
    interfaccia.StatusBar(nullptr);
    interfaccia.ActiveFrame(nullptr);
    interfaccia.ActiveNavigator(nullptr);
    interfaccia.ClsVoceMenu(nullptr);
    programma.apri();
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 3U);
    for (const auto* lato : {"Orig", "Dest"}) {
        auto& albero =
            programma.albero(lato == std::string_view("Orig") ? "TRW_ELEMDISTINTAORIG" : "TRW_ELEMDISTINTADEST");
        auto& menu = programma.controllo<platform::headless::HeadlessPopupMenu>(std::string("mnuCollegamento") + lato);
        for (const auto& voce : menu.items()) {
            albero.pressMouse(contract::MouseButton::right, albero.firstNode(), "RagioneSociale");
            menu.choose(voce.name);
        }
    }
    EXPECT_TRUE(programma.errori().empty());
    programma.host->answers = {6};
    programma.pulsante("CMD_SPOSTASTRU").click();
    EXPECT_EQ(programma.errori(), std::vector<std::string>{"CMD_SPOSTASTRU_ButtonClick"});
    ASSERT_EQ(programma.host->errors.size(), 1U);
    EXPECT_EQ(programma.host->errors[0].number, contract::RuntimeError::objectNotSet);
    EXPECT_FALSE(programma.db->InTransaction());
    EXPECT_EQ(interfaccia.CloseForm(), Value(true));
}

} // namespace

// The order in which the form starts and ends, and what it does with a host that gives less than it should.

#include "component/Passi.h"
#include "platform/headless/HostInterface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using contract::Value;
using prove::esegui;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

const prove::Caso& caso(std::string_view nome) {
    return *std::find_if(prove::casi().begin(), prove::casi().end(), [&](const auto& c) { return c.nome == nome; });
}

std::size_t posto(const Testi& chiamate, std::string_view inizio) {
    return static_cast<std::size_t>(
        std::find_if(chiamate.begin(), chiamate.end(), [&](const auto& c) { return c.starts_with(inizio); }) -
        chiamate.begin());
}

TEST(FormActivate, SetsTheResizingUpBeforeTheFrames) {
    const auto chiamate = esegui(caso("Avvio"), {}, 3).chiamate;
    EXPECT_LT(posto(chiamate, "CompanyService.Company"), posto(chiamate, "KVT_RESIZEFORM.setUp"));
    EXPECT_LT(posto(chiamate, "KVT_RESIZEFORM.setUp"), posto(chiamate, "ClsGlobal.newVirtualFrame"));
    EXPECT_LT(posto(chiamate, "ClsGlobal.newVirtualFrame"), chiamate.size());
}

TEST(FormActivate, CountsAsDoneBeforeTheMenusAreFilled) {
    prove::Guasti guasti;
    guasti.registra({});
    prove::ProgrammaConGuasti misura;
    misura.apri();
    const auto voce = posto(guasti.traccia(), "MenuCercaOrig.addItem");
    ASSERT_LT(voce, guasti.traccia().size());
    // The first entry of the first menu fails, and the start is left.
    prove::ProgrammaConGuasti programma;
    programma.rispondi(3);
    guasti.registra(voce);
    programma.apri();
    guasti.ferma();
    EXPECT_EQ(programma.errori(), Testi{"Form_Activate"});
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.newWorkflowState"), 0U);
    const auto operazioni = programma.db->operations();
    programma.form().activate();
    EXPECT_EQ(programma.db->operations(), operazioni);
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.newWorkflowState"), 0U);
}

TEST(FormUnLoad, ReleasesEverythingInThisOrder) {
    EXPECT_EQ(esegui(caso("Chiusura"), {}, 3).chiamate,
              (Testi{"ActiveFrame.Status()", "Navigator.setStatus(0)", "VirtualFrameHandler.closeQuery(2, true)",
                     "ScriptModel.runFormEvent(tsClose)", "ScriptModel.close()", "TXT_QZ02_STATO.setObject",
                     "Navigator.releaseObjectModels()", "VirtualFrameHandler.close(1)", "VirtualFrameHandler.close(2)",
                     "TRW_ELEMDISTINTAORIG.unbind", "FME_CopiaDistintaOrig.close()", "TRW_ELEMDISTINTADEST.unbind",
                     "FME_CopiaDistintaDest.close()"}));
}

// A host that gives less

TEST(FormLoad, ReportsAPositionThatIsNoNumber) {
    class Ospite : public platform::headless::HostInterface {
    public:
        using HostInterface::Left;
        Value Left() const override { return "a sinistra"; }
    };
    Programma programma;
    Ospite ospite;
    ospite.ClsGlobal(programma.interfaccia().ClsGlobal());
    ospite.Top(500);
    programma.interfaccia().ActiveDll(&ospite);
    programma.host->errorAnswer = [] { return 5; };
    programma.apri();
    EXPECT_EQ(programma.errori(), (Testi{"Form_Load", "MDIActiveX1_FormLoad"}));
    EXPECT_EQ(programma.host->errors[0].number, contract::RuntimeError::typeMismatch);
    EXPECT_EQ(programma.form().bounds(), (contract::Rect{0, 500, 14685, 9058}));
}

/// A host without virtual frames.
class SenzaVirtualFrame : public platform::headless::HostGlobal {
public:
    using HostGlobal::HostGlobal;
    std::shared_ptr<contract::VirtualFrame> newVirtualFrame() override { return nullptr; }
};

TEST(FormActivate, ReportsAMissingRecordSet) {
    Programma programma;
    programma.interfaccia().ClsGlobal(std::make_shared<SenzaVirtualFrame>(programma.host));
    programma.apri();
    EXPECT_EQ(programma.errori(), (Testi{"ImpostaVirtualFrame", "Form_Activate"}));
    EXPECT_EQ(programma.host->errors[1].number, contract::RuntimeError::objectNotSet);
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.applyProgramMode"), 0U);
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
}

// What is odd on purpose

TEST(ExecuteFormEvent, IsSilentWithoutANavigator) {
    Programma programma;
    programma.interfaccia().ActiveNavigator(nullptr);
    programma.apri();
    EXPECT_TRUE(programma.errori().empty());
    EXPECT_EQ(programma.host->journal->count("ScriptModel."), 0U);
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_TRUE(programma.errori().empty());
}

/// A virtual frame that has no handlers.
class FrameSenzaGestori : public contract::VirtualFrame {
public:
    std::shared_ptr<contract::Recordset> newRecordset() override { return std::make_shared<contract::Recordset>(); }
    std::shared_ptr<contract::VirtualFrameHandler> newFieldList() override { return nullptr; }
};
class SenzaGestori : public platform::headless::HostGlobal {
public:
    using HostGlobal::HostGlobal;
    std::shared_ptr<contract::VirtualFrame> newVirtualFrame() override { return std::make_shared<FrameSenzaGestori>(); }
};

TEST(FormQueryUnload, ClosesUnaskedWithoutAHandler) {
    Programma programma;
    programma.interfaccia().ClsGlobal(std::make_shared<SenzaGestori>(programma.host));
    programma.apri();
    programma.controllo<platform::headless::HeadlessDataFrame>("FME_CopiaDistintaDest").enterStatus(0);
    EXPECT_EQ(programma.host->scriptCanClose, std::nullopt);
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_TRUE(programma.errori().empty());
}

TEST(Attivazione, ReadsTheGlobalClassAndTheFrame) {
    class Ospite : public platform::headless::HostInterface {
    public:
        using HostInterface::ActiveFrame;
        using HostInterface::ClsGlobal;
        std::shared_ptr<contract::ClsGlobal> ClsGlobal() const override {
            letture.emplace_back("ClsGlobal");
            return HostInterface::ClsGlobal();
        }
        std::shared_ptr<contract::ActiveFrame> ActiveFrame() const override {
            letture.emplace_back("ActiveFrame");
            return HostInterface::ActiveFrame();
        }
        mutable Testi letture;
    };
    Programma programma;
    Ospite ospite;
    ospite.ClsGlobal(programma.interfaccia().ClsGlobal());
    ospite.ActiveFrame(programma.interfaccia().ActiveFrame());
    programma.interfaccia().ActiveDll(&ospite);
    programma.apri();
    ospite.letture.clear();
    programma.form().activate();
    EXPECT_EQ(ospite.letture, (Testi{"ClsGlobal", "ActiveFrame"}));
}

} // namespace

#include "component/Programma.h"
#include "platform/headless/HostInterface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using contract::Value;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

TEST(Classe, StartsEmptyButForItself) {
    qz::CLSQZ_COPIADISTINTA classe;
    contract::Cinterface& i = classe;
    EXPECT_EQ(i.ActiveDll(), &i);
    EXPECT_FALSE(i.CanDelete() || i.CanInsert() || i.CanQbe() || i.CanUpdate() || i.IsCalled() || i.IsActive() ||
                 i.WindowModal());
    EXPECT_EQ(i.hwndParent(), 0);
    EXPECT_EQ(i.ProgramMode(), 0);
    EXPECT_EQ(i.WindowState(), 0);
    EXPECT_EQ(i.Top(), Value(std::int32_t{0}));
    EXPECT_EQ(i.Left(), Value(std::int32_t{0}));
    for (const auto& valore : {i.Caption(), i.MenuModulo(), i.MenuPadre(), i.MenuProg(), i.Filtro()})
        EXPECT_TRUE(valore.isEmpty());
    EXPECT_FALSE(i.StatusBar() || i.ActiveFrame() || i.ActiveNavigator() || i.ClsVoceMenu() || i.ClsGlobal() ||
                 i.Connection() || i.Cwindow());
}

TEST(Classe, GivesBackWhatItsHostSets) {
    Programma programma;
    auto& i = programma.interfaccia();
    i.CanDelete(true);
    i.CanInsert(true);
    i.CanQbe(true);
    i.CanUpdate(true);
    i.IsCalled(true);
    i.WindowModal(true);
    i.hwndParent(77);
    i.WindowState(2);
    i.MenuModulo("QZ");
    i.MenuPadre(12);
    i.MenuProg(Value::null());
    i.Connection(programma.db);
    EXPECT_TRUE(i.CanDelete() && i.CanInsert() && i.CanQbe() && i.CanUpdate() && i.IsCalled() && i.WindowModal());
    EXPECT_EQ(i.hwndParent(), 77);
    EXPECT_EQ(i.WindowState(), 2);
    EXPECT_EQ(i.MenuModulo(), Value("QZ"));
    EXPECT_EQ(i.MenuPadre(), Value(12));
    EXPECT_TRUE(i.MenuProg().isNull());
    EXPECT_EQ(i.Connection(), programma.db);
    EXPECT_TRUE(i.StatusBar() && i.ActiveFrame() && i.ActiveNavigator() && i.ClsVoceMenu() && i.ClsGlobal());
}

TEST(Classe, ForwardsTheNavigatorAndTheWindowToItsOwnProperties) {
    Programma programma;
    EXPECT_EQ(programma.classe->navigatore(), programma.interfaccia().ActiveNavigator());
    const auto finestra = platform::headless::newHostObject(programma.host, "Finestra");
    programma.classe->finestra(finestra);
    EXPECT_EQ(programma.interfaccia().Cwindow(), finestra);
}

TEST(Classe, DiscardsTheFilter) {
    Programma programma;
    for (const auto& valore : {Value("x"), Value(1), Value::null()}) {
        programma.interfaccia().Filtro(valore);
        EXPECT_TRUE(programma.interfaccia().Filtro().isEmpty());
    }
}

TEST(Classe, GivesItsPositionAsA32BitNumber) {
    Programma programma;
    programma.interfaccia().Top(std::int16_t{1200});
    programma.interfaccia().Left(std::int16_t{-5});
    EXPECT_EQ(programma.interfaccia().Top(), Value(std::int32_t{1200}));
    EXPECT_EQ(programma.interfaccia().Left(), Value(std::int32_t{-5}));
}

TEST(Classe, NarrowsTheProgramModeTo16Bits) {
    Programma programma;
    programma.interfaccia().ProgramMode(0x12345);
    EXPECT_EQ(programma.interfaccia().ProgramMode(), 0x2345);
    programma.interfaccia().ProgramMode(0x8000);
    EXPECT_EQ(programma.interfaccia().ProgramMode(), -32768);
}

TEST(Classe, ShowsTheFormWithItsCaptionModeless) {
    Programma programma;
    EXPECT_TRUE(programma.interfaccia().ShowForm().isEmpty());
    EXPECT_EQ(programma.form().caption(), "Manutenzione distinte");
    EXPECT_TRUE(programma.form().isOpen());
    EXPECT_FALSE(programma.form().isModal());
    EXPECT_EQ(programma.classe->form()->ActiveDll(), &programma.interfaccia());
}

TEST(Classe, HandsItsFormTheInterfaceThatTheHostPutInItsPlace) {
    Programma programma;
    platform::headless::HostInterface altra;
    altra.ClsGlobal(programma.interfaccia().ClsGlobal());
    altra.Left(700);
    programma.interfaccia().ActiveDll(&altra);
    programma.mostra();
    EXPECT_EQ(programma.classe->form()->ActiveDll(), &altra);
    EXPECT_EQ(programma.form().bounds().left, 700);
    EXPECT_EQ(altra.Connection(), programma.db);
    EXPECT_EQ(programma.interfaccia().Connection(), nullptr);
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(true));
}

TEST(Classe, KeepsItsNodesForBlocksAcrossForms) {
    Programma programma;
    EXPECT_EQ(programma.classe->NodiPerBlocchi(), 100);
    programma.classe->NodiPerBlocchi(7);
    programma.interfaccia().ShowForm();
    EXPECT_EQ(programma.classe->form()->stato().nodiPerBlocchi, 7);
    programma.classe->NodiPerBlocchi(-1);
    EXPECT_EQ(programma.classe->form()->stato().nodiPerBlocchi, -1);
    programma.interfaccia().CloseForm();
    programma.interfaccia().ShowForm();
    EXPECT_EQ(programma.classe->form()->stato().nodiPerBlocchi, -1);
}

TEST(Classe, ShowsTheFormModally) {
    Programma programma;
    programma.interfaccia().WindowModal(true);
    bool aperta = false;
    programma.host->controls->whenModal("FRMQZ_COPIADISTINTA", [&](platform::headless::HeadlessForm& form) {
        aperta = form.isOpen() && form.isModal() && form.caption() == "Manutenzione distinte";
    });
    EXPECT_TRUE(programma.interfaccia().ShowForm().isEmpty());
    EXPECT_TRUE(aperta);
    EXPECT_TRUE(programma.form().isGone());
}

TEST(Classe, ClosesTheForm) {
    Programma programma;
    programma.mostra();
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(true));
    EXPECT_TRUE(programma.form().isGone());
    EXPECT_EQ(programma.classe->form()->ActiveDll(), nullptr);
}

TEST(Classe, SaysFalseWhenTheFormRefusesToClose) {
    for (const bool script : {false, true}) {
        Programma programma;
        programma.mostra();
        (script ? programma.host->scriptRefusesClose : programma.host->frameRefusesClose) = true;
        EXPECT_EQ(programma.interfaccia().CloseForm(), Value(false));
        EXPECT_FALSE(programma.form().isGone());
        EXPECT_EQ(programma.classe->form()->ActiveDll(), &programma.interfaccia());
        (script ? programma.host->scriptRefusesClose : programma.host->frameRefusesClose) = false;
        EXPECT_EQ(programma.interfaccia().CloseForm(), Value(true));
    }
}

TEST(Classe, SaysFalseWithoutAForm) {
    Programma programma;
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(false));
}

TEST(Classe, PassesDataOnToItsListener) {
    Programma programma;
    EXPECT_TRUE(programma.interfaccia().TransferData("senza ascoltatori").isEmpty());
    std::vector<Value> arrivati;
    programma.classe->DataTransfer = [&](const Value& dato) { arrivati.push_back(dato); };
    EXPECT_TRUE(programma.interfaccia().TransferData(12).isEmpty());
    EXPECT_TRUE(programma.interfaccia().TransferData(Value::null()).isEmpty());
    EXPECT_EQ(arrivati, (std::vector<Value>{12, Value::null()}));
}

TEST(Classe, SwallowsAListenersError) {
    Programma programma;
    programma.classe->DataTransfer = [](const Value&) { throw contract::RuntimeError(5, "x"); };
    EXPECT_NO_THROW(programma.interfaccia().TransferData(1));
}

TEST(Classe, SwallowsAHostThatCannotMakeAForm) {
    qz::CLSQZ_COPIADISTINTA classe;
    EXPECT_TRUE(classe.ShowForm().isEmpty());
    EXPECT_EQ(classe.CloseForm(), Value(false));
}

TEST(Classe, RegistersItsFormWithTheLayoutModel) {
    Programma programma;
    programma.mostra();
    programma.classe->navigator().InitializeLayoutObjectModel(platform::headless::newLayoutModel(programma.host));
    EXPECT_EQ(programma.host->journal->take(), Testi{"LayoutModel.registerForm(Distinta, FRMQZ_COPIADISTINTA)"});
}

TEST(Classe, RegistersItsFormThenTheFrameWithTheScriptModel) {
    Programma programma;
    programma.mostra();
    programma.classe->navigator().InitializeScriptObjectModel(platform::headless::newScriptModel(programma.host));
    EXPECT_EQ(programma.host->journal->take(),
              (Testi{"ScriptModel.registerForm(Distinta, FRMQZ_COPIADISTINTA)", "ActiveFrame.Name()",
                     "ScriptModel.registerObject(Frame1, object)"}));
}

TEST(Classe, LeavesTheObjectModelsAloneWhileInactive) {
    Programma programma;
    programma.mostra();
    programma.interfaccia().IsActive(false);
    auto& ganci = programma.classe->navigator();
    ganci.InitializeLayoutObjectModel(platform::headless::newLayoutModel(programma.host));
    ganci.InitializeScriptObjectModel(platform::headless::newScriptModel(programma.host));
    ganci.BeforeExportToOffice(nullptr);
    EXPECT_TRUE(programma.host->journal->take().empty());
}

TEST(Classe, AsksTheInterfaceThatTheHostPutInItsPlaceWhetherItIsActive) {
    Programma programma;
    programma.mostra();
    qz::CLSQZ_COPIADISTINTA altra;
    programma.interfaccia().ActiveDll(&altra);
    programma.classe->navigator().InitializeLayoutObjectModel(platform::headless::newLayoutModel(programma.host));
    EXPECT_TRUE(programma.host->journal->take().empty());
    programma.interfaccia().ActiveDll(&programma.interfaccia());
}

TEST(Classe, SwallowsAModelsError) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("LayoutModel.registerForm", 1, contract::RuntimeError(5, "x"));
    EXPECT_NO_THROW(
        programma.classe->navigator().InitializeLayoutObjectModel(platform::headless::newLayoutModel(programma.host)));
}

TEST(Classe, ReleasesItsContextInOrder) {
    Programma programma;
    programma.mostra();
    programma.interfaccia().CloseForm();
    programma.classe->finestra(platform::headless::newHostObject(programma.host, "Finestra"));
    programma.interfaccia().Connection(
        std::make_shared<platform::headless::ScriptedConnection>(programma.host->journal));
    programma.host->journal->take();
    programma.classe->DestroyClass();
    EXPECT_EQ(programma.host->journal->take(), (Testi{"~StatusBar", "~ActiveFrame", "~ClsVoceMenu", "~ClsGlobal",
                                                      "~Finestra", "~Navigator", "~Connection"}));
    EXPECT_EQ(programma.classe->form(), nullptr);
    EXPECT_EQ(programma.interfaccia().ActiveDll(), nullptr);
}

TEST(Classe, ReleasesTheFormLast) {
    Programma programma;
    programma.mostra();
    programma.classe->DestroyClass();
    const auto righe = programma.host->journal->take();
    const Testi contesto{"~StatusBar", "~ActiveFrame", "~ClsVoceMenu", "~ClsGlobal", "~Navigator"};
    ASSERT_GE(righe.size(), contesto.size());
    EXPECT_EQ((Testi{righe.begin(), righe.begin() + 5}), contesto);
    EXPECT_NE(std::find(righe.begin(), righe.end(), "~LogClass"), righe.end());
}

// Errors at the end of its life

/// A class of which one reference can not be released.
class ClasseRotta : public qz::CLSQZ_COPIADISTINTA {
public:
    using CLSQZ_COPIADISTINTA::finestra;
    void finestra(std::shared_ptr<contract::HostObject> oggetto) override {
        if (!oggetto && rotta)
            throw contract::RuntimeError(91, "Variabile oggetto non impostata");
        CLSQZ_COPIADISTINTA::finestra(std::move(oggetto));
    }
    bool rotta = true;
};

TEST(Classe, ShowsAnErrorOfItsReleaseThroughTheFormsLog) {
    Programma programma;
    auto rotta = std::make_unique<ClasseRotta>();
    auto& classe = *rotta;
    classe.ClsGlobal(programma.interfaccia().ClsGlobal());
    classe.Caption("Manutenzione distinte");
    programma.classe = std::move(rotta);
    programma.mostra();
    EXPECT_NO_THROW(classe.DestroyClass());
    EXPECT_EQ(programma.messaggi(), Testi{"Errore VB n.91 - Variabile oggetto non impostata nel metodo DestroyClass "
                                          "della classe principale"});
    EXPECT_EQ(programma.host->messages[0].title, "Manutenzione distinte");
    EXPECT_EQ(programma.host->messages[0].style, 0);
    EXPECT_NE(classe.form(), nullptr); // what stands after the failing release is left
    classe.rotta = false;
    classe.DestroyClass();
    EXPECT_EQ(classe.form(), nullptr);
}

TEST(Classe, SwallowsAnErrorOfItsReleaseThatCanNotBeShown) {
    Programma programma;
    auto rotta = std::make_unique<ClasseRotta>();
    auto& classe = *rotta;
    classe.ClsGlobal(programma.interfaccia().ClsGlobal());
    programma.classe = std::move(rotta);
    EXPECT_NO_THROW(classe.DestroyClass()); // no form, so no log
    classe.ClsGlobal(std::make_shared<platform::headless::HostGlobal>(programma.host));
    classe.ActiveDll(&classe);
    programma.mostra();
    programma.host->journal->failCall("LogClass.ShowMessage", 1, contract::RuntimeError(5, "x"));
    EXPECT_NO_THROW(classe.DestroyClass());
    EXPECT_TRUE(programma.host->messages.empty());
}

TEST(Classe, ShowsAtItsEndTheErrorThatItsReleaseCouldNotShow) {
    Programma programma;
    auto rotta = std::make_unique<ClasseRotta>();
    auto& classe = *rotta;
    classe.ClsGlobal(programma.interfaccia().ClsGlobal());
    programma.classe = std::move(rotta);
    programma.mostra();
    programma.host->journal->failCall("LogClass.ShowMessage", 1, contract::RuntimeError(7, "memoria esaurita"));
    classe.Class_Terminate();
    EXPECT_EQ(programma.messaggi(), Testi{"Errore VB n.7 - memoria esaurita nel Terminate della classe principale"});
}

TEST(Classe, TellsWhereItsLifeEndedWithAnError) {
    EXPECT_EQ(qz::testoErroreFinale(contract::RuntimeError(13, "Tipo non corrispondente"), qz::luogoDestroyClass),
              "Errore VB n.13 - Tipo non corrispondente nel metodo DestroyClass della classe principale");
    EXPECT_EQ(qz::testoErroreFinale(contract::RuntimeError(-2147217900, "x"), qz::luogoTerminate),
              "Errore VB n.-2147217900 - x nel Terminate della classe principale");
    EXPECT_EQ(qz::testoErroreFinale(std::runtime_error("y"), qz::luogoTerminate),
              "Errore VB n.5 - y nel Terminate della classe principale");
}

TEST(Classe, IsDestroyedTwiceWithoutHarm) {
    Programma programma;
    programma.mostra();
    programma.interfaccia().CloseForm();
    programma.classe->DestroyClass();
    programma.host->journal->take();
    programma.classe->DestroyClass();
    programma.classe.reset();
    EXPECT_TRUE(programma.host->journal->take().empty());
}

TEST(Classe, CanBeReleasedWhileItsFormIsOpen) {
    Programma programma;
    programma.mostra();
    programma.classe.reset();
    EXPECT_EQ(programma.host->controls->form("FRMQZ_COPIADISTINTA"), nullptr);
}

TEST(Classe, AnswersAfterItsRelease) {
    Programma programma;
    programma.mostra();
    programma.classe->DestroyClass();
    EXPECT_TRUE(programma.interfaccia().ShowForm().isEmpty());
    programma.classe->DestroyClass();
    EXPECT_EQ(programma.interfaccia().CloseForm(), Value(false));
    EXPECT_TRUE(programma.classe->state().empty());
    EXPECT_FALSE(programma.classe->menuCommand("mnuDettagli"));
}

TEST(Classe, CountsItsObjects) {
    const int prima = qz::oggettiVivi();
    {
        qz::CLSQZ_COPIADISTINTA una;
        qz::CLSQZ_COPIADISTINTA due;
        EXPECT_EQ(qz::oggettiVivi(), prima + 2);
    }
    EXPECT_EQ(qz::oggettiVivi(), prima);
}

} // namespace

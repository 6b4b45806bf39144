// Every form makes a log class of its own when it loads, and reports through it under its own caption.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::headless::HeadlessForm;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

/// What the log classes did while a modal form stood, between the command's click and its end.
Testi vitaDelLog(Programma& programma, const std::string& form, const char* comando) {
    bool aperta = false;
    programma.host->controls->whenModal(form, [&](HeadlessForm&) { aperta = true; });
    programma.host->journal->take();
    programma.pulsante(comando).click();
    EXPECT_TRUE(aperta) << form;
    Testi vita;
    for (const auto& riga : programma.host->journal->take())
        if (riga == "ClsGlobal.newLogClass()" || riga.starts_with("LogClass.setInterface") || riga == "~LogClass")
            vita.push_back(riga);
    return vita;
}

TEST(LogClass, IsMadeAndReleasedByEachModalForm) {
    Programma programma;
    programma.mostra();
    const Testi attesa{"ClsGlobal.newLogClass()", "LogClass.setInterface(host)", "~LogClass"};
    EXPECT_EQ(vitaDelLog(programma, "FRMQZ_PARAMETRI", "CMD_PARAMETRI"), attesa);
    EXPECT_EQ(vitaDelLog(programma, "FRMQZ_DATAFINELEGAME", "CMD_SPOSTAVALID"), attesa);
}

TEST(LogClass, OfAModalFormIsItsFirstStepSoThatItReportsTheOthers) {
    Programma programma;
    programma.mostra();
    programma.db->fail(" SELECT   QZ03_ID_WF02 AS StatoLegame, ", {"HY000", 1, "x", contract::ErrorCategory::other});
    programma.host->answers = {3};
    programma.host->controls->whenModal("FRMQZ_PARAMETRI", [](HeadlessForm&) {});
    programma.pulsante("CMD_PARAMETRI").click();
    ASSERT_GE(programma.host->errors.size(), 2U);
    EXPECT_EQ(programma.host->errors[0].procedure, "Form_Load");
    EXPECT_EQ(programma.host->errors[0].title, "Parametri");
    EXPECT_EQ(programma.host->errors[1].procedure, "CaricaParametri");
    EXPECT_EQ(programma.host->errors[1].title, "Manutenzione distinte");
}

TEST(LogClass, ThatAFormCouldNotMakeLeavesItsErrorsUnshown) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("ClsGlobal.newLogClass", 1, contract::RuntimeError(429, "x"));
    programma.host->controls->whenModal("FRMQZ_PARAMETRI", [](HeadlessForm&) {});
    programma.pulsante("CMD_PARAMETRI").click();
    EXPECT_TRUE(programma.host->errors.empty());
    EXPECT_TRUE(programma.host->messages.empty());
}

} // namespace

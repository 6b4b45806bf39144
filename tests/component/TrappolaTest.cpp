#include "component/Scena.h"
#include "component/shared/FormBase.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

using contract::RuntimeError;
using contract::Value;
using prove::Scena;
using qz::FormBase;

namespace {

using Testi = std::vector<std::string>;

TEST(ValoreODefault, KeepsAValueWithItsBlanks) {
    EXPECT_EQ(FormBase::ValoreODefault("  A ", 7), Value("  A "));
    EXPECT_EQ(FormBase::ValoreODefault(0, 7), Value(0));
    EXPECT_EQ(FormBase::ValoreODefault(false, 7), Value(false));
}

TEST(ValoreODefault, ReplacesEmptyNullAndBlankValues) {
    EXPECT_EQ(FormBase::ValoreODefault(Value(), 7), Value(7));
    EXPECT_EQ(FormBase::ValoreODefault(Value::null(), 7), Value(7));
    EXPECT_EQ(FormBase::ValoreODefault("", 7), Value(7));
    EXPECT_EQ(FormBase::ValoreODefault("   ", 7), Value(7));
}

TEST(ValoreODefaultTrim, TrimsWhatItKeeps) {
    EXPECT_EQ(qz::ValoreODefaultTrim("  A ", 7), Value("A"));
    EXPECT_EQ(qz::ValoreODefaultTrim(Value::null(), 7), Value(7));
    EXPECT_EQ(qz::ValoreODefaultTrim(Value(), 7), Value(7));
    EXPECT_EQ(qz::ValoreODefaultTrim("   ", 7), Value(7));
    EXPECT_EQ(qz::ValoreODefaultTrim("", 7), Value(7));
}

TEST(TestoDaValore, KeepsBlanksInFrontOnly) {
    EXPECT_EQ(qz::TestoDaValore(" A "), " A");
    EXPECT_EQ(qz::TestoDaValore(Value::null()), "");
    EXPECT_EQ(qz::TestoDaValore(Value()), "");
    EXPECT_EQ(qz::TestoDaValore(""), "");
    EXPECT_EQ(qz::TestoDaValore(12), "12");
    EXPECT_EQ(qz::TestoDaValore(prove::giorno("09/05/2024")), "09/05/2024");
}

TEST(VisualizzaErrore, HandsTheErrorThenTheDatabasesErrorsThenShows) {
    Scena scena;
    scena.host->answers = {5};
    EXPECT_EQ(scena.stato.VisualizzaErrore("Form_Load", RuntimeError(13, "Tipo non corrispondente")), 5);
    EXPECT_EQ(scena.host->journal->take(),
              (Testi{"LogClass.vbError(13, Tipo non corrispondente)", "LogClass.ADOError(0)",
                     "LogClass.ShowError(QZUO_COPIADISTINTA, Manutenzione distinte, Form_Load, 4370)"}));
}

TEST(VisualizzaErrore, HandsNoDatabaseErrorsWithoutAConnection) {
    Scena scena;
    scena.stato.connessione.reset();
    scena.stato.VisualizzaErrore("Form_Load", RuntimeError(13, "x"));
    EXPECT_EQ(scena.host->journal->count("LogClass.ADOError"), 0U);
    ASSERT_EQ(scena.host->errors.size(), 1U);
    EXPECT_TRUE(scena.host->errors[0].databaseErrors.empty());
}

TEST(VisualizzaErrore, HandsTheDatabasesRecordsOver) {
    Scena scena;
    scena.db->failNth(1, {"40001", 1205, "Stallo", contract::ErrorCategory::deadlock});
    EXPECT_THROW(scena.db->Execute(contract::Statement("X")), RuntimeError);
    scena.stato.VisualizzaErrore("Form_Load", RuntimeError(RuntimeError::database, "x"));
    ASSERT_EQ(scena.host->errors[0].databaseErrors.size(), 1U);
    EXPECT_EQ(scena.host->errors[0].databaseErrors[0].sqlState, "40001");
}

TEST(VisualizzaErrore, AnswersAbortWithoutALogClass) {
    Scena scena;
    scena.stato.classeLog.reset();
    EXPECT_EQ(scena.stato.VisualizzaErrore("Form_Load", RuntimeError(13, "x")), 3);
    EXPECT_TRUE(scena.host->messages.empty());
}

TEST(VisualizzaErrore, AnswersAbortWhenTheLogItselfFails) {
    Scena scena;
    scena.host->journal->failCall("LogClass.ShowError", 1, RuntimeError(5, "rotto"));
    EXPECT_EQ(scena.stato.VisualizzaErrore("Form_Load", RuntimeError(13, "x")), 3);
}

/// A procedure of three steps, of which each can be made to fail so many times.
struct Prova {
    Scena scena;
    Testi fatti;
    std::array<int, 3> fallimenti{};

    void esegui() {
        scena.stato.procedura("LaProcedura", [&](auto& passo) {
            for (std::size_t i = 0; i < 3; ++i)
                passo([&, i] {
                    fatti.push_back("passo " + std::to_string(i + 1));
                    if (fallimenti[i] > 0) {
                        --fallimenti[i];
                        throw RuntimeError(1000 + static_cast<int>(i), "fallito");
                    }
                });
        });
    }
};

TEST(Procedura, RunsItsStepsInOrder) {
    Prova prova;
    prova.esegui();
    EXPECT_EQ(prova.fatti, (Testi{"passo 1", "passo 2", "passo 3"}));
    EXPECT_TRUE(prova.scena.host->errors.empty());
}

class ProceduraPerPasso : public testing::TestWithParam<std::size_t> {};

TEST_P(ProceduraPerPasso, LeavesOnAbortAndOnAnyOtherAnswer) {
    for (const int risposta : {3, 0, 1, 2, 6, 7, 99, -1}) {
        Prova prova;
        prova.fallimenti[GetParam()] = 1;
        prova.scena.host->answers = {risposta};
        prova.esegui();
        EXPECT_EQ(prova.fatti.size(), GetParam() + 1) << risposta;
        EXPECT_EQ(prova.scena.errori(), Testi{"LaProcedura"});
        EXPECT_EQ(prova.scena.host->errors[0].number, 1000 + static_cast<int>(GetParam()));
    }
}

TEST_P(ProceduraPerPasso, RunsTheFailingStepAgainOnRetry) {
    Prova prova;
    prova.fallimenti[GetParam()] = 2;
    prova.scena.host->answers = {4, 4};
    prova.esegui();
    Testi attesi{"passo 1", "passo 2", "passo 3"};
    attesi.insert(attesi.begin() + static_cast<std::ptrdiff_t>(GetParam()), 2,
                  "passo " + std::to_string(GetParam() + 1));
    EXPECT_EQ(prova.fatti, attesi);
    EXPECT_EQ(prova.scena.host->errors.size(), 2U);
}

TEST_P(ProceduraPerPasso, GoesOnWithTheNextStepOnIgnore) {
    Prova prova;
    prova.fallimenti[GetParam()] = 1;
    prova.scena.host->answers = {5};
    prova.esegui();
    EXPECT_EQ(prova.fatti, (Testi{"passo 1", "passo 2", "passo 3"}));
    EXPECT_EQ(prova.scena.host->errors.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(OgniPasso, ProceduraPerPasso, testing::Values(0U, 1U, 2U));

TEST(Procedura, ReportsAnyExceptionOfAStep) {
    Scena scena;
    scena.stato.procedura("Altra", [](auto& passo) { passo([] { throw std::out_of_range("fuori dai limiti"); }); });
    ASSERT_EQ(scena.host->errors.size(), 1U);
    EXPECT_EQ(scena.host->errors[0].text, "fuori dai limiti");
}

TEST(Procedura, LeavesQuietlyWithoutALogClass) {
    Prova prova;
    prova.scena.stato.classeLog.reset();
    prova.fallimenti[1] = 1;
    prova.esegui();
    EXPECT_EQ(prova.fatti.size(), 2U);
}

TEST(Procedura, ReportsAnInnerProcedureUnderItsOwnNameOnly) {
    Scena scena;
    bool dopo = false;
    scena.stato.procedura("Esterna", [&](auto& passo) {
        passo([&] {
            scena.stato.procedura("Interna", [](auto& interno) { interno([] { throw RuntimeError(9, "x"); }); });
        });
        passo([&] { dopo = true; });
    });
    EXPECT_EQ(scena.errori(), Testi{"Interna"});
    EXPECT_TRUE(dopo);
}

} // namespace

// The parameters form, opened from the main form as a user opens it.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using contract::Value;
using platform::headless::HeadlessCheckBox;
using platform::headless::HeadlessComboBox;
using platform::headless::HeadlessDataFrame;
using platform::headless::HeadlessDateField;
using platform::headless::HeadlessForm;
using platform::headless::HeadlessGridNavigator;
using platform::headless::HeadlessLabel;
using platform::headless::HeadlessLookupField;
using platform::headless::HeadlessTextField;
using platform::headless::rows;
using prove::giorno;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

class ParametriFormTest : public testing::Test {
protected:
    ParametriFormTest() {
        programma.db->answer(" SELECT WF02_DESCR FROM  WF02_STATI", [](const std::string& testo) {
            return testo.ends_with("= 5")   ? rows({"WF02_DESCR"}, {{"Attivo"}})
                   : testo.ends_with("= 9") ? rows({"WF02_DESCR"}, {{"Chiuso"}})
                                            : rows({"WF02_DESCR"});
        });
        programma.mostra();
    }

    /// The company's row, of which the values may be null; none without this.
    void riga(Value tipo, Value inizio, Value fine, Value flag, Value stato = Value::null()) {
        programma.db->answer(
            "SELECT * FROM QZ03_PARAMETRI ",
            rows({"QZ03_DITTA_CG18", "QZ03_TIPOCARICODATA", "QZ03_DATAINIZIOVAL", "QZ03_DATAFINEVAL",
                  "QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS", "QZ03_FLG_PROV", "QZ03_FLG_ANAG", "QZ03_ID_WF02"},
                 {{1, tipo, inizio, fine, flag, flag, flag, flag, stato}}));
    }
    void apri(std::function<void(HeadlessForm&)> passi) {
        bool aperta = false;
        programma.host->controls->whenModal("FRMQZ_PARAMETRI", [&](HeadlessForm& form) {
            aperta = true;
            passi(form);
        });
        programma.pulsante("CMD_PARAMETRI").click();
        EXPECT_TRUE(aperta);
    }
    static HeadlessDateField& inizio(HeadlessForm& form) {
        return form.control<HeadlessDateField>("TXT_QZ03_DATAINIZIOVAL");
    }
    static HeadlessDateField& fine(HeadlessForm& form) {
        return form.control<HeadlessDateField>("TXT_QZ03_DATAFINEVAL");
    }
    static HeadlessComboBox& tipo(HeadlessForm& form) {
        return form.control<HeadlessComboBox>("CMB_QZ03_TIPOCARICODATA");
    }
    static HeadlessDataFrame& frame(HeadlessForm& form) { return form.control<HeadlessDataFrame>("FME_Parametri"); }

    Programma programma;
};

TEST_F(ParametriFormTest, HasTheControlsOfItsDesign) {
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(form.caption(), "Parametri");
        EXPECT_EQ(form.control<platform::headless::HeadlessGroupBox>("Frame2").caption(),
                  "Parametri visualizzazione dati anagrafici");
        EXPECT_EQ(form.control<platform::headless::HeadlessGroupBox>("Frame3").caption(), "Date validità del legame");
        EXPECT_EQ(form.control<HeadlessCheckBox>("CHK_QZ03_FLG_CONDVEND").caption(), "Condizioni di vendita");
        EXPECT_EQ(form.control<HeadlessCheckBox>("CHK_QZ03_FLG_CLAS").caption(), "Classificazioni");
        EXPECT_EQ(form.control<HeadlessCheckBox>("CHK_QZ03_FLG_PROV").caption(), "Provvigioni e listini");
        EXPECT_EQ(form.control<HeadlessCheckBox>("CHK_QZ03_FLG_ANAG").caption(), "Anagrafica");
        EXPECT_EQ(form.control<HeadlessLabel>("KVT_LABEL3").caption(), "Tipo valorizzazione");
        EXPECT_EQ(form.control<HeadlessLabel>("KVT_LABEL4").caption(), "Data inizio");
        EXPECT_EQ(form.control<HeadlessLabel>("KVT_LABEL5").caption(), "Data fine");
        EXPECT_EQ(tipo(form).items(), (Testi{"Valorizza da nodo padre", "Valorizza da date fisse"}));
        EXPECT_EQ(form.control<HeadlessGridNavigator>("GRIDNAV_PARAMETRI").frame(), &frame(form));
    });
}

TEST_F(ParametriFormTest, OpensTheCompanysRow) {
    apri([](HeadlessForm&) {});
    EXPECT_EQ(programma.db->statements("SELECT * FROM QZ03_PARAMETRI "),
              Testi{"SELECT * FROM QZ03_PARAMETRI  WHERE QZ03_DITTA_CG18 = 1"});
    EXPECT_EQ(programma.host->journal->count("FME_Parametri.initialise(host, connection, records, SELECT * FROM "
                                             "QZ03_PARAMETRI  WHERE QZ03_DITTA_CG18 = 1, QZ03_DITTA_CG18)"),
              1U);
}

TEST_F(ParametriFormTest, ShowsTheFixedDatesOfACompanyWithoutARow) {
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(inizio(form).text(), "01/01/2000");
        EXPECT_EQ(fine(form).text(), "31/12/2099");
        EXPECT_EQ(tipo(form).position(), 0);
        EXPECT_EQ(frame(form).status(), contract::DataFrame::inserting);
    });
}

TEST_F(ParametriFormTest, ShowsTheRow) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1, 5);
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(inizio(form).text(), "01/02/2010");
        EXPECT_EQ(fine(form).text(), "03/04/2011");
        EXPECT_TRUE(inizio(form).enabled() && fine(form).enabled());
        EXPECT_EQ(tipo(form).position(), 1);
        EXPECT_TRUE(form.control<HeadlessCheckBox>("CHK_QZ03_FLG_ANAG").checked());
        EXPECT_EQ(form.control<HeadlessLookupField>("TXT_QZ03_ID_WF02").text(), "5");
        EXPECT_EQ(form.control<HeadlessTextField>("TXT_WF02_DESCR").text(), "Attivo");
    });
}

TEST_F(ParametriFormTest, ShowsEachFlagInItsOwnBoxAndWritesItToItsOwnColumn) {
    const std::vector<std::pair<const char*, std::string>> caselle{{"CHK_QZ03_FLG_CONDVEND", "QZ03_FLG_CONDVEND"},
                                                                   {"CHK_QZ03_FLG_CLAS", "QZ03_FLG_CLAS"},
                                                                   {"CHK_QZ03_FLG_PROV", "QZ03_FLG_PROV"},
                                                                   {"CHK_QZ03_FLG_ANAG", "QZ03_FLG_ANAG"}};
    for (std::size_t segnata = 0; segnata < caselle.size(); ++segnata) {
        const auto flag = [&](std::size_t i) { return Value(std::int32_t{i == segnata}); };
        programma.db->answer(
            "SELECT * FROM QZ03_PARAMETRI ",
            rows({"QZ03_DITTA_CG18", "QZ03_TIPOCARICODATA", "QZ03_DATAINIZIOVAL", "QZ03_DATAFINEVAL",
                  "QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS", "QZ03_FLG_PROV", "QZ03_FLG_ANAG", "QZ03_ID_WF02"},
                 {{1, 0, Value::null(), Value::null(), flag(0), flag(1), flag(2), flag(3), Value::null()}}));
        programma.db->take();
        apri([&](HeadlessForm& form) {
            for (std::size_t i = 0; i < caselle.size(); ++i)
                EXPECT_EQ(form.control<HeadlessCheckBox>(caselle[i].first).checked(), i == segnata) << caselle[i].first;
            EXPECT_TRUE(frame(form).save());
        });
        const auto scritte = programma.db->statements("UPDATE QZ03_PARAMETRI SET ");
        ASSERT_EQ(scritte.size(), segnata + 1);
        const auto valori = scritte.back().substr(0, scritte.back().find(" WHERE "));
        for (std::size_t i = 0; i < caselle.size(); ++i)
            EXPECT_NE(valori.find(caselle[i].second + (i == segnata ? " = 1" : " = 0")), std::string::npos) << valori;
    }
}

TEST_F(ParametriFormTest, WritesDatesKindAndStateToTheirColumns) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1, 5);
    apri([&](HeadlessForm& form) {
        inizio(form).type("02/02/2010");
        fine(form).type("04/04/2011");
        form.control<HeadlessLookupField>("TXT_QZ03_ID_WF02").type("9");
        EXPECT_TRUE(frame(form).save());
    });
    const auto scritte = programma.db->statements("UPDATE QZ03_PARAMETRI SET ");
    ASSERT_EQ(scritte.size(), 1U);
    const auto valori = scritte[0].substr(0, scritte[0].find(" WHERE "));
    for (const auto* parte : {"QZ03_TIPOCARICODATA = 1", "QZ03_DATAINIZIOVAL = CONVERT(DateTime,'02/02/2010',103)",
                              "QZ03_DATAFINEVAL = CONVERT(DateTime,'04/04/2011',103)", "QZ03_ID_WF02 = 9"})
        EXPECT_NE(valori.find(parte), std::string::npos) << valori;
    // The key of a row that is there stays as it is.
    EXPECT_EQ(valori.find("QZ03_DITTA_CG18"), std::string::npos) << valori;
    EXPECT_NE(scritte[0].find(" WHERE QZ03_DITTA_CG18 = 1"), std::string::npos);
}

TEST_F(ParametriFormTest, LeavesTheDatesOfARowAloneUntilTheComboChanges) {
    riga(0, giorno("01/02/2010"), giorno("03/04/2011"), 1);
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(tipo(form).position(), 0);
        EXPECT_EQ(inizio(form).text(), "01/02/2010");
        EXPECT_EQ(fine(form).text(), "03/04/2011");
    });
}

TEST_F(ParametriFormTest, ReadsItsValuesThenOpensItsRow) {
    programma.db->take();
    apri([](HeadlessForm&) {});
    const auto istruzioni = programma.db->take();
    ASSERT_GE(istruzioni.size(), 2U);
    EXPECT_TRUE(istruzioni[0].starts_with(" SELECT   QZ03_ID_WF02 AS StatoLegame, "));
    EXPECT_EQ(istruzioni[0].find("TipoCaricaFatt"), std::string::npos);
    EXPECT_EQ(istruzioni[1], "SELECT * FROM QZ03_PARAMETRI  WHERE QZ03_DITTA_CG18 = 1");
}

TEST_F(ParametriFormTest, StartsACompanyWithoutARowWithAllBoxesChecked) {
    apri([&](HeadlessForm& form) {
        for (const auto* casella :
             {"CHK_QZ03_FLG_CONDVEND", "CHK_QZ03_FLG_CLAS", "CHK_QZ03_FLG_PROV", "CHK_QZ03_FLG_ANAG"})
            EXPECT_TRUE(form.control<HeadlessCheckBox>(casella).checked()) << casella;
    });
}

TEST_F(ParametriFormTest, EmptiesAndLocksTheDatesForThoseOfTheParent) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1);
    apri([&](HeadlessForm& form) {
        tipo(form).pick(0);
        EXPECT_EQ(inizio(form).text() + fine(form).text(), "");
        EXPECT_FALSE(inizio(form).enabled() || fine(form).enabled());
        tipo(form).pick(1);
        EXPECT_EQ(inizio(form).text() + fine(form).text(), "");
        EXPECT_TRUE(inizio(form).enabled() && fine(form).enabled());
    });
}

TEST_F(ParametriFormTest, RefusesAStartAfterTheEnd) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1);
    apri([&](HeadlessForm& form) {
        inizio(form).type("09/03/2024");
        fine(form).type("02/03/2024");
        EXPECT_FALSE(frame(form).save());
        EXPECT_EQ(form.focused(), &inizio(form));
    });
    EXPECT_EQ(programma.messaggi(),
              Testi{"Attenzione data validità inizio deve essere inferiore di data validità fine"});
    EXPECT_EQ(programma.host->messages[0].style, 0);
    EXPECT_EQ(programma.host->messages[0].title, "Parametri");
    EXPECT_TRUE(programma.db->statements("UPDATE QZ03_PARAMETRI").empty());
}

TEST_F(ParametriFormTest, ComparesTheDatesAsTexts) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1);
    apri([&](HeadlessForm& form) {
        inizio(form).type("09/03/2023"); // earlier by the calendar, later by its text
        fine(form).type("02/03/2024");
        EXPECT_FALSE(frame(form).save());
        inizio(form).type("01/03/2025");
        EXPECT_TRUE(frame(form).save());
    });
}

TEST_F(ParametriFormTest, AcceptsEqualDatesAndAMissingOne) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1);
    apri([&](HeadlessForm& form) {
        inizio(form).type("01/03/2024");
        fine(form).type("01/03/2024");
        EXPECT_TRUE(frame(form).save());
        inizio(form).type("");
        EXPECT_TRUE(frame(form).save());
        inizio(form).type("02/03/2024");
        fine(form).type("");
        EXPECT_TRUE(frame(form).save());
    });
    EXPECT_TRUE(programma.host->messages.empty());
}

TEST_F(ParametriFormTest, SavesForTheWorkingCompany) {
    apri([&](HeadlessForm& form) { EXPECT_TRUE(frame(form).save()); });
    const auto scritte = programma.db->statements("INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18, ");
    ASSERT_EQ(scritte.size(), 1U);
    EXPECT_NE(scritte[0].find(") VALUES (1, "), std::string::npos);
}

TEST_F(ParametriFormTest, SwitchesTwoNavigatorSettingsOffAtEveryChangeOfStatus) {
    apri([&](HeadlessForm& form) {
        auto& navigatore = form.control<HeadlessGridNavigator>("GRIDNAV_PARAMETRI");
        for (const int stato : {0, 1, 2}) {
            navigatore.setAllowInsert(true);
            navigatore.setAllowDelete(true);
            navigatore.setAskBeforeMove(true);
            frame(form).enterStatus(stato);
            EXPECT_EQ(navigatore.allowInsert(), false);
            EXPECT_EQ(navigatore.allowDelete(), false);
            EXPECT_EQ(navigatore.askBeforeMove(), true);
        }
    });
}

TEST_F(ParametriFormTest, SavesNoStateThatDoesNotExist) {
    riga(1, giorno("01/02/2010"), giorno("03/04/2011"), 1, 5);
    apri([&](HeadlessForm& form) {
        auto& stato = form.control<HeadlessLookupField>("TXT_QZ03_ID_WF02");
        stato.type("99");
        EXPECT_FALSE(frame(form).save());
        EXPECT_EQ(stato.text(), "99");
        stato.type("9");
        EXPECT_TRUE(frame(form).save());
    });
    EXPECT_EQ(programma.messaggi(), Testi{"Lo stato 99 non esiste."});
    EXPECT_EQ(programma.db->statements("UPDATE QZ03_PARAMETRI SET ").size(), 1U);
}

TEST_F(ParametriFormTest, LooksAStateUpAndDecodesIt) {
    programma.host->choices = {5, std::nullopt};
    apri([&](HeadlessForm& form) {
        auto& stato = form.control<HeadlessLookupField>("TXT_QZ03_ID_WF02");
        auto& descrizione = form.control<HeadlessTextField>("TXT_WF02_DESCR");
        stato.openList();
        EXPECT_EQ(stato.text(), "5");
        EXPECT_EQ(descrizione.text(), "Attivo");
        stato.openList(); // left without a choice
        EXPECT_EQ(stato.text(), "5");
        stato.type("99");
        EXPECT_EQ(descrizione.text(), "Lo stato 99 non esiste.");
        stato.type("");
        EXPECT_EQ(descrizione.text(), "");
    });
    ASSERT_TRUE(programma.host->lookup);
    EXPECT_EQ(programma.host->lookup->name, "lkp_Stati");
    EXPECT_EQ(programma.host->lookup->title, "Stati");
    EXPECT_EQ(programma.host->lookup->statement.text(),
              " SELECT WF02_ID, WF02_DESCR FROM  WF02_STATI ORDER BY WF02_ID ");
    EXPECT_EQ(programma.host->lookup->columnTitles, (Testi{"Codice", "Descrizione"}));
    EXPECT_EQ(programma.db->statements(" SELECT WF02_DESCR FROM  WF02_STATI WHERE WF02_ID = 5").size(), 1U);
}

TEST_F(ParametriFormTest, ReadsTheParametersAndRefreshesBothGridsWhenItCloses) {
    programma.classe->form()->CaricaDistintaDest("20");
    apri([&](HeadlessForm&) { programma.db->take(); });
    const auto istruzioni = programma.db->take();
    ASSERT_EQ(istruzioni.size(), 3U);
    EXPECT_TRUE(istruzioni[0].starts_with(" SELECT   QZ03_ID_WF02"));
    EXPECT_TRUE(istruzioni[0].find("TipoCaricaFatt") != std::string::npos);
    EXPECT_TRUE(istruzioni[1].ends_with("CG44_CLIFOR = 101"));
    EXPECT_TRUE(istruzioni[2].ends_with("CG44_CLIFOR = 201"));
}

TEST_F(ParametriFormTest, TakesTheMainFormsZoom) {
    programma.stato().ridimensionamento->setZoom(12);
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(form.control<platform::headless::HeadlessResizeControl>("KVT_RESIZEFORM").zoom(), 12);
    });
}

TEST_F(ParametriFormTest, ReleasesTheNavigatorWhenItCloses) {
    apri([&](HeadlessForm& form) {
        auto& navigatore = form.control<HeadlessGridNavigator>("GRIDNAV_PARAMETRI");
        const auto righe = frame(form).records();
        ASSERT_TRUE(righe && righe->IsOpen());
        form.pressClose();
        EXPECT_EQ(navigatore.frame(), nullptr);
        EXPECT_FALSE(righe->IsOpen());
    });
}

TEST_F(ParametriFormTest, ReportsUnderItsProceduresNames) {
    programma.db->fail("SELECT * FROM QZ03_PARAMETRI ", {"HY000", 1, "guasto", contract::ErrorCategory::other});
    apri([](HeadlessForm&) {});
    EXPECT_EQ(programma.errori().front(), "AttivaFrameworkParametri");
    EXPECT_EQ(programma.host->errors.front().title, "Parametri");
}

TEST_F(ParametriFormTest, ReportsValuesThatAreNoNumbers) {
    const auto valori = [&](Value stato, Value flag) {
        programma.db->answer(" SELECT   QZ03_ID_WF02 AS StatoLegame, ",
                             rows({"StatoLegame", "TipoCaricaDATA", "DataFissaINIZIO", "DataFissaFINE",
                                   "flg_Anagrafica", "flg_CondVendita", "flg_Classificazioni", "flg_Provvigioni"},
                                  {{stato, 0, "01/01/2000", "01/01/2099", flag, 1, 0, 1}}));
        programma.host->errors.clear();
        apri([](HeadlessForm&) {});
        std::vector<int> numeri;
        for (const auto& errore : programma.host->errors)
            if (errore.procedure == "Form_Load" && errore.title == "Parametri")
                numeri.push_back(errore.number);
        return numeri;
    };
    EXPECT_EQ(valori(Value::null(), 1), std::vector<int>());
    EXPECT_EQ(valori(5, "vero"), std::vector<int>{contract::RuntimeError::typeMismatch});
    EXPECT_EQ(valori(40000, 1), std::vector<int>{contract::RuntimeError::overflow});
}

TEST_F(ParametriFormTest, ReportsAFormThatCannotBeMadeUnderTheCommandsName) {
    programma.interfaccia().ClsGlobal(nullptr);
    programma.pulsante("CMD_PARAMETRI").click();
    EXPECT_EQ(programma.errori(), Testi{"CMD_PARAMETRI_ButtonClick"});
}

} // namespace

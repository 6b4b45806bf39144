// The dialog for the end-of-link date, opened from the main form as a user opens it.

#include "component/Programma.h"
#include "component/interaction/FRMQZ_DATAFINELEGAME.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

using platform::headless::HeadlessButton;
using platform::headless::HeadlessDateField;
using platform::headless::HeadlessForm;
using platform::headless::HeadlessLabel;
using prove::Programma;

namespace {

class DataFineTest : public testing::Test {
protected:
    DataFineTest() { programma.mostra(); }

    void apri(std::function<void(HeadlessForm&)> passi) {
        programma.host->controls->whenModal("FRMQZ_DATAFINELEGAME", std::move(passi));
        programma.pulsante("CMD_SPOSTAVALID").click();
    }
    static HeadlessDateField& campo(HeadlessForm& form) {
        return form.control<HeadlessDateField>("TXT_DATACHIUSURALEGAME");
    }
    static bool esegui(HeadlessForm& form) { return form.control<HeadlessButton>("CMD_ESEGUI").click(); }
    static bool annulla(HeadlessForm& form) { return form.control<HeadlessButton>("CMD_ANNULLA").click(); }
    std::string testo() { return programma.valore("DataFineLegame").text(); }

    Programma programma;
};

TEST_F(DataFineTest, HasTheControlsOfItsDesign) {
    apri([](HeadlessForm& form) {
        EXPECT_EQ(form.control<HeadlessButton>("CMD_ANNULLA").caption(), "&Annulla");
        EXPECT_EQ(form.control<HeadlessButton>("CMD_ESEGUI").caption(), "&Esegui");
        EXPECT_EQ(form.control<HeadlessLabel>("KVT_LABEL1").caption(), "Data fine legame");
        EXPECT_EQ(campo(form).text(), "");
        EXPECT_TRUE(form.isModal());
        EXPECT_TRUE(form.isDialog());
    });
}

TEST_F(DataFineTest, StandsOnOneGridWithNoRoomForACaption) {
    apri([](HeadlessForm& form) {
        auto& misure = form.control<platform::headless::HeadlessResizeControl>("KVT_RESIZEFORM");
        const int aperta = misure.zoom();
        for (const int punti : {aperta, 14}) {
            misure.setZoom(punti);
            if (punti != aperta)
                form.setBounds({0, 0, misure.scaled(6000), misure.scaled(2040)});
            misure.formResized();
            const auto gruppo = form.control<platform::headless::HeadlessGroupBox>("GRB_DATAFINELEGAME").bounds();
            const auto data = campo(form).bounds();
            const auto etichetta = form.control<HeadlessLabel>("KVT_LABEL1").bounds();
            const auto esegui = form.control<HeadlessButton>("CMD_ESEGUI").bounds();
            const auto significato = form.control<HeadlessLabel>("LBL_SIGNIFICATO").bounds();
            EXPECT_EQ(gruppo.height - significato.top - significato.height, data.top) << punti;
            EXPECT_GT(significato.top, data.top + data.height) << punti;
            EXPECT_EQ(etichetta.top, data.top) << punti;
            EXPECT_EQ(esegui.top - gruppo.top - gruppo.height, gruppo.top) << punti;
            EXPECT_EQ(form.clientHeight() - esegui.top - esegui.height, gruppo.top) << punti;
        }
    });
}

TEST_F(DataFineTest, StaysOpenWithoutADate) {
    bool aperta = false;
    apri([&](HeadlessForm& form) {
        for (const auto* nessuna : {"", "   "}) {
            campo(form).setText(nessuna);
            esegui(form);
            EXPECT_FALSE(form.isGone());
        }
        aperta = true;
    });
    EXPECT_TRUE(aperta);
    EXPECT_EQ(testo(), "");
}

TEST_F(DataFineTest, SaysThatTheDateIsMissing) {
    apri([&](HeadlessForm& form) {
        esegui(form);
        EXPECT_EQ(programma.host->statusText,
                  "Manca la data: scrivere l'ultimo giorno dei legami attuali (gg/mm/aaaa).");
        EXPECT_FALSE(form.isGone());
    });
}

TEST_F(DataFineTest, RefusesWhatIsNoDay) {
    apri([&](HeadlessForm& form) {
        for (const auto* nessuna : {"30/02/2024", "31/04/2024", "1/1/2024", "2024-01-01", "31/12/1899"}) {
            EXPECT_FALSE(campo(form).type(nessuna)) << nessuna;
            esegui(form);
            EXPECT_FALSE(form.isGone()) << nessuna;
        }
    });
    EXPECT_EQ(testo(), "");
}

TEST_F(DataFineTest, StaysOpenWithADateThatIsNoneAfterOneThatWas) {
    apri([&](HeadlessForm& form) {
        EXPECT_TRUE(campo(form).type("30/06/2027"));
        EXPECT_FALSE(campo(form).type("31/02/2028"));
        EXPECT_EQ(campo(form).text(), "31/02/2028");
        form.pressEnter();
        EXPECT_FALSE(form.isGone());
    });
    EXPECT_EQ(testo(), "");
}

TEST_F(DataFineTest, SaysWhatTheDayMeans) {
    apri([&](HeadlessForm& form) {
        auto& significato = form.control<HeadlessLabel>("LBL_SIGNIFICATO");
        EXPECT_EQ(significato.caption(), "ultimo giorno del legame attuale");
        campo(form).type("30/06/2027");
        EXPECT_EQ(significato.caption(), "ultimo giorno del legame attuale; il nuovo inizia il 01/07/2027");
        campo(form).type("31/02/2028");
        EXPECT_EQ(significato.caption(), "ultimo giorno del legame attuale");
        campo(form).type("31/12/9999");
        EXPECT_EQ(significato.caption(), "ultimo giorno del legame attuale") << "no day follows";
        campo(form).type("28/02/2028");
        EXPECT_EQ(significato.caption(), "ultimo giorno del legame attuale; il nuovo inizia il 29/02/2028");
    });
}

TEST_F(DataFineTest, HandsTheDateOver) {
    apri([&](HeadlessForm& form) {
        campo(form).type("29/02/2024");
        esegui(form);
        EXPECT_TRUE(form.isGone());
    });
    EXPECT_EQ(testo(), "29/02/2024");
}

TEST_F(DataFineTest, TrimsTheDateOnTheRight) {
    apri([&](HeadlessForm& form) {
        campo(form).type("29/02/2024   ");
        esegui(form);
    });
    EXPECT_EQ(testo(), "29/02/2024");
}

TEST_F(DataFineTest, LeavesTheTextBeforeOnCancel) {
    apri([&](HeadlessForm& form) {
        campo(form).type("30/06/2024");
        esegui(form);
    });
    apri([&](HeadlessForm& form) {
        campo(form).type("31/12/2024");
        annulla(form);
        EXPECT_TRUE(form.isGone());
    });
    EXPECT_EQ(testo(), "30/06/2024");
    apri([&](HeadlessForm& form) {
        campo(form).type("31/12/2024");
        form.pressClose();
    });
    EXPECT_EQ(testo(), "30/06/2024");
}

TEST_F(DataFineTest, AnswersEnterAndEsc) {
    apri([&](HeadlessForm& form) {
        campo(form).type("30/06/2024");
        EXPECT_TRUE(form.pressEnter());
        EXPECT_TRUE(form.isGone());
    });
    EXPECT_EQ(testo(), "30/06/2024");
    apri([&](HeadlessForm& form) {
        EXPECT_TRUE(form.pressEscape());
        EXPECT_TRUE(form.isGone());
    });
}

TEST_F(DataFineTest, TakesTheMainFormsZoom) {
    for (const int zoom : {8, 10, 12, 14}) {
        programma.stato().ridimensionamento->setZoom(zoom);
        apri([&](HeadlessForm& form) {
            auto& controllo = form.control<platform::headless::HeadlessResizeControl>("KVT_RESIZEFORM");
            EXPECT_EQ(controllo.zoom(), zoom);
            EXPECT_EQ(form.bounds().width, 750 * zoom);
        });
    }
}

TEST_F(DataFineTest, ForgetsItsOwnDateWhenCancelledButNotTheForms) {
    apri([&](HeadlessForm& form) {
        campo(form).type("30/06/2024");
        esegui(form);
    });
    // A new opening starts empty, whatever the form holds.
    apri([&](HeadlessForm& form) {
        EXPECT_EQ(campo(form).text(), "");
        annulla(form);
    });
    EXPECT_EQ(testo(), "30/06/2024");
}

TEST_F(DataFineTest, KeepsTheChosenDateUntilItIsCancelled) {
    qz::FRMQZ_DATAFINELEGAME dialogo(programma.stato());
    programma.host->controls->whenModal("FRMQZ_DATAFINELEGAME", [&](HeadlessForm& form) {
        campo(form).type("30/06/2024");
        esegui(form);
    });
    dialogo.mostra();
    EXPECT_EQ(dialogo.DataFineLegame, "30/06/2024");
    qz::FRMQZ_DATAFINELEGAME altro(programma.stato());
    altro.DataFineLegame = "30/06/2024";
    programma.host->controls->whenModal("FRMQZ_DATAFINELEGAME", [&](HeadlessForm& form) { annulla(form); });
    altro.mostra();
    EXPECT_EQ(altro.DataFineLegame, "");
    EXPECT_EQ(testo(), "30/06/2024");
}

} // namespace

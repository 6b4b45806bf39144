// What a move says of itself: what its question is about, what the status line says when it is done, and where the
// moved node is found again.

#include "component/Programma.h"
#include "component/data/CaricaDistinta.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using platform::headless::HeadlessButton;
using platform::headless::HeadlessDateField;
using platform::headless::HeadlessForm;
using prove::Programma;

namespace {

/// Origin 10: 1 (101) with 2 (102) with 3 (103) and 4 (104). Destination 20: 11 (201) with 12 (202). The moved node is
/// 2, its new parent 12.
class EsitoSpostamentoTest : public testing::Test {
protected:
    EsitoSpostamentoTest() {
        programma.tabelle.tipi = {{10, "A", "X"}, {20, "B", "Y"}};
        programma.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102},   {3, 10, 2, 103},
                                  {4, 10, 2, 104},  {11, 20, {}, 201}, {12, 20, 11, 202}};
        programma.tabelle.collega(*programma.db);
        programma.mostra();
        carica(2, 12);
    }

    void carica(std::int64_t daSpostare, std::int64_t sotto) {
        qz::CaricaDistinta(programma.stato(), programma.stato().origine, "10");
        qz::CaricaDistinta(programma.stato(), programma.stato().destinazione, "20");
        orig().focusKey(daSpostare);
        dest().focusKey(sotto);
        riposa();
    }
    platform::headless::HeadlessTree& orig() { return programma.albero("TRW_ELEMDISTINTAORIG"); }
    platform::headless::HeadlessTree& dest() { return programma.albero("TRW_ELEMDISTINTADEST"); }
    /// What the focus raises once it has come to rest.
    void riposa() {
        orig().settle();
        dest().settle();
    }
    void premi(const std::string& pulsante, int risposta) {
        programma.host->answers = {risposta};
        programma.host->messages.clear();
        if (pulsante == "CMD_SPOSTAVALID")
            programma.host->controls->whenModal("FRMQZ_DATAFINELEGAME", [this](HeadlessForm& dialogo) {
                if (data)
                    dialogo.control<HeadlessDateField>("TXT_DATACHIUSURALEGAME").setText(*data);
                dialogo.control<HeadlessButton>(data ? "CMD_ESEGUI" : "CMD_ANNULLA").click();
            });
        programma.pulsante(pulsante).click();
        riposa();
    }
    std::string dettaglio() const {
        return programma.host->messages.empty() ? "no box" : programma.host->messages.front().detail;
    }
    std::string riga() const { return programma.host->statusText; }
    std::int64_t inFuoco() { return dest().key(dest().focused()); }

    Programma programma;
    std::optional<std::string> data;
};

const std::string daFare = "Sposta: 102 SOGGETTO 102 (3 nodi)  →  sotto 202 SOGGETTO 202";
const std::string giorni = "legami attuali fino al 30/06/2027, nuovi dal 01/07/2027";
const std::string annullato = "Spostamento annullato: nessuna modifica.";

TEST_F(EsitoSpostamentoTest, TheQuestionSaysWhatItIsAbout) {
    EXPECT_EQ(riga(), daFare);
    premi("CMD_SPOSTASTRU", 7);
    EXPECT_EQ(programma.messaggi().front(), "Spostare il nodo 102 e tutti i suoi figli?");
    EXPECT_EQ(dettaglio(), daFare);
    EXPECT_EQ(riga(), daFare) << "a no is no refusal";
}

TEST_F(EsitoSpostamentoTest, WithValidityTheQuestionSaysTheDaysAlsoAfterACancelledDialog) {
    data = "30/06/2027";
    premi("CMD_SPOSTAVALID", 7);
    EXPECT_EQ(dettaglio(), daFare + "\n" + giorni);
    data.reset();
    premi("CMD_SPOSTAVALID", 7);
    EXPECT_EQ(dettaglio(), daFare + "\n" + giorni);
}

TEST_F(EsitoSpostamentoTest, ADetailCountsForOneBox) {
    premi("CMD_SPOSTASTRU", 7);
    programma.host->messages.clear();
    programma.classe->form()->stato().messaggio("Altro", contract::message::ok);
    EXPECT_EQ(dettaglio(), "");
}

TEST_F(EsitoSpostamentoTest, WhatWasDoneStaysUntilTheNextCommand) {
    premi("CMD_SPOSTASTRU", 6);
    const std::string fatto = "Spostati 3 nodi sotto 202 SOGGETTO 202";
    EXPECT_EQ(riga(), fatto);
    riposa();
    EXPECT_EQ(riga(), fatto);
    premi("CMD_SPOSTASTRU", 7);
    EXPECT_EQ(riga(), "Sposta: 101 SOGGETTO 101 (1 nodo)  →  sotto 202 SOGGETTO 202");
}

TEST_F(EsitoSpostamentoTest, ItEndsWhenTheUserChoosesAnotherNode) {
    premi("CMD_SPOSTASTRU", 6);
    dest().focusKey(11);
    riposa();
    EXPECT_EQ(riga(), "Sposta: 101 SOGGETTO 101 (1 nodo)  →  sotto 201 SOGGETTO 201");
    dest().focusKey(12);
    riposa();
    EXPECT_EQ(riga(), "Sposta: 101 SOGGETTO 101 (1 nodo)  →  sotto 202 SOGGETTO 202") << "and does not come back";
}

TEST_F(EsitoSpostamentoTest, OneNodeIsSpokenOfAsOne) {
    carica(4, 12);
    premi("CMD_SPOSTASTRU", 6);
    EXPECT_EQ(riga(), "Spostato 1 nodo sotto 202 SOGGETTO 202");
}

TEST_F(EsitoSpostamentoTest, WithValidityTheDaysAreSaid) {
    data = "30/06/2027";
    premi("CMD_SPOSTAVALID", 6);
    EXPECT_EQ(riga(), "Spostati 3 nodi sotto 202 SOGGETTO 202: " + giorni);
}

TEST_F(EsitoSpostamentoTest, WhatACheckLeavesBehindIsCounted) {
    // 3 can not go under 102, which hangs below the same account in the destination.
    programma.tabelle.nodi.push_back({40, 20, {}, 103});
    programma.tabelle.nodi.push_back({41, 20, 40, 102});
    carica(2, 12);
    premi("CMD_SPOSTASTRU", 6);
    EXPECT_EQ(riga(), "Spostati 2 nodi sotto 202 SOGGETTO 202; 1 nodo resta dov'era");
}

TEST_F(EsitoSpostamentoTest, ARefusalChangesNothingAndSaysSo) {
    programma.tabelle.nodi[1].account = 201; // the destination hangs below the same account
    carica(2, 12);
    premi("CMD_SPOSTASTRU", 6);
    EXPECT_EQ(riga(), annullato);
    EXPECT_EQ(programma.host->messages.back().detail, "Sposta: 201 SOGGETTO 201 (3 nodi)  →  sotto 202 SOGGETTO 202");
    premi("CMD_SPOSTAVALID", 6); // without a day
    EXPECT_EQ(programma.messaggi().front(), "Data fine legame non impostata!");
    EXPECT_EQ(riga(), annullato);
    data = "01/01/1999";
    premi("CMD_SPOSTAVALID", 6); // too early
    EXPECT_EQ(riga(), annullato);
}

TEST_F(EsitoSpostamentoTest, TheMovedNodeIsShown) {
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    EXPECT_EQ(riga(), "Nessun nodo è stato ancora spostato.");
    EXPECT_EQ(inFuoco(), 12);
    premi("CMD_SPOSTASTRU", 6);
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    riposa();
    EXPECT_EQ(inFuoco(), 2);
    EXPECT_EQ(riga(), "Nodo spostato: 102 SOGGETTO 102, sotto 202 SOGGETTO 202");
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    dest().focusKey(11);
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    EXPECT_EQ(inFuoco(), 2);
    qz::CaricaDistinta(programma.stato(), programma.stato().destinazione, "10");
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    EXPECT_EQ(riga(), "Il nodo spostato non è nella distinta di destinazione visualizzata.");
}

TEST_F(EsitoSpostamentoTest, WhatACommandOfTheMenuSaysStaysUntilTheNextCommandToo) {
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    riposa();
    EXPECT_EQ(riga(), "Le distinte sono state rilette.");
    premi("CMD_SPOSTASTRU", 7);
    EXPECT_EQ(riga(), daFare);
}

TEST_F(EsitoSpostamentoTest, ARefusalWithValidityIsAboutTheDaysThatWereGiven) {
    programma.tabelle.nodi.push_back({40, 20, 11, 103}); // linked there already
    carica(2, 12);
    data = "30/06/2027";
    premi("CMD_SPOSTAVALID", 6);
    EXPECT_EQ(riga(), annullato);
    EXPECT_EQ(programma.host->messages.back().style, contract::message::critical);
    EXPECT_EQ(programma.host->messages.back().detail, daFare + "\n" + giorni);
}

TEST_F(EsitoSpostamentoTest, AfterAMoveWithValidityTheNewLinkIsShown) {
    programma.tabelle.nodi.push_back({13, 20, 12, 102}); // an older link of the same account
    programma.tabelle.nodi.back().inizio = "01/01/2000";
    programma.tabelle.nodi.back().fine = "31/12/2000";
    carica(2, 12);
    data = "30/06/2027";
    premi("CMD_SPOSTAVALID", 6);
    ASSERT_EQ(riga(), "Spostati 3 nodi sotto 202 SOGGETTO 202: " + giorni);
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    EXPECT_EQ(programma.tabelle.il(inFuoco()).account, 102);
    EXPECT_EQ(programma.tabelle.il(inFuoco()).inizio, "01/07/2027");
}

TEST_F(EsitoSpostamentoTest, ARefusedMoveLeavesTheNodeOfTheOneBefore) {
    premi("CMD_SPOSTASTRU", 6);
    carica(1, 12);
    programma.tabelle.nodi[0].account = 202;
    carica(1, 12);
    premi("CMD_SPOSTASTRU", 6);
    EXPECT_EQ(riga(), annullato);
    EXPECT_TRUE(programma.classe->menuCommand("mnuMostraSpostato"));
    EXPECT_EQ(inFuoco(), 2);
}

} // namespace

// A move from a screen that has grown old: what another user did to the two nodes meanwhile is never undone.

#include "component/SpostaStruttura.h"
#include "component/SpostaValidita.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using prove::NodoFinto;
using prove::SpostaStrutturaTest;
using prove::SpostaValiditaTest;

namespace {

using Testi = std::vector<std::string>;

std::string modificato(int account) {
    return "Il nodo " + std::to_string(account) +
           " è stato modificato da un altro utente: premere F5 per aggiornare. Spostamento annullato.\n";
}

class SchermoVecchioTest : public SpostaStrutturaTest {
protected:
    /// What another user changes after the two trees were loaded.
    void altroUtente(std::int64_t id, const std::optional<std::int64_t>& padre, const std::string& inizio,
                     const std::string& fine) {
        auto& nodo = scena.tabelle.il(id);
        nodo.padre = padre;
        nodo.inizio = inizio;
        nodo.fine = fine;
        prima = scena.tabelle.nodi;
    }
    void rifiutaCon(const std::string& testo) {
        premi();
        EXPECT_EQ(scena.messaggi().back(), testo);
        EXPECT_EQ(scena.host->messages.back().style, 16);
        comePrima();
    }
};

TEST_F(SchermoVecchioTest, ANodeThatWasMovedWithinItsDistinta) {
    altroUtente(2, 5, "01/01/2020", "31/12/2099");
    rifiutaCon(modificato(102));
    // The trees were read again: what is pressed now is meant.
    scena.host->answers = {6};
    premi();
    EXPECT_EQ(scena.tabelle.il(2).padre, 12);
}

TEST_F(SchermoVecchioTest, ANodeThatWasMadeARootNode) {
    altroUtente(2, {}, "01/01/2020", "31/12/2099");
    rifiutaCon(modificato(102));
}

TEST_F(SchermoVecchioTest, ANodeWhoseStartWasChanged) {
    altroUtente(2, 1, "02/01/2020", "31/12/2099");
    rifiutaCon(modificato(102));
}

TEST_F(SchermoVecchioTest, ANodeWhoseEndWasChanged) {
    altroUtente(2, 1, "01/01/2020", "30/06/2024");
    rifiutaCon(modificato(102));
}

TEST_F(SchermoVecchioTest, ANodeWhoseEndWasEmptied) {
    altroUtente(2, 1, "01/01/2020", "");
    rifiutaCon(modificato(102));
}

TEST_F(SchermoVecchioTest, ADestinationThatWasMovedOrChanged) {
    altroUtente(12, {}, "01/01/2020", "31/12/2099");
    rifiutaCon(modificato(202));
    scena.host->answers = {6};
    altroUtente(12, {}, "01/01/2020", "30/06/2024");
    rifiutaCon(modificato(202));
}

TEST_F(SchermoVecchioTest, BothNodesEachOnALine) {
    altroUtente(2, 5, "01/01/2020", "31/12/2099");
    altroUtente(12, 11, "01/01/2021", "31/12/2099");
    rifiutaCon(modificato(102) + modificato(202));
}

TEST_F(SchermoVecchioTest, ANodeThatIsBothIsNamedOnce) {
    prepara(2);
    scena.carica(scena.stato.destinazione, "10", 2);
    altroUtente(2, 5, "01/01/2020", "31/12/2099");
    rifiutaCon(modificato(102));
}

TEST_F(SchermoVecchioTest, ANodeThatLeftTheDistintaHasItsOwnText) {
    scena.tabelle.il(2).distinta = 20;
    altroUtente(2, 11, "01/01/2021", "31/12/2099");
    rifiutaCon("Il nodo 102 non appartiene più alla distinta di origine visualizzata: è stato spostato o eliminato da "
               "un altro utente. Spostamento annullato.\n");
}

TEST_F(SchermoVecchioTest, WhatChangedElsewhereIsNoMatter) {
    altroUtente(4, {}, "01/01/2021", "30/06/2024");
    altroUtente(11, {}, "01/01/2021", "30/06/2024");
    premi();
    EXPECT_EQ(scena.tabelle.il(2).padre, 12);
}

TEST_F(SchermoVecchioTest, EmptyDatesAndNoParentAreWhatTheyWere) {
    scena.tabelle.il(5).inizio.clear();
    scena.tabelle.il(5).fine.clear();
    prepara(5);
    premi();
    EXPECT_EQ(scena.tabelle.il(5).padre, 12);
}

class SchermoVecchioConValiditaTest : public SpostaValiditaTest {};

TEST_F(SchermoVecchioConValiditaTest, TheNewLinksNeverTakeAnOldEnd) {
    scena.tabelle.il(2).fine = "31/12/2025";
    prima = scena.tabelle.nodi;
    premi();
    EXPECT_EQ(scena.messaggi().back(), modificato(102));
    comePrima();
}

} // namespace

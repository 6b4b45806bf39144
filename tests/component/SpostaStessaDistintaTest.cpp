#include "component/IstruzioniAttese.h"
#include "component/SpostaStruttura.h"
#include "component/SpostaValidita.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::SpostaStrutturaTest;
using prove::SpostaValiditaTest;
namespace attesa = prove::attesa;

namespace {

using Testi = std::vector<std::string>;

const std::string ricorsivo = ": legame presente in un nodo padre nella struttura.\n";

/// Within one distinta the links themselves are followed up as well, once the accounts have been found in order.
class NellaStessaDistintaTest : public SpostaStrutturaTest {
protected:
    void prepara(std::int64_t origine, std::int64_t destinazione) {
        scena.carica(scena.stato.origine, "10", origine);
        scena.carica(scena.stato.destinazione, "10", destinazione);
        scena.host->answers = {6};
        prima = scena.tabelle.nodi;
        scena.db->take();
    }
};

TEST_F(NellaStessaDistintaTest, FollowsTheLinksUpAfterTheAccounts) {
    prepara(5, 3);
    premi();
    const auto inviate = scena.db->take();
    const Testi attese{"BeginTrans",
                       attesa::rilettura(5, 3),
                       attesa::contaDitta(10),
                       attesa::padri(103, 10),
                       attesa::padri(102, 10),
                       attesa::padri(101, 10),
                       attesa::nodo(3),
                       attesa::nodo(2),
                       attesa::nodo(1),
                       attesa::contaNodi(10),
                       attesa::decodifica(5),
                       attesa::figli(5, 10),
                       attesa::spostaNodo(5, 3, 10, 10),
                       "CommitTrans"};
    ASSERT_GE(inviate.size(), attese.size());
    EXPECT_EQ((Testi{inviate.begin(), inviate.begin() + static_cast<std::ptrdiff_t>(attese.size())}), attese);
    EXPECT_EQ(scena.tabelle.il(5).padre, 3);
}

// The first link of 105 is a root, where the walk over the accounts ends; its second one hangs below 2.
TEST_F(NellaStessaDistintaTest, NeverClosesABranchIntoARing) {
    scena.tabelle.nodi.push_back({6, 10, 4, 105});
    for (const std::int64_t nodo : {1, 2, 4}) {
        prepara(nodo, 6);
        premi();
        comePrima();
        EXPECT_EQ(scena.messaggi().back(), "Cliente " + std::to_string(100 + nodo) + ricorsivo) << nodo;
    }
}

TEST_F(NellaStessaDistintaTest, ARingThatIsThereAlreadyEndsTheWay) {
    scena.tabelle.nodi.push_back({6, 10, 7, 106});
    scena.tabelle.nodi.push_back({7, 10, 6, 107});
    prepara(5, 4);
    scena.tabelle.nodi[2].padre = 7;
    prima = scena.tabelle.nodi;
    premi();
    EXPECT_EQ(scena.tabelle.il(5).padre, 4);
    EXPECT_FALSE(scena.db->InTransaction());
}

class NellaStessaDistintaConValiditaTest : public SpostaValiditaTest {};

TEST_F(NellaStessaDistintaConValiditaTest, NeverHangsABranchBelowItself) {
    scena.tabelle.nodi.push_back({5, 10, {}, 105});
    scena.tabelle.nodi.push_back({6, 10, 4, 105});
    for (const std::int64_t nodo : {1, 2, 4}) {
        prepara(nodo);
        scena.carica(scena.stato.destinazione, "10", 6);
        premi();
        comePrima();
        EXPECT_EQ(scena.messaggi().back(), "Cliente " + std::to_string(100 + nodo) + ricorsivo) << nodo;
    }
}

} // namespace

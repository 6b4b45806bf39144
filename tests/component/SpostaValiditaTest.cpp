// The command of the move with validity, and the order of what it sends.

#include "component/SpostaValidita.h"
#include "component/IstruzioniAttese.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using prove::giorno;
using prove::Scena;
using prove::SpostaValiditaTest;
namespace attesa = prove::attesa;

namespace {

using Testi = std::vector<std::string>;

const std::string domanda = "Spostare il nodo 102 e tutti i suoi figli?";

TEST_F(SpostaValiditaTest, AsksForTheDateThenForConfirmation) {
    premi();
    EXPECT_EQ(dialoghi, 1);
    EXPECT_EQ(scena.messaggi(), Testi{domanda});
    EXPECT_EQ(scena.host->messages[0].style, 4);
}

TEST_F(SpostaValiditaTest, RefusesAnEmptyDate) {
    for (const auto* testo : {"", "   "}) {
        dataScelta = testo;
        premi();
        EXPECT_EQ(scena.messaggi().back(), "Data fine legame non impostata!");
        EXPECT_EQ(scena.host->messages.back().style, 48);
    }
    EXPECT_EQ(scena.host->messages.size(), 2U);
    comePrima();
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(SpostaValiditaTest, AsksForTheDateEvenWithAnEmptyOrigin) {
    scena.carica(scena.stato.origine, "30");
    dataScelta.reset();
    premi();
    EXPECT_EQ(dialoghi, 1);
    EXPECT_EQ(scena.messaggi(), Testi{"Data fine legame non impostata!"});
}

TEST_F(SpostaValiditaTest, RefusesADateBeforeTheStartOfTheOrigin) {
    dataScelta = "31/12/2019";
    premi();
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione la data di fine legame inserita è minore della data inizio legame "
                                      "del nodo di origine."});
    EXPECT_EQ(scena.host->messages[0].style, 48);
    comePrima();
}

TEST_F(SpostaValiditaTest, AcceptsTheStartDayOfTheOrigin) {
    dataScelta = "01/01/2020";
    premi();
    EXPECT_EQ(fineDi(2), "01/01/2020");
    EXPECT_NE(copia(102, "02/01/2020"), nullptr);
}

TEST_F(SpostaValiditaTest, StopsSilentlyOnAnEmptySide) {
    scena.carica(scena.stato.destinazione, "30");
    premi();
    scena.carica(scena.stato.destinazione, "20");
    scena.carica(scena.stato.origine, "30");
    premi();
    EXPECT_TRUE(scena.host->messages.empty());
    EXPECT_TRUE(scena.db->take().empty());
    comePrima();
}

TEST_F(SpostaValiditaTest, StopsSilentlyOnDifferingKinds) {
    scena.stato.destinazione.TipoCF = 1;
    premi();
    EXPECT_TRUE(scena.host->messages.empty());
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(SpostaValiditaTest, DoesNothingOnNo) {
    scena.host->answers = {7};
    premi();
    comePrima();
    EXPECT_TRUE(scena.db->take().empty());
    EXPECT_EQ(scena.stato.DataFineLegame, "30/06/2024");
}

TEST_F(SpostaValiditaTest, GoesOnWithTheTextOfTheMoveBeforeWhenTheDialogIsCancelled) {
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE = giorno("31/12/2030");
    premi();
    EXPECT_EQ(scena.stato.DataFineLegame, "31/12/2030");
    // The next command goes on with the end date of those new links.
    dataScelta.reset();
    scena.tabelle.nodi.push_back({50, 10, {}, 150});
    prepara(50, 11);
    scena.stato.parametri.DataFissaFINE = giorno("31/12/2040");
    premi();
    EXPECT_EQ(fineDi(50), "31/12/2030");
}

TEST_F(SpostaValiditaTest, ComparesTheDateBeforeItLooksAtTheSides) {
    dataScelta = "31/12/2019";
    scena.stato.destinazione.TipoCF = 1;
    premi();
    ASSERT_EQ(scena.messaggi().size(), 1U);
    EXPECT_EQ(scena.host->messages[0].style, 48);
    scena.stato.destinazione.TipoCF = 0;
    scena.carica(scena.stato.destinazione, "30");
    premi();
    EXPECT_EQ(scena.messaggi().size(), 2U);
}

/// Notes each operation together with the number of statements sent before it.
class FlussoAnnotato : public contract::WorkflowState {
public:
    explicit FlussoAnnotato(const Scena& scena) : scena_(scena) {}

    std::string GetNewGUID() override {
        nota("GetNewGUID");
        return "GUID-" + std::to_string(++fatti_);
    }
    void DuplicaStato(std::string_view da, std::string_view a) override {
        nota("DuplicaStato " + std::string(da) + " " + std::string(a));
    }
    void GetDefaultFlussoStato() override { nota("GetDefaultFlussoStato"); }
    void ConfermaStato() override { nota("ConfermaStato"); }
    std::string GetDescrizioneStatoFromGUID(std::string_view) override { return {}; }
    std::vector<std::string> descriptions(const std::vector<std::string>& guid) override {
        return std::vector<std::string>(guid.size());
    }

    /// The statements with the operations at their places.
    Testi tra(const Testi& istruzioni, std::size_t prima) const {
        Testi tutto;
        auto nota = note_.begin();
        for (std::size_t i = 0; i <= istruzioni.size(); ++i) {
            for (; nota != note_.end() && nota->first == prima + i; ++nota)
                tutto.push_back(nota->second);
            if (i < istruzioni.size())
                tutto.push_back(istruzioni[i]);
        }
        return tutto;
    }

private:
    void nota(const std::string& operazione) { note_.emplace_back(scena_.db->operations(), operazione); }

    const Scena& scena_;
    std::vector<std::pair<std::size_t, std::string>> note_;
    int fatti_ = 0;
};

TEST_F(SpostaValiditaTest, SendsItsStatementsAndStateOperationsInOrder) {
    scena.tabelle.il(2).guid = "GUID-DEL-NODO";
    prepara();
    const auto annotato = std::make_shared<FlussoAnnotato>(scena);
    scena.stato.campoStato->setObject(annotato);
    const auto giaInviate = scena.db->operations();
    premi();
    const auto inviate = scena.db->take();
    const auto dal = "01/07/2024";
    const auto al = "31/12/2099";
    const Testi attese{"BeginTrans", attesa::rilettura(2, 11),
                       // 102 under 201, which hangs under nothing; its copy comes before the walk
                       attesa::contaDitta(10), attesa::padri(201, 20), attesa::chiudi(2, 10, "30/06/2024"),
                       attesa::nodo(11), attesa::sovrapposti(102, dal, al), "GetNewGUID",
                       attesa::inserisci(102, 11, 20, dal, al, "GUID-1"), "DuplicaStato GUID-DEL-NODO GUID-1",
                       attesa::contaNodi(10),
                       // Children of 2, whose copy is 12: 103 under 102
                       attesa::decodifica(2, dal), attesa::figli(2, 10), attesa::contaDitta(10), attesa::padri(102, 20),
                       attesa::padri(201, 20), attesa::chiudi(3, 10, "30/06/2024"), attesa::nodo(12),
                       attesa::sovrapposti(103, dal, al), "GetNewGUID",
                       attesa::inserisci(103, 12, 20, dal, al, "GUID-2"), "DuplicaStato GUID-DEL-NODO GUID-2",
                       // Children of 3, whose copy is 13: 104 under 103
                       attesa::decodifica(3, dal), attesa::figli(3, 10), attesa::contaDitta(10), attesa::padri(103, 20),
                       attesa::padri(102, 20), attesa::padri(201, 20), attesa::chiudi(4, 10, "30/06/2024"),
                       attesa::nodo(13), attesa::sovrapposti(104, dal, al), "GetNewGUID",
                       attesa::inserisci(104, 13, 20, dal, al, "GUID-3"), "DuplicaStato GUID-DEL-NODO GUID-3",
                       // Children of 4: none
                       attesa::decodifica(4, dal), attesa::figli(4, 10), "CommitTrans"};
    const auto tutto = annotato->tra(inviate, giaInviate);
    ASSERT_EQ(tutto.size(), attese.size() + 4);
    EXPECT_EQ((Testi{tutto.begin(), tutto.end() - 4}), attese);
    EXPECT_EQ(tutto[attese.size()], attesa::divisioneOrig + "10");
    EXPECT_TRUE(tutto[attese.size() + 1].starts_with(attesa::nodi));
    EXPECT_EQ(tutto[attese.size() + 2], attesa::divisioneDest + "20");
    EXPECT_TRUE(tutto[attese.size() + 3].starts_with(attesa::nodi));
}

} // namespace

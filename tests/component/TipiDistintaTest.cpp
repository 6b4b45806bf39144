#include "component/data/TipiDistinta.h"
#include "component/Scena.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::Scena;

namespace {

using Testi = std::vector<std::string>;

class TipiDistintaTest : public testing::Test {
protected:
    TipiDistintaTest() {
        scena.tabelle.tipi = {
            {10, "A", "NORD  ", 0}, {11, "B", "SUD", 0}, {20, "C", "VENETO", 1}, {21, "D", "LAZIO ", 1}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 11, {}, 103}, {4, 20, {}, 104}, {5, 21, {}, 105}};
        origine.tipi->Click = [this] { qz::TipoScelto(scena.stato, origine); };
        destinazione.tipi->Click = [this] { qz::TipoScelto(scena.stato, destinazione); };
    }

    std::string didascalia(const qz::Lato& lato) const { return lato.didascaliaDistinta->caption(); }
    void soloFornitori() {
        std::erase_if(scena.tabelle.tipi, [](const auto& tipo) { return tipo.tipoCF == 0; });
    }

    Scena scena;
    qz::Lato& origine = scena.stato.origine;
    qz::Lato& destinazione = scena.stato.destinazione;
};

TEST_F(TipiDistintaTest, FillsBothListsAlike) {
    qz::InizializzaDistinte(scena.stato);
    const std::vector<Testi> attesi{
        {"P0", "Clienti", "", "close", "close"},     {"C10", "A-NORD  ", "P0", "schema", "open"},
        {"C11", "B-SUD", "P0", "schema", "open"},    {"P1", "Fornitori", "", "close", "close"},
        {"F20", "C-VENETO", "P1", "schema", "open"}, {"F21", "D-LAZIO ", "P1", "schema", "open"}};
    for (auto* lato : {&origine, &destinazione}) {
        std::vector<Testi> voci;
        for (std::size_t i = 1; i <= lato->tipi->count(); ++i) {
            const auto voce = lato->tipi->entry(i);
            voci.push_back({voce.key, voce.text, voce.parent, voce.image, voce.selectedImage});
        }
        EXPECT_EQ(voci, attesi);
    }
}

TEST_F(TipiDistintaTest, ReadsCustomersThenSuppliersThenLoadsOriginAndDestination) {
    qz::InizializzaDistinte(scena.stato);
    const auto istruzioni = scena.db->take();
    ASSERT_EQ(istruzioni.size(), 6U);
    EXPECT_TRUE(istruzioni[0].ends_with("QZ01_INDTIPOSOGG = 0 "));
    EXPECT_TRUE(istruzioni[1].ends_with("QZ01_INDTIPOSOGG = 1 "));
    EXPECT_EQ(istruzioni[2], " SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 10");
    EXPECT_EQ(istruzioni[4], " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 10");
}

TEST_F(TipiDistintaTest, SelectsTheFirstCustomerTypeAndCaptionsTheOrigin) {
    scena.stato.selezioneNascosta = true;
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.tipi->selected()->key, "C10");
    EXPECT_EQ(destinazione.tipi->selected()->key, "C10");
    EXPECT_EQ(origine.IdDistinta, "10");
    EXPECT_EQ(destinazione.IdDistinta, "10");
    EXPECT_EQ(didascalia(origine), "DISTINTA CLIENTI        A-NORD");
    EXPECT_EQ(didascalia(destinazione), "");
    EXPECT_FALSE(scena.stato.selezioneNascosta);
}

TEST_F(TipiDistintaTest, ClearsFilledListsWithTheFormLocked) {
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(scena.form().locks(), 0);
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(scena.form().locks(), 2);
    EXPECT_EQ(scena.form().lockDepth(), 0);
    EXPECT_EQ(origine.tipi->count(), 6U);
}

TEST_F(TipiDistintaTest, RefreshesBothLists) {
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(scena.tipi(origine).refreshes(), 1);
    EXPECT_EQ(scena.tipi(destinazione).refreshes(), 1);
}

TEST_F(TipiDistintaTest, LoadsNothingForACompanyWithoutCustomerTypes) {
    soloFornitori();
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.tipi->selected()->key, "P1");
    EXPECT_EQ(scena.db->take().size(), 2U);
    EXPECT_EQ(origine.albero->nodeCount(), 0U);
    EXPECT_EQ(destinazione.albero->nodeCount(), 0U);
    EXPECT_EQ(didascalia(origine), "");
    EXPECT_EQ(didascalia(destinazione), "");
}

TEST_F(TipiDistintaTest, ShowsTheTwoGroupsOfACompanyWithoutTypes) {
    scena.tabelle.tipi.clear();
    qz::InizializzaDistinte(scena.stato);
    ASSERT_EQ(origine.tipi->count(), 2U);
    EXPECT_EQ(origine.tipi->entry(1).text, "Clienti");
    EXPECT_EQ(origine.tipi->entry(2).text, "Fornitori");
    EXPECT_EQ(destinazione.tipi->count(), 2U);
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_F(TipiDistintaTest, TakesTheKindFromTheGroupOfTheTypeClicked) {
    qz::InizializzaDistinte(scena.stato);
    scena.tipi(destinazione).clickEntry("F21");
    EXPECT_EQ(destinazione.TipoCF, 1);
    EXPECT_EQ(origine.TipoCF, 0);
    EXPECT_EQ(destinazione.IdDistinta, "21");
    EXPECT_EQ(prove::nodiDi(*destinazione.albero), std::vector<std::int64_t>{5});
}

TEST_F(TipiDistintaTest, CaptionsTheDestinationByTheLetterOfItsType) {
    qz::InizializzaDistinte(scena.stato);
    scena.tipi(destinazione).clickEntry("F21");
    EXPECT_EQ(didascalia(destinazione), "DISTINTA FORNITORI      D-LAZIO");
    scena.tipi(destinazione).clickEntry("C11");
    EXPECT_EQ(didascalia(destinazione), "DISTINTA CLIENTI        B-SUD");
    EXPECT_EQ(didascalia(origine), "DISTINTA CLIENTI        A-NORD");
}

TEST_F(TipiDistintaTest, CaptionsTheDestinationForASupplierTypeClickedOnTheOrigin) {
    qz::InizializzaDistinte(scena.stato);
    scena.tipi(destinazione).clickEntry("C11");
    scena.tipi(origine).clickEntry("F20");
    EXPECT_EQ(prove::nodiDi(*origine.albero), std::vector<std::int64_t>{4});
    EXPECT_EQ(origine.TipoCF, 1);
    EXPECT_EQ(didascalia(origine), "DISTINTA CLIENTI        A-NORD");
    EXPECT_EQ(didascalia(destinazione), "DISTINTA FORNITORI      B-SUD");
}

TEST_F(TipiDistintaTest, ChangesTheKindAloneForAGroupClicked) {
    qz::InizializzaDistinte(scena.stato);
    scena.db->take();
    scena.tipi(origine).clickEntry("P1");
    EXPECT_EQ(origine.TipoCF, 1);
    EXPECT_EQ(origine.IdDistinta, "10");
    EXPECT_EQ(origine.albero->nodeCount(), 2U);
    EXPECT_TRUE(scena.db->take().empty());
    EXPECT_EQ(didascalia(origine), "DISTINTA CLIENTI        A-NORD");
    scena.tipi(origine).clickEntry("P0");
    EXPECT_EQ(origine.TipoCF, 0);
}

TEST_F(TipiDistintaTest, KeepsTheEntriesAddedBeforeAnError) {
    scena.db->failNth(2, {"42000", 1, "guasto", contract::ErrorCategory::other});
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(scena.errori(), Testi{"Inizializza Distinte"});
    EXPECT_EQ(origine.tipi->count(), 4U);
    EXPECT_EQ(destinazione.tipi->count(), 4U);
}

TEST_F(TipiDistintaTest, FillsTheListsAfterARetry) {
    scena.db->failNth(1, {"42000", 1, "guasto", contract::ErrorCategory::other});
    scena.host->answers = {4};
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.tipi->count(), 6U);
}

TEST_F(TipiDistintaTest, ReportsAClickWithoutSelection) {
    qz::TipoScelto(scena.stato, origine);
    qz::TipoScelto(scena.stato, destinazione);
    EXPECT_EQ(scena.errori(), (Testi{"TRW_DISTINTEORIG_Click", "TRW_DISTINTEDEST_Click"}));
}

TEST_F(TipiDistintaTest, GivesBothSidesTheKindOfTheFirstType) {
    origine.TipoCF = 1;
    destinazione.TipoCF = 1;
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.TipoCF, 0);
    EXPECT_EQ(destinazione.TipoCF, 0);
}

TEST_F(TipiDistintaTest, KeepsKindsAndFlagWhereNothingIsLoaded) {
    soloFornitori();
    origine.TipoCF = 1;
    scena.stato.selezioneNascosta = true;
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.TipoCF, 1);
    EXPECT_EQ(destinazione.TipoCF, 0);
    EXPECT_TRUE(scena.stato.selezioneNascosta);
}

TEST_F(TipiDistintaTest, ChangesTheDestinationsKindAloneForAGroupClicked) {
    qz::InizializzaDistinte(scena.stato);
    scena.tipi(destinazione).clickEntry("F20");
    scena.db->take();
    scena.tipi(destinazione).clickEntry("P0");
    EXPECT_EQ(destinazione.TipoCF, 0);
    EXPECT_EQ(destinazione.IdDistinta, "20");
    EXPECT_EQ(didascalia(destinazione), "DISTINTA FORNITORI      C-VENETO");
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(TipiDistintaTest, CaptionsByTheDashAloneATypeWithoutCodeAndName) {
    scena.db->answer("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 1   AND QZ01_INDTIPOSOGG = 0 ",
                     platform::headless::rows({"QZ01_ID", "QZ01_CODICE", "QZ01_DESCR"},
                                              {{10, contract::Value::null(), contract::Value::null()}}));
    qz::InizializzaDistinte(scena.stato);
    EXPECT_EQ(origine.tipi->entry("C10").text, "-");
    EXPECT_EQ(didascalia(origine), "DISTINTA CLIENTI        -");
}

/// A list that can not be cleared.
class ListaRotta : public platform::headless::HeadlessTypeList {
public:
    using HeadlessTypeList::HeadlessTypeList;
    void clear() override { throw contract::RuntimeError(5, "x"); }
};

TEST_F(TipiDistintaTest, LeavesTheFormUnlockedWhenAListCanNotBeCleared) {
    for (const int risposta : {3, 5}) {
        platform::headless::FormContext contesto;
        ListaRotta lista("TRW_DISTINTEORIG", contesto);
        lista.add({"P0", "Clienti", "", "close", "close"});
        origine.tipi = &lista;
        scena.host->answers = {risposta};
        qz::InizializzaDistinte(scena.stato);
        EXPECT_EQ(scena.errori().front(), "Inizializza Distinte");
        EXPECT_GT(scena.form().locks(), 0);
        EXPECT_EQ(scena.form().lockDepth(), 0);
    }
}

} // namespace

#include "component/maintenance/Controlli.h"
#include "component/Scena.h"
#include "component/maintenance/LettureSingole.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::Value;
using prove::giorno;
using prove::Scena;
using qz::CodiceAccount;
using qz::DistintaId;
using qz::NodoId;
using qz::TipoCF;

namespace {

using Conto = std::optional<std::int64_t>;

std::optional<CodiceAccount> codice(Conto conto) {
    return conto ? std::optional(CodiceAccount(*conto)) : std::nullopt;
}

/// The checks as a move of the scene's form would call them; their reasons are added to a text.
class Chiamate {
public:
    Chiamate(Scena& scena, std::string& messaggio) : scena_(scena), messaggio_(messaggio), letture_(*scena.db) {}

    void ControllaRicorsione(Conto a, Conto b) {
        accettato(qz::ControllaRicorsione(letture_, ambito(), codice(a), codice(b)));
    }
    std::optional<qz::PadreDecodificato> DecodificaPadre(std::int64_t nodo, std::optional<contract::Date> inizio) {
        return qz::DecodificaPadre(letture_, NodoId(nodo), inizio);
    }
    bool ControllaLegami(const qz::LegameDaControllare& legame) {
        return accettato(qz::ControllaLegami(letture_, legame));
    }
    bool PremioDefinitivo(std::int64_t nodo, bool dataFine, std::string_view data) {
        return !accettato(qz::PremioDefinitivo(letture_, scena_.stato.ditta(), NodoId(nodo), dataFine, data));
    }
    std::int64_t ContaNodiDitta() { return qz::ContaNodiDitta(letture_, ambito()); }

private:
    qz::AmbitoSpostamento ambito() const {
        return {scena_.stato.ditta(), DistintaId(10), DistintaId(20), TipoCF(scena_.stato.origine.TipoCF),
                TipoCF(scena_.stato.destinazione.TipoCF)};
    }
    bool accettato(const qz::Motivo& motivo) {
        messaggio_ += motivo.value_or("");
        return !motivo;
    }

    Scena& scena_;
    std::string& messaggio_;
    qz::LettureSingole letture_;
};

/// Origin 10 and destination 20, both customers'.
class ControlliTest : public testing::Test {
protected:
    ControlliTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE"}, {20, "B", "DESTINAZIONE"}};
        scena.stato.origine.IdDistinta = "10";
        scena.stato.destinazione.IdDistinta = "20";
    }

    /// So many rows in the origin distinta, which bound the walks upward.
    void righeOrigine(int numero) {
        for (int i = 0; i < numero; ++i)
            scena.tabelle.nodi.push_back({1000 + i, 10, {}, 900});
    }
    std::size_t interrogazioni() const {
        return scena.db->statements(" SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02").size();
    }
    qz::LegameDaControllare legame(std::int64_t account, std::string_view inizio, std::string_view fine) const {
        return {1,
                NodoId(1),
                1,
                TipoCF(0),
                CodiceAccount(account),
                TipoCF(scena.stato.origine.TipoCF),
                giorno(inizio),
                std::string(fine)};
    }

    Scena scena;
    std::string messaggio;
    Chiamate controlli{scena, messaggio};
};

// Recursion

TEST_F(ControlliTest, RefusesAnAccountUnderItself) {
    controlli.ControllaRicorsione(123, 123);
    EXPECT_EQ(messaggio, "Cliente 123 coincide con la destinazione. Spostamento annullato.\n");
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(ControlliTest, LabelsByTheOriginsKind) {
    scena.stato.origine.TipoCF = 1;
    controlli.ControllaRicorsione(123, 123);
    EXPECT_EQ(messaggio, "Fornitore 123 coincide con la destinazione. Spostamento annullato.\n");
}

TEST_F(ControlliTest, AppendsToTheMessage) {
    messaggio = "prima\n";
    controlli.ControllaRicorsione(123, 123);
    EXPECT_EQ(messaggio, "prima\nCliente 123 coincide con la destinazione. Spostamento annullato.\n");
}

TEST_F(ControlliTest, FindsAnAncestorAtAnyHeight) {
    righeOrigine(10);
    for (std::int64_t i = 1; i <= 5; ++i)
        scena.tabelle.nodi.push_back({i, 20, i == 1 ? std::optional<std::int64_t>() : i - 1, 100 + i});
    for (const int antenato : {101, 102, 103, 104}) {
        messaggio.clear();
        controlli.ControllaRicorsione(antenato, 105);
        EXPECT_EQ(messaggio,
                  "Cliente " + std::to_string(antenato) + ": legame presente in un nodo padre nella struttura.\n");
    }
    messaggio.clear();
    controlli.ControllaRicorsione(106, 105);
    EXPECT_EQ(messaggio, "");
}

TEST_F(ControlliTest, CountsTheOriginBeforeItWalksTheDestination) {
    righeOrigine(3);
    scena.tabelle.nodi.push_back({1, 20, {}, 101});
    controlli.ControllaRicorsione(500, 101);
    const auto istruzioni = scena.db->take();
    ASSERT_EQ(istruzioni.size(), 2U);
    EXPECT_EQ(istruzioni[0],
              " SELECT Count(*) as Conta  FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 1   AND QZ02_ID_QZ01 = 10");
    EXPECT_TRUE(istruzioni[1].ends_with("QZ02_CLIFOR_CG44 = 101   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 0   AND "
                                        "QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01 = 20"));
}

TEST_F(ControlliTest, WalksTheAccountsOfTheDestinationsKind) {
    righeOrigine(3);
    scena.stato.destinazione.TipoCF = 1;
    controlli.ControllaRicorsione(500, 101);
    EXPECT_NE(scena.db->take().at(1).find("QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 1 "), std::string::npos);
}

TEST_F(ControlliTest, StopsWithoutAMessageAtTheCountOfTheOrigin) {
    // Seven levels in the destination; the account at the top is looked for.
    for (std::int64_t i = 1; i <= 7; ++i)
        scena.tabelle.nodi.push_back({i, 20, i == 1 ? std::optional<std::int64_t>() : i - 1, 100 + i});
    const auto trovato = [&](int righe) {
        std::erase_if(scena.tabelle.nodi, [](const auto& nodo) { return nodo.distinta == 10; });
        righeOrigine(righe);
        messaggio.clear();
        controlli.ControllaRicorsione(101, 107);
        return !messaggio.empty();
    };
    // With M = rows + 1 the walk asks for the heads 0 to M - 1: the sixth question finds the topmost account.
    EXPECT_FALSE(trovato(0));
    EXPECT_FALSE(trovato(4));
    EXPECT_TRUE(trovato(5));
    EXPECT_TRUE(trovato(6));
}

TEST_F(ControlliTest, AsksOnceWhenTheOriginHasNoRows) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}};
    controlli.ControllaRicorsione(500, 102);
    EXPECT_EQ(interrogazioni(), 1U);
    EXPECT_EQ(messaggio, "");
}

TEST_F(ControlliTest, ComparesTheFirstRowOfEachQuestionOnly) {
    righeOrigine(10);
    // Account 105 hangs under 102 first and under 103 second.
    scena.tabelle.nodi.insert(scena.tabelle.nodi.end(),
                              {{1, 20, {}, 102}, {2, 20, {}, 103}, {3, 20, 1, 105}, {4, 20, 2, 105}});
    controlli.ControllaRicorsione(102, 105);
    EXPECT_NE(messaggio, "");
    messaggio.clear();
    controlli.ControllaRicorsione(103, 105);
    EXPECT_EQ(messaggio, "");
}

TEST_F(ControlliTest, FollowsEveryParentOfAnAccount) {
    righeOrigine(10);
    // 105 hangs under 102 and 103; the account looked for is above 103.
    scena.tabelle.nodi.insert(scena.tabelle.nodi.end(),
                              {{1, 20, {}, 102}, {9, 20, {}, 200}, {2, 20, 9, 103}, {3, 20, 1, 105}, {4, 20, 2, 105}});
    controlli.ControllaRicorsione(200, 105);
    EXPECT_EQ(messaggio, "Cliente 200: legame presente in un nodo padre nella struttura.\n");
}

TEST_F(ControlliTest, QueuesNoParentsWhenTheFirstRowIsARootLink) {
    righeOrigine(10);
    // The first link of 105 is a root link: its other parents are not looked at.
    scena.tabelle.nodi.insert(scena.tabelle.nodi.end(),
                              {{3, 20, {}, 105}, {9, 20, {}, 200}, {2, 20, 9, 103}, {4, 20, 2, 105}});
    controlli.ControllaRicorsione(200, 105);
    EXPECT_EQ(messaggio, "");
    EXPECT_EQ(interrogazioni(), 1U);
}

TEST_F(ControlliTest, ComesToAnEndOnACycleOfTheDestination) {
    righeOrigine(20);
    scena.tabelle.nodi.insert(scena.tabelle.nodi.end(), {{1, 20, 2, 101}, {2, 20, 1, 102}});
    controlli.ControllaRicorsione(500, 101);
    EXPECT_EQ(messaggio, "");
    EXPECT_EQ(interrogazioni(), 21U);
}

TEST_F(ControlliTest, DropsAncestorsBeyondTheBound) {
    righeOrigine(2);
    scena.tabelle.nodi.push_back({50, 20, {}, 150});
    // Many parents at once: more than the queue can hold.
    for (std::int64_t i = 1; i <= 9; ++i) {
        scena.tabelle.nodi.push_back({i, 20, 50, 100 + i});
        scena.tabelle.nodi.push_back({20 + i, 20, i, 200});
    }
    controlli.ControllaRicorsione(500, 200);
    EXPECT_EQ(messaggio, "");
    EXPECT_EQ(interrogazioni(), 3U);
}

TEST_F(ControlliTest, TakesNoMissingAccountForEqual) {
    righeOrigine(3);
    scena.tabelle.nodi.insert(scena.tabelle.nodi.end(), {{1, 20, {}, {}}, {2, 20, 1, 102}});
    controlli.ControllaRicorsione({}, {});
    controlli.ControllaRicorsione({}, 102);
    EXPECT_EQ(messaggio, "");
    EXPECT_TRUE(scena.host->errors.empty());
}

// Decoded parent

TEST_F(ControlliTest, DecodesTheFirstLinkOfTheSameAccount) {
    scena.tabelle.nodi = {{5, 20, {}, 101}, {6, 10, {}, 101}, {7, 10, {}, 102}};
    const auto padre = controlli.DecodificaPadre(6, std::nullopt);
    ASSERT_TRUE(padre);
    EXPECT_EQ(padre->id, NodoId(5));
    EXPECT_EQ(padre->account, CodiceAccount(101));
    EXPECT_EQ(controlli.DecodificaPadre(7, std::nullopt)->id, NodoId(7));
}

TEST_F(ControlliTest, DecodesTheCopyThatStartsOnTheDate) {
    scena.tabelle.nodi = {{6, 10, {}, 101}, {8, 20, {}, 101, "01/07/2024"}};
    EXPECT_EQ(controlli.DecodificaPadre(6, giorno("01/07/2024"))->id, NodoId(8));
    EXPECT_FALSE(controlli.DecodificaPadre(6, giorno("02/07/2024")));
}

TEST_F(ControlliTest, DecodesNothingForANodeWithoutAccount) {
    scena.tabelle.nodi = {{6, 10, {}, {}}};
    EXPECT_FALSE(controlli.DecodificaPadre(6, std::nullopt));
}

// Overlaps

TEST_F(ControlliTest, ReportsAnOverlapWithItsParentAndPeriod) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102, "01/01/2024", "30/06/2024"}};
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "30/06/2024", "31/12/2024")));
    EXPECT_EQ(messaggio, "Cliente 102 già legato alla distinta B: Nodo padre 101 - SOGGETTO 101 nel periodo dal "
                         "01/01/2024 al 30/06/2024\n");
}

TEST_F(ControlliTest, NamesASupplierInItsReasons) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102, "01/01/2024", "30/06/2024"}};
    scena.stato.origine.TipoCF = 1;
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "30/06/2024", "31/12/2024")));
    EXPECT_EQ(messaggio, "Fornitore 102 già legato alla distinta B: Nodo padre 101 - SOGGETTO 101 nel periodo dal "
                         "01/01/2024 al 30/06/2024\n");
    messaggio.clear();
    auto sottoSeStesso = legame(101, "01/01/2024", "31/12/2024");
    sottoSeStesso.padre = NodoId(1);
    EXPECT_FALSE(controlli.ControllaLegami(sottoSeStesso));
    EXPECT_EQ(messaggio, "Fornitore 101 uguale al nodo padre, non è possibile salvare la struttura.\n");
}

TEST_F(ControlliTest, TrimsTheParentsAccountAndNothingElse) {
    scena.db->answer(" SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc,  QZ02",
                     platform::headless::rows({"Anagrafica", "RagSoc", "DataI", "DataF", "CodDistinta"},
                                              {{"  101 ", " ROSSI ", giorno("01/01/2024"), Value::null(), " B "}}));
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/12/2024")));
    EXPECT_EQ(messaggio, "Cliente 102 già legato alla distinta  B : Nodo padre 101 -  ROSSI  nel periodo dal "
                         "01/01/2024 al \n");
}

TEST_F(ControlliTest, CountsBothEndsOfAPeriod) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102, "01/02/2024", "30/06/2024"}};
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "30/06/2024", "31/12/2024"))); // starts on its last day
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "01/01/2024", "01/02/2024"))); // ends on its first day
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/12/2024"))); // encloses it
    EXPECT_FALSE(controlli.ControllaLegami(legame(102, "01/03/2024", "31/03/2024"))); // lies inside
    EXPECT_TRUE(controlli.ControllaLegami(legame(102, "01/07/2024", "31/12/2024")));
    EXPECT_TRUE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/01/2024")));
}

TEST_F(ControlliTest, DoesNotReportAnOverlappingRootLink) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, {}, 102}};
    EXPECT_TRUE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/12/2024")));
    EXPECT_EQ(messaggio, "");
}

TEST_F(ControlliTest, LooksAtTheFirstOverlappingLinkByDistintaOnly) {
    // A root link in distinta 10 comes before the link under a parent in distinta 20.
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}, {3, 10, {}, 102}};
    EXPECT_TRUE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/12/2024")));
}

TEST_F(ControlliTest, RefusesAParentOfTheSameAccount) {
    scena.tabelle.nodi = {{1, 20, {}, 101}};
    EXPECT_FALSE(controlli.ControllaLegami(legame(101, "01/01/2100", "31/12/2100")));
    EXPECT_EQ(messaggio, "Cliente 101 uguale al nodo padre, non è possibile salvare la struttura.\n");
}

TEST_F(ControlliTest, ReportsAnOverlapBeforeAParentOfTheSameAccount) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}};
    auto sottoSeStesso = legame(102, "01/01/2024", "31/12/2024");
    sottoSeStesso.padre = NodoId(2);
    EXPECT_FALSE(controlli.ControllaLegami(sottoSeStesso));
    EXPECT_EQ(messaggio, "Cliente 102 già legato alla distinta B: Nodo padre 101 - SOGGETTO 101 nel periodo dal "
                         "01/01/2020 al 31/12/2099\n");
}

TEST_F(ControlliTest, AsksForTheBonusLastAndInAnEditOnly) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}, {3, 20, 1, 102}};
    const auto premi = [&] { return scena.db->statements("SELECT TOP 1 *").size(); };
    auto modifica = legame(102, "01/01/2024", "31/12/2024");
    modifica.nodo = NodoId(2);
    EXPECT_FALSE(controlli.ControllaLegami(modifica)); // overlaps 3
    modifica.account = CodiceAccount(101);             // the parent's
    modifica.inizio = giorno("01/01/2100");
    modifica.fine = "31/12/2100";
    EXPECT_FALSE(controlli.ControllaLegami(modifica));
    EXPECT_EQ(premi(), 0U);
    modifica.account = CodiceAccount(103);
    EXPECT_TRUE(controlli.ControllaLegami(modifica));
    EXPECT_EQ(premi(), 1U);
    modifica.nodo.reset();
    EXPECT_TRUE(controlli.ControllaLegami(modifica));
    EXPECT_EQ(premi(), 1U);
}

TEST_F(ControlliTest, ReadsTheParentOfTheFormsCompanyAndTheOverlapsOfTheLinks) {
    auto altraDitta = legame(102, "01/01/2024", "31/12/2024");
    altraDitta.ditta = 7;
    altraDitta.tipo = TipoCF(1);
    EXPECT_TRUE(controlli.ControllaLegami(altraDitta));
    const auto istruzioni = scena.db->take();
    ASSERT_EQ(istruzioni.size(), 2U);
    EXPECT_NE(istruzioni[0].find("QZ02_DITTA_CG18 = 1 "), std::string::npos);
    EXPECT_NE(istruzioni[1].find("QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 7 "), std::string::npos);
    EXPECT_NE(istruzioni[1].find("QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 1 "), std::string::npos);
}

TEST_F(ControlliTest, ReadsTheParentThenTheOverlaps) {
    scena.tabelle.nodi = {{1, 20, {}, 101}};
    EXPECT_TRUE(controlli.ControllaLegami(legame(102, "01/01/2024", "31/12/2024")));
    const auto istruzioni = scena.db->take();
    ASSERT_EQ(istruzioni.size(), 2U);
    EXPECT_EQ(istruzioni[0], " SELECT * FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 1   AND QZ02_ID  = 1");
}

TEST_F(ControlliTest, ReadsAMissingParentAsZero) {
    auto senzaPadre = legame(102, "01/01/2024", "31/12/2024");
    senzaPadre.padre.reset();
    EXPECT_TRUE(controlli.ControllaLegami(senzaPadre));
    EXPECT_TRUE(scena.db->take().at(0).ends_with("   AND QZ02_ID  = 0"));
}

TEST_F(ControlliTest, NeverCountsTheEditedNodeItself) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}};
    auto modifica = legame(102, "01/01/2024", "31/12/2024");
    EXPECT_FALSE(controlli.ControllaLegami(modifica));
    modifica.nodo = NodoId(2);
    EXPECT_TRUE(controlli.ControllaLegami(modifica));
}

TEST_F(ControlliTest, RefusesAnEditBeforeADefinitiveSettlementFallsDue) {
    scena.tabelle.nodi = {{1, 20, {}, 101}, {2, 20, 1, 102}};
    scena.tabelle.premi = {{2, "31/12/2024", 2}};
    auto modifica = legame(102, "01/01/2024", "30/12/2024");
    EXPECT_TRUE(controlli.ControllaLegami(legame(500, "01/01/2024", "30/12/2024")));
    modifica.nodo = NodoId(2);
    EXPECT_FALSE(controlli.ControllaLegami(modifica));
    EXPECT_EQ(messaggio, "La data fine è inferiore alla data scadenza di un premio definitivo");
    modifica.fine = "31/12/2024";
    EXPECT_TRUE(controlli.ControllaLegami(modifica));
}

// Definitive bonus

TEST_F(ControlliTest, CountsASettlementAsDefinitiveFromStateTwo) {
    scena.tabelle.premi = {{2, "31/12/2024", 1}};
    EXPECT_FALSE(controlli.PremioDefinitivo(2, true, "01/01/2024"));
    EXPECT_EQ(messaggio, "");
    for (const int stato : {2, 3, 9}) {
        scena.tabelle.premi = {{2, "31/12/2024", stato}};
        EXPECT_TRUE(controlli.PremioDefinitivo(2, true, "01/01/2024"));
    }
}

TEST_F(ControlliTest, LooksAtTheDueDateForAnEndDateOnly) {
    scena.tabelle.premi = {{2, "31/12/2020", 2}};
    EXPECT_FALSE(controlli.PremioDefinitivo(2, true, "31/12/2020"));
    EXPECT_TRUE(controlli.PremioDefinitivo(2, true, "30/12/2020"));
    EXPECT_EQ(messaggio, "La data fine è inferiore alla data scadenza di un premio definitivo");
    messaggio.clear();
    EXPECT_TRUE(controlli.PremioDefinitivo(2, false, ""));
    EXPECT_EQ(messaggio, "La data inizio non può essere modificata perchè è presente un premio definitivo");
}

TEST_F(ControlliTest, LetsDatabaseErrorsThrough) {
    for (int nth = 1; nth <= 2; ++nth) {
        scena.db->failNth(nth, {"42000", 1, "guasto", contract::ErrorCategory::other});
        EXPECT_THROW(controlli.ControllaRicorsione(1, 2), contract::RuntimeError);
        EXPECT_EQ(messaggio, "");
    }
    scena.db->failNth(1, {"42000", 1, "guasto", contract::ErrorCategory::other});
    EXPECT_THROW(controlli.PremioDefinitivo(1, false, ""), contract::RuntimeError);
}

// Queue

TEST(CodaLimitata, NeverReadsOrWritesOutsideItsBounds) {
    qz::CodaLimitata<int> coda(2);
    EXPECT_EQ(coda.inTesta(), nullptr);
    coda.accoda(7);
    coda.accoda(8);
    EXPECT_TRUE(coda.piena());
    coda.accoda(9);
    EXPECT_EQ(coda.coda(), 2);
    coda.testa = 2;
    const int* testa = coda.inTesta();
    EXPECT_EQ(testa ? *testa : 0, 8);
    coda.testa = 3;
    EXPECT_EQ(coda.inTesta(), nullptr);
}

} // namespace

#include "component/data/Parametri.h"
#include "component/Scena.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using contract::Value;
using platform::headless::rows;
using prove::giorno;
using prove::Scena;

namespace {

constexpr const char* lettura = " SELECT   QZ03_ID_WF02 AS StatoLegame, ";

void riga(Scena& scena, std::vector<Value> valori) {
    scena.db->answer(lettura,
                     rows({"StatoLegame", "TipoCaricaDATA", "DataFissaINIZIO", "DataFissaFINE", "flg_Anagrafica",
                           "flg_CondVendita", "flg_Classificazioni", "flg_Provvigioni", "TipoCaricaFatt"},
                          {std::move(valori)}));
}

TEST(CaricaParametri, TakesTheDefaultsOfACompanyWithoutARow) {
    Scena scena;
    scena.stato.parametri = {7, 1, giorno("01/01/2010"), giorno("01/01/2011"), false, false, false, false};
    qz::CaricaParametri(scena.stato);
    const auto& p = scena.stato.parametri;
    EXPECT_EQ(p.StatoLegame, 0);
    EXPECT_EQ(p.TipoCaricaDATA, 0);
    EXPECT_EQ(p.DataFissaINIZIO, giorno("01/01/2000"));
    EXPECT_EQ(p.DataFissaFINE, giorno("31/12/2099"));
    EXPECT_TRUE(p.flg_Anagrafica && p.flg_CondVendita && p.flg_Classificazioni && p.flg_Provvigioni);
}

TEST(CaricaParametri, TakesTheStatementsDefaultsOfARowOfNulls) {
    Scena scena;
    riga(scena, {Value::null(), 0, giorno("01/01/2000"), giorno("01/01/2099"), 0, 0, 0, 0, 0});
    qz::CaricaParametri(scena.stato);
    const auto& p = scena.stato.parametri;
    EXPECT_EQ(p.DataFissaINIZIO, giorno("01/01/2000"));
    EXPECT_EQ(p.DataFissaFINE, giorno("01/01/2099"));
    EXPECT_FALSE(p.flg_Anagrafica || p.flg_CondVendita || p.flg_Classificazioni || p.flg_Provvigioni);
}

TEST(CaricaParametri, TakesAnyValueButZeroForTrue) {
    Scena scena;
    riga(scena, {5, 1, giorno("01/02/2010"), giorno("28/02/2010"), 1, -1, 2, 255, 9});
    qz::CaricaParametri(scena.stato);
    const auto& p = scena.stato.parametri;
    EXPECT_EQ(p.TipoCaricaDATA, 1);
    EXPECT_EQ(p.DataFissaINIZIO, giorno("01/02/2010"));
    EXPECT_EQ(p.DataFissaFINE, giorno("28/02/2010"));
    EXPECT_TRUE(p.flg_Anagrafica && p.flg_CondVendita && p.flg_Classificazioni && p.flg_Provvigioni);
}

TEST(CaricaParametri, ReadsEachFlagFromItsOwnField) {
    for (std::size_t acceso = 0; acceso < 4; ++acceso) {
        Scena scena;
        std::vector<Value> valori{0, 0, giorno("01/01/2000"), giorno("01/01/2099"), 0, 0, 0, 0, 0};
        valori[4 + acceso] = 1;
        riga(scena, valori);
        qz::CaricaParametri(scena.stato);
        const auto& p = scena.stato.parametri;
        EXPECT_EQ(p.flg_Anagrafica, acceso == 0);
        EXPECT_EQ(p.flg_CondVendita, acceso == 1);
        EXPECT_EQ(p.flg_Classificazioni, acceso == 2);
        EXPECT_EQ(p.flg_Provvigioni, acceso == 3);
    }
}

TEST(CaricaParametri, KeepsTheStateOfNewLinksWhenARowExists) {
    Scena scena;
    riga(scena, {5, 0, giorno("01/01/2000"), giorno("01/01/2099"), 0, 0, 0, 0, 0});
    qz::CaricaParametri(scena.stato);
    EXPECT_EQ(scena.stato.parametri.StatoLegame, 0);
    scena.stato.parametri.StatoLegame = 9;
    qz::CaricaParametri(scena.stato);
    EXPECT_EQ(scena.stato.parametri.StatoLegame, 9);
}

TEST(CaricaParametri, ReadsDatesHeldAsText) {
    Scena scena;
    riga(scena, {0, 0, "05/04/2003", "06/07/2008", 0, 0, 0, 0, 0});
    qz::CaricaParametri(scena.stato);
    EXPECT_EQ(scena.stato.parametri.DataFissaINIZIO, giorno("05/04/2003"));
    EXPECT_EQ(scena.stato.parametri.DataFissaFINE, giorno("06/07/2008"));
}

TEST(CaricaParametri, ChangesNothingWhenTheReadFails) {
    for (const int risposta : {3, 5}) {
        Scena scena;
        scena.stato.parametri = {7, 1, giorno("01/01/2010"), giorno("01/01/2011"), false, true, false, true};
        scena.db->fail(lettura, {"HY000", 1, "guasto", contract::ErrorCategory::other});
        scena.host->answers = {risposta};
        qz::CaricaParametri(scena.stato);
        const auto& p = scena.stato.parametri;
        EXPECT_EQ(scena.errori(), std::vector<std::string>{"CaricaParametri"});
        EXPECT_EQ(p.StatoLegame, 7);
        EXPECT_EQ(p.TipoCaricaDATA, 1);
        EXPECT_EQ(p.DataFissaINIZIO, giorno("01/01/2010"));
        EXPECT_TRUE(p.flg_CondVendita && p.flg_Classificazioni);
        EXPECT_FALSE(p.flg_Anagrafica || p.flg_Provvigioni);
    }
}

TEST(CaricaParametri, ChangesNothingForARowThatCannotBeRead) {
    Scena scena;
    scena.stato.parametri = {7, 1, giorno("01/01/2010"), giorno("01/01/2011"), true, true, true, true};
    riga(scena, {5, 0, giorno("01/02/2010"), "mai", 0, 0, 0, 0, 0});
    qz::CaricaParametri(scena.stato);
    EXPECT_EQ(scena.stato.parametri.TipoCaricaDATA, 1);
    EXPECT_EQ(scena.stato.parametri.DataFissaINIZIO, giorno("01/01/2010"));
    EXPECT_TRUE(scena.stato.parametri.flg_Anagrafica);
}

TEST(CaricaParametri, TakesANumberThatIsNotWholeForTrue) {
    Scena scena;
    riga(scena, {0, 0, giorno("01/01/2000"), giorno("01/01/2099"), contract::Decimal{"0.5"}, 0.25,
                 contract::Decimal{"0.0"}, 0.0, 0});
    qz::CaricaParametri(scena.stato);
    const auto& p = scena.stato.parametri;
    EXPECT_TRUE(p.flg_Anagrafica && p.flg_CondVendita);
    EXPECT_FALSE(p.flg_Classificazioni || p.flg_Provvigioni);
}

TEST(CaricaParametri, RefusesWhatIsNoShortNumberAndNoFlag) {
    const auto prova = [](const Value& tipo, const Value& acceso) {
        Scena scena;
        scena.stato.parametri = {7, 1, giorno("01/01/2010"), giorno("01/01/2011"), true, true, true, true};
        riga(scena, {5, tipo, giorno("01/02/2010"), giorno("01/02/2011"), 0, 0, 0, acceso, 0});
        qz::CaricaParametri(scena.stato);
        EXPECT_EQ(scena.errori(), std::vector<std::string>{"CaricaParametri"});
        EXPECT_EQ(scena.stato.parametri.TipoCaricaDATA, 1);
        EXPECT_EQ(scena.stato.parametri.DataFissaINIZIO, giorno("01/01/2010"));
        EXPECT_TRUE(scena.stato.parametri.flg_Anagrafica && scena.stato.parametri.flg_Provvigioni);
        return scena.host->errors.empty() ? 0 : scena.host->errors[0].number;
    };
    EXPECT_EQ(prova(32768, 0), 6);
    EXPECT_EQ(prova(-32769, 0), 6);
    EXPECT_EQ(prova("molti", 0), 13);
    EXPECT_EQ(prova(0, "forse"), 13);
}

TEST(CaricaParametri, ReadsTheStatementAndTheAliasesOnly) {
    Scena scena;
    // Neither the state nor the invoicing kind is read: what they hold does not matter.
    riga(scena, {"x", 1, giorno("01/01/2000"), giorno("01/01/2099"), 1, 1, 1, 1, "y"});
    qz::CaricaParametri(scena.stato);
    EXPECT_TRUE(scena.errori().empty());
    EXPECT_EQ(scena.stato.parametri.TipoCaricaDATA, 1);
    EXPECT_EQ(scena.db->take().size(), 1U);
}

} // namespace

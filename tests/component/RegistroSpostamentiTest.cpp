// The registry of moves: its statements to the blank, its values as texts, and what an operation makes of plans.

#include "component/maintenance/RegistroSpostamenti.h"
#include "component/maintenance/IstruzioniAnnullamento.h"
#include "component/maintenance/IstruzioniRegistro.h"
#include "component/maintenance/ValoriRegistro.h"
#include "contract/RuntimeError.h"
#include "platform/headless/ScriptedConnection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

using contract::OperationKind;
using contract::RowOutcome;
using contract::RowValues;
using contract::Value;

namespace {

contract::Date giorno(const char* testo) {
    return contract::Date::parse(testo).value_or(contract::Date());
}

const qz::Autore autore{"MARIO", "VENDITE", giorno("15/06/2024")};

std::string elenco(std::int64_t primo, std::int64_t ultimo, std::size_t lunghezza) {
    std::string testo;
    for (std::size_t i = 0; i < lunghezza; ++i)
        testo += (i == 0 ? "" : ", ") + std::to_string(std::min(primo + static_cast<std::int64_t>(i), ultimo));
    return testo;
}

TEST(IstruzioniRegistro, AreTheseToTheBlank) {
    const std::array nodi{qz::NodoId(7), qz::NodoId(8)};
    const auto dieci = elenco(7, 8, 10);
    EXPECT_EQ(qz::istruzioneVariazioni(nodi).text(),
              "SELECT QZ02_ID, QZ02_UTENTEVAR, QZ02_GRUPPOVAR, QZ02_DATAVAR FROM QZ02_DISTINTA QZ91_REGISTRORIGHE "
              "WHERE QZ02_ID IN (" +
                  dieci + ")");
    EXPECT_EQ(qz::istruzioneRighe(nodi).text(),
              "SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_ID IN (" + dieci + ")");
    EXPECT_EQ(qz::istruzioneAppesi(nodi).text(),
              "SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_IDPARENT_QZ02 IN (" + dieci + ")");
    EXPECT_EQ(qz::istruzioneOperazioniSeguenti(4, nodi).text(),
              "SELECT QZ91_ID_QZ02, QZ91_ID_QZ90, QZ90_ID_QZ90 FROM QZ91_REGISTRORIGHE INNER JOIN QZ90_REGISTRO ON "
              "QZ91_ID_QZ90 = QZ90_ID WHERE QZ91_ID_QZ90 > 4 AND QZ91_ESITO <> 'resta' AND QZ91_ID_QZ02 IN (" +
                  dieci + ") ORDER BY QZ91_ID_QZ90");
    EXPECT_EQ(qz::istruzioneInserisciOperazione(
                  {1, autore, "09:08:07", OperationKind::validity, "L'elenco", 3, std::nullopt, "G1"})
                  .text(),
              "INSERT INTO QZ90_REGISTRO (QZ90_DITTA_CG18, QZ90_DATA, QZ90_ORA, QZ90_UTENTE, QZ90_GRUPPO, QZ90_TIPO, "
              "QZ90_DESCR, QZ90_RIGHE, QZ90_ID_QZ90, QZ90_ANNULLATA, QZ90_GUID) VALUES (1, "
              "CONVERT(DateTime,'15/06/2024',103), '09:08:07', 'MARIO', 'VENDITE', 'validita', 'L''elenco', 3, NULL, "
              "0, 'G1')");
    EXPECT_EQ(qz::istruzioneIdOperazione("G1").text(), "SELECT QZ90_ID FROM QZ90_REGISTRO WHERE QZ90_GUID = 'G1'");
    const std::array righe{
        qz::RigaDaRegistrare{qz::NodoId(7), qz::CodiceAccount(110), RowOutcome::moves, "", 0, "{}", "{}"},
        qz::RigaDaRegistrare{qz::NodoId(8), std::nullopt, RowOutcome::opens, "", 2, "", R"({"QZ02_ID_QZ01": 1})"}};
    EXPECT_EQ(qz::istruzioneInserisciRighe(4, 11, righe).text(),
              "INSERT INTO QZ91_REGISTRORIGHE (QZ91_ID_QZ90, QZ91_RIGA, QZ91_ID_QZ02, QZ91_CLIFOR_CG44, QZ91_ESITO, "
              "QZ91_MOTIVO, QZ91_OSTACOLI, QZ91_PRIMA, QZ91_DOPO) VALUES (4, 11, 7, 110, 'spostato', '', 0, '{}', "
              "'{}'), (4, 12, 8, NULL, 'aperto', '', 2, '', '{\"QZ02_ID_QZ01\": 1}')");
    EXPECT_EQ(qz::istruzionePrendiOperazione(1, 4).text(),
              "UPDATE QZ90_REGISTRO SET QZ90_ANNULLATA = 1 WHERE QZ90_ID = 4 AND QZ90_DITTA_CG18 = 1 AND "
              "QZ90_ANNULLATA = 0");
}

TEST(IstruzioniRegistro, FilterOperationsByWhatIsAskedOnly) {
    const std::string tutte =
        "SELECT QZ90_REGISTRO.QZ90_ID, QZ90_REGISTRO.QZ90_DATA, QZ90_REGISTRO.QZ90_ORA, QZ90_REGISTRO.QZ90_UTENTE, "
        "QZ90_REGISTRO.QZ90_GRUPPO, QZ90_REGISTRO.QZ90_TIPO, QZ90_REGISTRO.QZ90_DESCR, QZ90_REGISTRO.QZ90_RIGHE, "
        "QZ90_REGISTRO.QZ90_ID_QZ90, QZ90_ANNULLO.QZ90_ID AS ANNULLATADA FROM QZ90_REGISTRO LEFT OUTER JOIN "
        "QZ90_REGISTRO QZ90_ANNULLO ON QZ90_ANNULLO.QZ90_ID_QZ90 = QZ90_REGISTRO.QZ90_ID WHERE "
        "QZ90_REGISTRO.QZ90_DITTA_CG18 = 1";
    const std::string ordine = " ORDER BY QZ90_REGISTRO.QZ90_ID DESC";
    EXPECT_EQ(qz::istruzioneOperazioni(1, {}).text(), tutte + ordine);
    EXPECT_EQ(qz::istruzioneOperazioni(1, {"D'ARCO", giorno("01/02/2024"), 110}).text(),
              tutte +
                  " AND QZ90_REGISTRO.QZ90_UTENTE = 'D''ARCO' AND QZ90_REGISTRO.QZ90_DATA = "
                  "CONVERT(DateTime,'01/02/2024',103) AND QZ90_REGISTRO.QZ90_ID IN (SELECT QZ91_ID_QZ90 FROM "
                  "QZ91_REGISTRORIGHE WHERE QZ91_CLIFOR_CG44 = 110)" +
                  ordine);
    EXPECT_EQ(qz::istruzioneOperazione(1, 9).text(), tutte + " AND QZ90_REGISTRO.QZ90_ID = 9");
}

TEST(IstruzioniAnnullamento, GiveValuesBackOfEveryKind) {
    const std::array nodi{qz::NodoId(7)};
    const auto dieci = elenco(7, 7, 10);
    const RowValues valori{{"QZ02_ID_QZ01", std::int64_t{2}},
                           {"QZ02_DATAFINEVAL", giorno("31/12/2099")},
                           {"QZ02_UTENTEVAR", "D'ARCO"},
                           {"QZ02_DATAVAR", Value::null()}};
    EXPECT_EQ(qz::istruzioneRipristina(nodi, valori).text(),
              "UPDATE QZ02_DISTINTA SET QZ02_ID_QZ01 = 2, QZ02_DATAFINEVAL = CONVERT(DateTime,'31/12/2099',103), "
              "QZ02_UTENTEVAR = 'D''ARCO', QZ02_DATAVAR = NULL WHERE QZ02_ID IN (" +
                  dieci + ")");
    EXPECT_EQ(qz::istruzioneElimina(nodi).text(), "DELETE FROM QZ02_DISTINTA WHERE QZ02_ID IN (" + dieci + ")");
    EXPECT_EQ(qz::istruzioneReinserisci(qz::NodoId(7), {valori[0], valori[2]}).text(),
              "INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_UTENTEVAR) VALUES (7, 2, 'D''ARCO')");
    EXPECT_EQ(qz::istruzioneIdScelti(true).text(), "SET IDENTITY_INSERT QZ02_DISTINTA ON");
    EXPECT_EQ(qz::istruzioneIdScelti(false).text(), "SET IDENTITY_INSERT QZ02_DISTINTA OFF");
}

TEST(ValoriRegistro, ComeBackFromTheirText) {
    const RowValues valori{{"QZ02_ID_QZ01", std::int64_t{-2}},
                           {"QZ02_DESCR", std::string("Città \"A\" \\ riga\nnuova\t\x01")},
                           {"QZ02_DATAFINEVAL", giorno("31/12/2099")},
                           {"QZ02_GUID", "ABC"},
                           {"QZ02_DATAVAR", Value::null()}};
    const auto testo = qz::testoDeiValori(valori);
    EXPECT_EQ(testo, R"({"QZ02_ID_QZ01": -2, "QZ02_DESCR": "Città \"A\" \\ riga\u000anuova\u0009\u0001", )"
                     R"("QZ02_DATAFINEVAL": "31/12/2099", "QZ02_GUID": "ABC", "QZ02_DATAVAR": null})");
    EXPECT_EQ(qz::valoriDelTesto(testo), valori);
    EXPECT_EQ(qz::testoDeiValori(std::nullopt), "");
    EXPECT_EQ(qz::valoriDelTesto(""), std::nullopt);
    EXPECT_EQ(qz::valoriDelTesto("{}"), RowValues());
    // As somebody may write them by hand.
    EXPECT_EQ(qz::valoriDelTesto(" {\n \"QZ02_ID_QZ01\" : 3 } "), (RowValues{{"QZ02_ID_QZ01", std::int64_t{3}}}));
}

TEST(ValoriRegistro, WhatIsNoneIsRefusedAndQuoted) {
    for (const std::string testo :
         {"{", "}", "[]", "{\"QZ02_ID_QZ01\"}", "{\"QZ02_ID_QZ01\": }", "{\"QZ02_ID_QZ01\": 1,}", "{\"ALTRO\": 1}",
          "{\"QZ02_ID_QZ01\": \"1\"}", "{\"QZ02_ID_QZ01\": 1} 2", "{\"QZ02_DATAVAR\": \"31/02/2024\"}",
          "{\"QZ02_DATAVAR\": 5}", "{\"QZ02_DESCR\": \"\\u12\"}", "{\"QZ02_DESCR\": \"\\q\"}",
          "{\"QZ02_DESCR\": \"a"}) {
        try {
            qz::valoriDelTesto(testo);
            ADD_FAILURE() << testo;
        } catch (const contract::RuntimeError& errore) {
            EXPECT_EQ(errore.number(), contract::RuntimeError::typeMismatch);
            EXPECT_NE(errore.description().find(testo), std::string::npos) << errore.description();
        }
    }
}

TEST(ValoriRegistro, EveryColumnOfTheNodesHasACaption) {
    EXPECT_EQ(qz::colonneRegistrate().size(), 22U);
    for (const auto& colonna : qz::colonneRegistrate())
        EXPECT_NE(qz::didascaliaColonna(colonna.name), colonna.name);
    EXPECT_EQ(qz::didascaliaColonna("ALTRA"), "ALTRA");
}

class UnRegistro : public ::testing::Test {
protected:
    UnRegistro() {
        database_.Open();
        database_.answer("SELECT QZ90_ID FROM QZ90_REGISTRO", platform::headless::rows({"QZ90_ID"}, {{4}}));
        // The parent that node 7 had is still there.
        std::vector<std::string> nomi{"QZ02_ID"};
        std::vector<Value> valori{5};
        for (const auto& colonna : qz::colonneRegistrate()) {
            nomi.emplace_back(colonna.name);
            valori.push_back(Value::null());
        }
        database_.answer("SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_ID IN (5,",
                         platform::headless::rows(nomi, {valori}));
    }

    static qz::Richiesta richiesta() {
        return {{qz::NodoId(7), 1, qz::TipoCF(0), qz::CodiceAccount(110), {}, nullptr},
                qz::NodoId(21),
                std::nullopt,
                qz::DistintaId(1),
                qz::DistintaId(2),
                1,
                qz::TipoCF(0),
                qz::TipoCF(0),
                {},
                autore,
                {}};
    }

    static qz::RigaPiano spostata(std::int64_t nodo, std::int64_t da, std::int64_t a, std::int64_t padre,
                                  std::int64_t sotto) {
        const auto legame = [](std::int64_t distinta, std::int64_t sopra) {
            return qz::Legame{qz::DistintaId(distinta), qz::NodoId(sopra), giorno("01/01/2020"), giorno("31/12/2099")};
        };
        return {qz::NodoId(nodo),
                qz::CodiceAccount(103 + nodo),
                qz::Esito::siSposta,
                "",
                legame(da, padre),
                legame(a, sotto),
                {}};
    }

    /// The rows of QZ91_REGISTRORIGHE as they were sent.
    std::vector<std::string> righe() const {
        std::vector<std::string> mandate;
        for (const auto& testo : database_.statements())
            if (testo.starts_with("INSERT INTO QZ91"))
                mandate.push_back(testo.substr(testo.find("VALUES ") + 7));
        return mandate;
    }

    platform::headless::ScriptedConnection database_;
};

TEST_F(UnRegistro, HoldsOneRowForANodeThatSeveralPlansChange) {
    qz::RegistroSpostamenti registro(database_, 1, autore, "10:00:00");
    const auto chiesto = richiesta();
    registro.aggiungi(qz::Piano{{spostata(7, 1, 2, 5, 21), spostata(8, 1, 2, 7, 7)}, "", {}}, chiesto);
    // The second line of a list takes node 7 on, and node 8 back where it was.
    registro.aggiungi(qz::Piano{{spostata(7, 2, 3, 21, 30), spostata(8, 2, 1, 7, 7)}, "", {}}, chiesto);
    EXPECT_EQ(registro.scrivi(OperationKind::list, "Elenco"), 4);
    EXPECT_EQ(righe(), (std::vector<std::string>{
                           R"((4, 1, 7, 110, 'spostato', '', 0, '{"QZ02_ID_QZ01": 1, "QZ02_IDPARENT_QZ02": 5}', )"
                           R"('{"QZ02_ID_QZ01": 3, "QZ02_IDPARENT_QZ02": 30}'))"}));
}

TEST_F(UnRegistro, TellsNothingOfAColumnThatKeptItsValue) {
    qz::RegistroSpostamenti registro(database_, 1, autore, "10:00:00");
    registro.aggiungi(qz::Piano{{spostata(7, 1, 1, 5, 21), spostata(8, 1, 1, 7, 7)}, "", {}}, richiesta());
    registro.scrivi(OperationKind::structure, "Nella stessa distinta");
    EXPECT_EQ(righe(), (std::vector<std::string>{R"((4, 1, 7, 110, 'spostato', '', 0, '{"QZ02_IDPARENT_QZ02": 5}', )"
                                                 R"('{"QZ02_IDPARENT_QZ02": 21}'))"}));
}

TEST_F(UnRegistro, ListsWhatStayedWithItsReason) {
    qz::RegistroSpostamenti registro(database_, 1, autore, "10:00:00");
    auto resta = spostata(8, 1, 1, 7, 7);
    resta.esito = qz::Esito::resta;
    resta.motivo = "Cliente 111: legame presente";
    registro.aggiungi(qz::Piano{{resta}, "", {}}, richiesta());
    registro.scrivi(OperationKind::structure, "");
    EXPECT_EQ(righe(),
              (std::vector<std::string>{"(4, 1, 8, 111, 'resta', 'Cliente 111: legame presente', 0, '{}', '{}')"}));
}

} // namespace

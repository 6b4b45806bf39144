// Every statement that the component composes runs on the embedded database, and none of them walks through a big
// table.

#include "component/data/IstruzioniDettaglio.h"
#include "component/data/IstruzioniDistinta.h"
#include "component/data/Parametri.h"
#include "component/data/Schema.h"
#include "component/interaction/FRMQZ_PARAMETRI.h"
#include "component/interaction/ModificaNodo.h"
#include "component/maintenance/IstruzioniConfronto.h"
#include "component/maintenance/IstruzioniControlli.h"
#include "component/maintenance/IstruzioniSpostamento.h"
#include "component/maintenance/IstruzioniVerifica.h"
#include "platform/dialect/Translator.h"
#include "sqlite/SqliteFixture.h"

#include <vector>

#include <sqlite3.h>

namespace sqlite_test {
using qz::CodiceAccount;
using qz::DistintaId;
using qz::NodoId;
using qz::TipoCF;

namespace {

using contract::Date;
using contract::Statement;
using contract::Value;

const Date firstDay = *Date::of(2020, 1, 1);
const Date lastDay = *Date::of(2099, 12, 31);

class ComponentStatementsTest : public testing::Test {
protected:
    ComponentStatementsTest() {
        const auto file = folder.file("distinte.db");
        platform::sqlite::createDatabase(file, qz::schema(), [](Connection& database) { fill(database); });
        connection.SetConnectionString(connectionStringOf(file));
        connection.Open();
    }

    // Company 1 with two distinte of customers: 1 over 2 over 3 in the first, 1 over 4 in the second.
    static void fill(Connection& database) {
        database.runNative(
            "INSERT INTO QZ01_TIPODISTINTA (QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_DESCR, QZ01_INDTIPOSOGG, "
            "QZ01_IDDIV_CO1A, QZ01_GUID) VALUES (1, 1, 'A', 'Prima', 0, NULL, 'G1'), (2, 1, 'B', 'Seconda', 0, 'D1', "
            "'G2');"
            "INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
            "QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_GUID) VALUES "
            "(1, 1, NULL, 1, 0, 101, '2020-01-01', '2099-12-31', 'N1'),"
            "(2, 1, 1, 1, 0, 102, '2020-01-01', '2024-06-30', 'N2'),"
            "(3, 1, 2, 1, 0, 103, '2020-01-01', '2099-12-31', 'N3'),"
            "(4, 2, NULL, 1, 0, 101, '2020-01-01', '2099-12-31', 'N4'),"
            "(5, 2, 4, 1, 0, 104, '2020-01-01', '2099-12-31', 'N5'),"
            "(6, 1, NULL, 1, 0, NULL, '2020-01-01', '2099-12-31', 'N6');"
            "INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CITTA, CG16_PROV) VALUES "
            "(11, 'Rossi S.r.l.  ', 'Via Roma 1', 'Milano', 'MI'), (12, 'D''Angiò', NULL, NULL, NULL), "
            "(90, 'Agente Neri', NULL, NULL, NULL);"
            "INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16, CG44_CODICE_CG08, "
            "CG44_CODABI_CG12, CG44_CODCAB_CG13, CG44_CODPAG_CG62, CG44_IDAGENTE_MG17) VALUES (1, 0, 101, 11, 'EUR', "
            "'05034', '01600', '30', 7), (1, 0, 102, 12, NULL, NULL, NULL, NULL, NULL), (1, 0, 103, NULL, NULL, NULL, "
            "NULL, NULL, NULL);"
            "INSERT INTO CG12_BANCHE VALUES ('05034', 'Banca Prima');"
            "INSERT INTO CG13_AGENZIE VALUES ('05034', '01600', 'Filiale di Milano');"
            "INSERT INTO CG62_CONDPAGDES VALUES ('30', '30 giorni'), ('60', '60 giorni');"
            "INSERT INTO MG17_AGENTI VALUES (1, 7, 'AG7', 90);"
            "INSERT INTO MG19_CLIFORVA (MG19_DITTA_CG18, MG19_TIPOCF_CG44, MG19_CLIFOR_CG44, MG19_LISTMAG, "
            "MG19_MACROAREA, MG19_AREA, MG19_RAGGCRF3) VALUES (1, 0, 101, 3, 'N', 'LO', 'R3');"
            "INSERT INTO MG07_MACROAREE VALUES (1, 0, 'N', 'Nord'), (1, 0, 'S', 'Sud');"
            "INSERT INTO MG08_AREE VALUES (1, 0, 'N', 'LO', 'Lombardia');"
            "INSERT INTO MG33_RAGGRCF3 VALUES (1, 0, 'R3', 'Terzo');"
            "INSERT INTO VCO1C_CLIFOR (CO1C_DITTA_CG18, CO1C_TIPOCF_CG44, CO1C_CLIFOR_CG44, CO1C_IDDIV_CO1A, "
            "CO1D_CODPAG_CG62, CO1D_MACROAREA) VALUES (1, 0, 101, 'D1', '60', 'S');"
            "INSERT INTO QZ13_PREMI VALUES (1, 1);"
            "INSERT INTO QZ14_SOGGCONTR VALUES (1, 2, 1, 10, 1, 1), (1, 3, 1, 10, 1, 2);"
            "INSERT INTO QZ18_LIQUIDAZIONE VALUES (1, '2023-12-31', 2);"
            "INSERT INTO QZ27_SOGGCONTRDISAB VALUES (3, 1, 10, 1, 2);"
            "INSERT INTO WF02_STATI VALUES (1, 'Aperto'), (2, 'Chiuso');"
            "INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18) VALUES (1)");
    }

    contract::Recordset rowsOf(const Statement& statement) {
        contract::Recordset rows;
        rows.Open(statement, connection);
        return rows;
    }

    /// The steps of the engine's plan, without those that only tell of a structure.
    std::vector<std::string> planOf(const Statement& statement) {
        const auto text =
            "EXPLAIN QUERY PLAN " + platform::dialect::Translator(connection.catalog()).translate(statement).text;
        sqlite3_stmt* raw = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(connection.handle(), text.c_str(), -1, &raw, nullptr), SQLITE_OK) << text;
        const platform::sqlite::StatementHandle handle(raw);
        std::vector<std::string> plan;
        while (raw && sqlite3_step(raw) == SQLITE_ROW)
            plan.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(raw, 3)));
        return plan;
    }
    void expectNoScan(const Statement& statement) {
        const auto plan = planOf(statement);
        EXPECT_FALSE(plan.empty());
        for (const auto& step : plan) {
            EXPECT_FALSE(has(step, "SCAN") || has(step, "AUTOMATIC") || has(step, "MATERIALIZE") ||
                         has(step, "CO-ROUTINE"))
                << step << "\n"
                << statement.text();
        }
    }

    static qz::LinkParameters everything() {
        qz::LinkParameters parameters;
        parameters.flg_Anagrafica = parameters.flg_CondVendita = true;
        parameters.flg_Provvigioni = parameters.flg_Classificazioni = true;
        return parameters;
    }
    static Statement overlap(std::int64_t account, std::optional<std::int64_t> except = {}) {
        return qz::istruzioneSovrapposti({1, TipoCF(0), CodiceAccount(account)}, {*Date::of(2024, 7, 1), "31/12/2099"},
                                         except ? std::optional(NodoId(*except)) : std::nullopt);
    }

    TemporaryFolder folder;
    Connection connection;
    const qz::Autore author{"O'Brien", "ADMIN", *Date::of(2024, 5, 1)};
};

TEST_F(ComponentStatementsTest, TypesAndDivision) {
    EXPECT_EQ(rowsOf(qz::istruzioneTipi(1, 0)).RecordCount(), 2U);
    EXPECT_EQ(rowsOf(qz::istruzioneTipi(1, 1)).RecordCount(), 0U);
    EXPECT_TRUE(rowsOf(qz::istruzioneDivisione(qz::latoOrigine(), "1"))["QZ01_IDDIV_CO1A"].isNull());
    auto rows = rowsOf(qz::istruzioneDivisione(qz::latoDestinazione(), "2"));
    EXPECT_EQ(rows["QZ01_IDDIV_CO1A"].text(), "D1");
    EXPECT_EQ(rows["QZ01_GUID"].text(), "G2");
}

TEST_F(ComponentStatementsTest, Audit) {
    // The audit reads the tables of links and of distinte whole, once each.
    const auto links = qz::istruzioneTuttiILegami();
    EXPECT_EQ(rowsOf(links).RecordCount(), 6U);
    EXPECT_EQ(planOf(links), std::vector<std::string>{"SCAN QZ02_DISTINTA"});
    EXPECT_EQ(rowsOf(qz::istruzioneTutteLeDistinte()).RecordCount(), 2U);
    const auto registry = qz::istruzioneAnagrafiche(1);
    auto rows = rowsOf(registry);
    EXPECT_EQ(rows.RecordCount(), 2U);
    EXPECT_EQ(rows["CG16_RAGSOANAG"].text(), "Rossi S.r.l.  ");
    expectNoScan(registry);
    const auto state = qz::istruzioneStatoNeiParametri(1);
    EXPECT_TRUE(rowsOf(state)["WF02_ID"].isNull());
    connection.runNative("UPDATE QZ03_PARAMETRI SET QZ03_ID_WF02 = 2");
    EXPECT_EQ(rowsOf(state)["WF02_ID"].integer(), 2);
    expectNoScan(state);
}

TEST_F(ComponentStatementsTest, Comparison) {
    EXPECT_EQ(rowsOf(qz::istruzioneDistinteDellaDitta(1)).RecordCount(), 2U);
    expectNoScan(qz::istruzioneDistinteDellaDitta(1));
    const auto links = qz::istruzioneLegamiDistinta(1, 0, 2);
    auto rows = rowsOf(links);
    EXPECT_EQ(rows.RecordCount(), 2U);
    EXPECT_EQ(rows["CG16_RAGSOANAG"].text(), "Rossi S.r.l.  ");
    EXPECT_EQ(rowsOf(qz::istruzioneLegamiDistinta(1, 0, 1)).RecordCount(), 3U); // the one without account stays out
    EXPECT_EQ(rowsOf(qz::istruzioneLegamiDistinta(1, 1, 1)).RecordCount(), 0U);
    expectNoScan(links);
}

TEST_F(ComponentStatementsTest, NodesOfBothSides) {
    for (const auto* side : {&qz::latoOrigine(), &qz::latoDestinazione()}) {
        const auto statement = qz::istruzioneNodi(*side, 1, 0, "1");
        auto rows = rowsOf(statement);
        ASSERT_EQ(rows.RecordCount(), 3U) << "a node without account is not loaded";
        EXPECT_EQ(rows.FieldCount(), side->leggeFatturazione ? 15U : 10U);
        EXPECT_EQ(rows["QZ02_ID"].integer(), 1);
        EXPECT_EQ(rows["RagioneSociale"].text(), "Rossi S.r.l.  ");
        EXPECT_EQ(rows["QZ02_DATAFINEVAL"], Value(lastDay));
        rows.MoveTo(2);
        EXPECT_TRUE(rows["RagioneSociale"].isNull()) << "an account without registry entry";
        EXPECT_EQ(rows["CODP"].integer(), 2);
        expectNoScan(statement);
    }
}

TEST_F(ComponentStatementsTest, ParametersAndStates) {
    for (const auto& statement : {qz::istruzioneParametri(1), qz::istruzioneValoriParametri(1)}) {
        auto rows = rowsOf(statement);
        ASSERT_EQ(rows.RecordCount(), 1U);
        EXPECT_EQ(rows["DataFissaINIZIO"], Value(*Date::of(2000, 1, 1)));
        EXPECT_EQ(rows["DataFissaFINE"], Value(*Date::of(2099, 1, 1)));
        EXPECT_EQ(rows["flg_CondVendita"].integer(), 0);
        EXPECT_TRUE(rows["StatoLegame"].isNull());
        expectNoScan(statement);
    }
    EXPECT_EQ(rowsOf(qz::istruzioneRigaParametri(1)).RecordCount(), 1U);
    EXPECT_EQ(rowsOf(qz::istruzioneElencoStati()).RecordCount(), 2U);
    EXPECT_EQ(rowsOf(qz::istruzioneDescrizioneStato(2))["WF02_DESCR"].text(), "Chiuso");
}

TEST_F(ComponentStatementsTest, AccountDetail) {
    const auto statement = qz::istruzioneDettaglio(everything(), {1, 0, Value(std::int64_t{101})});
    auto rows = rowsOf(statement);
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows.FieldCount(), 17U);
    EXPECT_EQ(rows["Soggetto"].text(), "101 Rossi S.r.l. - Via Roma 1 Milano MI Tel.  Fax ");
    EXPECT_EQ(rows["CondizioniPagamento"].text(), "30 30 giorni");
    EXPECT_EQ(rows["ABI"].text(), "05034 Banca Prima");
    EXPECT_EQ(rows["CAB"].text(), "01600 Filiale di Milano");
    EXPECT_EQ(rows["Agente"].text(), "AG7 Agente Neri");
    EXPECT_EQ(rows["MacroArea"].text(), "N Nord");
    EXPECT_EQ(rows["Area"].text(), "LO Lombardia");
    EXPECT_TRUE(rows["Zona"].isNull());
    EXPECT_EQ(rows["Raggruppamento3"].text(), "R3 Terzo");
    expectNoScan(statement);

    // Without sales data, bank, agent or payment terms there is one row still, with every field.
    auto bare = rowsOf(qz::istruzioneDettaglio(everything(), {1, 0, Value(std::int64_t{102})}));
    ASSERT_EQ(bare.RecordCount(), 1U);
    EXPECT_EQ(bare.FieldCount(), 17U);
    EXPECT_EQ(bare["Soggetto"].text(), "102 D'Angiò -    Tel.  Fax ");
    for (std::size_t field = 1; field < bare.FieldCount(); ++field)
        EXPECT_TRUE(bare.Fields(field).Value().isMissing()) << bare.Fields(field).Name();
    EXPECT_EQ(rowsOf(qz::istruzioneDettaglio({}, {1, 0, Value(std::int64_t{103})})).RecordCount(), 1U);
}

TEST_F(ComponentStatementsTest, AccountDetailOfADivision) {
    const auto statement = qz::istruzioneDettaglioDivisione(everything(), {1, 0, Value(std::int64_t{101})}, "D1");
    auto rows = rowsOf(statement);
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows["CondizioniPagamento"].text(), "60 60 giorni");
    EXPECT_EQ(rows["MacroArea"].text(), "S Sud");
    EXPECT_EQ(rows["Area"].text(), "LO ") << "no area of that code under the division's macro area";
    EXPECT_EQ(rows["Agente"].text(), "AG7 Agente Neri");
    expectNoScan(statement);
    // A division without a row for the account shows all of the account's own values.
    auto own = rowsOf(qz::istruzioneDettaglio(everything(), {1, 0, Value(std::int64_t{101})}));
    auto other = rowsOf(qz::istruzioneDettaglioDivisione(everything(), {1, 0, Value(std::int64_t{101})}, "D9"));
    ASSERT_EQ(other.RecordCount(), 1U);
    ASSERT_EQ(other.FieldCount(), own.FieldCount());
    for (std::size_t field = 0; field < own.FieldCount(); ++field) {
        EXPECT_EQ(other.Fields(field).Name(), own.Fields(field).Name());
        EXPECT_EQ(other.Fields(field).Value(), own.Fields(field).Value()) << own.Fields(field).Name();
    }
}

TEST_F(ComponentStatementsTest, RegularNamesOfTheIrregularColumnsFail) {
    EXPECT_THROW(rowsOf(Statement("SELECT MG19_RAGGRCF3 FROM MG19_CLIFORVA")), contract::RuntimeError);
    EXPECT_THROW(rowsOf(Statement("SELECT MG12_SOTTOCAT FROM MG12_SOTTOCAT")), contract::RuntimeError);
    EXPECT_EQ(rowsOf(Statement("SELECT MG19_RAGGCRF3 FROM MG19_CLIFORVA")).RecordCount(), 1U);
    EXPECT_EQ(rowsOf(Statement("SELECT MG12_SOTTCAT FROM MG12_SOTTOCAT")).RecordCount(), 0U);
}

TEST_F(ComponentStatementsTest, ParentsOfAnAccount) {
    const auto statement = qz::istruzionePadri({1, TipoCF(0), CodiceAccount(102)}, DistintaId(1));
    auto rows = rowsOf(statement);
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows["Anagrafica"].integer(), 101);
    EXPECT_EQ(rows["RagSoc"].text(), "Rossi S.r.l.  ");
    EXPECT_EQ(rows["DataF"], Value(*Date::of(2024, 6, 30)));
    auto root = rowsOf(qz::istruzionePadri({1, TipoCF(0), CodiceAccount(101)}, DistintaId(1)));
    ASSERT_EQ(root.RecordCount(), 1U);
    EXPECT_TRUE(root["Anagrafica"].isNull());
    expectNoScan(statement);
}

TEST_F(ComponentStatementsTest, Overlap) {
    auto rows = rowsOf(overlap(103));
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows["CodDistinta"].text(), "A");
    EXPECT_EQ(rows["Anagrafica"].integer(), 102);
    EXPECT_EQ(rowsOf(overlap(102)).RecordCount(), 0U) << "it ends on the day before";
    EXPECT_EQ(rowsOf(overlap(103, 3)).RecordCount(), 0U);
    for (auto step : planOf(overlap(103)))
        EXPECT_FALSE(has(step, "SCAN") || has(step, "AUTOMATIC") || has(step, "MATERIALIZE")) << step;
    expectNoScan(overlap(103, 3));
}

TEST_F(ComponentStatementsTest, Checks) {
    EXPECT_EQ(rowsOf(qz::istruzioneContaDitta(1, DistintaId(1)))["Conta"].integer(), 4);
    EXPECT_EQ(rowsOf(qz::istruzioneContaNodi(DistintaId(2)))["Conta"].integer(), 2);
    auto same = rowsOf(qz::istruzioneDecodificaPadre(NodoId(1), std::nullopt));
    EXPECT_EQ(same.RecordCount(), 2U);
    EXPECT_EQ(rowsOf(qz::istruzioneDecodificaPadre(NodoId(1), firstDay)).RecordCount(), 2U);
    EXPECT_EQ(rowsOf(qz::istruzioneDecodificaPadre(NodoId(1), lastDay)).RecordCount(), 0U);
    EXPECT_EQ(rowsOf(qz::istruzioneNodo(1, NodoId(5)))["QZ02_CLIFOR_CG44"].integer(), 104);
    EXPECT_EQ(rowsOf(qz::istruzioneFigli(NodoId(1), DistintaId(1)))["QZ02_ID"].integer(), 2);
    for (const auto& statement :
         {qz::istruzioneContaDitta(1, DistintaId(1)), qz::istruzioneDecodificaPadre(NodoId(1), std::nullopt),
          qz::istruzioneDecodificaPadre(NodoId(1), firstDay), qz::istruzioneNodo(1, NodoId(5)),
          qz::istruzioneFigli(NodoId(1), DistintaId(1))})
        expectNoScan(statement);
}

TEST_F(ComponentStatementsTest, DefinitiveBonus) {
    EXPECT_EQ(rowsOf(qz::istruzionePremio(1, NodoId(2), std::nullopt)).RecordCount(), 1U);
    EXPECT_EQ(rowsOf(qz::istruzionePremio(1, NodoId(2), "30/12/2023")).RecordCount(), 1U);
    EXPECT_EQ(rowsOf(qz::istruzionePremio(1, NodoId(2), "31/12/2023")).RecordCount(), 0U);
    EXPECT_EQ(rowsOf(qz::istruzionePremio(1, NodoId(3), std::nullopt)).RecordCount(), 0U)
        << "disabled for the condition";
    EXPECT_EQ(rowsOf(qz::istruzionePremio(1, NodoId(1), std::nullopt)).RecordCount(), 0U);
    expectNoScan(qz::istruzionePremio(1, NodoId(2), "30/12/2023"));
}

TEST_F(ComponentStatementsTest, StructuralMove) {
    const auto again = qz::istruzioneRilettura(Value(std::int64_t{2}), Value(std::int64_t{4}));
    const auto nodes = rowsOf(again);
    EXPECT_EQ(nodes.RecordCount(), 2U);
    EXPECT_TRUE(nodes["QZ02_DATAINIZIOVAL"].as<contract::Date>());
    EXPECT_TRUE(nodes["QZ02_DATAFINEVAL"].as<contract::Date>());
    expectNoScan(again);
    EXPECT_EQ(connection.Execute(qz::istruzioneAggiornaDistinta(NodoId(3), DistintaId(1), DistintaId(2))), 1);
    EXPECT_EQ(connection.Execute(qz::istruzioneAggiornaDistinta(NodoId(3), DistintaId(1), DistintaId(2))), 0);
    EXPECT_EQ(connection.Execute(qz::istruzioneSpostaNodo(NodoId(2), NodoId(4), DistintaId(1), DistintaId(2), author)),
              1);
    auto rows = rowsOf(qz::istruzioneNodo(1, NodoId(2)));
    EXPECT_EQ(rows["QZ02_IDPARENT_QZ02"].integer(), 4);
    EXPECT_EQ(rows["QZ02_ID_QZ01"].integer(), 2);
    EXPECT_EQ(rows["QZ02_DATAVAR"], Value(author.oggi));
    EXPECT_EQ(rows["QZ02_UTENTEVAR"].text(), "O'Brien");
    EXPECT_EQ(rows["QZ02_GRUPPOVAR"].text(), "ADMIN");
    expectNoScan(qz::istruzioneAggiornaDistinta(NodoId(3), DistintaId(1), DistintaId(2)));
    failureOf([&] {
        connection.Execute(qz::istruzioneSpostaNodo(NodoId(2), std::nullopt, DistintaId(1), DistintaId(2), author));
    });
    EXPECT_TRUE(has(connection.Errors().front().description, "non compresa"));
}

TEST_F(ComponentStatementsTest, MoveWithValidity) {
    const Date end = *Date::of(2024, 3, 31);
    EXPECT_EQ(connection.Execute(qz::istruzioneChiudiLegame(NodoId(2), DistintaId(1), end, author)), 1);
    EXPECT_EQ(rowsOf(qz::istruzioneNodo(1, NodoId(2)))["QZ02_DATAFINEVAL"], Value(end));
    EXPECT_EQ(connection.Execute(qz::istruzioneChiudiLegame(NodoId(2), DistintaId(1), end, author)), 0);
    // A link that starts later is closed on its own start day.
    EXPECT_EQ(connection.Execute(qz::istruzioneChiudiLegame(NodoId(3), DistintaId(1), *Date::of(2019, 1, 1), author)),
              1);
    EXPECT_EQ(rowsOf(qz::istruzioneNodo(1, NodoId(3)))["QZ02_DATAFINEVAL"], Value(firstDay));

    qz::NodoDaCopiare node{NodoId(4), 1, TipoCF(0), CodiceAccount(102)};
    const qz::NuovoLegame link{DistintaId(2), 0, end.plusDays(1), "31/12/2099"};
    EXPECT_EQ(connection.Execute(qz::istruzioneInserisciLegame(node, link, "{NUOVO}", author)), 1);
    auto rows = rowsOf(qz::istruzioneNodo(1, NodoId(7)));
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows["QZ02_ID_QZ01"].integer(), 2);
    EXPECT_EQ(rows["QZ02_DATAINIZIOVAL"], Value(*Date::of(2024, 4, 1)));
    EXPECT_EQ(rows["QZ02_DATAFINEVAL"], Value(lastDay));
    EXPECT_EQ(rows["QZ02_GUID"].text(), "{NUOVO}");
    EXPECT_TRUE(rows["QZ02_CLIFORFATT_CG44"].isNull());
    const qz::Facoltativi optional{Value(std::int64_t{55}), Value(std::int64_t{1}), Value(), Value::null(),
                                   Value(std::int64_t{1})};
    node.facoltativi = std::make_shared<const qz::Facoltativi>(optional);
    EXPECT_EQ(connection.Execute(qz::istruzioneInserisciLegame(node, link, "{NUOVO}", author)), 1);
    rows = rowsOf(qz::istruzioneNodo(1, NodoId(8)));
    EXPECT_EQ(rows["QZ02_CLIFORFATT_CG44"].integer(), 55);
    EXPECT_EQ(rows["QZ02_INDEREPROMO"].integer(), 1);
}

TEST_F(ComponentStatementsTest, EditedDates) {
    auto rows = rowsOf(qz::istruzioneLeggiDate(NodoId(2)));
    qz::DateLegame shown;
    shown.inizio = rows["QZ02_DATAINIZIOVAL"];
    shown.fine = rows["QZ02_DATAFINEVAL"];
    EXPECT_EQ(connection.Execute(qz::istruzioneDateLegame(NodoId(2), shown, firstDay, lastDay, author)), 1);
    EXPECT_EQ(connection.Execute(qz::istruzioneDateLegame(NodoId(2), shown, firstDay, lastDay, author)), 0)
        << "the row holds other values than those that were shown";
    EXPECT_EQ(rowsOf(qz::istruzioneLeggiDate(NodoId(2)))["QZ02_DATAFINEVAL"], Value(lastDay));
}

TEST_F(ComponentStatementsTest, NumbersBetweenQuotesUseTheIndex) {
    Statement statement;
    statement << "SELECT QZ02_ID FROM QZ02_DISTINTA WHERE QZ02_IDPARENT_QZ02 = '";
    statement.text("1") << "'";
    const auto plan = planOf(statement);
    ASSERT_EQ(plan.size(), 1U);
    EXPECT_TRUE(has(plan[0], "IX_QZ02_PARENT")) << plan[0];
}

} // namespace
} // namespace sqlite_test

#include "component/Scena.h"
#include "component/data/DettaglioAnagrafica.h"
#include "component/data/Formattazione.h"
#include "component/data/IstruzioniDettaglio.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using contract::Decimal;
using contract::FieldType;
using contract::Value;
using platform::headless::HeadlessDetailGrid;
using platform::headless::ScriptedRows;
using prove::giorno;
using prove::Scena;

namespace {

using Testi = std::vector<std::string>;

const std::string soggetto =
    " SELECT   RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) + ' - ' +  "
    "RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,'')) + ' ' + "
    "RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) + ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TEL1NUM,'')) + ' Fax ' + "
    "RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,'')) AS Soggetto ";
const std::string pagamento = ", Rtrim(CAST(CG62_CONDPAGDES.CG62_CODPAG AS Char)) + ' ' + "
                              "ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento ";
const std::string pagamentoDivisione = ", Rtrim(CAST(ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62) AS Char)) + ' ' + "
                                       "ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento ";
const std::string condizioni =
    ", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) as Valuta "
    ", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG28 AS Char)) As AliquotaIva "
    ", Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS Char)) + ' ' + ISNULL(CG12_BANCHE.CG12_DESCR,'') AS ABI "
    ", Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + ' ' + ISNULL(CG13_AGENZIE.CG13_DESCR,'') AS CAB ";
const std::string provvigioni = ", Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' ' + "
                                "ISNULL(CG16_ANAGGEN_AGE.CG16_RAGSOANAG,'') AS Agente "
                                ", MG19_LISTMAG AS ListinoAnagrafico ";
const std::string filtro = " WHERE  CG44_DITTA_CG18 = 12   AND  CG44_TIPOCF = 1   AND  CG44_CLIFOR = 345";

struct Classe {
    std::string tabella, codice, descrizione, sostituto, proprio, alias;
    bool blancoDopo = false;
};
const std::vector<Classe> classi{
    {"MG07_MACROAREE", "MG07_MACROAREA", "MG07_DESCRMACROAR", "CO1D_MACROAREA", "MG19_MACROAREA", "MacroArea", true},
    {"MG08_AREE", "MG08_AREA", "MG08_DESCRAREA", "CO1D_AREA", "MG19_AREA", "Area"},
    {"MG09_ZONE", "MG09_ZONA", "MG09_DESCRZONA", "CO1D_ZONA", "MG19_ZONA", "Zona", true},
    {"MG10_MACROCAT", "MG10_MACROCAT", "MG10_DESCRMACROCAT", "CO1D_MACROCAT", "MG19_MACROCAT", "MacroCategoria"},
    {"MG11_CATEG", "MG11_CATEG", "MG11_DESCRCAT", "CO1D_CATEG", "MG19_CATEG", "Categoria"},
    {"MG12_SOTTOCAT", "MG12_SOTTCAT", "MG12_DESCRSOTTOCAT", "CO1D_SOTTOCAT", "MG19_SOTTOCAT", "SottoCategoria"},
    {"MG31_RAGGRCF1", "MG31_CODRAGGRCF1", "MG31_DESCRAGGRCF1", "CO1D_RAGGRCF1", "MG19_RAGGRCF1", "Raggruppamento1"},
    {"MG32_RAGGRCF2", "MG32_CODRAGGRCF2", "MG32_DESCRAGGRCF2", "CO1D_RAGGRCF2", "MG19_RAGGRCF2", "Raggruppamento2"},
    {"MG33_RAGGRCF3", "MG33_CODRAGGRCF3", "MG33_DESCRAGGRCF3", "CO1D_RAGGRCF3", "MG19_RAGGCRF3", "Raggruppamento3"}};

std::string colonne(bool divisione) {
    std::string testo;
    for (const auto& c : classi) {
        const auto codice =
            divisione ? "ISNULL(" + c.sostituto + " ," + c.proprio + "   )" : c.tabella + "." + c.codice;
        testo += ", Rtrim(CAST(" + codice + " AS Char)) + ' ' + ISNULL(" + c.tabella + "." + c.descrizione +
                 ",'') AS " + c.alias + (c.blancoDopo ? " " : "");
    }
    return testo;
}

qz::LinkParameters parametri(unsigned maschera) {
    qz::LinkParameters p;
    p.flg_CondVendita = (maschera & 1U) != 0;
    p.flg_Provvigioni = (maschera & 2U) != 0;
    p.flg_Classificazioni = (maschera & 4U) != 0;
    return p;
}

/// The positions of the pieces in the text, each after the one before; fails where one is missing.
void expectInOrder(const std::string& testo, const Testi& pezzi) {
    std::size_t da = 0;
    for (const auto& pezzo : pezzi) {
        const auto trovato = testo.find(pezzo, da);
        ASSERT_NE(trovato, std::string::npos) << pezzo;
        da = trovato + pezzo.size();
    }
}

const qz::SoggettoDettaglio conto{12, 1, Value(std::int64_t{345})};

TEST(IstruzioniDettaglio, SelectTheGroupsOfEveryCombinationOfFlags) {
    for (unsigned maschera = 0; maschera < 8; ++maschera) {
        std::string attesa = soggetto;
        if (maschera & 1U)
            attesa += pagamento + condizioni;
        if (maschera & 2U)
            attesa += provvigioni;
        if (maschera & 4U)
            attesa += colonne(false);
        const auto testo = qz::istruzioneDettaglio(parametri(maschera), conto).text();
        EXPECT_TRUE(testo.starts_with(attesa + " FROM         CG44_CLIFOR LEFT OUTER JOIN")) << maschera << testo;
        EXPECT_TRUE(testo.ends_with(filtro));
    }
}

TEST(IstruzioniDettaglio, SelectTheOverridesOfADivision) {
    for (unsigned maschera = 0; maschera < 8; ++maschera) {
        std::string attesa = soggetto;
        if (maschera & 1U)
            attesa += pagamentoDivisione + condizioni;
        if (maschera & 2U)
            attesa += provvigioni;
        if (maschera & 4U)
            attesa += colonne(true);
        const auto testo = qz::istruzioneDettaglioDivisione(parametri(maschera), conto, "D'1").text();
        EXPECT_TRUE(testo.starts_with(attesa + " FROM          CG44_CLIFOR  LEFT OUTER JOIN VCO1C_CLIFOR")) << testo;
        EXPECT_NE(testo.find("                       AND CO1C_IDDIV_CO1A = 'D''1'"), std::string::npos);
        EXPECT_TRUE(testo.ends_with(filtro));
    }
}

TEST(IstruzioniDettaglio, JoinTheSameTablesWhateverTheFlags) {
    const auto dalFrom = [](const contract::Statement& istruzione) {
        const auto testo = istruzione.text();
        return testo.substr(testo.find(" FROM         "));
    };
    for (unsigned maschera = 1; maschera < 8; ++maschera) {
        EXPECT_EQ(dalFrom(qz::istruzioneDettaglio(parametri(maschera), conto)),
                  dalFrom(qz::istruzioneDettaglio(parametri(0), conto)));
        EXPECT_EQ(dalFrom(qz::istruzioneDettaglioDivisione(parametri(maschera), conto, "1")),
                  dalFrom(qz::istruzioneDettaglioDivisione(parametri(0), conto, "1")));
    }
}

TEST(IstruzioniDettaglio, DoNotAskForTheFlagOfTheRegistry) {
    auto con = parametri(0);
    con.flg_Anagrafica = true;
    EXPECT_EQ(qz::istruzioneDettaglio(con, conto).text(), qz::istruzioneDettaglio(parametri(0), conto).text());
}

TEST(IstruzioniDettaglio, NestTheSalesDataWithRightJoins) {
    expectInOrder(qz::istruzioneDettaglio(parametri(0), conto).text(),
                  {" FROM         CG44_CLIFOR LEFT OUTER JOIN", "MG17_AGENTI ON", "CG16_ANAGGEN CG16_ANAGGEN_AGE ON",
                   "CG62_CONDPAGDES ON", "MG33_RAGGRCF3 RIGHT OUTER JOIN", "MG32_RAGGRCF2 RIGHT OUTER JOIN",
                   "MG31_RAGGRCF1 RIGHT OUTER JOIN", "MG12_SOTTOCAT RIGHT OUTER JOIN", "MG11_CATEG RIGHT OUTER JOIN",
                   "MG10_MACROCAT RIGHT OUTER JOIN", "MG09_ZONE RIGHT OUTER JOIN", "MG08_AREE RIGHT OUTER JOIN",
                   "MG07_MACROAREE RIGHT OUTER JOIN", "MG19_CLIFORVA ON", "CG12_BANCHE ON", "CG13_AGENZIE ON",
                   "CG16_ANAGGEN ON", " WHERE  CG44_DITTA_CG18 = "});
}

TEST(IstruzioniDettaglio, JoinADivisionsTablesInOrder) {
    const auto testo = qz::istruzioneDettaglioDivisione(parametri(0), conto, "1").text();
    expectInOrder(testo,
                  {"LEFT OUTER JOIN VCO1C_CLIFOR", "LEFT OUTER JOIN MG19_CLIFORVA", "LEFT OUTER JOIN MG17_AGENTI",
                   "isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17_AGENTI.MG17_IDAGENTE ",
                   "LEFT OUTER JOIN CG16_ANAGGEN CG16_ANAGGEN_AGE", "LEFT OUTER JOIN CG62_CONDPAGDES",
                   "isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG ",
                   "LEFT OUTER JOIN MG07_MACROAREE", "LEFT OUTER JOIN MG08_AREE", "LEFT OUTER JOIN MG09_ZONE",
                   "LEFT OUTER JOIN MG10_MACROCAT", "LEFT OUTER JOIN MG11_CATEG", "LEFT OUTER JOIN MG12_SOTTOCAT",
                   "LEFT OUTER JOIN MG33_RAGGRCF3", "LEFT OUTER JOIN MG32_RAGGRCF2", "LEFT OUTER JOIN MG31_RAGGRCF1",
                   "LEFT OUTER JOIN CG12_BANCHE", "LEFT OUTER JOIN CG13_AGENZIE", "LEFT OUTER JOIN CG16_ANAGGEN ON"});
    EXPECT_EQ(testo.find("RIGHT"), std::string::npos);
    EXPECT_EQ(testo.find("INNER"), std::string::npos);
}

// Format

std::string formato(FieldType tipo, int scala, const Value& valore) {
    return qz::formattaValore(tipo, scala, valore);
}

TEST(FormattaValore, GroupsWholeNumbersTheItalianWay) {
    EXPECT_EQ(formato(FieldType::integer, 0, 0), "0");
    EXPECT_EQ(formato(FieldType::integer, 0, 999), "999");
    EXPECT_EQ(formato(FieldType::integer, 0, 1000), "1.000");
    EXPECT_EQ(formato(FieldType::bigInt, 0, Value(std::int64_t{-1234567890})), "-1.234.567.890");
    EXPECT_EQ(formato(FieldType::integer, 0, -100), "-100");
}

TEST(FormattaValore, ShowsTwoDecimalsForAnyScaleAboveZero) {
    EXPECT_EQ(formato(FieldType::numeric, 2, Decimal{"1234.5"}), "1.234,50");
    EXPECT_EQ(formato(FieldType::numeric, 4, Decimal{"1234.5678"}), "1.234,57");
    EXPECT_EQ(formato(FieldType::numeric, 1, Decimal{"-0.005"}), "-0,01");
    EXPECT_EQ(formato(FieldType::currency, 4, Decimal{"999999.9999"}), "1.000.000,00");
    EXPECT_EQ(formato(FieldType::decimal, 3, Decimal{"0.004"}), "0,00");
    EXPECT_EQ(formato(FieldType::doublePrecision, 2, 1234.5), "1.234,50");
    EXPECT_EQ(formato(FieldType::numeric, 2, 7), "7,00");
}

TEST(FormattaValore, RoundsToWholeNumbersWithoutAScale) {
    EXPECT_EQ(formato(FieldType::doublePrecision, 0, 1234.5), "1.235");
    EXPECT_EQ(formato(FieldType::doublePrecision, 0, -0.4), "0");
    EXPECT_EQ(formato(FieldType::single, 0, 999.5), "1.000");
}

TEST(FormattaValore, TreatsEveryNumericTypeAlike) {
    for (const auto tipo :
         {FieldType::smallInt, FieldType::integer, FieldType::bigInt, FieldType::unsignedSmallInt,
          FieldType::unsignedInt, FieldType::unsignedBigInt, FieldType::tinyInt, FieldType::unsignedTinyInt,
          FieldType::single, FieldType::doublePrecision, FieldType::currency, FieldType::decimal, FieldType::numeric,
          FieldType::varBinary, FieldType::longVarBinary}) {
        EXPECT_EQ(formato(tipo, 0, 12345), "12.345") << static_cast<int>(tipo);
        EXPECT_EQ(formato(tipo, 2, 12345), "12.345,00") << static_cast<int>(tipo);
    }
}

TEST(FormattaValore, WritesDatesByTheDay) {
    for (const auto tipo : {FieldType::date, FieldType::dbDate, FieldType::dbTime, FieldType::dbTimeStamp})
        EXPECT_EQ(formato(tipo, 0, giorno("09/05/2024")), "09/05/2024");
}

TEST(FormattaValore, TrimsTextsAndAnythingElse) {
    for (const auto tipo : {FieldType::character, FieldType::wideCharacter, FieldType::varChar, FieldType::varWChar,
                            FieldType::longVarChar, FieldType::longVarWChar, FieldType::guid, FieldType::variant})
        EXPECT_EQ(formato(tipo, 0, "  12345 testo  "), "12345 testo");
    EXPECT_EQ(formato(FieldType::varChar, 0, "1000"), "1000");
}

TEST(FormattaValore, ShowsNothingForAMissingValue) {
    for (const auto tipo : {FieldType::integer, FieldType::numeric, FieldType::date, FieldType::varChar})
        for (const auto& valore : {Value(), Value::null()})
            EXPECT_EQ(formato(tipo, 2, valore), "");
}

// Grid

class DettaglioTest : public testing::Test {
protected:
    HeadlessDetailGrid& griglia(qz::Lato& lato) { return dynamic_cast<HeadlessDetailGrid&>(*lato.dettaglio); }
    void risposta() {
        ScriptedRows righe;
        righe.fields = {{"Soggetto", FieldType::varChar, 0, 0},
                        {"Valuta", FieldType::varChar, 0, 0},
                        {"ListinoAnagrafico", FieldType::integer, 0, 0},
                        {"Importo", FieldType::numeric, 18, 4}};
        righe.rows = {{" 345 ROSSI ", Value::null(), 1200, Decimal{"1.5"}}};
        scena.db->answer(" SELECT   RTrim(CAST(CG44_CLIFOR", righe);
    }
    Scena scena;
    qz::Lato& origine = scena.stato.origine;
    qz::Lato& destinazione = scena.stato.destinazione;
};

TEST_F(DettaglioTest, ShowsOneRowAField) {
    risposta();
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    std::vector<Testi> righe;
    for (std::size_t i = 0; i < griglia(origine).rowCount(); ++i)
        righe.push_back({griglia(origine).cell(i, 0), griglia(origine).cell(i, 1)});
    EXPECT_EQ(righe,
              (std::vector<Testi>{
                  {"Soggetto", "345 ROSSI"}, {"Valuta", ""}, {"ListinoAnagrafico", "1.200"}, {"Importo", "1,50"}}));
}

TEST_F(DettaglioTest, LeavesNoRowsForAnUnknownAccount) {
    risposta();
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    scena.db->answer(" SELECT   RTrim(CAST(CG44_CLIFOR", ScriptedRows{});
    qz::CaricaDatiAnagrafici(scena.stato, 346, griglia(origine), "");
    EXPECT_EQ(griglia(origine).rowCount(), 0U);
}

TEST_F(DettaglioTest, ScalesRowsAndColumnsWithTheZoom) {
    risposta();
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    const auto altezza = griglia(origine).rowHeight(0);
    const auto larghezza = griglia(origine).columnWidth(0);
    EXPECT_GT(altezza, 0);
    scena.stato.ridimensionamento->setZoom(14);
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(griglia(origine).rowHeight(i), scena.stato.ridimensionamento->scaled(altezza));
    EXPECT_EQ(griglia(origine).columnWidth(0), scena.stato.ridimensionamento->scaled(larghezza));
}

TEST_F(DettaglioTest, TakesTheOriginsKindOnBothSides) {
    origine.TipoCF = 1;
    destinazione.TipoCF = 0;
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(destinazione), "");
    EXPECT_NE(scena.db->take().at(0).find("CG44_TIPOCF = 1 "), std::string::npos);
}

TEST_F(DettaglioTest, TakesABlankDivisionForNone) {
    for (const auto* divisione : {"", "   "}) {
        qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), divisione);
        EXPECT_EQ(scena.db->take().at(0).find("VCO1C_CLIFOR"), std::string::npos);
    }
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "D1");
    EXPECT_NE(scena.db->take().at(0).find("CO1C_IDDIV_CO1A = 'D1'"), std::string::npos);
}

TEST_F(DettaglioTest, ReportsAnErrorUnderTheNameItSharesWithTheLoad) {
    scena.db->failNth(1, {"HY000", 1, "guasto", contract::ErrorCategory::other});
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    EXPECT_EQ(scena.errori(), Testi{"Form_Load"});
}

/// A connection that can take back the rows it gave.
class ConnessioneCheRiprende : public platform::headless::ScriptedConnection {
public:
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        ScriptedConnection::Read(statement, rows);
        date_ = &rows;
    }
    void riprendi() { date_->setRowCount(0); }

private:
    contract::Snapshot* date_ = nullptr;
};

/// A grid that has the rows taken back when it is given the name in its second row.
class GrigliaCheRiprende : public HeadlessDetailGrid {
public:
    using HeadlessDetailGrid::HeadlessDetailGrid;
    void setCell(std::size_t row, std::size_t column, std::string_view text) override {
        HeadlessDetailGrid::setCell(row, column, text);
        if (row == 1 && column == 0)
            connessione->riprendi();
    }
    std::shared_ptr<ConnessioneCheRiprende> connessione = std::make_shared<ConnessioneCheRiprende>();
};

TEST_F(DettaglioTest, ReportsAnErrorOfTheFormatterUnderItsOwnName) {
    platform::headless::FormContext contesto;
    GrigliaCheRiprende riprende("GRD_DETTDISTINTAORIG", contesto);
    riprende.connessione->answer(
        "", platform::headless::rows({"Soggetto", "Valuta"}, {{Value(" 101 SOGGETTO "), Value(" EUR ")}}));
    riprende.connessione->Open();
    scena.stato.connessione = riprende.connessione;
    for (const int risposta : {3, 5}) {
        scena.host->answers = {risposta};
        qz::CaricaDatiAnagrafici(scena.stato, 101, riprende, "");
        ASSERT_EQ(riprende.rowCount(), 2U);
        EXPECT_EQ(riprende.cell(0, 1), "101 SOGGETTO");
        EXPECT_EQ(riprende.cell(1, 0), "Valuta");
        EXPECT_EQ(riprende.cell(1, 1), "");
    }
    EXPECT_EQ(scena.errori(), (Testi{"CaricaDatiAnagrafici", "CaricaDatiAnagrafici"}));
    EXPECT_EQ(scena.host->errors[0].number, contract::RuntimeError::noCurrentRecord);
}

TEST_F(DettaglioTest, EmptiesAGridWithTheFormLocked) {
    risposta();
    qz::CaricaDatiAnagrafici(scena.stato, 345, griglia(origine), "");
    qz::SvuotaFlex(scena.stato, griglia(origine));
    EXPECT_EQ(griglia(origine).rowCount(), 0U);
    EXPECT_EQ(scena.form().locks(), 1);
    EXPECT_EQ(scena.form().lockDepth(), 0);
}

/// A grid that can not be emptied.
class GrigliaRotta : public HeadlessDetailGrid {
public:
    using HeadlessDetailGrid::HeadlessDetailGrid;
    void clear() override { throw contract::RuntimeError(5, "x"); }
};

TEST_F(DettaglioTest, LeavesTheFormUnlockedWhateverTheAnswerToAFailedEmptying) {
    platform::headless::FormContext contesto;
    GrigliaRotta rotta("GRD_DETTDISTINTAORIG", contesto);
    for (const int risposta : {3, 5, 7}) {
        scena.host->answers = {risposta};
        qz::SvuotaFlex(scena.stato, rotta);
        EXPECT_EQ(scena.form().lockDepth(), 0) << risposta;
    }
    EXPECT_EQ(scena.errori(), (Testi{"SvuotaFlex", "SvuotaFlex", "SvuotaFlex"}));
    EXPECT_EQ(scena.form().locks(), 3);
}

TEST_F(DettaglioTest, WritesTheCodeByItsDecimalText) {
    qz::CaricaDatiAnagrafici(scena.stato, Decimal{"345.00"}, griglia(origine), "");
    EXPECT_TRUE(scena.db->take().at(0).ends_with("   AND  CG44_CLIFOR = 345"));
}

} // namespace

// The form as it stands after its load: place, controls, columns, splitters.

#include "component/Programma.h"
#include "platform/headless/HostInterface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

using contract::Rect;
using contract::Value;
using platform::headless::HeadlessDetailGrid;
using platform::headless::HeadlessMdiContainer;
using platform::headless::HeadlessMenuButton;
using platform::headless::HeadlessSplitter;
using platform::headless::HeadlessTypeList;
using platform::headless::HostInterface;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

TEST(FormLoad, StandsAt100WithoutAPositionOfTheHost) {
    Programma programma;
    programma.apri();
    EXPECT_EQ(programma.form().bounds(), (Rect{100, 100, 14685, 9058}));
}

TEST(FormLoad, TakesAnyOtherPositionOfTheHost) {
    Programma programma;
    programma.interfaccia().Left(-300);
    programma.interfaccia().Top(4000);
    programma.apri();
    EXPECT_EQ(programma.form().bounds(), (Rect{-300, 4000, 14685, 9058}));
}

TEST(FormLoad, TakesAnEmptyABlankAndAZeroPositionForNone) {
    for (const auto& nessuna : {Value(), Value::null(), Value(""), Value("   "), Value(0), Value("0")}) {
        HostInterface ospite;
        Programma programma;
        ospite.ClsGlobal(programma.interfaccia().ClsGlobal());
        ospite.setLeftTop(nessuna, 340);
        programma.interfaccia().ActiveDll(&ospite);
        programma.apri();
        EXPECT_EQ(programma.form().bounds(), (Rect{100, 340, 14685, 9058}));
        programma.classe->CloseForm();
        ospite.setLeftTop("250", nessuna);
        programma.apri();
        EXPECT_EQ(programma.form().bounds(), (Rect{250, 100, 14685, 9058}));
        programma.classe->CloseForm();
    }
}

TEST(FormLoad, FillsTheColourTable) {
    Programma programma;
    programma.apri();
    EXPECT_EQ(programma.classe->form()->colori(),
              (std::array<contract::Color, 4>{0xFEFAE2, 0x80FFFF, 0xC0FFFF, 0x800000}));
}

/// An interface that does not give its window state.
class SenzaStato : public HostInterface {
public:
    using HostInterface::WindowState;
    std::int16_t WindowState() const override { throw contract::RuntimeError(5, "x"); }
};

TEST(FormLoad, ReportsTheContainersLoadUnderItsName) {
    SenzaStato ospite;
    Programma programma;
    ospite.ClsGlobal(programma.interfaccia().ClsGlobal());
    programma.interfaccia().ActiveDll(&ospite);
    programma.apri();
    EXPECT_EQ(programma.errori(), Testi{"MDIActiveX1_FormLoad"});
    EXPECT_TRUE(programma.form().isOpen());
    programma.classe->CloseForm();
}

TEST(FormLoad, ReportsUnderItsName) {
    Programma programma;
    programma.host->journal->failCall("LogClass.setInterface", 1, contract::RuntimeError(5, "x"));
    programma.host->answers = {5};
    programma.apri();
    EXPECT_EQ(programma.errori(), Testi{"Form_Load"});
    EXPECT_EQ(programma.form().bounds(), (Rect{100, 100, 14685, 9058}));
}

TEST(FormLoad, GivesTheWindowStateToTheContainer) {
    Programma programma;
    programma.interfaccia().WindowState(2);
    programma.apri();
    EXPECT_EQ(programma.controllo<HeadlessMdiContainer>("MDIActiveX1").windowState(), 2);
}

TEST(FormLoad, MakesTheLogFirstAndGivesItTheInterface) {
    Programma programma;
    programma.apri();
    const auto& righe = programma.host->journal->lines();
    ASSERT_GE(righe.size(), 2U);
    EXPECT_EQ(righe[0], "ClsGlobal.newLogClass()");
    EXPECT_EQ(righe[1], "LogClass.setInterface(host)");
}

TEST(FormLoad, HasEveryControlOfItsDesign) {
    Programma programma;
    programma.apri();
    const auto nomi = programma.form().controlNames();
    for (const auto* nome : {"MDIActiveX1",
                             "KVT_RESIZEFORM",
                             "FME_ORIGINE",
                             "FME_DESTINAZIONE",
                             "FME_INTESTAZIONEORIGINE",
                             "FME_INTESTAZIONEDESTINAZIONE",
                             "FME_CopiaDistintaOrig",
                             "FME_CopiaDistintaDest",
                             "TRW_DISTINTEORIG",
                             "TRW_DISTINTEDEST",
                             "lblDescDistintaOrig",
                             "lblDescDistintaDest",
                             "TRW_ELEMDISTINTAORIG",
                             "TRW_ELEMDISTINTADEST",
                             "GRD_DETTDISTINTAORIG",
                             "GRD_DETTDISTINTADEST",
                             "txtCercaOrig",
                             "txtCercaDest",
                             "MenuCercaOrig",
                             "MenuCercaDest",
                             "CMD_SPOSTASTRU",
                             "CMD_SPOSTAVALID",
                             "CMD_ESPANDICOLLASSAORIG",
                             "CMD_ESPANDICOLLASSADEST",
                             "CMD_PARAMETRI",
                             "CMD_VISTOPSX",
                             "CMD_VISTOPDX",
                             "GRB_PULSANTI",
                             "PIC_TRANSPARENT",
                             "SPLITTERVerticale",
                             "SPLITTEROrizzOrig",
                             "SPLITTEROrizzDest",
                             "TXT_QZ02_ID",
                             "TXT_QZ02_STATO"})
        EXPECT_NE(std::find(nomi.begin(), nomi.end(), nome), nomi.end()) << nome;
}

TEST(FormLoad, GivesListsGridsAndSearchTheirTips) {
    Programma programma;
    programma.apri();
    for (const std::string lato : {"ORIG", "DEST"}) {
        EXPECT_EQ(programma.controllo<HeadlessTypeList>("TRW_DISTINTE" + lato).toolTip(),
                  "Seleziona la distinta da aggiornare");
        auto& griglia = programma.controllo<HeadlessDetailGrid>("GRD_DETTDISTINTA" + lato);
        EXPECT_EQ(griglia.toolTip(), "Dettaglio dell'anagrafica");
        EXPECT_EQ(griglia.fontName(), "Tahoma");
    }
    for (const std::string lato : {"Orig", "Dest"}) {
        EXPECT_EQ(programma.controllo<platform::headless::HeadlessTextField>("txtCerca" + lato).toolTip(),
                  "Cerca nella distinta");
        auto& menu = programma.controllo<HeadlessMenuButton>("MenuCerca" + lato);
        EXPECT_EQ(menu.toolTip(), "Cerca nella distinta");
        EXPECT_EQ(menu.caption(), "Cerca");
    }
    EXPECT_EQ(programma.pulsante("CMD_PARAMETRI").caption(), "Parametri");
}

TEST(FormLoad, GivesTheTreesTheirColumns) {
    Programma programma;
    programma.apri();
    const auto colonne = [&](const char* nome) {
        std::vector<Testi> tutte;
        for (const auto& colonna : programma.albero(nome).columns())
            if (colonna.visible)
                tutte.push_back({colonna.caption, colonna.field, colonna.name});
        return tutte;
    };
    EXPECT_EQ(colonne("TRW_ELEMDISTINTAORIG"),
              (std::vector<Testi>{{"Codice", "QZ02_CLIFOR_CG44", "trQZ02_CLIFOR_CG44"},
                                  {"Ragione Sociale", "RagioneSociale", "RagioneSociale"},
                                  {"Data inizio", "QZ02_DATAINIZIOVAL", "trQZ02_DATAINIZIOVAL"},
                                  {"Data fine", "QZ02_DATAFINEVAL", "QZ02_DATAFINEVAL"},
                                  {"Seleziona", "", "Seleziona"}}));
    EXPECT_EQ(colonne("TRW_ELEMDISTINTADEST"),
              (std::vector<Testi>{{"Codice", "QZ02_CLIFOR_CG44", "QZ02_CLIFOR_CG44"},
                                  {"Ragione Sociale", "RagioneSociale", "RagioneSociale"},
                                  {"Data inizio", "QZ02_DATAINIZIOVAL", "trQZ02_DATAINIZIOVAL"},
                                  {"Data fine", "QZ02_DATAFINEVAL", "trQZ02_DATAFINEVAL"},
                                  {"Stato", "", "Stato"}}));
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"}) {
        auto& albero = programma.albero(nome);
        EXPECT_EQ(albero.bandCaption(), "Dettaglio distinta");
        EXPECT_EQ(albero.scrollTipColumn(), "trQZ02_ID");
        EXPECT_EQ(albero.columns()[0].name, "trQZ02_ID");
        EXPECT_FALSE(albero.columns()[0].visible);
        EXPECT_EQ(albero.columns()[3].name, "trQZ02_DATAINIZIOVAL");
    }
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").columns()[5].checkedValue, "True");
}

TEST(FormLoad, LetsOnlyTheDestinationsDatesBeEdited) {
    Programma programma;
    programma.apri();
    Testi modificabili;
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"})
        for (const auto& colonna : programma.albero(nome).columns())
            if (colonna.editable)
                modificabili.push_back(std::string(nome) + "." + colonna.name);
    EXPECT_EQ(modificabili,
              (Testi{"TRW_ELEMDISTINTADEST.trQZ02_DATAINIZIOVAL", "TRW_ELEMDISTINTADEST.trQZ02_DATAFINEVAL"}));
}

TEST(FormLoad, SetsUpTheSplitters) {
    Programma programma;
    programma.apri();
    const auto imposta = [&](const char* nome) -> const contract::Splitter::Settings& {
        auto& divisorio = programma.controllo<HeadlessSplitter>(nome);
        EXPECT_TRUE(divisorio.visible());
        EXPECT_EQ(divisorio.settings().barColor, 0xC0C0C0U);
        EXPECT_EQ(divisorio.settings().barSize, 100);
        return divisorio.settings();
    };
    const auto& verticale = imposta("SPLITTERVerticale");
    EXPECT_EQ(verticale.firstPane, "FME_ORIGINE");
    EXPECT_EQ(verticale.secondPane, "FME_DESTINAZIONE");
    EXPECT_EQ(verticale.firstLimit, 2000);
    EXPECT_EQ(verticale.secondLimit, 2000);
    EXPECT_EQ(verticale.start, 50);
    EXPECT_TRUE(verticale.liveDrag);
    EXPECT_TRUE(verticale.sideBySide);
    EXPECT_FALSE(verticale.locked);
    for (const std::string lato : {"Orig", "Dest"}) {
        const auto& orizzontale = imposta(("SPLITTEROrizz" + lato).c_str());
        const std::string maiuscolo = lato == "Orig" ? "ORIG" : "DEST";
        EXPECT_EQ(orizzontale.firstPane, "TRW_ELEMDISTINTA" + maiuscolo);
        EXPECT_EQ(orizzontale.secondPane, "GRD_DETTDISTINTA" + maiuscolo);
        EXPECT_EQ(orizzontale.firstLimit, 500);
        EXPECT_EQ(orizzontale.secondLimit, 300);
        EXPECT_EQ(orizzontale.start, 90);
        EXPECT_TRUE(orizzontale.liveDrag);
        EXPECT_FALSE(orizzontale.sideBySide);
        EXPECT_FALSE(orizzontale.locked);
        EXPECT_TRUE(orizzontale.keepShare);
    }
}

TEST(FormLoad, LaysTheSplittersOverWhatTheyDivide) {
    Programma programma;
    programma.apri();
    const auto posto = [&](const std::string& nome) { return programma.controllo<contract::Control>(nome).bounds(); };
    const auto verticale = posto("SPLITTERVerticale");
    const auto orig = posto("FME_ORIGINE");
    const auto dest = posto("FME_DESTINAZIONE");
    EXPECT_EQ(verticale, (Rect{orig.left, orig.top, dest.left + dest.width - orig.left, orig.height}));
    for (const std::string lato : {"Orig", "Dest"}) {
        const std::string maiuscolo = lato == "Orig" ? "ORIG" : "DEST";
        const auto albero = posto("TRW_ELEMDISTINTA" + maiuscolo);
        const auto griglia = posto("GRD_DETTDISTINTA" + maiuscolo);
        EXPECT_EQ(posto("SPLITTEROrizz" + lato),
                  (Rect{albero.left, albero.top, albero.width, griglia.top + griglia.height - albero.top}));
    }
}

TEST(FormLoad, GivesTreesTheirFontWithoutATheme) {
    Programma programma;
    programma.host->hasTheme = false;
    programma.apri();
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"})
        EXPECT_EQ(programma.albero(nome).fontName(), "Tahoma");
}

} // namespace

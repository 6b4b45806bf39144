#include "component/Programma.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using contract::Rect;
using contract::TreeColor;
using contract::Value;
using platform::headless::HeadlessDetailGrid;
using platform::headless::HeadlessMdiContainer;
using platform::headless::HeadlessMenuButton;
using platform::headless::HeadlessResizeControl;
using platform::headless::HeadlessSplitter;
using platform::headless::HeadlessTypeList;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

/// Those of the lines that are in the list, in their order.
Testi soloQueste(const Testi& righe, const Testi& cercate) {
    Testi trovate;
    for (const auto& riga : righe)
        for (const auto& cercata : cercate)
            if (cercata.starts_with('~') ? riga == cercata : riga.starts_with(cercata))
                trovate.push_back(cercata);
    return trovate;
}

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
    for (const std::string lato : {"Orig", "Dest"}) {
        const auto& orizzontale = imposta(("SPLITTEROrizz" + lato).c_str());
        const std::string maiuscolo = lato == "Orig" ? "ORIG" : "DEST";
        EXPECT_EQ(orizzontale.firstPane, "TRW_ELEMDISTINTA" + maiuscolo);
        EXPECT_EQ(orizzontale.secondPane, "GRD_DETTDISTINTA" + maiuscolo);
        EXPECT_EQ(orizzontale.firstLimit, 500);
        EXPECT_EQ(orizzontale.secondLimit, 300);
        EXPECT_EQ(orizzontale.start, 90);
    }
}

TEST(FormActivate, RegistersTheControlsForResizingInOrder) {
    Programma programma;
    programma.apri();
    const std::vector<std::pair<std::string, int>> attese{
        {"TRW_DISTINTEORIG", 7},        {"TRW_DISTINTEDEST", 7},
        {"TRW_ELEMDISTINTAORIG", 15},   {"TRW_ELEMDISTINTADEST", 15},
        {"GRD_DETTDISTINTAORIG", 14},   {"GRD_DETTDISTINTADEST", 14},
        {"FME_INTESTAZIONEORIGINE", 7}, {"FME_INTESTAZIONEDESTINAZIONE", 7},
        {"SPLITTERVerticale", 15},      {"SPLITTEROrizzOrig", 11},
        {"SPLITTEROrizzDest", 15}};
    EXPECT_EQ(programma.controllo<HeadlessResizeControl>("KVT_RESIZEFORM").registrations(), attese);
}

TEST(FormActivate, StartsUpInOrder) {
    Programma programma;
    programma.apri();
    const Testi passi{"ActiveFrame.Status()",
                      "Navigator.setStatus(0)",
                      "ConnectionService.ConnectionString()",
                      "ClsGlobal.newConnectionProvider()",
                      "ConnectionProvider.newConnection()",
                      "Connection.SetConnectionString(scripted)",
                      "Connection.Open()",
                      "CompanyService.Company()",
                      "ClsGlobal.newVirtualFrame()",
                      "VirtualFrame.newRecordset()",
                      "VirtualFrame.newFieldList()",
                      "FME_CopiaDistintaOrig.initialise(",
                      "FME_CopiaDistintaDest.initialise(",
                      "ClsGlobal.applyProgramMode(FRMQZ_COPIADISTINTA, 0)",
                      "Navigator.refreshState()",
                      "ScriptModel.runFormEvent(tsOpen)",
                      "FME_CopiaDistintaOrig.load(",
                      "FME_CopiaDistintaDest.load(",
                      "ClsGlobal.newWorkflowState()",
                      "ClsGlobal.newTheme()"};
    Testi attesi = passi;
    attesi.insert(attesi.begin() + 11, {"VirtualFrame.newFieldList()", "VirtualFrame.newRecordset()"});
    EXPECT_EQ(soloQueste(programma.host->journal->lines(), passi), attesi);
}

TEST(FormActivate, SendsItsFirstStatementsInOrder) {
    Programma programma;
    programma.apri();
    const auto istruzioni = programma.db->take();
    ASSERT_GE(istruzioni.size(), 4U);
    EXPECT_EQ(istruzioni[0], "SELECT * FROM QZ02_DISTINTA WHERE 1=0 ");
    EXPECT_TRUE(istruzioni[1].ends_with("QZ01_INDTIPOSOGG = 0 "));
    EXPECT_TRUE(istruzioni[2].ends_with("QZ01_INDTIPOSOGG = 1 "));
    EXPECT_TRUE(istruzioni[3].starts_with(" SELECT QZ01_IDDIV_CO1A FROM"));
    EXPECT_EQ(istruzioni.back().substr(0, 40), " SELECT   QZ03_ID_WF02 AS StatoLegame,  ");
}

TEST(FormActivate, HandsItsConnectionToTheHost) {
    Programma programma;
    programma.apri();
    EXPECT_EQ(programma.interfaccia().Connection(), programma.db);
    EXPECT_TRUE(programma.db->IsOpen());
    EXPECT_EQ(programma.db->ConnectionString(), "scripted");
}

TEST(FormActivate, InitialisesBothFramesWithTheSharedEmptyRecordSet) {
    Programma programma;
    programma.apri();
    const std::string argomenti = "(host, connection, records, SELECT * FROM QZ02_DISTINTA WHERE 1=0 , QZ02_ID)";
    EXPECT_EQ(programma.host->journal->count("FME_CopiaDistintaOrig.initialise" + argomenti), 1U);
    EXPECT_EQ(programma.host->journal->count("FME_CopiaDistintaDest.initialise" + argomenti), 1U);
    EXPECT_EQ(programma.db->statements("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ").size(), 1U);
}

TEST(FormActivate, AddsTheSearchItemsToBothMenus) {
    Programma programma;
    programma.apri();
    for (const auto* nome : {"MenuCercaOrig", "MenuCercaDest"}) {
        auto& menu = programma.controllo<HeadlessMenuButton>(nome);
        EXPECT_EQ(menu.itemKeys(), (Testi{"RagSoc", "Codice"}));
        EXPECT_EQ(menu.itemCaption("RagSoc"), "Rag. Sociale");
        EXPECT_EQ(menu.itemCaption("Codice"), "Codice");
    }
}

TEST(FormActivate, StartsUpOnce) {
    Programma programma;
    programma.mostra();
    programma.host->frameStatus = 2;
    programma.form().activate();
    EXPECT_EQ(programma.host->journal->take(), (Testi{"ActiveFrame.Status()", "Navigator.setStatus(2)"}));
    EXPECT_TRUE(programma.db->take().empty());
}

TEST(FormActivate, PassesNoStatusWithoutAFrame) {
    Programma programma;
    programma.interfaccia().ActiveFrame(nullptr);
    programma.mostra();
    programma.form().activate();
    EXPECT_TRUE(programma.host->journal->take().empty());
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, IgnoresErrorsOfTheRefresh) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.setStatus", 1, contract::RuntimeError(5, "x"));
    programma.form().activate();
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, RunsNoScriptEventWithoutAScriptModel) {
    Programma programma;
    programma.host->hasScriptModel = false;
    programma.apri();
    EXPECT_EQ(programma.host->journal->count("Navigator.refreshState"), 1U);
    EXPECT_EQ(programma.host->journal->count("ScriptModel."), 0U);
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, FiltersByTheCompanyItReadOnce) {
    Programma programma;
    programma.host->company = 42;
    programma.apri();
    programma.host->company = 43;
    EXPECT_EQ(programma.db->statements("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 42 ").size(), 2U);
}

// Theme

TEST(ColoriSTD, ReadsTheColoursByNameInTheTreesOrder) {
    Programma programma;
    programma.apri();
    const auto& righe = programma.host->journal->lines();
    Testi nomi;
    for (const auto& riga : righe)
        if (riga.starts_with("Theme.color("))
            nomi.push_back(riga.substr(12, riga.size() - 13));
    const Testi albero{"GridHeaderColor",        "GridFontColor",          "GridBorderColor", "GridFooterColor",
                       "GridHeaderFontColor",    "GridHideSelectionColor", "GridFontColor",   "GridHighLightColor",
                       "GridHighLightFontColor", "GridFontColor",          "GridHeaderColor", "GridHeaderFontColor"};
    ASSERT_GE(nomi.size(), 32U);
    EXPECT_EQ((Testi{nomi.begin(), nomi.begin() + 12}), albero);
    const auto secondo = nomi.begin() + 16;
    EXPECT_EQ((Testi{secondo, secondo + 12}), albero);
}

TEST(ColoriSTD, ColoursTreesAndGrids) {
    Programma programma;
    programma.apri();
    const auto& colori = programma.host->colors;
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"}) {
        auto& albero = programma.albero(nome);
        EXPECT_EQ(albero.color(TreeColor::header), colori.at("GridHeaderColor"));
        EXPECT_EQ(albero.color(TreeColor::border), colori.at("GridBorderColor"));
        EXPECT_EQ(albero.color(TreeColor::groupText), colori.at("GridHeaderFontColor"));
        EXPECT_EQ(albero.headerColors()->at(0), colori.at("GridHeaderColor"));
        EXPECT_EQ(albero.headerColors()->at(1), colori.at("GridHeaderFontColor"));
        EXPECT_EQ(albero.columnColors()->at(0), colori.at("GridHeaderColor"));
        EXPECT_EQ(albero.columnColors()->at(1), colori.at("GridFontColor"));
        EXPECT_EQ(albero.fontName(), "Tahoma");
    }
    for (const auto* nome : {"GRD_DETTDISTINTAORIG", "GRD_DETTDISTINTADEST"}) {
        auto& griglia = programma.controllo<HeadlessDetailGrid>(nome);
        EXPECT_EQ(griglia.highLightColor(), colori.at("GridHighLightFontColor"));
        EXPECT_EQ(griglia.textColor(), colori.at("GridFontColor"));
        EXPECT_EQ(griglia.fixedColor(), colori.at("GridHeaderColor"));
    }
}

TEST(ColoriSTD, ChangesNothingWithoutATheme) {
    Programma programma;
    programma.host->hasTheme = false;
    programma.apri();
    EXPECT_TRUE(programma.host->errors.empty());
    EXPECT_FALSE(programma.albero("TRW_ELEMDISTINTAORIG").color(TreeColor::header));
}

TEST(ColoriSTD, ReportsAThemeThatCannotBeMade) {
    Programma programma;
    programma.host->journal->failCall("ClsGlobal.newTheme", 1, contract::RuntimeError(429, "Impossibile creare"));
    programma.apri();
    EXPECT_EQ(programma.errori(), Testi{"ColoriSTD"});
}

// Closing

TEST(FormQueryUnload, AsksTheFrameThenTheScripts) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    const auto righe = programma.host->journal->take();
    EXPECT_EQ((Testi{righe.begin(), righe.begin() + 5}),
              (Testi{"ActiveFrame.Status()", "Navigator.setStatus(0)", "VirtualFrameHandler.closeQuery(2, true)",
                     "ScriptModel.runFormEvent(tsClose)", "ScriptModel.close()"}));
}

TEST(FormQueryUnload, DoesNotAskTheScriptsWhenTheFrameRefuses) {
    Programma programma;
    programma.mostra();
    programma.host->frameRefusesClose = true;
    programma.classe->CloseForm();
    EXPECT_EQ(programma.host->journal->take(),
              (Testi{"ActiveFrame.Status()", "Navigator.setStatus(0)", "VirtualFrameHandler.closeQuery(2, true)"}));
}

TEST(FormUnLoad, ReleasesInOrder) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    const auto righe = programma.host->journal->take();
    const Testi attese{"~WorkflowState",
                       "Navigator.releaseObjectModels()",
                       "VirtualFrameHandler.close(1)",
                       "~VirtualFrameHandler 1",
                       "VirtualFrameHandler.close(2)",
                       "~VirtualFrameHandler 2",
                       "~VirtualFrame",
                       "Connection.Close()",
                       "~LogClass"};
    EXPECT_EQ(soloQueste(righe, attese), attese);
    EXPECT_EQ(righe.back(), "~LogClass");
    EXPECT_FALSE(programma.db->IsOpen());
}

TEST(FormUnLoad, SendsNoStatementAnyMore) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    EXPECT_TRUE(programma.db->take().empty());
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormUnLoad, GoesOnReleasingWhenAStepFailsAndIsIgnored) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.releaseObjectModels", 1, contract::RuntimeError(5, "x"));
    programma.host->answers = {5};
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_EQ(programma.errori(), Testi{"Form_UnLoad"});
    EXPECT_FALSE(programma.db->IsOpen());
}

TEST(FormUnLoad, LeavesTheHostFreeEvenWhenAStepFails) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.releaseObjectModels", 1, contract::RuntimeError(5, "x"));
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
}

TEST(Form, CanBeShownAgainAfterAClose) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    programma.apri();
    EXPECT_TRUE(programma.form().isOpen());
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 3U);
}

TEST(EsciForm, SaysWhyAndUnloads) {
    Programma programma;
    programma.mostra();
    programma.classe->companyChanged();
    EXPECT_EQ(programma.messaggi(),
              Testi{"Cambiando l'azienda di lavoro è necessario uscire e rientrare nel programma."});
    EXPECT_EQ(programma.host->messages[0].style, 48);
    EXPECT_EQ(programma.host->messages[0].title, "Manutenzione distinte");
    EXPECT_TRUE(programma.form().isGone());
}

TEST(ChangeStatus, TellsTheScriptsWhetherTheFrameMayClose) {
    Programma programma;
    programma.mostra();
    auto& frame = programma.controllo<platform::headless::HeadlessDataFrame>("FME_CopiaDistintaDest");
    frame.enterStatus(0);
    EXPECT_EQ(programma.host->scriptCanClose, true);
    programma.host->frameRefusesClose = true;
    frame.enterStatus(0);
    EXPECT_EQ(programma.host->scriptCanClose, false);
    EXPECT_EQ(programma.host->journal->count("VirtualFrameHandler.closeQuery(2, true)"), 2U);
    frame.enterStatus(1);
    frame.enterStatus(2);
    EXPECT_EQ(programma.host->journal->count("VirtualFrameHandler.closeQuery(2, true)"), 2U);
}

TEST(ExecuteFormEvent, KnowsTwoEvents) {
    Programma programma;
    programma.mostra();
    programma.classe->form()->ExecuteFormEvent("tsAltro");
    EXPECT_TRUE(programma.host->journal->take().empty());
    programma.classe->form()->ExecuteFormEvent("tsClose");
    EXPECT_EQ(programma.host->journal->take(), Testi{"ScriptModel.runFormEvent(tsClose)"});
    programma.classe->form()->ExecuteFormEvent("tsOpen");
    EXPECT_EQ(programma.host->journal->take(), (Testi{"Navigator.refreshState()", "ScriptModel.runFormEvent(tsOpen)"}));
}

} // namespace

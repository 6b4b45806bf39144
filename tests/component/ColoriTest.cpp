// The theme's colours on trees and grids.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::TreeColor;
using platform::headless::HeadlessDetailGrid;
using prove::Programma;

namespace {

using Testi = std::vector<std::string>;

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
    // Then band and column headers, and the columns; the grids come after both trees.
    const Testi intestazioni{"GridHeaderColor", "GridHeaderFontColor", "GridHeaderColor", "GridFontColor"};
    const Testi griglia{"GridHighLightFontColor", "GridFontColor", "GridHeaderColor"};
    Testi attesi;
    for (const auto* parte : {&albero, &intestazioni, &albero, &intestazioni, &griglia, &griglia})
        attesi.insert(attesi.end(), parte->begin(), parte->end());
    EXPECT_EQ(nomi, attesi);
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

} // namespace

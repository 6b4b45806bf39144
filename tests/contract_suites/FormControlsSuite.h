#pragma once

// Names of controls, and what simple controls keep to.

#include "contract_suites/FormFixture.h"

#include <string>
#include <vector>

namespace contract_suites {

TEST_P(FormSuite, NamesAreUniqueInTheForm) {
    auto& form = dialog();
    auto& frame = form.addFrame("NOME", nullptr);
    EXPECT_EQ(errorOf([&] { form.addButton("NOME", nullptr); }), 457);
    EXPECT_EQ(errorOf([&] { form.addLabel("NOME", &frame); }), 457);
    EXPECT_EQ(errorOf([&] { form.addResizeControl("NOME"); }), 457);
    EXPECT_EQ(errorOf([&] { form.addPopupMenu("NOME"); }), 457);
    form.addPopupMenu("MENU");
    EXPECT_EQ(errorOf([&] { form.addPopupMenu("MENU"); }), 457);
}

// Controls

TEST_P(FormSuite, MenuButtonsKeepTheirItemsInOrderAndTheirKeysUnique) {
    auto& menu = dialog().addMenuButton("MenuCerca", nullptr);
    menu.addItem("RagSoc", "Rag. Sociale");
    menu.addItem("Codice", "Codice");
    EXPECT_EQ(errorOf([&] { menu.addItem("RagSoc", "Altro"); }), 457);
    EXPECT_EQ(menu.itemKeys(), (std::vector<std::string>{"RagSoc", "Codice"}));
}

TEST_P(FormSuite, AComboBoxHasNoPositionUntilItIsGivenOne) {
    auto& combo = dialog().addComboBox("CMB", nullptr);
    std::vector<int> changes;
    combo.Change = [&] { changes.push_back(combo.position()); };
    combo.addItem("zero");
    combo.addItem("uno");
    EXPECT_EQ(combo.itemCount(), 2);
    EXPECT_EQ(combo.position(), -1);
    EXPECT_TRUE(changes.empty());
    combo.setPosition(1);
    combo.setPosition(1);
    EXPECT_EQ(changes, std::vector<int>{1});
    combo.setPosition(2);
    EXPECT_EQ(combo.position(), -1);
    combo.setPosition(0);
    combo.setPosition(-7);
    EXPECT_EQ(combo.position(), -1);
    EXPECT_EQ(changes, (std::vector<int>{1, -1, 0, -1}));
}

TEST_P(FormSuite, ADateFieldKeepsItsTextAndKnowsDays) {
    auto& date = dialog().addDateField("TXT", nullptr);
    EXPECT_FALSE(date.hasValidDate());
    date.setText("31/12/2024  ");
    EXPECT_EQ(date.text(), "31/12/2024  ");
    EXPECT_TRUE(date.hasValidDate());
    for (const char* none : {"30/02/2024", "31/04/2024", "29/02/2023", "ieri"}) {
        date.setText(none);
        EXPECT_FALSE(date.hasValidDate()) << none;
    }
    date.setText("29/02/2024");
    EXPECT_TRUE(date.hasValidDate());
    date.setText("");
    EXPECT_FALSE(date.hasValidDate());
}

TEST_P(FormSuite, ASplitterTakesItsStartAndBoundsItsShare) {
    auto& splitter = dialog().addSplitter("SPLITTER", nullptr);
    int moves = 0;
    splitter.Move = [&] { ++moves; };
    contract::Splitter::Settings settings;
    settings.firstPane = "A";
    settings.start = 90;
    splitter.setUp(settings);
    EXPECT_EQ(splitter.settings().firstPane, "A");
    EXPECT_DOUBLE_EQ(splitter.share(), 90.0);
    splitter.setShare(120.0);
    EXPECT_DOUBLE_EQ(splitter.share(), 100.0);
    splitter.setShare(-3.0);
    EXPECT_DOUBLE_EQ(splitter.share(), 0.0);
    EXPECT_EQ(moves, 0);
    splitter.setBounds({10, 20, 3000, 2000});
    splitter.setBar({10, 1000, 3000, 100});
    EXPECT_EQ(splitter.bounds(), (contract::Rect{10, 20, 3000, 2000}));
}

TEST_P(FormSuite, ACheckBoxAndALabelKeepWhatTheyAreGiven) {
    auto& form = dialog();
    auto& check = form.addCheckBox("CHK", nullptr);
    EXPECT_FALSE(check.checked());
    check.setChecked(true);
    check.setCaption("&Anagrafica");
    EXPECT_TRUE(check.checked());
    EXPECT_EQ(check.caption(), "&Anagrafica");
    auto& label = form.addLabel("KVT_LABEL1", nullptr);
    label.setCaption("Data fine legame");
    EXPECT_EQ(label.caption(), "Data fine legame");
    label.setToolTip("spiegazione");
    EXPECT_EQ(label.toolTip(), "spiegazione");
}

} // namespace contract_suites

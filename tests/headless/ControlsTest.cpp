#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostJournal.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using contract::RuntimeError;
using namespace platform::headless;

namespace {

template <class Action> int errorOf(Action action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(HeadlessButton, IsNotClickedWhileHiddenOrDisabled) {
    FormContext context;
    HeadlessButton button("CMD", context);
    int clicks = 0;
    button.ButtonClick = [&] { ++clicks; };
    button.setEnabled(false);
    EXPECT_FALSE(button.click());
    button.setEnabled(true);
    button.setVisible(false);
    EXPECT_FALSE(button.click());
    button.setVisible(true);
    EXPECT_TRUE(button.click());
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(context.focused, &button);
}

TEST(HeadlessPopupMenu, IsChosenFromWhileOpen) {
    HeadlessPopupMenu menu("MENU");
    menu.addItem({"uno", "Uno"});
    menu.addItem({"due", "Due"});
    EXPECT_EQ(errorOf([&] { menu.addItem({"uno", "Altro"}); }), 457);
    EXPECT_EQ(errorOf([&] { menu.setItemEnabled("tre", false); }), 3265);
    std::vector<std::string> chosen;
    menu.Click = [&](const std::string& item) {
        EXPECT_FALSE(menu.isOpen());
        chosen.push_back(item);
    };
    EXPECT_FALSE(menu.choose("uno"));
    menu.setItemEnabled("due", false);
    menu.showAtMouse();
    EXPECT_FALSE(menu.choose("due"));
    EXPECT_FALSE(menu.choose("tre"));
    EXPECT_TRUE(menu.isOpen());
    EXPECT_TRUE(menu.choose("uno"));
    EXPECT_EQ(chosen, std::vector<std::string>{"uno"});
}

TEST(HeadlessDetailGrid, HasTwoColumnsAndTheRowsItWasGiven) {
    FormContext context;
    HeadlessDetailGrid grid("GRD", context);
    grid.setRowCount(2);
    grid.setCell(1, 1, "x");
    EXPECT_EQ(grid.cell(1, 1), "x");
    EXPECT_EQ(grid.cell(0, 0), "");
    for (const auto& [row, column] : std::vector<std::pair<std::size_t, std::size_t>>{{2, 0}, {0, 2}}) {
        EXPECT_EQ(errorOf([&] { grid.setCell(row, column, "x"); }), 30009);
        EXPECT_EQ(errorOf([&] { static_cast<void>(grid.cell(row, column)); }), 30009);
    }
    grid.clear();
    EXPECT_EQ(grid.rowCount(), 0U);
    grid.setRowCount(2);
    EXPECT_EQ(grid.cell(1, 1), "");
}

TEST(HeadlessSplitter, MovesUnlessItIsLocked) {
    FormContext context;
    HeadlessSplitter splitter("SPLITTER", context);
    int moves = 0;
    splitter.Move = [&] { ++moves; };
    EXPECT_TRUE(splitter.drag(30));
    EXPECT_EQ(splitter.share(), 30);
    contract::Splitter::Settings settings;
    settings.locked = true;
    splitter.setUp(settings);
    EXPECT_FALSE(splitter.drag(10));
    EXPECT_EQ(splitter.share(), 50);
    EXPECT_EQ(moves, 1);
}

TEST(HeadlessDateField, KeepsWhatIsNoDateAndKnowsIt) {
    FormContext context;
    HeadlessDateField field("TXT", context);
    EXPECT_TRUE(field.type("29/02/2024 "));
    EXPECT_FALSE(field.type("29/02/2023"));
    EXPECT_EQ(field.text(), "29/02/2023");
    EXPECT_TRUE(field.mistyped());
    EXPECT_TRUE(field.type(""));
    EXPECT_FALSE(field.mistyped());
    EXPECT_FALSE(field.hasValidDate());
}

TEST(HeadlessForm, GivesItsControlsByNameAndKind) {
    HeadlessFactory factory;
    const auto form = factory.newDialog("FRM");
    auto& frame = form->addFrame("FME", nullptr);
    form->addButton("CMD", &frame);
    form->addPopupMenu("MENU");
    auto& headless = *factory.form("FRM");
    EXPECT_EQ(headless.control<HeadlessButton>("CMD").name(), "CMD");
    EXPECT_EQ(headless.control<HeadlessPopupMenu>("MENU").name(), "MENU");
    EXPECT_EQ(errorOf([&] { headless.control<HeadlessFrame>("CMD"); }), 13);
    EXPECT_EQ(errorOf([&] { headless.control<HeadlessButton>("NONE"); }), 3265);
    EXPECT_EQ(headless.parentOf("CMD"), &frame);
    EXPECT_EQ(headless.parentOf("FME"), nullptr);
}

TEST(HeadlessForm, SaysWhenAModalFormCouldNeverBeClosed) {
    HeadlessFactory factory;
    const auto form = factory.newDialog("FRM");
    form->QueryUnload = [](bool& cancel) { cancel = true; };
    EXPECT_EQ(errorOf([&] { form->show(true); }), 400);
}

TEST(HeadlessFactory, KnowsTheFormsThatExist) {
    HeadlessFactory factory;
    EXPECT_EQ(factory.form("FRM"), nullptr);
    {
        const auto one = factory.newDialog("FRM");
        const auto two = factory.newDocumentForm("FRM");
        EXPECT_EQ(factory.form("FRM"), two.get());
        EXPECT_FALSE(factory.form("FRM")->isDialog());
    }
    EXPECT_EQ(factory.form("FRM"), nullptr);
}

TEST(HostJournal, FailsTheCallItWasAskedToFail) {
    HostJournal journal;
    journal.failCall("A.b", 2, RuntimeError(5, "x"));
    EXPECT_NO_THROW(journal.call("A.b"));
    EXPECT_NO_THROW(journal.call("A.c", {"1", "2"}));
    EXPECT_EQ(errorOf([&] { journal.call("A.b"); }), 5);
    EXPECT_NO_THROW(journal.call("A.b"));
    EXPECT_EQ(journal.lines(), (std::vector<std::string>{"A.b()", "A.c(1, 2)", "A.b()", "A.b()"}));
    EXPECT_EQ(journal.count("A.b"), 3U);
    EXPECT_EQ(journal.first("A.c"), 1U);
    EXPECT_EQ(journal.take().size(), 4U);
    EXPECT_TRUE(journal.take().empty());
}

} // namespace

#include "qt/FormFixture.h"

#include "contract/RuntimeError.h"

#include <QMenuBar>
#include <QTimer>

namespace qt_tests {

namespace {

using platform::qt::Appearance;
using platform::qt::FormWindow;
using platform::qt::Session;

class FormWindowTest : public FormTest {};

TEST_F(FormWindowTest, TheSessionKnowsWhatStands) {
    auto& doc = document("FRM");
    EXPECT_EQ(Session::instance().front(), nullptr);
    doc.show(false);
    ASSERT_NE(Session::instance().front(), nullptr);
    EXPECT_EQ(Session::instance().front()->formName(), "FRM");
    auto dialog = stage.factory->newDialog("DLG");
    std::vector<QString> order;
    Session::instance().modalOpened = [&](FormWindow& opened) {
        EXPECT_TRUE(opened.isModal());
        EXPECT_EQ(Session::instance().front(), &opened);
        auto second = stage.factory->newDocumentForm("SECONDO");
        second->show(false);
        for (const auto* stands : Session::instance().forms())
            order.push_back(stands->formName());
        EXPECT_EQ(Session::instance().front(), &opened);
    };
    dialog->show(true);
    EXPECT_EQ(order, (std::vector<QString>{"FRM", "SECONDO", "DLG"}));
    EXPECT_EQ(Session::instance().find(id("DLG")), nullptr);
    EXPECT_EQ(Session::instance().front()->formName(), "FRM");
}

TEST_F(FormWindowTest, AFormThatDiesLeavesTheSession) {
    document("FRM").show(false);
    form.reset();
    EXPECT_TRUE(Session::instance().forms().empty());
}

TEST_F(FormWindowTest, ADocumentFormStandsInTheDocumentAreaAtItsPixels) {
    auto& doc = document("FRM");
    doc.setBounds({100, 100, 14685, 9058});
    doc.show(false);
    ASSERT_EQ(stage.area->subWindowList().size(), 1);
    const auto* sub = stage.area->subWindowList().first();
    EXPECT_TRUE(sub->isVisible());
    EXPECT_EQ(sub->pos(), QPoint(7, 7));
    EXPECT_EQ(sub->width(), Appearance::pixels(100 + 14685) - 7);
    EXPECT_EQ(sub->height(), Appearance::pixels(100 + 9058) - 7);
}

TEST_F(FormWindowTest, TheUsersResizingChangesOnlyWhatHeChanged) {
    auto& doc = document("FRM");
    doc.setBounds({100, 100, 14685, 9058});
    doc.show(false);
    auto* sub = stage.area->subWindowList().first();
    const auto height = sub->height();
    sub->resize(sub->width() + 40, height);
    EXPECT_EQ(doc.bounds().left, 100);
    EXPECT_EQ(doc.bounds().width, sub->width() * 15);
    EXPECT_EQ(doc.bounds().height, 9058);
    sub->move(50, 7);
    EXPECT_EQ(doc.bounds().left, 750);
    EXPECT_EQ(doc.bounds().top, 100);
}

TEST_F(FormWindowTest, MaximisedItFillsTheAreaWithoutAFrame) {
    stage.window.menuBar()->addMenu(QStringLiteral("Programmi"));
    auto& doc = document("FRM");
    auto& container = doc.addMdiContainer("MDI");
    container.FormLoad = [&] { container.setWindowState(2); };
    doc.show(false);
    QCoreApplication::processEvents();
    const auto* viewport = stage.area->viewport();
    EXPECT_EQ(doc.clientWidth(), viewport->width() * 15);
    EXPECT_EQ(doc.clientHeight(), viewport->height() * 15);
    EXPECT_EQ(container.windowState(), 2);
    container.setWindowState(0);
    EXPECT_EQ(doc.bounds(), (contract::Rect{150, 150, 15000, 9000}));
}

TEST_F(FormWindowTest, AnotherLookLeavesTheKeyboardWhereItWas) {
    auto& doc = document();
    auto& container = doc.addMdiContainer("MDI");
    for (const auto* name : {"UNO", "DUE", "TRE", "QUATTRO", "CINQUE", "SEI", "SETTE"})
        doc.addTextField(name, nullptr).setBounds({100, 100, 3000, 400});
    container.FormLoad = [&] { container.setWindowState(2); };
    doc.show(false);
    QCoreApplication::processEvents();
    script("DUE").widget()->setFocus();
    ASSERT_TRUE(script("DUE").widget()->hasFocus());
    auto& look = platform::qt::Appearance::instance();
    look.setTheme(platform::qt::ThemeKind::dark);
    EXPECT_TRUE(script("DUE").widget()->hasFocus());
    look.setTheme(platform::qt::ThemeKind::light);
    EXPECT_TRUE(script("DUE").widget()->hasFocus());
    look.setZoom(12);
    EXPECT_TRUE(script("DUE").widget()->hasFocus());
    QCoreApplication::processEvents();
    EXPECT_TRUE(script("DUE").widget()->hasFocus());
}

TEST_F(FormWindowTest, TheContainerKnowsThreeStates) {
    auto& container = document("FRM").addMdiContainer("MDI");
    EXPECT_THROW(container.setWindowState(3), contract::RuntimeError);
    EXPECT_THROW(container.setWindowState(-1), contract::RuntimeError);
    container.setWindowState(1);
    EXPECT_EQ(container.windowState(), 1);
}

TEST_F(FormWindowTest, ItIsActivatedOncePerTimeItComesToTheFront) {
    auto& doc = document("FRM");
    int activations = 0;
    doc.Activate = [&] { ++activations; };
    doc.show(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 1);
    auto other = stage.factory->newDocumentForm("ALTRO");
    other->setBounds({300, 300, 6000, 4000});
    other->show(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 1);
    stage.area->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(windowOf("FRM").window()));
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 2);
    // Another program in front, and back.
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    QCoreApplication::processEvents();
    stage.window.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 2);
}

TEST_F(FormWindowTest, AttendedAModalDialogWaitsForItsUser) {
    auto& dlg = dialog();
    bool stood = false;
    QTimer::singleShot(0, [&] {
        stood = true;
        auto* window = Session::instance().front()->window();
        EXPECT_TRUE(window->isModal());
        QTest::keyClick(window, Qt::Key_Escape);
    });
    dlg.show(true);
    EXPECT_TRUE(stood);
    EXPECT_TRUE(Session::instance().forms().empty());
}

TEST_F(FormWindowTest, AttendedAModalDocumentFormKeepsTheUserFromTheRest) {
    auto* menus = stage.window.menuBar();
    menus->addMenu(QStringLiteral("Programmi"));
    auto& doc = document("FRM");
    auto other = stage.factory->newDocumentForm("ALTRO");
    other->show(false);
    QTimer::singleShot(0, [&] {
        EXPECT_FALSE(menus->isEnabled());
        EXPECT_FALSE(windowOf("ALTRO").window()->isEnabled());
        EXPECT_TRUE(windowOf("FRM").window()->isEnabled());
        windowOf("FRM").pressClose();
    });
    doc.show(true);
    EXPECT_TRUE(menus->isEnabled());
    EXPECT_TRUE(windowOf("ALTRO").window()->isEnabled());
}

TEST_F(FormWindowTest, UnattendedAModalFormThatRefusesToCloseGoesAllTheSame) {
    auto& dlg = dialog();
    int asked = 0;
    bool unloaded = false;
    dlg.QueryUnload = [&](bool& cancel) {
        ++asked;
        cancel = true;
    };
    dlg.Unload = [&] { unloaded = true; };
    Session::instance().modalOpened = [](FormWindow&) {};
    dlg.show(true);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(unloaded);
    EXPECT_TRUE(Session::instance().forms().empty());
}

TEST_F(FormWindowTest, AnErrorInAListenerNeverCrossesTheWindowSystem) {
    auto& dlg = dialog();
    auto& button = dlg.addButton("CMD", nullptr);
    button.setBounds({100, 100, 1500, 450});
    button.ButtonClick = [] { throw contract::RuntimeError(5, "rotto"); };
    dlg.QueryUnload = [](bool&) { throw contract::RuntimeError(5, "rotto"); };
    dlg.show(false);
    EXPECT_NO_THROW(QTest::mouseClick(script("CMD").widget(), Qt::LeftButton));
    EXPECT_NO_THROW(windowOf("DLG").window()->close());
    EXPECT_EQ(Session::instance().forms().size(), 1U);
    EXPECT_THROW(dlg.unload(), contract::RuntimeError);
    dlg.QueryUnload = nullptr;
    EXPECT_TRUE(dlg.unload());
}

TEST_F(FormWindowTest, AFormMayDieInItsOwnButton) {
    auto& dlg = dialog();
    auto& button = dlg.addButton("CMD", nullptr);
    button.setBounds({100, 100, 1500, 450});
    button.ButtonClick = [this] { form.reset(); };
    dlg.show(false);
    QTest::mouseClick(script("CMD").widget(), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Session::instance().forms().empty());
}

TEST_F(FormWindowTest, EnterAndEscPressTheDefaultButtons) {
    auto& dlg = dialog();
    auto& field = dlg.addTextField("TXT", nullptr);
    auto& accept = dlg.addButton("CMD_ESEGUI", nullptr);
    auto& cancel = dlg.addButton("CMD_ANNULLA", nullptr);
    std::string pressed;
    accept.ButtonClick = [&] { pressed += 'E'; };
    cancel.ButtonClick = [&] { pressed += 'A'; };
    dlg.setDefaultButtons(&accept, &cancel);
    dlg.show(false);
    field.setFocus();
    QTest::keyClick(script("TXT").widget(), Qt::Key_Return);
    QTest::keyClick(script("TXT").widget(), Qt::Key_Escape);
    EXPECT_EQ(pressed, "EA");
    // The button that has the keyboard is the one meant.
    QTest::keyClick(script("CMD_ANNULLA").widget(), Qt::Key_Return);
    EXPECT_EQ(pressed, "EAA");
    pressed = "EA";
    accept.setEnabled(false);
    QTest::keyClick(script("TXT").widget(), Qt::Key_Return);
    EXPECT_EQ(pressed, "EA");
}

TEST_F(FormWindowTest, MnemonicsPressButtonsAndLeadLabelsToTheirFields) {
    auto& dlg = dialog();
    auto& label = dlg.addLabel("LBL", nullptr);
    label.setCaption("&Data fine");
    dlg.addTextField("TXT", nullptr).setBounds({100, 600, 2000, 400});
    auto& button = dlg.addButton("CMD", nullptr);
    button.setCaption("&Esegui");
    button.setBounds({100, 1200, 2000, 400});
    int clicks = 0;
    button.ButtonClick = [&] { ++clicks; };
    dlg.show(false);
    QCoreApplication::processEvents(); // the window becomes the active one
    QTest::keyClick(windowOf("DLG").window(), Qt::Key_E, Qt::AltModifier);
    // The button is seen to go down before it acts.
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
    QTest::keyClick(windowOf("DLG").window(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(script("TXT").widget()->hasFocus());
}

TEST_F(FormWindowTest, TabGoesThroughTheControlsInTheOrderOfTheirMaking) {
    auto& dlg = dialog();
    auto& second = dlg.addFrame("FME", nullptr);
    dlg.addTextField("UNO", &second);
    dlg.addCheckBox("DUE", nullptr);
    dlg.addButton("TRE", &second);
    dlg.show(false);
    QCoreApplication::processEvents(); // the window becomes the active one
    script("UNO").widget()->setFocus();
    for (const char* next : {"DUE", "TRE", "UNO"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), script(next).widget()) << next;
    }
}

TEST_F(FormWindowTest, BoundsOfControlsAddUpToTheFormsArea) {
    auto& doc = document("FRM");
    auto& outer = doc.addFrame("FUORI", nullptr);
    auto& inner = doc.addGroupBox("DENTRO", &outer);
    auto& button = doc.addButton("CMD", &inner);
    outer.setBounds({101, 203, 9000, 7000});
    inner.setBounds({307, 409, 5000, 4000});
    button.setBounds({11, 13, 1500, 450});
    doc.show(false);
    auto& window = windowOf("FRM");
    EXPECT_EQ(window.controlBounds(id("CMD")), (contract::Rect{101 + 307 + 11, 203 + 409 + 13, 1500, 450}));
    EXPECT_EQ(window.controlBounds(id("FUORI")), (contract::Rect{101, 203, 9000, 7000}));
    EXPECT_EQ(window.controlNames(), (QStringList{"FUORI", "DENTRO", "CMD"}));
    EXPECT_EQ(window.control(id("cmd")), nullptr);
    EXPECT_EQ(window.contractControl(id("CMD")), &button);
}

TEST_F(FormWindowTest, NeighboursThatMeetInTwipsMeetInPixels) {
    auto& doc = document("FRM");
    auto& left = doc.addFrame("SX", nullptr);
    auto& right = doc.addFrame("DX", nullptr);
    for (int width = 1000; width < 1030; ++width) {
        left.setBounds({7, 0, width, 500});
        right.setBounds({7 + width, 0, 1000, 500});
        doc.show(false);
        const auto* one = script("SX").widget();
        EXPECT_EQ(one->x() + one->width(), script("DX").widget()->x()) << width;
    }
}

TEST_F(FormWindowTest, AZoomOfTheProgramReachesTheFormsLayout) {
    auto& doc = document("FRM");
    auto& resize = doc.addResizeControl("KVT");
    doc.show(false);
    resize.setUp();
    EXPECT_EQ(resize.zoom(), 10);
    std::vector<int> zooms;
    resize.AfterResize = [&] { zooms.push_back(resize.zoom()); };
    Appearance::instance().setZoom(14);
    QCoreApplication::processEvents();
    ASSERT_FALSE(zooms.empty());
    EXPECT_EQ(zooms.back(), 14);
    EXPECT_EQ(resize.zoom(), 14);
}

TEST_F(FormWindowTest, LocksOfTheRedrawingNest) {
    auto& doc = document("FRM");
    auto& frame = doc.addFrame("FME", nullptr);
    doc.show(false);
    const auto* widget = script(frame.name().c_str()).widget();
    doc.lockUpdate(true);
    doc.lockUpdate(true);
    doc.lockUpdate(false);
    EXPECT_FALSE(widget->updatesEnabled());
    doc.lockUpdate(false);
    EXPECT_TRUE(widget->updatesEnabled());
    doc.lockUpdate(false);
    EXPECT_TRUE(widget->updatesEnabled());
}

TEST_F(FormWindowTest, ADialogWithoutAPlaceStandsInTheMiddle) {
    auto& dlg = dialog();
    dlg.setBounds({0, 0, 6000, 3000});
    dlg.show(false);
    EXPECT_EQ(dlg.bounds().left, (stage.window.width() * 15 - 6000) / 2);
    EXPECT_EQ(dlg.bounds().top, (stage.window.height() * 15 - 3000) / 2);
}

} // namespace

} // namespace qt_tests

#include "qt/FormFixture.h"

#include "platform/qt/forms/CaptionedControl.h"

#include <QAccessible>

#include <functional>

namespace qt_tests {

namespace {

class AccessibilityTest : public FormTest {};

TEST_F(AccessibilityTest, CaptionsAreSpokenWithoutTheirMarks) {
    EXPECT_EQ(platform::qt::spoken(id("&Esegui")), "Esegui");
    EXPECT_EQ(platform::qt::spoken(id("Salva && &chiudi")), "Salva & chiudi");
    EXPECT_EQ(platform::qt::spoken(id("Fine&")), "Fine");
}

TEST_F(AccessibilityTest, EveryControlHasANameAndTheUsableOnesARole) {
    auto& dlg = dialog();
    dlg.setCaption("Parametri");
    auto& frame = dlg.addDataFrame("FME", nullptr);
    auto& group = dlg.addGroupBox("GRB", &frame);
    group.setCaption("Date validità del legame");
    dlg.addBackdrop("PIC", &group);
    dlg.addLabel("LBL", &group).setCaption("Data &inizio");
    dlg.addDateField("DATA", &group);
    dlg.addTextField("TXT", &group);
    dlg.addComboBox("CMB", &group).addItem("uno");
    dlg.addCheckBox("CHK", &group).setCaption("&Classificazioni");
    dlg.addLookupField("LKP", &group);
    dlg.addButton("CMD", &group).setToolTip("Mostra il pannello");
    dlg.addMenuButton("MNU", &group).setCaption("Cerca");
    dlg.addSplitter("SPL", nullptr).setToolTip("Sposta il divisore");
    dlg.addGridNavigator("NAV", nullptr);
    dlg.addWorkflowStateField("STATO", nullptr).setCaption("Stato");
    dlg.addTreeList("TRW", nullptr);
    dlg.addTypeList("TIPI", nullptr);
    dlg.addDetailGrid("GRD", nullptr);
    dlg.show(false);

    int visited = 0;
    const std::function<void(QAccessibleInterface*)> visit = [&](QAccessibleInterface* item) {
        ASSERT_NE(item, nullptr);
        const QObject* object = item->object();
        const auto* widget = qobject_cast<const QWidget*>(object);
        if (widget != nullptr && widget->focusPolicy() != Qt::NoFocus && widget->isEnabled()) {
            ++visited;
            EXPECT_FALSE(item->text(QAccessible::Name).isEmpty())
                << widget->metaObject()->className() << " " << widget->objectName().toStdString();
            EXPECT_NE(item->role(), QAccessible::NoRole) << widget->objectName().toStdString();
        }
        for (int i = 0; i < item->childCount(); ++i)
            if (auto* child = item->child(i); child != nullptr && qobject_cast<QWidget*>(child->object()) != nullptr)
                visit(child);
    };
    visit(QAccessible::queryAccessibleInterface(windowOf("DLG").window()));
    EXPECT_GE(visited, 13);

    for (const QString& name : windowOf("DLG").controlNames()) {
        auto* item = QAccessible::queryAccessibleInterface(windowOf("DLG").control(name)->widget());
        ASSERT_NE(item, nullptr) << name.toStdString();
        EXPECT_FALSE(item->text(QAccessible::Name).isEmpty()) << name.toStdString();
    }
    const auto spokenName = [&](const char* name) {
        return QAccessible::queryAccessibleInterface(script(name).widget())->text(QAccessible::Name);
    };
    EXPECT_EQ(spokenName("DATA"), "Data inizio");
    EXPECT_EQ(spokenName("CHK"), "Classificazioni");
    EXPECT_EQ(spokenName("CMD"), "Mostra il pannello");
    EXPECT_EQ(spokenName("CMD_SALVA"), "Salva");
    EXPECT_EQ(spokenName("STATO"), "Stato");
    const auto role = [&](const char* name) {
        return QAccessible::queryAccessibleInterface(script(name).widget())->role();
    };
    EXPECT_EQ(role("CMD"), QAccessible::Button);
    EXPECT_EQ(role("CHK"), QAccessible::CheckBox);
    EXPECT_EQ(role("TXT"), QAccessible::EditableText);
    EXPECT_EQ(role("CMB"), QAccessible::ComboBox);
    EXPECT_EQ(role("GRB"), QAccessible::Grouping);
    EXPECT_EQ(role("SPL"), QAccessible::Splitter);
}

TEST_F(AccessibilityTest, TheFocusCanBeSeenOnEveryControlThatTakesIt) {
    auto& dlg = dialog();
    dlg.addButton("CMD", nullptr).setBounds({100, 100, 1500, 450});
    auto& primary = dlg.addButton("PRIMO", nullptr);
    primary.setBounds({100, 600, 1500, 450});
    primary.setPrimary(true);
    primary.setCaption("Esegui");
    dlg.addTextField("TXT", nullptr).setBounds({100, 1100, 1500, 450});
    dlg.addCheckBox("CHK", nullptr).setBounds({100, 1600, 1500, 450});
    dlg.addComboBox("CMB", nullptr).setBounds({100, 2100, 1500, 450});
    dlg.addDateField("DATA", nullptr).setBounds({100, 2600, 1500, 450});
    auto& splitter = dlg.addSplitter("SPL", nullptr);
    splitter.setBounds({2000, 0, 3000, 3000});
    splitter.setBar({2000, 1500, 3000, 100});
    dlg.show(false);
    QCoreApplication::processEvents(); // the window becomes the active one
    for (const auto theme : {platform::qt::ThemeKind::light, platform::qt::ThemeKind::dark}) {
        platform::qt::Appearance::instance().setTheme(theme);
        for (const char* name : {"CMD", "PRIMO", "TXT", "CHK", "CMB", "DATA", "SPL"}) {
            QWidget* widget = script(name).widget();
            windowOf("DLG").window()->setFocus();
            QCoreApplication::processEvents();
            ASSERT_FALSE(widget->hasFocus()) << name;
            const QImage without = widget->grab().toImage();
            widget->setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(widget->hasFocus()) << name;
            EXPECT_NE(widget->grab().toImage(), without) << name << " theme " << static_cast<int>(theme);
        }
    }
}

} // namespace

} // namespace qt_tests

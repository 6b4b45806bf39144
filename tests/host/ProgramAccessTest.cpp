// The whole program for someone without eyes or without a mouse: every control has a name and a role, the Tab key gets
// everywhere and nowhere for good, and no two commands share their keys.

#include "host/start/HostSession.h"

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/windows/MainWindow.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/look/Appearance.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

namespace {

using host::HostSession;
using platform::qt::FormWindow;

std::string nameOf(const QWidget& widget) {
    return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

/// Walks what assistive programs see, from a window on, and looks at everything that the keyboard can reach.
int walk(QWidget* window) {
    int reached = 0;
    const std::function<void(QAccessibleInterface*, int)> visit = [&](QAccessibleInterface* item, int depth) {
        ASSERT_LT(depth, 60);
        const auto* widget = qobject_cast<const QWidget*>(item->object());
        if (widget != nullptr && widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus) {
            ++reached;
            EXPECT_FALSE(item->text(QAccessible::Name).trimmed().isEmpty()) << nameOf(*widget);
            EXPECT_NE(item->role(), QAccessible::NoRole) << nameOf(*widget);
            EXPECT_NE(item->role(), QAccessible::Client) << nameOf(*widget);
        }
        // The rows of trees and lists are not walked: there can be a million.
        if (qobject_cast<const QAbstractItemView*>(item->object()) != nullptr)
            return;
        for (int i = 0; i < item->childCount(); ++i)
            if (auto* child = item->child(i))
                visit(child, depth + 1);
    };
    auto* root = QAccessible::queryAccessibleInterface(window);
    if (root == nullptr)
        ADD_FAILURE() << "no accessible window";
    else
        visit(root, 0);
    return reached;
}

/// Presses Tab until the focus is back where it was first; the widgets on the way.
std::set<QWidget*> tabRound(QWidget& window) {
    std::set<QWidget*> seen;
    for (int i = 0; i < 200; ++i) {
        QWidget* focus = QApplication::focusWidget();
        if (focus == nullptr || !seen.insert(focus).second)
            break;
        QTest::keyClick(focus, Qt::Key_Tab);
        QApplication::processEvents();
    }
    EXPECT_LT(seen.size(), 200U);
    (void)window;
    return seen;
}

class ProgramAccess : public testing::Test {
protected:
    ProgramAccess() {
        host::createDatabase(host::embeddedDatabase(file), host_test::component().schema(), 40);
        platform::qt::Session::instance().modalOpened = [this](FormWindow& form) {
            if (onModal)
                onModal(form);
        };
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
        session = std::make_unique<HostSession>(settings, host_test::component(), window.area(), &window);
        session->openDatabase();
        window.attach(*session);
        window.show();
        window.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&window));
        EXPECT_EQ(session->openForm({{"WindowState", 2}}), QString());
        QApplication::processEvents();
    }
    ~ProgramAccess() override {
        session.reset();
        platform::qt::Session::instance().modalOpened = {};
    }

    QWidget* widget(const char* name) { return session->formWindow()->control(QString::fromLatin1(name))->widget(); }
    /// The names of the groups in which a control stands, outermost first, and its own.
    std::string spoken(const char* name) {
        std::string path;
        for (auto* item = QAccessible::queryAccessibleInterface(widget(name)); item != nullptr; item = item->parent())
            if (path.empty() || item->role() == QAccessible::Grouping)
                path = item->text(QAccessible::Name).toStdString() + " > " + path;
        return path;
    }

    struct Application {
        Application() { host_test::needApplication(); }
    } application; // before the window
    host_test::Folder folder;
    std::string file = folder.file("prova.sqlite");
    host::SessionSettings settings;
    host::MainWindow window{nullptr};
    std::unique_ptr<HostSession> session;
    std::function<void(FormWindow&)> onModal;
};

TEST_F(ProgramAccess, EverythingThatTheKeyboardReachesHasANameAndARole) {
    EXPECT_GE(walk(&window), 18);
}

TEST_F(ProgramAccess, TheTwoSidesAreToldApart) {
    for (const auto& [one, other] : {std::pair{"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"},
                                     {"TRW_DISTINTEORIG", "TRW_DISTINTEDEST"},
                                     {"txtCercaOrig", "txtCercaDest"},
                                     {"MenuCercaOrig", "MenuCercaDest"},
                                     {"CMD_ESPANDICOLLASSAORIG", "CMD_ESPANDICOLLASSADEST"},
                                     {"GRD_DETTDISTINTAORIG", "GRD_DETTDISTINTADEST"}})
        EXPECT_NE(spoken(one), spoken(other)) << one;
}

TEST_F(ProgramAccess, TheDialogsToo) {
    std::map<QString, int> reached;
    onModal = [&](FormWindow& form) {
        reached[form.formName()] = walk(form.window());
        const auto round = tabRound(*form.window());
        for (const QString& name : form.controlNames()) {
            QWidget* control = form.control(name)->widget();
            if (!control->isVisible() || !control->isEnabled() || (control->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            EXPECT_TRUE(round.count(control) == 1 || round.count(control->focusProxy()) == 1) << name.toStdString();
        }
    };
    session->formWindow()->control("CMD_PARAMETRI")->click();
    session->formWindow()->control("CMD_SPOSTAVALID")->click();
    EXPECT_GE(reached["FRMQZ_PARAMETRI"], 8);
    EXPECT_GE(reached["FRMQZ_DATAFINELEGAME"], 3);
}

TEST_F(ProgramAccess, TabGetsToEveryControlAndBack) {
    widget("TRW_DISTINTEORIG")->setFocus();
    const auto round = tabRound(window);
    for (const char* name : {"TRW_DISTINTEORIG",     "txtCercaOrig",
                             "MenuCercaOrig",        "CMD_ESPANDICOLLASSAORIG",
                             "TRW_ELEMDISTINTAORIG", "GRD_DETTDISTINTAORIG",
                             "TRW_DISTINTEDEST",     "txtCercaDest",
                             "MenuCercaDest",        "CMD_ESPANDICOLLASSADEST",
                             "TRW_ELEMDISTINTADEST", "GRD_DETTDISTINTADEST",
                             "CMD_VISTOPSX",         "CMD_SPOSTASTRU",
                             "CMD_SPOSTAVALID",      "CMD_PARAMETRI",
                             "CMD_VISTOPDX",         "SPLITTERVerticale",
                             "SPLITTEROrizzOrig",    "SPLITTEROrizzDest"}) {
        QWidget* wanted = widget(name);
        EXPECT_TRUE(round.count(wanted) == 1 || round.count(wanted->focusProxy()) == 1) << name;
    }
}

TEST_F(ProgramAccess, EveryEntryOfTheMenusHasAKeyOfItsOwn) {
    std::set<QString> bar;
    const auto keys = [](const QString& text) { return QKeySequence::mnemonic(text).toString(); };
    const std::function<void(QMenu*)> look = [&](QMenu* menu) {
        emit menu->aboutToShow();
        std::set<QString> own;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator() || action->text().isEmpty())
                continue;
            const QString key = keys(action->text());
            EXPECT_FALSE(key.isEmpty()) << action->text().toStdString();
            EXPECT_TRUE(own.insert(key).second) << action->text().toStdString() << " " << key.toStdString();
            if (action->menu() != nullptr)
                look(action->menu());
        }
    };
    int menus = 0;
    for (const QAction* action : window.menuBar()->actions()) {
        if (action->menu() == nullptr || action->text().isEmpty())
            continue;
        ++menus;
        EXPECT_TRUE(bar.insert(keys(action->text())).second) << action->text().toStdString();
        look(action->menu());
    }
    EXPECT_GE(menus, 4);
    // The form's buttons are pressed with the same Alt key.
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (const QString key = keys(button->text()); button->isVisible() && !key.isEmpty()) {
            EXPECT_TRUE(bar.insert(key).second) << button->text().toStdString();
        }
}

} // namespace

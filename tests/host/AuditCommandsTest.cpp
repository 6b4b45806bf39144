// The audit's and the comparison's commands and windows, with real mouse and key events.

#include "FormOnScreen.h"
#include "contract/RuntimeError.h"
#include "host/audit/AuditWindow.h"
#include "host/comparison/ComparisonWindow.h"

#include <QAction>
#include <QComboBox>
#include <QJsonArray>
#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

#include <functional>

namespace {

using platform::qt::FormWindow;
using platform::qt::Session;

class AuditCommands : public host_test::FormOnScreen {
protected:
    /// Chooses the entry of the menu and does this in the window that it opens.
    void choose(const char* entry, const std::function<void(FormWindow&)>& inWindow) {
        bool opened = false;
        Session::instance().modalOpened = [&](FormWindow& form) {
            opened = true;
            QCoreApplication::processEvents();
            inWindow(form);
        };
        auto* action = window.findChild<QAction*>(QLatin1String(entry));
        ASSERT_NE(nullptr, action);
        action->trigger();
        EXPECT_TRUE(opened);
        Session::instance().modalOpened = [](FormWindow&) {};
        settle();
    }

    static QTableView& list(FormWindow& form) {
        return *qobject_cast<QTableView*>(form.control(QStringLiteral("GRD_RIGHE"))->widget());
    }
    /// Double click on a row's third cell.
    static void doubleClick(FormWindow& form, int row) {
        auto& view = list(form);
        const QModelIndex index = view.model()->index(row, 2);
        view.scrollTo(index);
        const QPoint at = view.visualRect(index).center();
        // A press of its own first, as a mouse gives it.
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
    }
    static qint64 cell(FormWindow& form, int row, int column) {
        return list(form).model()->index(row, column).data().toLongLong();
    }
    qint64 focused(const char* name) { return control(name).read().value(QLatin1String("focused")).toInteger(); }
};

TEST_F(AuditCommands, ADoubleClickShowsTheNode) {
    qint64 wanted = 0;
    choose("mnuVerifica", [&](FormWindow& form) {
        EXPECT_EQ("Verifica delle distinte", form.formCaption());
        ASSERT_LT(3, list(form).model()->rowCount());
        wanted = cell(form, 2, 3);
        doubleClick(form, 2);
        EXPECT_FALSE(form.window()->isVisible());
    });
    EXPECT_NE(0, wanted);
    EXPECT_EQ(wanted, focused("TRW_ELEMDISTINTAORIG"));
}

TEST_F(AuditCommands, TheKeyboardChoosesARuleAndTheWindowCloses) {
    const qint64 before = focused("TRW_ELEMDISTINTAORIG");
    choose("mnuVerifica", [&](FormWindow& form) {
        auto* rules = qobject_cast<QComboBox*>(form.control(QStringLiteral("CMB_REGOLE"))->widget());
        const int all = list(form).model()->rowCount();
        ASSERT_LT(2, rules->count());
        rules->setFocus();
        QTest::keyClick(rules, Qt::Key_Down);
        EXPECT_EQ(1, rules->currentIndex());
        EXPECT_LT(list(form).model()->rowCount(), all);
        EXPECT_TRUE(rules->currentText().endsWith(QStringLiteral("(%1)").arg(list(form).model()->rowCount())));
        auto* field = qobject_cast<QLineEdit*>(form.control(QStringLiteral("TXT_FILTRO"))->widget());
        field->setFocus();
        QTest::keyClicks(field, QStringLiteral("xyzzy"));
        EXPECT_EQ(0, list(form).model()->rowCount());
        EXPECT_FALSE(form.control(QStringLiteral("CMD_MOSTRA"))->widget()->isEnabled());
        QTest::keyClick(form.window(), Qt::Key_Escape);
        EXPECT_FALSE(form.window()->isVisible());
    });
    EXPECT_EQ(before, focused("TRW_ELEMDISTINTAORIG"));
}

TEST_F(AuditCommands, AFailureIsToldInTheWindow) {
    dynamic_cast<platform::sqlite::Connection&>(session->connection()).runNative("DROP TABLE QZ03_PARAMETRI");
    choose("mnuVerifica", [&](FormWindow& form) {
        EXPECT_TRUE(form.control(QStringLiteral("LBL_TITOLO"))
                        ->read()
                        .value(QLatin1String("caption"))
                        .toString()
                        .startsWith(QStringLiteral("La verifica non è riuscita: ")));
        EXPECT_EQ(0, list(form).model()->rowCount());
        EXPECT_FALSE(form.control(QStringLiteral("CMD_MOSTRA"))->widget()->isEnabled());
        QTest::keyClick(&list(form), Qt::Key_Return);
    });
}

TEST_F(AuditCommands, AnAuditThatIsGivenUpIsTold) {
    host::AuditWindow shown(
        1, []() -> host::AuditResult { throw contract::Cancelled(); }, &window);
    shown.refresh();
    EXPECT_EQ("La verifica è stata annullata.", shown.heading());
    EXPECT_FALSE(shown.result().report);
    EXPECT_FALSE(shown.wanted());
}

TEST_F(AuditCommands, AComponentWithoutAuditsIsRefused) {
    class Plain : public contract::PluginClass {
    public:
        contract::Cinterface& plugin() override { throw contract::Cancelled(); }
        contract::ActiveNavigator& navigator() override { throw contract::Cancelled(); }
        void DestroyClass() override {}
        std::vector<std::pair<std::string, contract::Value>> state() const override { return {}; }
        bool menuCommand(std::string_view) override { return false; }
        void companyChanged() override {}
    };
    Plain plain;
    host::NoProgress nobody;
    EXPECT_THROW(host::auditDistinte(plain, session->connection(), 1, nobody), contract::RuntimeError);
    EXPECT_THROW(host::Comparisons(plain, session->connection(), 1), contract::RuntimeError);
}

TEST_F(AuditCommands, ADoubleClickShowsBothNodesOfADifference) {
    // The third distinta of the demo on the right: zones, under which many customers of the first one stand.
    ASSERT_EQ("", control("TRW_DISTINTEDEST").select(QStringLiteral("C3")));
    settle();
    qint64 account = 0;
    choose("mnuConfronta", [&](FormWindow& form) {
        auto* outcomes = qobject_cast<QComboBox*>(form.control(QStringLiteral("CMB_ESITI"))->widget());
        ASSERT_LT(3, outcomes->count());
        EXPECT_TRUE(outcomes->itemText(3).startsWith(QStringLiteral("Altro padre (")));
        ASSERT_EQ("", form.control(QStringLiteral("CMB_ESITI"))->set(3));
        account = cell(form, 0, 0);
        doubleClick(form, 0);
        EXPECT_FALSE(form.window()->isVisible());
    });
    const auto accountOf = [&](const char* name, const char* column) {
        const auto read = control(name).read();
        const auto id = read.value(QLatin1String("focused")).toInteger();
        for (const auto& node : read.value(QLatin1String("nodes")).toArray())
            if (node[QLatin1String("id")].toInteger() == id)
                return node[QLatin1String("cells")][QLatin1String(column)].toString().toLongLong();
        return 0LL;
    };
    EXPECT_NE(0, account);
    EXPECT_EQ(account, accountOf("TRW_ELEMDISTINTAORIG", "trQZ02_CLIFOR_CG44"));
    EXPECT_EQ(account, accountOf("TRW_ELEMDISTINTADEST", "QZ02_CLIFOR_CG44"));
}

TEST_F(AuditCommands, ADayTypedComparesAnew) {
    ASSERT_EQ("", control("TRW_DISTINTEDEST").select(QStringLiteral("C3")));
    settle();
    choose("mnuConfronta", [&](FormWindow& form) {
        auto* day = qobject_cast<QLineEdit*>(form.control(QStringLiteral("TXT_GIORNO"))->widget());
        EXPECT_EQ(contract::Date::today().text(), day->text().toStdString());
        EXPECT_LT(0, list(form).model()->rowCount());
        day->setFocus();
        day->selectAll();
        QTest::keyClicks(day, QStringLiteral("01/01/2000"));
        QTest::keyClick(day, Qt::Key_Tab);
        EXPECT_EQ(0, list(form).model()->rowCount());
        EXPECT_TRUE(form.window()->isVisible());
    });
}

TEST_F(AuditCommands, WithoutAFormThereIsNothingToCompare) {
    bool gone = false;
    EXPECT_EQ("", session->closeForm(gone));
    ASSERT_TRUE(gone);
    EXPECT_THROW(host::Comparisons(*session->newClass(), session->connection(), 1)
                     .compare(1, 99, contract::Date::today(), *std::make_unique<host::NoProgress>()),
                 contract::RuntimeError);
}

} // namespace

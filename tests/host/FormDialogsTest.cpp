// The component's own dialogs and hidden parts in the reference host.

#include "FormOnScreen.h"
#include "contract/Host.h"
#include "host/windows/UserDialogs.h"

#include <QApplication>
#include <QEventLoop>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <functional>
#include <vector>

namespace {

using platform::qt::FormWindow;

class FormDialogs : public host_test::FormOnScreen {
protected:
    void whenOpened(std::function<void(FormWindow&)> action) {
        platform::qt::Session::instance().modalOpened = [this, action = std::move(action)](FormWindow& dialog) {
            ++opened;
            action(dialog);
        };
    }
    int opened = 0;
};

TEST_F(FormDialogs, TabGoesThroughTheParametersInTheOrderOfTheirTable) {
    QStringList order;
    whenOpened([&](FormWindow& dialog) {
        EXPECT_EQ("", dialog.control("CMB_QZ03_TIPOCARICODATA")->set(1)); // the dates can be used
        QWidget* first = dialog.control("CHK_QZ03_FLG_CONDVEND")->widget();
        first->setFocus();
        for (int step = 0; step < 7; ++step) {
            order.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
    });
    EXPECT_EQ("", control("CMD_PARAMETRI").click());
    EXPECT_EQ(1, opened);
    EXPECT_EQ((QStringList{"CHK_QZ03_FLG_CONDVEND", "CHK_QZ03_FLG_CLAS", "CHK_QZ03_FLG_PROV", "CHK_QZ03_FLG_ANAG",
                           "TXT_QZ03_DATAINIZIOVAL", "TXT_QZ03_DATAFINEVAL", "CMB_QZ03_TIPOCARICODATA"}),
              order);
}

TEST_F(FormDialogs, AParametersDateThatIsNoneIsNotSaved) {
    whenOpened([&](FormWindow& dialog) {
        EXPECT_EQ("", dialog.control("CMB_QZ03_TIPOCARICODATA")->set(1));
        EXPECT_EQ("", dialog.control("TXT_QZ03_DATAINIZIOVAL")->set("01/01/2024"));
        EXPECT_EQ("", dialog.control("TXT_QZ03_DATAFINEVAL")->set("31/02/2028"));
        session->dialogs().takeShown();
        EXPECT_EQ("", dialog.control("CMD_SALVA")->click());
        EXPECT_TRUE(session->dialogs().takeShown().empty());
        const auto read = dialog.control("TXT_QZ03_DATAFINEVAL")->read();
        EXPECT_EQ("31/02/2028", read["value"].toString());
        EXPECT_EQ("31/02/2028 non è una data", read["error"].toString());
    });
    EXPECT_EQ("", control("CMD_PARAMETRI").click());
    EXPECT_EQ(1, opened);
    EXPECT_NE("31/02/2028", state("DataFissaFINE").text());
}

TEST_F(FormDialogs, TheEndOfLinkDialogOpensInItsFieldAndShowsItsLineInFull) {
    whenOpened([&](FormWindow& dialog) {
        QWidget* field = dialog.control("TXT_DATACHIUSURALEGAME")->widget();
        EXPECT_EQ(field, QApplication::focusWidget());
        QTest::keyClicks(field, QStringLiteral("30062027"));
        QTest::keyClick(field, Qt::Key_Tab);
        QWidget* line = dialog.control("LBL_SIGNIFICATO")->widget();
        const QString text = QStringLiteral("ultimo giorno del legame attuale; il nuovo inizia il 01/07/2027");
        EXPECT_EQ(text, dialog.control("LBL_SIGNIFICATO")->read()["caption"].toString());
        EXPECT_LE(line->fontMetrics().horizontalAdvance(text), line->width());
        EXPECT_EQ("", dialog.control("CMD_ANNULLA")->click());
    });
    EXPECT_EQ("", control("CMD_SPOSTAVALID").click());
    EXPECT_EQ(1, opened);
}

TEST_F(FormDialogs, TheDestinationFrameThatComesToRestTellsWhetherTheFormMayClose) {
    auto& frame = *const_cast<contract::DataFrame*>(
        dynamic_cast<const contract::DataFrame*>(form().contractControl("FME_CopiaDistintaDest")));
    const auto told = [this] {
        int times = 0;
        const QJsonArray calls = session->journal().take();
        for (const QJsonValue& call : calls)
            times += call["operation"] == QLatin1String("setCanClose") ? 1 : 0;
        return times;
    };
    told();
    contract::fire(frame.ChangeStatus, int{contract::DataFrame::editing});
    EXPECT_EQ(0, told());
    contract::fire(frame.ChangeStatus, int{contract::DataFrame::browsing});
    EXPECT_EQ(1, told());
    EXPECT_TRUE(session->dialogs().takeShown().empty());
}

TEST_F(FormDialogs, NoColumnHidesBehindTheScrollBarWhereTheFormFillsTheWindow) {
    EXPECT_EQ("", session->setHostProperty("zoom", 14));
    window.area()->activeSubWindow()->showMaximized();
    settle();
    ASSERT_EQ(1280, window.width());
    for (const auto& [name, last] :
         {std::pair{"TRW_ELEMDISTINTAORIG", "Seleziona"}, std::pair{"TRW_ELEMDISTINTADEST", "Stato"}}) {
        auto& shown = view(name);
        const QRect cell = seen(shown, 0, last);
        EXPECT_EQ(shown.columnWidth(shown.nodes().findColumn(last)), cell.width()) << name;
        const auto* bar = shown.verticalScrollBar();
        ASSERT_TRUE(bar->isVisible()) << name;
        const int right = shown.viewport()->mapToGlobal(cell.bottomRight()).x();
        EXPECT_LT(right, bar->mapToGlobal(QPoint(0, 0)).x()) << name;
        EXPECT_EQ(0, shown.horizontalScrollBar()->maximum()) << name;
    }
}

TEST(MessageBoxes, ABoxWithoutAnIconsCodeShowsNone) {
    host_test::needApplication();
    const auto iconOf = [](int style) {
        host::UserDialogs dialogs;
        auto icon = QMessageBox::Critical;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            icon = box->icon();
            box->buttons().last()->click();
        });
        dialogs.showMessage("Titolo", "Testo", style);
        return icon;
    };
    EXPECT_EQ(QMessageBox::NoIcon, iconOf(contract::message::yesNo));
    EXPECT_EQ(QMessageBox::NoIcon, iconOf(contract::message::ok));
    EXPECT_EQ(QMessageBox::Information, iconOf(contract::message::information));
}

/// What a person sees of a box, and the key that answers it.
struct SeenBox {
    QString text;
    QString detail;
    QString more;
    bool smaller = false;
};

SeenBox pressInBox(int key, const std::function<void()>& show) {
    SeenBox seen;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        seen.text = box->text();
        seen.detail = box->informativeText();
        seen.more = box->detailedText();
        const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const auto* below = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        seen.smaller = label != nullptr && below != nullptr && below->font().pointSizeF() < label->font().pointSizeF();
        QTest::keyClick(box, static_cast<Qt::Key>(key));
    });
    show();
    return seen;
}

TEST(MessageBoxes, WhatAQuestionIsAboutStandsSmallerBelowIt) {
    host_test::needApplication();
    host::UserDialogs dialogs;
    int answer = 0;
    const auto seen = pressInBox(Qt::Key_Return, [&] {
        answer = dialogs.showMessage("Titolo", "Spostare?", contract::message::yesNo, "1109 <b>Leone</b> (6 nodi)");
    });
    EXPECT_EQ("Spostare?", seen.text);
    EXPECT_EQ("1109 <b>Leone</b> (6 nodi)", seen.detail);
    EXPECT_TRUE(seen.smaller);
    EXPECT_EQ(contract::message::answerNo, answer);
    EXPECT_EQ("", pressInBox(Qt::Key_Return, [&] { dialogs.showMessage("Titolo", "Testo", 0); }).detail);
}

TEST(MessageBoxes, AnErrorSaysWhatHappenedAndWhatToDoAndKeepsTheRestForItsDetails) {
    host_test::needApplication();
    host::UserDialogs dialogs;
    const contract::RuntimeError error(contract::RuntimeError::database, "Lettura non riuscita.");
    const contract::ErrorList records{{"08S01", 7, "link failure", contract::ErrorCategory::lostConnection}};
    int answer = 0;
    const auto seen = pressInBox(Qt::Key_Escape, [&] {
        answer = dialogs.showError("Titolo", "CaricaDistintaOrig", error, records, contract::message::errorDisplay);
    });
    EXPECT_EQ("Lettura non riuscita.", seen.text);
    EXPECT_TRUE(seen.detail.startsWith("Controllare la rete e il server")) << qPrintable(seen.detail);
    EXPECT_FALSE(seen.detail.contains("CaricaDistintaOrig"));
    for (const auto* part : {"CaricaDistintaOrig", "08S01", "7", "link failure"})
        EXPECT_TRUE(seen.more.contains(part)) << part;
    EXPECT_EQ(contract::message::answerAbort, answer);
}

TEST(MessageBoxes, EnterDoesNotRepeatAFailingStepForEver) {
    host_test::needApplication();
    host::UserDialogs dialogs;
    const auto enter = [&](const char* what, int& answer) {
        const contract::RuntimeError error(contract::RuntimeError::database, what);
        return pressInBox(Qt::Key_Return, [&] {
            answer = dialogs.showError("Titolo", "Passo", error, {}, contract::message::errorDisplay);
        });
    };
    std::vector<int> answers;
    const auto press = [&](const char* what) {
        int answer = 0;
        enter(what, answer);
        answers.push_back(answer);
    };
    using namespace contract::message;
    for (int time = 0; time < 4; ++time)
        press("uno");
    EXPECT_EQ((std::vector{answerRetry, answerRetry, answerAbort, answerRetry}), answers);
    answers.clear();
    press("due"); // another error is another count
    press("uno");
    press("uno");
    press("uno");
    EXPECT_EQ((std::vector{answerRetry, answerRetry, answerRetry, answerAbort}), answers);
    answers.clear();
    press("uno");
    press("uno");
    QEventLoop rest; // the command is over: the next one counts anew
    QTimer::singleShot(20, &rest, &QEventLoop::quit);
    rest.exec();
    press("uno");
    EXPECT_EQ((std::vector{answerRetry, answerRetry, answerRetry}), answers);
}

} // namespace

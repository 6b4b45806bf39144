// What a database's texts look like in the host's own windows: letter by letter.

#include "contract/RuntimeError.h"
#include "host/services/AccountReader.h"
#include "host/services/HostGlobal.h"
#include "host/windows/StatusLine.h"
#include "host/windows/UserDialogs.h"
#include "platform/qt/look/PlainText.h"

#include "TestSession.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMessageBox>
#include <QTableWidget>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QTimer>
#include <QToolTip>

#include <gtest/gtest.h>

#include <functional>

namespace {

const std::string bad = R"(<b>x</b><img src="/etc/passwd">&amp;)";
const QString badText = QString::fromStdString(bad);

void expectPlainLabels(const QWidget& window, bool shows) {
    bool seen = false;
    for (const auto* label : window.findChildren<QLabel*>()) {
        EXPECT_NE(label->textFormat(), Qt::RichText);
        EXPECT_NE(label->textFormat(), Qt::AutoText) << label->objectName().toStdString();
        seen = seen || label->text().contains(badText);
    }
    EXPECT_EQ(seen, shows);
}

/// Runs once the next box stands, and leaves it.
void whenBoxOpens(std::function<void(QMessageBox&)> look) {
    QTimer::singleShot(0, [look = std::move(look)] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        look(*box);
        box->reject();
    });
}

TEST(PlainTexts, ABoxAndItsSmallerTextShowNoHtml) {
    host_test::needApplication();
    host::UserDialogs dialogs;
    platform::qt::keepTextsPlain();
    whenBoxOpens([](QMessageBox& box) { expectPlainLabels(box, true); });
    dialogs.showMessage("Titolo", bad, 0);
    whenBoxOpens([](QMessageBox& box) {
        expectPlainLabels(box, true);
        ASSERT_NE(box.findChild<QTextEdit*>(), nullptr);
        EXPECT_EQ(box.findChild<QTextEdit*>()->toPlainText().trimmed(),
                  QStringLiteral("Procedura %1, errore 5.\n[42000] 1: %1").arg(badText));
    });
    dialogs.showError("Titolo", bad, contract::RuntimeError(5, bad),
                      {{"42000", 1, bad, contract::ErrorCategory::other}}, 4370);
}

TEST(PlainTexts, TheStatusLineAndItsTipShowNoHtml) {
    host_test::needApplication();
    platform::qt::keepTextsPlain();
    host::StatusLine line;
    line.setText(badText.repeated(5));
    line.setContext(badText);
    line.resize(300, 24);
    line.show();
    for (auto* label : line.findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    auto* shown = line.findChildren<QLabel*>().front();
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), shown->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(shown, &event);
    ASSERT_TRUE(QToolTip::isVisible());
    EXPECT_FALSE(QToolTip::text().contains(QLatin1String("<img")));
    EXPECT_EQ(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), badText.repeated(5));
    QToolTip::hideText();
}

TEST(PlainTexts, ACardShowsNoHtml) {
    host_test::needApplication();
    platform::qt::keepTextsPlain();
    host_test::ContextOnDatabase database([](platform::sqlite::Connection& connection) {
        connection.Execute(contract::Statement("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG) VALUES (10, "
                                               "'<b>x</b><img src=\"/etc/passwd\">&amp;')"));
        connection.Execute(contract::Statement("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, "
                                               "CG44_CODICE_CG16) VALUES (1, 0, 1200, 10)"));
    });
    host::HostGlobal global{database.context, nullptr};
    int opened = 0;
    platform::qt::Session::instance().modalOpened = [&](platform::qt::FormWindow& form) {
        ++opened;
        expectPlainLabels(*form.window(), true);
    };
    contract::ParameterObject parameters;
    parameters.flag = true;
    parameters.accountCode = 1200;
    parameters.company = 1;
    global.openProgram("SchedaClienti", parameters);
    platform::qt::Session::instance().modalOpened = {};
    EXPECT_EQ(opened, 1);
}

} // namespace

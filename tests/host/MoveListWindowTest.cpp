// The window of a list of moves: a file, the clipboard, and what its lines would do, over plans of a test's own.

#include "host/windows/MoveListWindow.h"
#include "TestSession.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using contract::MoveLine;
using contract::MovePlan;

/// Plans one row a line; a line of account 666 is refused.
class Planned : public contract::MoveLists {
public:
    std::vector<MoveLine> asked;

    MovePlan planList(const std::vector<MoveLine>& lines, contract::Unnamed unnamed) override {
        EXPECT_EQ(contract::Unnamed::onScreen, unnamed);
        asked = lines;
        MovePlan plan;
        for (const auto& line : lines) {
            contract::MoveRow row;
            row.line = line.line;
            row.account = line.account;
            if (line.account == 666) {
                row.outcome = contract::MoveOutcome::refused;
                row.reason = "non c'è";
                plan.refused +=
                    (plan.refused.empty() ? "" : "\n") + ("Riga " + std::to_string(line.line)) + ": " + row.reason;
            } else {
                row.id = line.account;
            }
            plan.rows.push_back(row);
        }
        return plan;
    }
    MovePlan moveList(const std::vector<MoveLine>&, contract::Unnamed) override { return {}; }
    MovePlan planSelected(const contract::MoveManner&) override { return {}; }
    MovePlan moveSelected(const contract::MoveManner&) override { return {}; }
};

class MoveListWindows : public testing::Test {
protected:
    MoveListWindows() { host_test::needApplication(); }

    QString write(const char* text) {
        const auto path = QString::fromStdString(folder.file("elenco.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }
    void open(const QString& file = {}) {
        window = std::make_unique<host::MoveListWindow>(lists, file, nullptr);
        window->show();
        window->activateWindow();
        QTest::qWait(0);
    }
    template <class Widget> Widget& find(const char* name) { return *window->findChild<Widget*>(QLatin1String(name)); }

    host_test::Folder folder;
    Planned lists;
    std::unique_ptr<host::MoveListWindow> window;
};

TEST_F(MoveListWindows, WaitsForAList) {
    open();
    EXPECT_TRUE(window->heading().startsWith(QStringLiteral("Leggere un file CSV o incollare un elenco")));
    EXPECT_FALSE(find<QPushButton>("CMD_SPOSTA").isEnabled());
    EXPECT_TRUE(lists.asked.empty());
}

TEST_F(MoveListWindows, ReadsAFileByKeyboardAndAgainWhenItWasMended) {
    open();
    auto& file = find<QLineEdit>("TXT_FILE");
    file.setFocus();
    QTest::keyClicks(&file, write("conto;nuovo_padre\n110;210\n666;210\n"));
    QTest::keyClick(&file, Qt::Key_Return);
    EXPECT_EQ("Non si sposta nulla: Riga 3: non c'è", window->heading());
    EXPECT_FALSE(find<QPushButton>("CMD_SPOSTA").isEnabled());
    auto& list = find<QTableView>("GRD_RIGHE");
    ASSERT_EQ(2, list.model()->rowCount());
    EXPECT_EQ("3", list.model()->index(1, 0).data().toString());
    EXPECT_EQ("rifiutato: non c'è", list.model()->index(1, 3).data().toString());
    QTest::mouseClick(&find<QCheckBox>("CHK_RESTA"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(1, list.model()->rowCount());

    write("conto;nuovo_padre\n110;210\n120;210\n");
    QTest::mouseClick(&find<QPushButton>("CMD_LEGGI"), Qt::LeftButton);
    EXPECT_EQ("2 nodi: 2 si spostano", window->heading());
    QTest::mouseClick(&find<QPushButton>("CMD_SPOSTA"), Qt::LeftButton);
    EXPECT_TRUE(window->moveWanted());
    ASSERT_EQ(2U, window->lines().size());
    EXPECT_EQ(120, window->lines()[1].account);
}

TEST_F(MoveListWindows, TakesTheClipboard) {
    open();
    QGuiApplication::clipboard()->setText(QStringLiteral("Conto\tNuovo padre\n110\t210\n"));
    QTest::keyClick(window.get(), Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ("1 nodo: 1 si sposta", window->heading());
    QGuiApplication::clipboard()->setText(QStringLiteral("nulla"));
    QTest::mouseClick(&find<QPushButton>("CMD_INCOLLA"), Qt::LeftButton);
    EXPECT_TRUE(window->heading().startsWith(QStringLiteral("Colonna sconosciuta «nulla»")));
    EXPECT_FALSE(find<QPushButton>("CMD_SPOSTA").isEnabled());
    EXPECT_TRUE(window->lines().empty());
}

TEST_F(MoveListWindows, TellsTheFirstOfManyReasons) {
    QByteArray list("conto;nuovo_padre\n");
    for (int i = 0; i < 8; ++i)
        list += "666;210\n";
    open(write(list.constData()));
    const auto lines = window->heading().split(QLatin1Char('\n'));
    ASSERT_EQ(6, lines.size());
    EXPECT_EQ("Riga 6: non c'è", lines[4]);
    EXPECT_EQ("e altre 3: le mostra «Solo ciò che resta».", lines[5]);
}

} // namespace

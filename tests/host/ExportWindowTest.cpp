#include "host/windows/ExportWindow.h"
#include "FormOnScreen.h"
#include "TableRows.h"
#include "host/tables/DistintaList.h"
#include "host/windows/ListWindow.h"

#include <QAction>
#include <QFileDialog>
#include <QMenuBar>

namespace {

using contract::Value;
using host::Side;
using host::TableColumn;
using host::TreeTable;
using platform::qt::FormWindow;
using platform::qt::Session;

constexpr const char* orig = "TRW_ELEMDISTINTAORIG";

std::shared_ptr<const host::Table> threeRows() {
    return std::make_shared<host_test::TableRows>(
        std::vector<TableColumn>{{"Conto", TableColumn::Kind::number}, {"Nome", TableColumn::Kind::text}},
        std::vector<std::vector<Value>>{{Value(std::int32_t{1}), Value("Rossi")},
                                        {Value(std::int32_t{2}), Value("Bianchi")},
                                        {Value(std::int32_t{3}), Value("Rossini")}});
}

class Exported : public host_test::FormOnScreen {
protected:
    Exported() {
        EXPECT_EQ("", control("TRW_DISTINTEORIG").select("C1"));
        settle();
    }
    ~Exported() override {
        Session::instance().modalOpened = [](FormWindow&) {};
    }

    void whenOpened(std::function<void(FormWindow&)> action) { Session::instance().modalOpened = std::move(action); }
    void choose(const char* entry) { window.menuBar()->findChild<QAction*>(entry)->trigger(); }
    static std::string text(FormWindow& form, const char* name, const char* member) {
        return form.control(name)->read()[QLatin1String(member)].toVariant().toString().toStdString();
    }
    static std::vector<std::string> lines(const std::string& text) {
        std::vector<std::string> found;
        for (std::size_t at = 0; at < text.size();) {
            const auto end = text.find("\r\n", at);
            found.push_back(text.substr(at, end - at));
            at = end + 2;
        }
        return found;
    }
    static std::string cell(const host::Table& table, std::size_t row, const QString& title) {
        for (std::size_t column = 0; column < table.columns().size(); ++column)
            if (table.columns()[column].title == title)
                return host::cellText(table, row, column).toStdString();
        return "?";
    }

    const std::string out = folder.file("elenco.csv");
};

TEST_F(Exported, ATreeIsItsNodesWithLevelParentAndPath) {
    auto& nodes = tree(orig);
    const TreeTable table(*host::treeOf(form(), Side::origin), TreeTable::Rows::all);
    ASSERT_EQ(nodes.nodeCount(), table.rowCount());
    std::size_t row = 0;
    for (auto node = nodes.firstNode(); node; node = nodes.next(node), ++row) {
        const auto account = [&](contract::Node of) { return nodes.value(of, "trQZ02_CLIFOR_CG44").text(); };
        EXPECT_EQ(nodes.level(node), table.level(row));
        EXPECT_EQ(std::to_string(nodes.level(node) + 1), cell(table, row, "Livello"));
        EXPECT_EQ(account(node), cell(table, row, "Codice"));
        EXPECT_EQ(nodes.value(node, "RagioneSociale").text(), cell(table, row, "Ragione Sociale"));
        EXPECT_EQ(nodes.value(node, "trQZ02_DATAINIZIOVAL").text(), cell(table, row, "Data inizio"));
        const auto above = nodes.parent(node);
        EXPECT_EQ(above ? account(above) : "", cell(table, row, "Padre"));
        std::string path = account(node);
        for (auto at = above; at; at = nodes.parent(at))
            path = account(at) + " / " + path;
        EXPECT_EQ(path, cell(table, row, "Percorso"));
    }
}

TEST_F(Exported, AsShownLeavesOutWhatHangsBelowClosedNodes) {
    auto& nodes = tree(orig);
    const auto root = nodes.firstNode();
    const std::size_t below = nodes.descendants(root);
    ASSERT_GT(below, 2U);
    nodes.setExpanded(root, false);
    // Open below a closed one is not shown either.
    const TreeTable shown(*host::treeOf(form(), Side::origin), TreeTable::Rows::shown);
    EXPECT_EQ(nodes.nodeCount() - below, shown.rowCount());
    const TreeTable all(*host::treeOf(form(), Side::origin), TreeTable::Rows::all);
    EXPECT_EQ(nodes.nodeCount(), all.rowCount());
    nodes.setExpanded(root, true);
    EXPECT_EQ(nodes.nodeCount() - below, shown.rowCount()) << "a table is of its moment";
}

TEST_F(Exported, StatesAreReadInOneCallAndNoStatementIsSent) {
    EXPECT_EQ("", control("TRW_DISTINTEDEST").select("C3"));
    settle();
    session->trace().setRecording(true);
    session->trace().take();
    const TreeTable table(*host::treeOf(form(), Side::destination), TreeTable::Rows::all);
    std::size_t states = 0;
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        states += cell(table, row, "Stato").empty() ? 0 : 1;
    EXPECT_GT(states, table.rowCount() / 2);
    EXPECT_TRUE(session->trace().take().isEmpty());
}

TEST_F(Exported, TheMenuAsksWhichAndWhereAndSaysWhatWasWritten) {
    EXPECT_EQ("", control("TRW_DISTINTEDEST").select("C3"));
    EXPECT_EQ("", control(orig).focusNode(tree(orig).key(tree(orig).firstNode()), std::nullopt));
    int opened = 0;
    whenOpened([&](FormWindow& asked) {
        ++opened;
        EXPECT_EQ("ESPORTA", asked.formName());
        EXPECT_EQ("0", text(asked, "CMB_LATO", "value")); // the side that has the keyboard
        EXPECT_TRUE(QString::fromStdString(text(asked, "TXT_FILE", "value")).endsWith("/Distinta-AG-Agenti.xlsx"));
        EXPECT_EQ("", asked.control("CMB_LATO")->set(1));
        EXPECT_TRUE(QString::fromStdString(text(asked, "TXT_FILE", "value")).endsWith("/Distinta-ZN-Zone.xlsx"));
        EXPECT_FALSE(asked.control("CMD_SFOGLIA")->widget()->isEnabled()); // nobody is there to choose
        EXPECT_EQ("", asked.control("TXT_FILE")->set(QString::fromStdString(folder.file("manca/x.csv"))));
        EXPECT_EQ("", asked.control("CMD_SCRIVI")->click());
        EXPECT_TRUE(QString::fromStdString(text(asked, "LBL_ESITO", "caption")).endsWith(": il percorso non esiste."));
        EXPECT_TRUE(asked.window()->isVisible());
        EXPECT_EQ("", asked.control("TXT_FILE")->set(QString::fromStdString(out)));
        EXPECT_EQ("", asked.control("CMD_SCRIVI")->click());
        EXPECT_FALSE(asked.window()->isVisible());
    });
    choose("mnuEsporta");
    EXPECT_EQ(1, opened);
    const auto written = lines(host_test::contentOf(out));
    EXPECT_EQ(tree("TRW_ELEMDISTINTADEST").nodeCount() + 1, written.size());
    EXPECT_EQ("\xEF\xBB\xBFLivello;Codice;Ragione Sociale;Padre;Data inizio;Data fine;Stato;Percorso", written[0]);
}

TEST_F(Exported, ThePreviewOfThePrintTurnsItsPages) {
    int opened = 0;
    whenOpened([&](FormWindow& shown) {
        ++opened;
        EXPECT_EQ("STAMPA", shown.formName());
        const QString first = QString::fromStdString(text(shown, "LBL_PAGINE", "caption"));
        ASSERT_TRUE(first.startsWith("pagina 1 di "));
        const int pages = first.mid(12).toInt();
        ASSERT_GT(pages, 2);
        EXPECT_FALSE(shown.control("CMD_PRECEDENTE")->widget()->isEnabled());
        EXPECT_FALSE(shown.control("CMD_STAMPANTE")->widget()->isEnabled());
        EXPECT_EQ("", shown.control("CMD_SUCCESSIVA")->click());
        EXPECT_EQ("pagina 2 di " + std::to_string(pages), text(shown, "LBL_PAGINE", "caption"));
        EXPECT_TRUE(shown.control("CMD_PRECEDENTE")->widget()->isEnabled());
        tree(orig).setExpanded(tree(orig).firstNode(), false);
        EXPECT_EQ("", shown.control("CMB_RIGHE")->set(1));
        const QString less = QString::fromStdString(text(shown, "LBL_PAGINE", "caption"));
        EXPECT_TRUE(less.startsWith("pagina 1 di ")) << qPrintable(less);
        EXPECT_LT(less.mid(12).toInt(), pages);
    });
    choose("mnuStampa");
    EXPECT_EQ(1, opened);
}

TEST_F(Exported, WithoutTheFormTheMenuSaysWhy) {
    bool gone = false;
    session->closeForm(gone);
    ASSERT_TRUE(gone);
    whenOpened([](FormWindow& form) { ADD_FAILURE() << form.formName().toStdString(); });
    choose("mnuEsporta");
    choose("mnuStampa");
}

TEST_F(Exported, AListWindowWritesTheRowsThatItShows) {
    host::ListWindow list("ELENCO", "Elenco di prova", &window);
    list.setHeading("Tre righe");
    list.setTable(threeRows());
    int opened = 0;
    whenOpened([&](FormWindow& form) {
        if (++opened == 1) {
            EXPECT_EQ(&list, &form);
            EXPECT_EQ("", list.control("TXT_FILTRO")->set("rossi"));
            EXPECT_EQ("", list.control("CMD_ESPORTA")->click());
            EXPECT_EQ("", list.control("CMD_STAMPA")->click());
        } else if (opened == 2) {
            EXPECT_TRUE(QString::fromStdString(text(form, "TXT_FILE", "value")).endsWith("/Elenco-di-prova.xlsx"));
            EXPECT_EQ("", form.control("TXT_FILE")->set(QString::fromStdString(out)));
            EXPECT_EQ("", form.control("CMD_SCRIVI")->click());
        } else {
            EXPECT_EQ("STAMPA", form.formName());
            EXPECT_EQ("pagina 1 di 1", text(form, "LBL_PAGINE", "caption"));
        }
    });
    list.run();
    EXPECT_EQ(3, opened);
    EXPECT_EQ((std::vector<std::string>{"\xEF\xBB\xBF"
                                        "Conto;Nome",
                                        "1;Rossi", "3;Rossini"}),
              lines(host_test::contentOf(out)));
}

} // namespace

// Texts from the database are shown letter by letter, wherever they come to stand.

#include "platform/qt/look/PlainText.h"

#include "contract_suites/TreeRows.h"
#include "platform/qt/forms/PopupPresenter.h"
#include "qt/FormFixture.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLabel>
#include <QTextDocumentFragment>
#include <QToolTip>

namespace qt_tests {

namespace {

using platform::qt::letters;

const std::string bad = R"(<b>x</b><img src="/etc/passwd">&amp; e molto altro che non sta nella sua cella)";

/// What a person would read of a tool tip.
QString read(const QString& tip) {
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

class PlainTextTest : public FormTest {
protected:
    /// The tip that the mouse would bring up there; empty for none.
    static QString tipAt(QWidget* widget, QPoint point) {
        // One that stands would be taken for the next one's.
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("QTipLabel"))
                delete window;
        QHelpEvent event(QEvent::ToolTip, point, widget->mapToGlobal(point));
        QCoreApplication::sendEvent(widget, &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    static void expectLetters(QWidget* widget, QPoint point, int& tips) {
        const QString tip = tipAt(widget, point);
        if (tip.isEmpty() || tip == id("Apri l'elenco (F1)")) // a field's own button
            return;
        ++tips;
        // In a tree the node's path: its code stands before.
        EXPECT_TRUE(read(tip).endsWith(QString::fromStdString(bad))) << read(tip).toStdString();
        EXPECT_FALSE(tip.contains(QLatin1String("<img"))) << widget->metaObject()->className();
    }
};

TEST_F(PlainTextTest, OnlyWhatCouldBeTakenForHtmlIsChanged) {
    for (const char* text : {"Rossi & Figli S.p.A.", "a < b", "", "prezzo > 3", "Sì\nNo"})
        EXPECT_EQ(letters(id(text)), id(text));
    for (const char* text : {"<b>x</b>", "<img src=\"/etc/passwd\">", "due\n<i>righe</i>", "&lt;b&gt;", "<p>a  b"})
        EXPECT_EQ(read(letters(id(text))), id(text));
}

TEST_F(PlainTextTest, MenusAndTitlesKeepTheirSigns) {
    EXPECT_EQ(platform::qt::menuText(id("R&S && C.")), id("R&&S &&&& C."));
    EXPECT_EQ(platform::qt::titleText(id("Conto [*]")), id("Conto [*][*]"));
}

TEST_F(PlainTextTest, EveryControlThatShowsDataShowsItLetterByLetter) {
    auto& shown = document();
    const auto fill = [&](contract::Control& control, int row) {
        control.setBounds({200, 200 + row * 500, 1500, 400});
        control.setToolTip(bad);
    };
    auto& label = shown.addLabel("LBL", nullptr);
    fill(label, 0);
    label.setCaption(bad);
    auto& field = shown.addTextField("TXT", nullptr);
    fill(field, 1);
    field.setText(bad);
    auto& lookup = shown.addLookupField("LKP", nullptr);
    fill(lookup, 2);
    lookup.setText(bad);
    auto& combo = shown.addComboBox("CMB", nullptr);
    fill(combo, 3);
    combo.addItem(bad);
    combo.setPosition(0);
    fill(shown.addButton("CMD", nullptr), 4);
    fill(shown.addMenuButton("MNU", nullptr), 5);
    fill(shown.addWorkflowStateField("STATO", nullptr), 6);
    auto& cut = shown.addLabel("CUT", nullptr);
    cut.setBounds({200, 4000, 1500, 400});
    cut.setCaption(bad);
    auto& types = shown.addTypeList("TIPI", nullptr);
    types.setBounds({2000, 200, 2000, 3000});
    types.setToolTip(bad);
    types.add({"C1", bad, "", "schema", "open"});
    auto& tree = shown.addTreeList("TRW", nullptr);
    tree.setBounds({4200, 200, 4000, 3000});
    tree.addColumn({"CODE", "Codice", "ID", contract::TreeColumnKind::code});
    tree.addColumn({"NAME", "Nome", "NAME", contract::TreeColumnKind::text});
    tree.bind(contract_suites::treeRecords({{1, std::nullopt, bad}}), "ID", "PARENT");
    auto& grid = shown.addDetailGrid("GRD", nullptr);
    grid.setBounds({8400, 200, 2000, 3000});
    grid.setRowCount(1);
    grid.setCell(0, 0, bad);
    grid.setCell(0, 1, bad);
    shown.show(false);
    QCoreApplication::processEvents();

    int tips = 0;
    const auto widgets = windowOf("FRM").window()->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (!widget->isVisible())
            continue;
        if (const auto* text = qobject_cast<QLabel*>(widget)) {
            EXPECT_EQ(text->textFormat(), Qt::PlainText) << text->objectName().toStdString();
        }
        // A control's own tip, and for lists one for each of their cells.
        expectLetters(widget, widget->rect().center(), tips);
        auto* view = qobject_cast<QAbstractItemView*>(widget->parentWidget());
        if (view == nullptr || view->viewport() != widget)
            continue;
        for (int column = 0; column < view->model()->columnCount(); ++column)
            expectLetters(widget, view->visualRect(view->model()->index(0, column)).center(), tips);
    }
    EXPECT_GE(tips, 12) << "the walk came to the controls";

    EXPECT_EQ(script("LBL").widget()->accessibleName().toStdString(), bad);
    EXPECT_EQ(script("TXT").read().value(QLatin1String("value")).toString().toStdString(), bad);
    EXPECT_EQ(script("CMB").read().value(QLatin1String("items")).toArray().at(0).toString().toStdString(), bad);
}

TEST_F(PlainTextTest, ALabelThatWasNotToldSoShowsNoHtml) {
    QLabel label(QString::fromStdString(bad));
    label.show();
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    QLabel meant(id("<b>x</b>"));
    meant.setTextFormat(Qt::RichText);
    meant.show();
    EXPECT_EQ(meant.textFormat(), Qt::RichText);
}

} // namespace

} // namespace qt_tests

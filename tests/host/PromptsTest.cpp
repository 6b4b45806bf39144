// The boxes and the small dialogs of the host itself.

#include "host/windows/Prompts.h"
#include "host/start/ToolkitTexts.h"

#include "TestSession.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace {

QStringList captions(const QWidget& window) {
    QStringList texts;
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible())
            texts.append(button->text());
    return texts;
}

TEST(Prompts, AReasonBecomesASentence) {
    EXPECT_EQ("Connessione annullata: password non data.",
              host::asSentence("connessione annullata: password non data"));
    EXPECT_EQ("È finita.", host::asSentence("è finita.\n"));
    EXPECT_EQ("", host::asSentence(""));
}

TEST(Prompts, ABoxHasOneButtonWithoutPicture) {
    host_test::needApplication();
    QStringList texts;
    bool picture = true;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(nullptr, box);
        EXPECT_EQ("<b>detto</b>", box->text());
        EXPECT_EQ(Qt::PlainText, box->textFormat());
        texts = captions(*box);
        picture = !box->buttons().first()->icon().isNull();
        box->accept();
    });
    host::tell(QMessageBox::Warning, "Titolo", "<b>detto</b>", nullptr);
    EXPECT_EQ(QStringList{"OK"}, texts);
    EXPECT_FALSE(picture);
}

TEST(Prompts, TheToolkitsOwnTextsAreItalianWithoutItsTranslations) {
    host_test::needApplication();
    host::ToolkitTexts texts;
    QApplication::installTranslator(&texts);
    QMessageBox box;
    box.setDetailedText("motivo");
    QStringList captions;
    for (auto* button : box.buttons())
        captions.append(button->text());
    EXPECT_TRUE(captions.contains("Mostra dettagli")) << captions.join('|').toStdString();
    QLineEdit field;
    std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
    const QRegularExpression english("Undo|Redo|Cu&t|Copy|Paste|Delete|Select");
    for (const auto* action : menu->actions())
        EXPECT_FALSE(english.match(action->text()).hasMatch()) << action->text().toStdString();
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    for (auto* label : files.findChildren<QLabel*>())
        EXPECT_FALSE(label->text().contains("name") || label->text().contains("type")) << label->text().toStdString();
    QApplication::removeTranslator(&texts);
    EXPECT_TRUE(texts.translate("QObject", "no text of the toolkit's").isNull());
}

TEST(Prompts, AFieldIsAskedForInTheUsersLanguage) {
    host_test::needApplication();
    auto* field = new QLineEdit;
    host::FieldDialog dialog("Un titolo che deve restare leggibile", "Valore:", field, nullptr);
    dialog.open();
    QApplication::processEvents();
    EXPECT_EQ((QStringList{"&Conferma", "&Annulla"}), captions(dialog));
    EXPECT_EQ(field, dialog.focusWidget());
    EXPECT_GE(dialog.width(), 320);
    field->setText("scritto");
    for (auto* button : dialog.findChildren<QAbstractButton*>())
        if (button->text() == "&Conferma")
            button->click();
    EXPECT_EQ(QDialog::Accepted, dialog.result());
}

} // namespace

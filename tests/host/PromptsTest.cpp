// The boxes and the small dialogs of the host itself.

#include "host/Prompts.h"

#include "TestSession.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>

#include <gtest/gtest.h>

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

#include "host/windows/ManualWindow.h"

#include "TestFolder.h"
#include "TestSession.h"
#include "host/start/UserFolders.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using host::ManualWindow;

class Manual : public testing::Test {
protected:
    Manual() { host_test::needApplication(); }
    static QString headingAtTop(ManualWindow& window) {
        return window.text()->cursorForPosition(QPoint(40, 12)).block().text();
    }
};

TEST_F(Manual, IsFoundInTheSourcesAndBesideAnInstalledProgram) {
    EXPECT_EQ("manuale.md", host::manualFile(host::programFolder()).filename().string());
    const host_test::Folder folder;
    std::filesystem::create_directories(folder.path() / "bin");
    EXPECT_TRUE(host::manualFile(folder.path() / "bin").empty());
    std::filesystem::create_directories(folder.path() / "share/distinte/manuale");
    host_test::write(folder.file("share/distinte/manuale/manuale.md"), "# Qui\n");
    EXPECT_EQ(folder.path() / "share/distinte/manuale/manuale.md", host::manualFile(folder.path() / "bin"));
}

TEST_F(Manual, ShowsTheTextWithItsPictures) {
    ManualWindow window(host::manualFile(host::programFolder()), nullptr);
    EXPECT_TRUE(window.text()->toPlainText().contains(QStringLiteral("Per chi cura le distinte")));
    const QVariant picture =
        window.text()->loadResource(QTextDocument::ImageResource, QUrl("immagini/01-finestra.png"));
    const auto image = picture.value<QImage>();
    EXPECT_GT(image.width(), 400);
    EXPECT_LE(image.width(), window.width());
}

TEST_F(Manual, ItsLinksAndTheMenuLeadToChapters) {
    ManualWindow window(host::manualFile(host::programFolder()), nullptr);
    window.show();
    QApplication::processEvents();
    window.showChapter(QStringLiteral("La tastiera"));
    QApplication::processEvents();
    EXPECT_EQ(QStringLiteral("La tastiera"), window.text()->textCursor().block().text());
    EXPECT_GT(window.text()->verticalScrollBar()->value(), 0);
    // Every link of the text itself leads somewhere.
    int links = 0;
    for (QTextBlock block = window.text()->document()->begin(); block.isValid(); block = block.next())
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            const QString target = piece.fragment().charFormat().anchorHref();
            if (target.isEmpty())
                continue;
            ++links;
            window.text()->moveCursor(QTextCursor::Start);
            emit window.text()->anchorClicked(QUrl(target));
            EXPECT_NE(0, window.text()->textCursor().block().blockFormat().headingLevel()) << target.toStdString();
            EXPECT_NE(0, window.text()->textCursor().position()) << target.toStdString();
        }
    EXPECT_GT(links, 12);
}

TEST_F(Manual, FindsWordsAndGoesOnFromTheBeginning) {
    const host_test::Folder folder;
    host_test::write(folder.file("m.md"), "# Uno\n\nmela\n\n# Due\n\nmela\n");
    ManualWindow window(folder.file("m.md"), nullptr);
    auto* field = window.findChild<QLineEdit*>();
    field->setText(QStringLiteral("mela"));
    QTest::keyClick(field, Qt::Key_Return);
    const int first = window.text()->textCursor().position();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_GT(window.text()->textCursor().position(), first);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(first, window.text()->textCursor().position());
}

TEST_F(Manual, SaysThatItIsMissing) {
    const ManualWindow window({}, nullptr);
    EXPECT_TRUE(window.text()->toPlainText().contains(QStringLiteral("non è installato")));
}

} // namespace

#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/FlatButton.h"
#include "qt/FormFixture.h"

#include <QLineEdit>
#include <QListView>
#include <QStyle>
#include <QTest>

namespace qt_tests {

namespace {

using platform::qt::Appearance;
using platform::qt::ThemeKind;

class FocusFrameTest : public testing::Test {
protected:
    void SetUp() override { ensureApplication(); }
    void TearDown() override { Appearance::instance().setTheme(ThemeKind::light); }
};

/// Colour of the frame in the middle of the upper edge.
QColor frameOf(QWidget& view) {
    return view.grab().toImage().pixelColor(view.width() / 2, 0);
}

} // namespace

TEST_F(FocusFrameTest, TellsWhichListHasTheKeyboard) {
    for (const auto theme : {ThemeKind::light, ThemeKind::dark}) {
        Appearance::instance().setTheme(theme);
        const auto& colors = Appearance::colorsOf(theme);
        QWidget window;
        QListView list(&window);
        QLineEdit other(&window);
        list.setGeometry(10, 10, 200, 100);
        other.setGeometry(10, 150, 200, 30);
        window.resize(300, 200);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        list.setFocus();
        EXPECT_EQ(frameOf(list), colors.focusRing);
        other.setFocus();
        EXPECT_EQ(frameOf(list), colors.lineStrong);
        // The content stands where it stood.
        EXPECT_EQ(list.viewport()->geometry().top(), 2);
    }
}

TEST_F(FocusFrameTest, AButtonTellsTheKeysThatPressIt) {
    QWidget window;
    platform::qt::FlatButton button(&window);
    button.resize(300, 40);
    button.setText(QStringLiteral("Sposta &struttura"));
    EXPECT_EQ(button.hint(), QString()); // the caption says it
    button.setToolTip(QStringLiteral("Sposta il nodo"));
    EXPECT_EQ(button.hint(), QStringLiteral("Sposta il nodo (Alt+S)"));
    button.setText(QStringLiteral("Cerca"));
    EXPECT_EQ(button.hint(), QStringLiteral("Sposta il nodo"));
}

TEST_F(FocusFrameTest, DrawsTheSignsOfMessagesInTheThemesColours) {
    for (const auto theme : {ThemeKind::light, ThemeKind::dark}) {
        Appearance::instance().setTheme(theme);
        const auto& colors = Appearance::colorsOf(theme);
        const auto ground = [](QStyle::StandardPixmap sign) {
            const QImage image = QApplication::style()->standardIcon(sign).pixmap(64, 64).toImage();
            return image.pixelColor(image.width() / 2, image.height() / 8);
        };
        EXPECT_EQ(ground(QStyle::SP_MessageBoxInformation), colors.accent);
        EXPECT_EQ(ground(QStyle::SP_MessageBoxQuestion), colors.accent);
        EXPECT_EQ(ground(QStyle::SP_MessageBoxWarning), colors.danger);
        EXPECT_EQ(ground(QStyle::SP_MessageBoxCritical), colors.danger);
    }
}

} // namespace qt_tests

#include "qt/FormFixture.h"

#include <QComboBox>
#include <QFontInfo>
#include <QImage>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace qt_tests {

namespace {

using platform::qt::Appearance;
using platform::qt::ThemeColors;
using platform::qt::ThemeKind;

double luminance(const QColor& color) {
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor fromGrid(contract::Color color) {
    return {static_cast<int>(color & 0xFFU), static_cast<int>(color >> 8U & 0xFFU),
            static_cast<int>(color >> 16U & 0xFFU)};
}

class AppearanceTest : public testing::Test {
protected:
    void SetUp() override {
        ensureApplication();
        look.setTheme(ThemeKind::light);
        look.setZoom(10);
    }
    void TearDown() override { SetUp(); }

    Appearance& look = Appearance::instance();
};

TEST_F(AppearanceTest, ContrastIsMeasuredAsItIsDefined) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21.0, 1e-9);
    EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST_F(AppearanceTest, FieldsWithButtonsAndRadioButtonsHaveTheLinesOfTheOtherFields) {
    for (const auto kind : {ThemeKind::light, ThemeKind::dark}) {
        look.setTheme(kind);
        look.apply();
        const ThemeColors& c = look.colors();
        QComboBox combo;
        combo.setEditable(true);
        QSpinBox spin;
        QLineEdit line;
        for (QWidget* field : std::initializer_list<QWidget*>{&combo, &spin, &line}) {
            field->resize(160, 30);
            const QImage image = field->grab().toImage();
            EXPECT_EQ(image.pixelColor(0, 15), c.lineStrong) << field->metaObject()->className();
            EXPECT_EQ(image.pixelColor(3, 15), c.field) << field->metaObject()->className();
            field->setEnabled(false);
            EXPECT_EQ(field->grab().toImage().pixelColor(3, 15), c.locked) << field->metaObject()->className();
        }

        QRadioButton button;
        button.resize(button.sizeHint());
        const auto ring = [&] {
            const QImage image = button.grab().toImage();
            double most = 1.0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    most = std::max(most, contrast(image.pixelColor(x, y), c.window));
            return most;
        };
        EXPECT_GE(ring(), 3.0);
        button.setChecked(true);
        const int side = button.style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, &button);
        EXPECT_EQ(button.grab().toImage().pixelColor(side / 2, button.height() / 2), c.accent);
    }
}

TEST_F(AppearanceTest, EveryTextStandsOutFromItsGround) {
    for (const auto kind : {ThemeKind::light, ThemeKind::dark}) {
        const ThemeColors& c = Appearance::colorsOf(kind);
        std::vector<std::pair<QColor, QColor>> pairs{
            {c.accentText, c.accent}, {c.accentSoftText, c.accentSoft}, {c.selectionText, c.selection},
            {c.headerText, c.header}, {c.fieldText, c.field},           {c.fieldText, c.fieldFocus},
            {c.lockedText, c.locked}, {c.textDisabled, c.locked},       {c.dangerText, c.danger},
            {c.textMuted, c.field},   {c.textMuted, c.fieldFocus},      {c.text, c.header}};
        for (const auto& ground : {c.window, c.surface, c.surfaceAlternate})
            for (const auto& ink : {c.text, c.textMuted, c.textDisabled, c.link, c.headerText, c.danger})
                pairs.emplace_back(ink, ground);
        for (const auto& [ink, ground] : pairs)
            EXPECT_GE(contrast(ink, ground), 4.5) << ink.name().toStdString() << " on " << ground.name().toStdString()
                                                  << ", theme " << static_cast<int>(kind);
    }
}

TEST_F(AppearanceTest, FocusAndEdgesOfFieldsCanBeSeen) {
    for (const auto kind : {ThemeKind::light, ThemeKind::dark}) {
        const ThemeColors& c = Appearance::colorsOf(kind);
        for (const auto& ground : {c.window, c.surface, c.field}) {
            EXPECT_GE(contrast(c.focusRing, ground), 3.0) << ground.name().toStdString();
            EXPECT_GE(contrast(c.lineStrong, ground), 3.0) << ground.name().toStdString();
        }
    }
}

TEST_F(AppearanceTest, GridColorsAreReadableInThePairsInWhichTreesAndGridsUseThem) {
    for (const auto kind : {ThemeKind::light, ThemeKind::dark}) {
        look.setTheme(kind);
        for (const auto& [ink, ground] : {std::pair{"GridFontColor", "GridHeaderColor"},
                                          {"GridHeaderFontColor", "GridHeaderColor"},
                                          {"GridHeaderFontColor", "GridFooterColor"},
                                          {"GridFontColor", "GridHideSelectionColor"},
                                          {"GridHighLightFontColor", "GridHighLightColor"},
                                          {"GridFontColor", "GridFooterColor"}}) {
            ASSERT_TRUE(look.gridColor(ink) && look.gridColor(ground)) << ink << ground;
            EXPECT_GE(contrast(fromGrid(*look.gridColor(ink)), fromGrid(*look.gridColor(ground))), 4.5)
                << ink << " on " << ground << ", theme " << static_cast<int>(kind);
        }
    }
}

TEST_F(AppearanceTest, GridColorsHaveEightNamesInTheirExactSpelling) {
    for (const char* name :
         {"GridHeaderColor", "GridFontColor", "GridBorderColor", "GridFooterColor", "GridHeaderFontColor",
          "GridHideSelectionColor", "GridHighLightColor", "GridHighLightFontColor"})
        EXPECT_TRUE(look.gridColor(name)) << name;
    EXPECT_FALSE(look.gridColor("gridheadercolor"));
    EXPECT_FALSE(look.gridColor(""));
}

TEST_F(AppearanceTest, TheFourClassicColorsFindTheirPlaceInTheLightTheme) {
    const ThemeColors& c = Appearance::colorsOf(ThemeKind::light);
    const std::vector<QColor> all{c.window,       c.surface,    c.surfaceAlternate, c.text,   c.textMuted,
                                  c.textDisabled, c.line,       c.lineStrong,       c.accent, c.accentText,
                                  c.accentSoft,   c.selection,  c.selectionText,    c.header, c.headerText,
                                  c.field,        c.fieldFocus, c.locked,           c.link,   c.focusRing};
    for (const contract::Color classic : {0xFEFAE2U, 0x80FFFFU, 0xC0FFFFU, 0x800000U})
        EXPECT_NE(std::find(all.begin(), all.end(), fromGrid(classic)), all.end()) << classic;
}

TEST_F(AppearanceTest, AnotherThemeReachesTheApplicationAtOnce) {
    int changes = 0;
    const auto connection = QObject::connect(&look, &Appearance::changed, [&] { ++changes; });
    look.setTheme(ThemeKind::dark);
    look.setTheme(ThemeKind::dark);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), Appearance::colorsOf(ThemeKind::dark).window);
    QObject::disconnect(connection);
}

TEST_F(AppearanceTest, OnlyFourSizesOfTypeAreTaken) {
    for (const int points : {8, 12, 14, 10}) {
        look.setZoom(points);
        EXPECT_EQ(look.zoom(), points);
        EXPECT_EQ(QApplication::font().pointSize(), points);
        EXPECT_EQ(look.rowHeight(), std::lround(QFontInfo(look.font()).pixelSize() * 1.8));
    }
    look.setZoom(11);
    EXPECT_EQ(look.zoom(), 10);
}

TEST_F(AppearanceTest, TheClassicFaceIsReplacedByOneThatIsThere) {
    EXPECT_FALSE(QFont::substitutes(QStringLiteral("Tahoma")).isEmpty());
}

TEST_F(AppearanceTest, FifteenTwipsAreAPixel) {
    EXPECT_EQ(Appearance::pixels(0), 0);
    EXPECT_EQ(Appearance::pixels(14685), 979);
    EXPECT_EQ(Appearance::pixels(9058), 604);
    EXPECT_EQ(Appearance::pixels(-15), -1);
    EXPECT_EQ(Appearance::twips(604), 9060);
}

} // namespace

} // namespace qt_tests

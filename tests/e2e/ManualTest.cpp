// The pictures of the manual are what the program shows today.

#include "e2e/Program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace e2e;

namespace {

const QDir docs(QStringLiteral(DISTINTE_DOCS));

QByteArray content(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Names of the pictures that a text mentions, each once.
QStringList named(const QByteArray& text, const char* pattern) {
    QStringList names;
    auto matches = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(QString::fromUtf8(text));
    while (matches.hasNext())
        names.append(matches.next().captured(1));
    names.removeDuplicates();
    names.sort();
    return names;
}

bool differ(QRgb a, QRgb b) {
    constexpr int noticeable = 48; // more than the reduction to 256 colours changes
    return std::abs(qRed(a) - qRed(b)) > noticeable || std::abs(qGreen(a) - qGreen(b)) > noticeable ||
           std::abs(qBlue(a) - qBlue(b)) > noticeable;
}

/// Share of the pixels of two pictures of one size that a reader would see differ, from 0 to 1.
double difference(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            different += differ(a.pixel(x, y), b.pixel(x, y)) ? 1 : 0;
    return different / (1.0 * a.width() * a.height());
}

int colours(const QImage& image) {
    QSet<QRgb> seen;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            seen.insert(image.pixel(x, y));
    return static_cast<int>(seen.size());
}

TEST(Manual, ThePicturesOfTheManualAreThoseOfItsScript) {
    const auto inText = named(content(docs.filePath(QStringLiteral("manuale.md"))), R"(\]\(immagini/([^)]+)\))");
    const auto inScript = named(content(QStringLiteral(DISTINTE_MANUAL)), R"re("screenshot","file":"([^"]+)")re");
    QStringList stored = QDir(docs.filePath(QStringLiteral("immagini"))).entryList(QDir::Files);
    EXPECT_GE(inText.size(), 10);
    EXPECT_EQ(inScript, inText);
    EXPECT_EQ(inText, stored);
}

TEST(Manual, ThePicturesAreWhatTheProgramShows) {
    Workplace place;
    const QStringList database{QStringLiteral("--database"), place.path(QStringLiteral("demo.sqlite"))};
    ASSERT_EQ(0, place.run(database + QStringList{QStringLiteral("--create-demo")}).status);
    const auto outcome = place.run(database + QStringList{QStringLiteral("--script"), QStringLiteral(DISTINTE_MANUAL)});
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();

    const QDir folder(docs.filePath(QStringLiteral("immagini")));
    for (const QString& name : folder.entryList(QDir::Files)) {
        SCOPED_TRACE(name.toStdString());
        const QImage stored(folder.filePath(name));
        const QImage made(place.path(name));
        ASSERT_FALSE(stored.isNull());
        ASSERT_FALSE(made.isNull());
        EXPECT_LE(QFileInfo(folder.filePath(name)).size(), 100 * 1024);
        EXPECT_EQ(QImage::Format_Indexed8, stored.format());
        ASSERT_EQ(made.size(), stored.size());
        EXPECT_GT(colours(made), 20) << "nearly blank";
        // Another theme, another node in focus or another text is more; another shade of a line is less.
        EXPECT_LT(difference(made, stored), 0.002) << "demo/immagini makes the pictures anew";
    }
}

} // namespace

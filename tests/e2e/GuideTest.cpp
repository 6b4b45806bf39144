#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

TEST(Guide, TheGuidedDemonstrationShowsWhatItSays) {
    Workplace place(Workplace::Where::file);
    ASSERT_EQ(0, place.run({"--database", place.database(), "--create-demo"}).status);
    QFile guide(QStringLiteral(DISTINTE_GUIDE));
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    const auto outcome = place.runScript(guide.readAll());
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();

    std::vector<std::string> shown;
    for (const QJsonObject& reply : outcome.replies) {
        for (const std::string& message : messages(reply))
            shown.push_back(message);
    }
    ASSERT_EQ(3U, shown.size());
    EXPECT_TRUE(startsWith(shown[0], "Spostare il nodo "));
    EXPECT_TRUE(startsWith(shown[1], "Spostare il nodo "));
    EXPECT_TRUE(startsWith(shown[2], "Anagrafica non modificata:\nCliente ")) << shown[2];
    for (const char* picture : {"01-apertura.png", "02-prima-dello-spostamento.png", "03-dopo-lo-spostamento.png",
                                "04-prima-dello-spostamento-con-validita.png", "05-data-fine-legame.png",
                                "06-dopo-lo-spostamento-con-validita.png", "07-modifica-rifiutata.png",
                                "08-parametri.png", "09-tema-scuro.png"})
        EXPECT_GT(QFileInfo(place.path(QLatin1String(picture))).size(), 1000) << picture;

    Database database(place.database());
    EXPECT_EQ("2003", database.value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2020"));
    EXPECT_EQ("2026-12-31", database.value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 242"));
    EXPECT_EQ("3", database.value("SELECT COUNT(*) FROM QZ02_DISTINTA WHERE QZ02_DATAINIZIOVAL = '2027-01-01'"));
}

} // namespace

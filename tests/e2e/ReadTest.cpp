// What a script reads: for each kind of control these members and no others, with the types and measures promised.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class Read : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    /// The steps' replies from a modal form that this button opens.
    static QJsonArray inForm(Dialogue& program, const QString& button, const QString& form, const QJsonArray& steps) {
        program.ask({{"do", "when"}, {"form", form}, {"steps", steps}});
        const auto clicked = program.click(button);
        EXPECT_EQ((std::vector<std::string>{form.toStdString()}), modalForms(clicked));
        return clicked.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    }

    static QJsonObject reading(const char* control) { return {{"do", "read"}, {"control", control}}; }

    Workplace place_;
};

/// The members that a reading has besides those of every reply and of every control, in alphabetical order; what a
/// control must always have is checked on the way.
std::string members(const QJsonObject& reading) {
    const QStringList numbers{"left", "top", "width", "height"};
    const QStringList flags{"visible", "enabled", "ok"};
    std::string own;
    for (auto at = reading.begin(); at != reading.end(); ++at) {
        if (numbers.contains(at.key()))
            EXPECT_TRUE(at.value().isDouble()) << at.key().toStdString();
        else if (flags.contains(at.key()))
            EXPECT_TRUE(at.value().isBool()) << at.key().toStdString();
        else if (at.key() != QLatin1String("messages") && at.key() != QLatin1String("modal"))
            own += (own.empty() ? "" : " ") + at.key().toStdString();
    }
    for (const auto& name : numbers + flags)
        EXPECT_TRUE(reading.contains(name)) << name.toStdString() << " is missing: " << json(reading);
    return own;
}

std::string bounds(const QJsonValue& reading) {
    std::string told;
    for (const char* name : {"left", "top", "width", "height"})
        told += (told.empty() ? "" : " ") + text(reading[QLatin1String(name)]);
    return told;
}

/// The members of a part of a reading, in alphabetical order.
std::string parts(const QJsonValue& part) {
    return part.toObject().keys().join(QLatin1Char(' ')).toStdString();
}

TEST_F(Read, EachKindHasItsMembers) {
    Dialogue program(place_);
    const std::pair<const char*, const char*> kinds[] = {
        {"FRMQZ_COPIADISTINTA", "caption"},
        {"CMD_SPOSTASTRU", "caption tooltip"},
        {"MenuCercaOrig", "caption tooltip"},
        {"lblDescDistintaOrig", "caption"},
        {"GRB_PULSANTI", "caption"},
        {"mnuDettagli", "caption"},
        {"mnuRilasciaFigli", "caption"},
        {"txtCercaOrig", "error value"},
        {"TRW_DISTINTEORIG", "entries selected tooltip"},
        {"TRW_ELEMDISTINTAORIG", "columns error focused nodes top_row"},
        {"GRD_DETTDISTINTAORIG", "rows tooltip"},
    };
    for (const auto& [control, expected] : kinds)
        EXPECT_EQ(expected, members(program.read(QLatin1String(control)))) << control;

    const auto entry = program.read(origList).value(QLatin1String("entries"))[1];
    EXPECT_EQ("image key parent selected_image text", parts(entry));
    EXPECT_EQ("C1", text(entry[QLatin1String("key")]));
    EXPECT_EQ("AG-Agenti", text(entry[QLatin1String("text")]));
    EXPECT_EQ("P0", text(entry[QLatin1String("parent")]));
    EXPECT_EQ("null", text(program.read(origList).value(QLatin1String("entries"))[0][QLatin1String("parent")]));
    const auto tree = program.read(destTree);
    EXPECT_EQ("caption field locked name visible", parts(tree.value(QLatin1String("columns"))[0]));
    EXPECT_EQ("false", text(tree.value(QLatin1String("columns"))[0][QLatin1String("visible")]));
    EXPECT_EQ("cells expanded id level parent", parts(tree.value(QLatin1String("nodes"))[0]));
    EXPECT_EQ("0", text(tree.value(QLatin1String("nodes"))[0][QLatin1String("level")]));
    EXPECT_EQ(tree.value(QLatin1String("columns")).toArray().size(),
              tree.value(QLatin1String("nodes"))[0][QLatin1String("cells")].toObject().size());
    const auto row = program.read(QStringLiteral("GRD_DETTDISTINTAORIG")).value(QLatin1String("rows"))[0];
    EXPECT_EQ(2, row.toArray().size());
    program.select(origList, QStringLiteral("C4")); // empty
    EXPECT_EQ("null", text(program.read(origTree).value(QLatin1String("focused"))));
}

TEST_F(Read, EachKindOfADialogHasItsMembers) {
    Dialogue program(place_);
    const std::pair<const char*, const char*> kinds[] = {
        {"FRMQZ_PARAMETRI", "caption"},
        {"CHK_QZ03_FLG_PROV", "caption value"},
        {"Frame3", "caption"},
        {"CMB_QZ03_TIPOCARICODATA", "items value"},
        {"TXT_QZ03_DATAINIZIOVAL", "error value"},
        {"TXT_QZ03_ID_WF02", "error value"},
        {"KVT_LABEL3", "caption"},
        {"CMD_SALVA", "caption tooltip"},
        {"CMD_RIPRISTINA", "caption tooltip"},
    };
    QJsonArray steps;
    for (const auto& [control, expected] : kinds)
        steps.append(reading(control));
    const auto replies = inForm(program, QStringLiteral("CMD_PARAMETRI"), QStringLiteral("FRMQZ_PARAMETRI"), steps);
    ASSERT_EQ(steps.size(), replies.size());
    for (int at = 0; at < replies.size(); ++at)
        EXPECT_EQ(kinds[at].second, members(replies.at(at).toObject())) << kinds[at].first;
    EXPECT_TRUE(replies.at(1)[QLatin1String("value")].isBool());
    EXPECT_TRUE(replies.at(3)[QLatin1String("value")].isDouble());
    EXPECT_TRUE(replies.at(4)[QLatin1String("value")].isString());
    EXPECT_EQ("&Salva", text(replies.at(7)[QLatin1String("caption")])); // with its mark
}

TEST_F(Read, TheListToChooseFromIsAGrid) {
    Dialogue program(place_);
    program.ask({{"do", "when"},
                 {"form", "lkp_Stati"},
                 {"steps", QJsonArray{reading("lkp_Stati"), reading("GRD_ELENCO"),
                                      QJsonObject{{"do", "choose"}, {"value", 11}}, reading("GRD_ELENCO")}}});
    const auto opened =
        program.ask({{"do", "focus"}, {"control", destTree}, {"id", 4}, {"column", "Stato"}}).value("modal")[0];
    EXPECT_EQ("lkp_Stati", text(opened["form"]));
    const auto replies = opened["replies"].toArray();
    ASSERT_EQ(4, replies.size());
    EXPECT_EQ("caption", members(replies.at(0).toObject()));
    EXPECT_EQ("rows tooltip", members(replies.at(1).toObject()));
    EXPECT_EQ(R"([[["10","Bozza"],["20","Approvato"],["30","Chiuso"]]])", text(replies.at(1)["rows"]));
    EXPECT_EQ("false", text(replies.at(2)["ok"])); // no such code: nothing is chosen, the list stays
    EXPECT_EQ("true", text(replies.at(3)["ok"]));
    EXPECT_EQ("", program.cell(destTree, 4, QStringLiteral("Stato")));
}

TEST_F(Read, PlacesAreOfTheFormNotOfTheFrameAround) {
    Dialogue program(place_);
    const auto replies = inForm(program, QStringLiteral("CMD_SPOSTAVALID"), QStringLiteral("FRMQZ_DATAFINELEGAME"),
                                {reading("GRB_DATAFINELEGAME"), reading("KVT_LABEL1"),
                                 reading("TXT_DATACHIUSURALEGAME"), reading("CMD_ESEGUI"), reading("CMD_ANNULLA")});
    ASSERT_EQ(5, replies.size());
    const auto edge = [](const QJsonValue& of, const char* near, const char* size) {
        return of[QLatin1String(near)].toInt() + of[QLatin1String(size)].toInt();
    };
    const auto group = replies.at(0);
    for (const int inside : {1, 2}) {
        const auto control = replies.at(inside);
        EXPECT_GT(control["left"].toInt(), group["left"].toInt());
        EXPECT_GT(control["top"].toInt(), group["top"].toInt());
        EXPECT_LE(edge(control, "left", "width"), edge(group, "left", "width"));
        EXPECT_LE(edge(control, "top", "height"), edge(group, "top", "height"));
    }
    EXPECT_EQ(edge(replies.at(1), "left", "width"), replies.at(2)["left"].toInt());
    EXPECT_GE(replies.at(3)["top"].toInt(), edge(group, "top", "height"));
    EXPECT_EQ(replies.at(3)["top"].toInt(), replies.at(4)["top"].toInt());

    // The right-hand side of the main form, two frames deep.
    const auto orig = program.read(origTree);
    const auto dest = program.read(destTree);
    const auto side = program.read(QStringLiteral("FME_DESTINAZIONE"));
    EXPECT_GT(side.value("left").toInt(), edge(orig, "left", "width"));
    EXPECT_GT(dest.value("left").toInt(), side.value("left").toInt());
    EXPECT_LE(edge(dest, "left", "width"), edge(side, "left", "width"));
    EXPECT_EQ("0 0 0 0", bounds(program.read(QStringLiteral("mnuDettagli"))));
}

TEST_F(Read, TheStateHasTheseNamesAndTypes) {
    Dialogue program(place_);
    const QString texts = "DataFineLegame DivisioneDest DivisioneOrig GuidDistintaDest IdDistintaDest IdDistintaOrig "
                          "MessaggioSpostamento";
    const QString numbers = "CodiceAnagMenu LivelloCorrenteDest LivelloCorrenteOrig LivelloMaxDest LivelloMaxOrig "
                            "StatoLegame TipoAnagMenu TipoCFDest TipoCFOrig TipoCaricaDATA";
    const QString dates = "DataFineNodoDest DataFissaFINE DataFissaINIZIO DataInizioNodoDest";
    const QString flags = "flg_Anagrafica flg_Classificazioni flg_CondVendita flg_Provvigioni";
    const auto state = program.state();
    QStringList found[4];
    for (auto at = state.begin(); at != state.end(); ++at) {
        if (at.key() == QLatin1String("NodoStatoDest"))
            continue;
        const bool date =
            at.value().isString() && QDate::fromString(at.value().toString(), QStringLiteral("dd/MM/yyyy")).isValid();
        found[at.value().isBool() ? 3 : at.value().isDouble() ? 1 : date ? 2 : 0].append(at.key());
    }
    EXPECT_EQ(texts.toStdString(), found[0].join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ(numbers.toStdString(), found[1].join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ(dates.toStdString(), found[2].join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ(flags.toStdString(), found[3].join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ("null", text(state.value("NodoStatoDest")));

    // The node whose menu opened is told by its id.
    program.must(
        R"({"do":"mouse","control":"TRW_ELEMDISTINTADEST","id":4,"column":"RagioneSociale","button":"right"})");
    EXPECT_TRUE(program.state().value("NodoStatoDest").isDouble());
    EXPECT_EQ("4", text(program.state().value("NodoStatoDest")));
}

TEST_F(Read, ADateThatWasNeverReadIsNull) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = NULL, QZ02_DATAFINEVAL = NULL");
    Dialogue program(place_);
    EXPECT_EQ("null", text(program.state().value("DataInizioNodoDest")));
    EXPECT_EQ("null", text(program.state().value("DataFineNodoDest")));
}

} // namespace

// Several moves at once: out of a CSV file, of the checked nodes, and from the command line.

#include "e2e/Database.h"
#include "e2e/Program.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

using namespace e2e;

namespace {

QJsonObject object(const char* text) {
    return QJsonDocument::fromJson(text).object();
}

class Lists : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static void show(Dialogue& program) {
        program.select(origList, QStringLiteral("C1"));
        program.select(destList, QStringLiteral("C2"));
        program.trace();
    }
    QJsonObject moves(Dialogue& program, const QByteArray& list, bool apply = false) {
        return program.ask({{QStringLiteral("do"), QStringLiteral("moves")},
                            {QStringLiteral("file"), place_.write(QStringLiteral("elenco.csv"), list)},
                            {QStringLiteral("apply"), apply}});
    }
    std::string value(const char* sql) { return Database(place_).value(sql); }
    static std::string member(const QJsonObject& reply, int row, const char* name) {
        return text(reply.value(QStringLiteral("rows")).toArray()[row].toObject().value(QLatin1String(name)));
    }
    static int number(const QJsonObject& reply, int row, const char* name) {
        return reply.value(QStringLiteral("rows")).toArray()[row].toObject().value(QLatin1String(name)).toInt(-1);
    }

    Workplace place_{Workplace::Where::file};
};

constexpr const char* twoLines = "conto;nuovo_padre;distinta_origine;distinta_destinazione;tipo;data_fine\n"
                                 "110;210;AG;ZN;struttura;\n"
                                 "120;110;AG;ZN;validita;30/06/2024\n";

TEST_F(Lists, ArePreviewedLineByLineThroughWhatEarlierLinesDid) {
    // The second line goes under what the first one brought over; its account is there already, in another period.
    Database(place_).run("DELETE FROM QZ02_DISTINTA WHERE QZ02_ID = 24");
    Dialogue program(place_);
    show(program);
    const auto before = Database(place_).nodes();
    const auto reply = moves(program, twoLines);
    ASSERT_TRUE(reply.value(QStringLiteral("ok")).toBool()) << json(reply);
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull()) << json(reply);
    EXPECT_EQ(json(object(R"({"moves":2,"copies":1})")), json(reply.value(QStringLiteral("counts")).toObject()));
    EXPECT_EQ(2, number(reply, 0, "line"));
    EXPECT_EQ(2, number(reply, 1, "line"));
    EXPECT_EQ(json(object(R"({"line":3,"id":4,"account":120,"name":"Neri S.n.c.","outcome":"copies","reason":null,
        "before":{"type":1,"parent":1,"start":"01/01/2024","end":"31/12/2024"},
        "after":{"type":1,"parent":1,"start":"01/01/2024","end":"30/06/2024"},
        "copy":{"type":2,"parent_account":110,"start":"01/07/2024","end":"31/12/2024"}})")),
              json(reply.value(QStringLiteral("rows")).toArray()[2].toObject()));
    EXPECT_EQ(std::vector<std::string>{"SpostaElenco"}, modalForms(reply));
    EXPECT_EQ(before, Database(place_).nodes());
    for (const auto& statement : program.trace())
        EXPECT_EQ("SELECT", statement.substr(statement.find_first_not_of(' '), 6)) << statement;
}

TEST_F(Lists, AreMovedInOneTransactionAndBothTreesShowIt) {
    Database(place_).run("DELETE FROM QZ02_DISTINTA WHERE QZ02_ID = 24");
    Dialogue program(place_);
    show(program);
    const auto reply = moves(program, twoLines, true);
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull()) << json(reply);
    EXPECT_EQ(json(object(R"({"moves":2,"copies":1})")), json(reply.value(QStringLiteral("counts")).toObject()));
    EXPECT_TRUE(messages(reply).empty());
    int begun = 0;
    int committed = 0;
    for (const auto& statement : program.trace()) {
        begun += statement == "BeginTrans";
        committed += statement == "CommitTrans";
    }
    EXPECT_EQ(1, begun);
    EXPECT_EQ(1, committed);
    EXPECT_EQ("21", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    EXPECT_EQ("2024-06-30", value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 4"));
    EXPECT_EQ("2", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_CLIFOR_CG44 = 120 AND "
                         "QZ02_ID_QZ01 = 2"));
    EXPECT_FALSE(program.node(destTree, 2).isEmpty());
    EXPECT_TRUE(program.node(origTree, 2).isEmpty());
    EXPECT_EQ("Spostati 3 nodi con 2 righe dell'elenco",
              text(program.read(QStringLiteral("StatusBar")).value(QStringLiteral("value"))));
}

TEST_F(Lists, AreOneOperationOfTheRegistry) {
    Dialogue program(place_);
    show(program);
    EXPECT_TRUE(
        moves(program, "conto,nuovo_padre\n110,210\n130,220\n", true).value(QStringLiteral("refused")).isNull());
    const auto operations = program.must(R"({"do":"registry"})").value(QStringLiteral("operations")).toArray();
    ASSERT_EQ(1, operations.size());
    EXPECT_EQ("list", text(operations[0].toObject().value(QStringLiteral("kind"))));
    EXPECT_EQ(4, operations[0].toObject().value(QStringLiteral("rows")).toInt());
}

TEST_F(Lists, NameWhatIsWrongByLineAndWriteNothing) {
    Database(place_).run(
        "INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,"
        "QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES (8,1,1,1,0,130,'2024-01-01','2024-12-31')");
    Dialogue program(place_);
    show(program);
    const auto before = Database(place_).nodes();
    const auto list = QByteArray("conto;nuovo_padre;distinta_destinazione;tipo;data_fine\n"
                                 "110;210;;;\n"
                                 "777;210;;;\n"
                                 "130;210;;;\n"
                                 "110;778;;;\n"
                                 "111;210;XX;;\n"
                                 "111;210;;validita;31/02/2024\n"
                                 "111;210;;validita;\n"
                                 "111;210;;a mano;\n"
                                 "cento;210;;;\n"
                                 "111;510;FO;;\n"
                                 "120;210;;validita;31/12/2023\n");
    for (const bool apply : {false, true}) {
        const auto reply = moves(program, list, apply);
        ASSERT_TRUE(reply.value(QStringLiteral("ok")).toBool()) << json(reply);
        EXPECT_EQ("Riga 3: Il conto 777 non è nella distinta AG.\n"
                  "Riga 4: Il conto 130 è ambiguo: nella distinta AG ha più legami in periodi sovrapposti.\n"
                  "Riga 5: Il conto 110 non è nella distinta AG.\n"
                  "Riga 6: Il conto 111 non è nella distinta AG.\n"
                  "Riga 7: data_fine «31/02/2024» non è un giorno gg/mm/aaaa\n"
                  "Riga 8: Data fine legame non impostata!\n"
                  "Riga 9: tipo «a mano» non è né struttura né validita\n"
                  "Riga 10: conto «cento» non è il codice di un conto\n"
                  "Riga 11: Il conto 111 non è nella distinta AG.\n"
                  "Riga 12: Attenzione la data di fine legame inserita è minore della data inizio legame del nodo di "
                  "origine.",
                  text(reply.value(QStringLiteral("refused"))));
        EXPECT_EQ(json(object(R"({"moves":2,"refused":10})")), json(reply.value(QStringLiteral("counts")).toObject()));
        EXPECT_EQ(json(object(R"({"line":3,"id":null,"account":777,"name":"","outcome":"refused",
            "reason":"Il conto 777 non è nella distinta AG.","before":null,"after":null,"copy":null})")),
                  json(reply.value(QStringLiteral("rows")).toArray()[2].toObject()));
        EXPECT_EQ(before, Database(place_).nodes());
    }
    for (const auto& statement : program.trace())
        EXPECT_NE("BeginTrans", statement);
}

TEST_F(Lists, AMoveThatACheckRefusesRefusesThemAll) {
    // 120 stands in the destination already, in a period that the new link would overlap.
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '2099-12-31' WHERE QZ02_ID = 4");
    Dialogue program(place_);
    show(program);
    const auto before = Database(place_).nodes();
    const auto reply = moves(program,
                             "conto;nuovo_padre;tipo;data_fine\n110;210;;\n120;210;validita;30/06/2024\n"
                             "130;220;validita;30/06/2024\n",
                             true);
    EXPECT_EQ(0U, text(reply.value(QStringLiteral("refused"))).find("Riga 3: ")) << json(reply);
    EXPECT_EQ(before, Database(place_).nodes());
}

TEST_F(Lists, RefuseAFileThatIsNone) {
    Dialogue program(place_);
    show(program);
    for (const auto& [list, reason] : std::vector<std::pair<QByteArray, std::string>>{
             {"", "L'elenco è vuoto."},
             {"\n\n", "L'elenco è vuoto."},
             {"conto;nuovo_padre\n", "sotto l'intestazione non c'è nessuna riga"},
             {"110;210\n", "Colonna sconosciuta «110»"},
             {"conto;padre\n110;210\n", "Colonna sconosciuta «padre»"},
             {"conto\n110\n", "Manca la colonna «nuovo_padre»"},
             {"conto;conto;nuovo_padre\n1;1;2\n", "c'è due volte"},
             {"conto;nuovo_padre\n\"110;210\n", "virgolette"},
             {QByteArray("conto\0x", 7), "Non è un testo"}}) {
        const auto reply = moves(program, list);
        EXPECT_FALSE(reply.value(QStringLiteral("ok")).toBool()) << list.toStdString();
        EXPECT_NE(std::string::npos, text(reply.value(QStringLiteral("error"))).find(reason)) << json(reply);
    }
    EXPECT_NE(std::string::npos,
              program.refusal(R"({"do":"moves","file":"/nessuno/elenco.csv"})").find("/nessuno/elenco.csv"));
    EXPECT_NE("", program.refusal(R"({"do":"moves"})"));
    EXPECT_NE("", program.refusal(R"({"do":"moves","file":"x","selected":true})"));
    EXPECT_NE("", program.refusal(R"({"do":"moves","file":"x","apply":"no"})"));
}

TEST_F(Lists, TakeCommasTabsMarksAndTheOldCharacterSet) {
    Database(place_).run("UPDATE QZ01_TIPODISTINTA SET QZ01_CODICE = 'Età' WHERE QZ01_ID = 2");
    Dialogue program(place_);
    show(program);
    for (const auto& list :
         std::vector<QByteArray>{"conto,nuovo_padre,distinta_destinazione\r\n110,210,\"Età\"\r\n",
                                 "\xEF\xBB\xBF"
                                 "conto;nuovo_padre;distinta_destinazione\r\n\r\n110 ; 210;età\r\n;;\r\n",
                                 "Conto\tNuovo padre\tDistinta destinazione\n110\t210\tEtà",
                                 "conto;nuovo_padre;distinta_destinazione\n110;210;Et\xE0\n"}) {
        const auto reply = moves(program, list);
        EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull()) << list.toStdString() << json(reply);
        EXPECT_EQ(json(object(R"({"moves":2})")), json(reply.value(QStringLiteral("counts")).toObject()));
    }
}

TEST_F(Lists, MoveTheTopmostCheckedNodes) {
    Dialogue program(place_);
    show(program);
    program.focus(destTree, 25);
    EXPECT_EQ("Nessun nodo è selezionato nella distinta di origine.",
              text(program.must(R"({"do":"moves","selected":true})").value(QStringLiteral("refused"))));
    // The mark of node 2 reaches what follows it, 3 and 4, up to the next top-level node.
    program.must(R"({"do":"check","control":"TRW_ELEMDISTINTAORIG","id":2,"state":1})");
    auto reply = program.must(R"({"do":"moves","selected":true,"validity":false})");
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull()) << json(reply);
    ASSERT_EQ(3, reply.value(QStringLiteral("rows")).toArray().size());
    EXPECT_EQ(1, number(reply, 0, "line"));
    EXPECT_EQ(2, number(reply, 0, "id"));
    EXPECT_EQ(3, number(reply, 1, "id"));
    EXPECT_EQ(1, number(reply, 1, "line"));
    EXPECT_EQ(4, number(reply, 2, "id"));
    EXPECT_EQ(2, number(reply, 2, "line"));
    EXPECT_EQ(std::vector<std::string>{"SpostaSelezionati"}, modalForms(reply));
    EXPECT_EQ("1", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    reply = program.must(R"({"do":"moves","selected":true,"validity":true,"date":"31/12/2023","apply":true})");
    EXPECT_EQ(
        "Riga 2: Attenzione la data di fine legame inserita è minore della data inizio legame del nodo di origine.",
        text(reply.value(QStringLiteral("refused"))));
    reply = program.must(R"({"do":"moves","selected":true,"validity":false,"apply":true})");
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull()) << json(reply);
    EXPECT_EQ("25", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    EXPECT_EQ("25", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 4"));
    EXPECT_FALSE(program.node(destTree, 4).isEmpty());
}

TEST_F(Lists, TheWindowReadsAFileAgainAfterItWasMended) {
    Dialogue program(place_);
    show(program);
    const auto file = place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre\n110;210\n");
    program.must(QByteArray(R"({"do":"when","form":"SpostaElenco","steps":[{"do":"read","control":"LBL_TITOLO"},)"
                            R"({"do":"set","control":"TXT_FILE","value":")") +
                 file.toUtf8() +
                 R"("},{"do":"click","control":"CMD_LEGGI"},{"do":"read","control":"LBL_TITOLO"},)"
                 R"({"do":"read","control":"GRD_RIGHE"},{"do":"click","control":"CMD_SPOSTA"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.must(R"({"do":"menu","item":"mnuSpostaElenco"})");
    const auto replies =
        reply.value(QStringLiteral("modal")).toArray()[0].toObject().value(QStringLiteral("replies")).toArray();
    ASSERT_EQ(6, replies.size());
    EXPECT_EQ("2 nodi: 2 si spostano", text(replies[3].toObject().value(QStringLiteral("caption"))));
    EXPECT_EQ("2", text(replies[4].toObject().value(QStringLiteral("rows")).toArray()[0].toArray()[0]));
    EXPECT_EQ(std::vector<std::string>{"Eseguire lo spostamento?"}, messages(reply));
    EXPECT_EQ("21", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
}

TEST_F(Lists, RunFromTheCommandLine) {
    const auto file = place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre\n110;210\n");
    const auto run = [&](const QStringList& options) {
        return place_.run(place_.connection() + QStringList{QStringLiteral("--moves"), file} + options);
    };
    const auto dry = QStringLiteral("--dry-run");
    const auto before = Database(place_).nodes();
    auto outcome = run({dry});
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();
    EXPECT_EQ("line;id;account;name;outcome;reason;before_type;before_parent;before_start;before_end;after_type;"
              "after_parent;after_start;after_end;copy_type;copy_parent_account;copy_start;copy_end\n"
              "2;2;110;Bianchi S.r.l.;moves;;1;1;01/01/2020;31/12/2099;2;21;01/01/2020;31/12/2099;;;;\n"
              "2;3;111;Verdi & C.;moves;;1;2;01/01/2020;31/12/2099;2;2;01/01/2020;31/12/2099;;;;\n",
              outcome.out.toStdString());
    EXPECT_EQ("", outcome.err.toStdString());
    EXPECT_EQ(before, Database(place_).nodes());
    outcome = run({dry, QStringLiteral("--format"), QStringLiteral("json")});
    EXPECT_EQ(0, outcome.status);
    const auto lines = outcome.out.split('\n');
    ASSERT_EQ(3, lines.size());
    EXPECT_EQ(111, QJsonDocument::fromJson(lines[1]).object().value(QStringLiteral("account")).toInt());

    outcome = run({QStringLiteral("--apply")});
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();
    EXPECT_EQ("21", value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));

    // Account 110 has gone: there is no first distinta with it above 111 any more, but one with it.
    place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre\n111;220\n999;888\n");
    const auto moved = Database(place_).nodes();
    for (const auto& option : {dry, QStringLiteral("--apply")}) {
        outcome = run({option});
        EXPECT_EQ(1, outcome.status);
        EXPECT_NE(-1, outcome.err.indexOf(QStringLiteral("Riga 3"))) << outcome.err.toStdString();
        EXPECT_NE(-1, outcome.out.indexOf("3;;999;;refused;"));
        EXPECT_EQ(moved, Database(place_).nodes());
    }
    EXPECT_EQ(2, run({}).status);
    EXPECT_EQ(2, run({dry, QStringLiteral("--apply")}).status);
    EXPECT_EQ(2, run({dry, QStringLiteral("--format"), QStringLiteral("xml")}).status);
    place_.write(QStringLiteral("elenco.csv"), "conto\n1\n");
    EXPECT_EQ(2, run({dry}).status);
    EXPECT_EQ(
        2, place_.run(place_.connection() + QStringList{QStringLiteral("--moves"), QStringLiteral("/nessuno.csv"), dry})
               .status);
    place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre\n111;220\n");
    EXPECT_EQ(3, place_
                     .run({QStringLiteral("--database"), place_.path(QStringLiteral("manca.sqlite")),
                           QStringLiteral("--moves"), file, dry})
                     .status);
}

TEST_F(Lists, FormulasAreDefusedInTheReport) {
    Database(place_).run("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = '=1+1;\"x\"' WHERE CG16_CODICE = 1110");
    const auto file = place_.write(QStringLiteral("elenco.csv"), "conto;nuovo_padre\n110;210\n");
    const auto outcome =
        place_.run(place_.connection() + QStringList{QStringLiteral("--moves"), file, QStringLiteral("--dry-run")});
    EXPECT_EQ(0, outcome.status);
    EXPECT_NE(-1, outcome.out.indexOf("2;2;110;\"'=1+1;\"\"x\"\"\";moves;")) << outcome.out.toStdString();
}

TEST_F(Lists, TenMegabytesAreAnsweredSoon) {
    QByteArray list("conto;nuovo_padre;tipo\n");
    while (list.size() < 1 << 20)
        list += "999999999;888888888;struttura\n";
    const auto file = place_.write(QStringLiteral("elenco.csv"), list);
    auto outcome =
        place_.run(place_.connection() + QStringList{QStringLiteral("--moves"), file, QStringLiteral("--dry-run")});
    EXPECT_EQ(1, outcome.status) << outcome.err.left(300).toStdString();
    EXPECT_EQ((list.count('\n') - 1), outcome.out.count('\n') - 1);
    while (list.size() < 10 << 20)
        list += "999999999;888888888;struttura\n";
    place_.write(QStringLiteral("elenco.csv"), list);
    outcome =
        place_.run(place_.connection() + QStringList{QStringLiteral("--moves"), file, QStringLiteral("--dry-run")});
    EXPECT_EQ(2, outcome.status) << outcome.err.left(300).toStdString();
    EXPECT_NE(-1, outcome.err.indexOf(QStringLiteral("più di 200000 righe")));
}

} // namespace

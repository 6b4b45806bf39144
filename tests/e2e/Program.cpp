#include "e2e/Program.h"

#include "e2e/Database.h"
#include "odbc/ServerLock.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <set>

#include <sys/resource.h>

namespace e2e {

const QString origTree = QStringLiteral("TRW_ELEMDISTINTAORIG");
const QString destTree = QStringLiteral("TRW_ELEMDISTINTADEST");
const QString origList = QStringLiteral("TRW_DISTINTEORIG");
const QString destList = QStringLiteral("TRW_DISTINTEDEST");

namespace {

constexpr int patience = 30000; // milliseconds

/// Processes need an application object around them.
class Application : public ::testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QCoreApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> application_;
};
[[maybe_unused]] const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

QJsonObject parsed(const QByteArray& line) {
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(line, &error);
    EXPECT_TRUE(error.error == QJsonParseError::NoError && document.isObject()) << line.toStdString();
    const QJsonObject reply = document.object();
    // Every reply has these, whatever it answers.
    EXPECT_TRUE(reply.value(QLatin1String("ok")).isBool()) << line.toStdString();
    EXPECT_TRUE(reply.value(QLatin1String("messages")).isArray()) << line.toStdString();
    EXPECT_TRUE(reply.value(QLatin1String("modal")).isArray()) << line.toStdString();
    // A reading may tell the error that stands at a field.
    const bool reading = reply.contains(QLatin1String("visible"));
    EXPECT_EQ(reply.value(QLatin1String("ok")).toBool(), reading || !reply.contains(QLatin1String("error")))
        << line.toStdString();
    return reply;
}

/// The nodes below a parent, each followed by those below it.
std::vector<int> inOrder(const std::map<int, std::set<int>>& children, int parent) {
    std::vector<int> all;
    const auto at = children.find(parent);
    if (at == children.end())
        return all;
    for (const int child : at->second) {
        all.push_back(child);
        const auto below = inOrder(children, child);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

QByteArray compact(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

Workplace::Workplace(Where where) {
    EXPECT_TRUE(folder_.isValid());
    const char* server = std::getenv("DISTINTE_TEST_ODBC");
    if (where == Where::file || server == nullptr || server[0] == '\0')
        return;
    server_ = server;
    lock_ = odbc_test::lockServer();
}

Workplace::~Workplace() {
    odbc_test::unlockServer(lock_);
}

QStringList Workplace::connection() const {
    const std::string& odbc = programs_.empty() ? server_ : programs_;
    return odbc.empty() ? QStringList{QStringLiteral("--database"), database()}
                        : QStringList{QStringLiteral("--odbc"), QString::fromStdString(odbc)};
}

void Workplace::prepare(QProcess& process) const {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DISTINTE_ODBC", "DISTINTE_ODBC_PASSWORD",
                             "DISTINTE_REGISTRY"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("HOME"), folder_.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    for (const auto& [name, value] : variables_)
        environment.insert(name, value);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.setProgram(QStringLiteral(DISTINTE_EXECUTABLE));
    if (largestFile_)
        process.setChildProcessModifier([bytes = *largestFile_] {
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{bytes, bytes};
            ::setrlimit(RLIMIT_FSIZE, &limit);
        });
}

void Workplace::makeForest() {
    if (onServer())
        dropServerTables(server_);
    const Outcome made = run(connection() + QStringList{QStringLiteral("--create")});
    ASSERT_EQ(0, made.status) << made.err.toStdString();
    Database filled(*this);
    fillForest(filled);
}

Outcome Workplace::run(const QStringList& arguments, const QByteArray& input) {
    QProcess process;
    prepare(process);
    process.setArguments(arguments);
    process.start();
    EXPECT_TRUE(process.waitForStarted(patience));
    process.write(input);
    process.closeWriteChannel();
    Outcome outcome;
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

QString Workplace::write(const QString& name, const QByteArray& content) {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return file.fileName();
}

Outcome Workplace::runScript(const QByteArray& script, const QStringList& arguments) {
    const QString file = write(QStringLiteral("prova.jsonl"), script);
    Outcome outcome = run(connection() + QStringList{QStringLiteral("--script"), file} + arguments);
    for (const QByteArray& line : outcome.out.split('\n')) {
        if (!line.isEmpty())
            outcome.replies.push_back(parsed(line));
    }
    return outcome;
}

Dialogue::Dialogue(Workplace& place, const QStringList& arguments, bool openForm) : onServer_(place.onServer()) {
    place.prepare(process_);
    process_.setArguments(place.connection() + QStringList{QStringLiteral("--script"), QStringLiteral("-")} +
                          arguments);
    process_.start();
    EXPECT_TRUE(process_.waitForStarted(patience));
    if (openForm)
        open();
}

Dialogue::~Dialogue() {
    if (process_.state() != QProcess::NotRunning)
        finish();
}

void Dialogue::send(const QByteArray& line) {
    process_.write(line + '\n');
    process_.waitForBytesWritten(patience);
}

QJsonObject Dialogue::ask(const QByteArray& line) {
    send(line);
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(patience)) {
            ADD_FAILURE() << "no reply to " << line.toStdString()
                          << "; standard error: " << process_.readAllStandardError().toStdString();
            return {};
        }
    }
    return parsed(process_.readLine());
}

QJsonObject Dialogue::ask(const QJsonObject& request) {
    return ask(compact(request));
}

QJsonObject Dialogue::must(const QByteArray& line) {
    QJsonObject reply = ask(line);
    EXPECT_TRUE(reply.value(QLatin1String("ok")).toBool()) << line.toStdString() << ": " << json(reply);
    return reply;
}

std::string Dialogue::refusal(const QByteArray& line) {
    const QJsonObject reply = ask(line);
    EXPECT_FALSE(reply.value(QLatin1String("ok")).toBool(true)) << line.toStdString() << ": " << json(reply);
    return text(reply.value(QLatin1String("error")));
}

QJsonObject Dialogue::open(const QJsonObject& context) {
    QJsonObject request{{QStringLiteral("do"), QStringLiteral("open")}};
    if (!context.isEmpty())
        request.insert(QStringLiteral("context"), context);
    return must(compact(request));
}

QJsonObject Dialogue::click(const QString& control) {
    return must(compact({{QStringLiteral("do"), QStringLiteral("click")}, {QStringLiteral("control"), control}}));
}

QJsonObject Dialogue::select(const QString& control, const QString& key) {
    return must(compact({{QStringLiteral("do"), QStringLiteral("select")},
                         {QStringLiteral("control"), control},
                         {QStringLiteral("key"), key}}));
}

QJsonObject Dialogue::focus(const QString& tree, int id) {
    return must(compact({{QStringLiteral("do"), QStringLiteral("focus")},
                         {QStringLiteral("control"), tree},
                         {QStringLiteral("id"), id}}));
}

QJsonObject Dialogue::read(const QString& control) {
    return must(compact({{QStringLiteral("do"), QStringLiteral("read")}, {QStringLiteral("control"), control}}));
}

QJsonObject Dialogue::state() {
    return must(R"({"do":"state"})").value(QLatin1String("state")).toObject();
}

std::vector<std::string> Dialogue::trace() {
    auto statements = wholeTrace();
    std::erase_if(statements, isOfRegistry);
    return statements;
}

std::vector<std::string> Dialogue::wholeTrace() {
    std::vector<std::string> statements;
    const QJsonArray sent = must(R"({"do":"trace"})").value(QLatin1String("statements")).toArray();
    for (const auto& statement : sent)
        statements.push_back(text(statement));
    return statements;
}

QJsonArray Dialogue::services() {
    return must(R"({"do":"services"})").value(QLatin1String("calls")).toArray();
}

std::vector<int> Dialogue::ids(const QString& tree) {
    std::vector<int> found;
    std::map<int, std::set<int>> children; // by parent, -1 for the roots
    const QJsonArray nodes = read(tree).value(QLatin1String("nodes")).toArray();
    for (const auto& node : nodes) {
        found.push_back(node[QLatin1String("id")].toInt(-1));
        children[node[QLatin1String("parent")].toInt(-1)].insert(found.back());
    }
    return onServer_ ? inOrder(children, -1) : found;
}

QJsonObject Dialogue::node(const QString& tree, int id) {
    const QJsonArray nodes = read(tree).value(QLatin1String("nodes")).toArray();
    for (const auto& node : nodes) {
        if (node[QLatin1String("id")].toInt(-1) == id)
            return node.toObject();
    }
    return {};
}

std::string Dialogue::cell(const QString& tree, int id, const QString& column) {
    return text(node(tree, id).value(QLatin1String("cells")).toObject().value(column));
}

std::string Dialogue::caption(const QString& control) {
    return text(read(control).value(QLatin1String("caption")));
}

int Dialogue::finish() {
    process_.closeWriteChannel();
    const bool ended = process_.state() == QProcess::NotRunning || process_.waitForFinished(patience);
    err_ = QString::fromUtf8(process_.readAllStandardError());
    if (ended && process_.exitStatus() == QProcess::NormalExit)
        return process_.exitCode();
    ADD_FAILURE() << "the program did not end by itself; standard error: " << err_.toStdString();
    process_.kill();
    process_.waitForFinished(patience);
    return -1;
}

bool isOfRegistry(const std::string& statement) {
    return statement.find("QZ90_REGISTRO") != std::string::npos ||
           statement.find("QZ91_REGISTRORIGHE") != std::string::npos;
}

std::vector<std::string> messages(const QJsonObject& reply) {
    std::vector<std::string> texts;
    const QJsonArray shown = reply.value(QLatin1String("messages")).toArray();
    for (const auto& message : shown)
        texts.push_back(text(
            message[QLatin1String(message[QLatin1String("kind")] == QLatin1String("error") ? "description" : "text")]));
    return texts;
}

QJsonObject onlyMessage(const QJsonObject& reply) {
    const QJsonArray shown = reply.value(QLatin1String("messages")).toArray();
    EXPECT_EQ(1, shown.size()) << json(reply);
    return shown.at(0).toObject();
}

std::vector<std::string> modalForms(const QJsonObject& reply) {
    std::vector<std::string> forms;
    const QJsonArray modal = reply.value(QLatin1String("modal")).toArray();
    for (const auto& opened : modal)
        forms.push_back(text(opened[QLatin1String("form")]));
    return forms;
}

std::string text(const QJsonValue& value) {
    if (value.isString())
        return value.toString().toStdString();
    if (value.isNull())
        return "null";
    if (value.isUndefined())
        return "missing";
    if (value.isBool())
        return value.toBool() ? "true" : "false";
    if (value.isDouble())
        return QString::number(value.toDouble(), 'g', 17).toStdString();
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
}

std::string json(const QJsonObject& object) {
    return compact(object).toStdString();
}

} // namespace e2e

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace e2e {

/// What a run of the program left: its exit status and what it wrote.
struct Outcome {
    int status = -1; ///< -1: it did not end by itself
    std::vector<QJsonObject> replies;
    QByteArray out;
    QString err;
};

/// A folder of its own for a user of the program, without a display, with nothing saved in it.
class Workplace {
public:
    /// Where its database is: in a file, or on the server that DISTINTE_TEST_ODBC names, if it does.
    enum class Where : std::uint8_t { file, serverIfAny };

    explicit Workplace(Where where = Where::serverIfAny);
    ~Workplace();

    QString path(const QString& name) const { return folder_.filePath(name); }
    QString database() const { return path(QStringLiteral("prova.sqlite")); }
    /// The server's connection string; empty for a file.
    const std::string& server() const { return server_; }
    bool onServer() const { return !server_.empty(); }
    /// The options of the command line that name the database.
    QStringList connection() const;
    /// Programs started from now on reach the database by this string for ODBC; the test itself as before.
    void connectBy(std::string connectionString) { programs_ = std::move(connectionString); }
    /// A new database with the program's tables, filled by fillForest(); on a server after dropping those there.
    void makeForest();

    /// Runs the program with these arguments to its end.
    Outcome run(const QStringList& arguments, const QByteArray& input = {});
    /// Runs a script file over the database.
    Outcome runScript(const QByteArray& script, const QStringList& arguments = {});
    /// Writes a file of this folder.
    QString write(const QString& name, const QByteArray& content);

    /// No file that the program writes may pass this size from now on, as on a disk that is full.
    void limitFiles(std::uint64_t bytes) { largestFile_ = bytes; }
    /// A variable of the environment of the programs started from now on.
    void setVariable(const QString& name, const QString& value) { variables_[name] = value; }
    /// Prepares a process in this user's environment.
    void prepare(QProcess& process) const;

private:
    QTemporaryDir folder_;
    std::optional<std::uint64_t> largestFile_;
    std::string server_;
    std::string programs_; ///< connection string of the programs where it is another one
    std::map<QString, QString> variables_;
    int lock_ = -1; ///< file that keeps other tests off the server's tables
};

/// The program under way, asked line by line.
class Dialogue {
public:
    /// Over the workplace's database; with open, the main form is opened first.
    explicit Dialogue(Workplace& place, const QStringList& arguments = {}, bool open = true);
    Dialogue(const Dialogue&) = delete;
    Dialogue& operator=(const Dialogue&) = delete;
    ~Dialogue();

    /// Sends one line and waits for its one reply.
    QJsonObject ask(const QByteArray& line);
    QJsonObject ask(const QJsonObject& request);
    /// The same, and the request must be carried out.
    QJsonObject must(const QByteArray& line);
    /// The same, and it must be refused; the reason.
    std::string refusal(const QByteArray& line);
    /// Sends what wants no answer.
    void send(const QByteArray& line);

    QJsonObject open(const QJsonObject& context = {});
    QJsonObject click(const QString& control);
    QJsonObject select(const QString& control, const QString& key);
    QJsonObject focus(const QString& tree, int id);
    QJsonObject read(const QString& control);
    QJsonObject state();
    /// Statements since the last trace, but for those of the registry of moves.
    std::vector<std::string> trace();
    /// All statements since the last trace.
    std::vector<std::string> wholeTrace();
    QJsonArray services();
    /// Ids of a tree's nodes in display order. A server gives brothers in the order it likes: they come by ascending
    /// id.
    std::vector<int> ids(const QString& tree);
    /// The node of that id as `read` answers it; empty when the tree has none.
    QJsonObject node(const QString& tree, int id);
    std::string cell(const QString& tree, int id, const QString& column);
    std::string caption(const QString& control);

    /// Ends the input and waits for the end; the exit status.
    int finish();
    QString err() const { return err_; }

private:
    QProcess process_;
    bool onServer_ = false;
    QString err_;
};

/// Texts of the message boxes of a reply, in order.
std::vector<std::string> messages(const QJsonObject& reply);
/// The one message box or error display of a reply; fails the test when there is not exactly one.
QJsonObject onlyMessage(const QJsonObject& reply);
std::string text(const QJsonValue& value);
/// Whether a statement names a table of the registry of moves.
bool isOfRegistry(const std::string& statement);
std::string json(const QJsonObject& object);
/// Forms named in `modal` of a reply.
std::vector<std::string> modalForms(const QJsonObject& reply);

extern const QString origTree, destTree, origList, destList;

} // namespace e2e

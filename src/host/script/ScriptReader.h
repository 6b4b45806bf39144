#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace host {

/// A line of a script that is to be answered.
struct ScriptLine {
    int number = 0;  ///< counted from 1, passed-over lines included
    QByteArray text; ///< without its end
};

/// The lines of a script, from a file or as they come in on standard input.
class ScriptReader {
public:
    /// "-" is standard input. Nothing, with the reason in Italian, when the file cannot be read.
    static std::unique_ptr<ScriptReader> open(const QString& file, QString& error);

    /// Reads from a descriptor that it does not close.
    ScriptReader(int descriptor, QString name);
    ScriptReader(const ScriptReader&) = delete;
    ScriptReader& operator=(const ScriptReader&) = delete;
    ~ScriptReader();

    /// The next line that is to be answered, as soon as it is complete; nothing at the end. While it waits for more,
    /// it calls idle about twenty times a second. A last line without an end of line counts, too.
    std::optional<ScriptLine> next(const std::function<void()>& idle);

    /// For messages: the file's name, "standard input" in Italian.
    const QString& name() const { return name_; }
    /// Why reading ended before the end of the script, empty when it did not.
    const QString& failure() const { return failure_; }

private:
    std::optional<QByteArray> takeLine();
    /// Reads what is there; false at the end.
    bool fill(const std::function<void()>& idle);

    int descriptor_;
    bool owned_ = false;
    QString name_;
    QString failure_;
    QByteArray buffer_;
    qsizetype searched_ = 0; ///< no end of line stands before this position
    bool ended_ = false;
    int number_ = 0;
};

} // namespace host

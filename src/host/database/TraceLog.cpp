#include "host/database/TraceLog.h"

#include "contract/RuntimeError.h"
#include "host/services/Text.h"
#include "platform/shared/SystemReason.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cerrno>
#include <utility>

namespace host {

namespace {

/// A text as a JSON string.
QByteArray jsonString(const QString& text) {
    // Only arrays and objects can be written as documents; the brackets around the one element go.
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

} // namespace

void TraceLog::openFile(const QString& path) {
    file_.setFileName(path);
    errno = 0;
    // Who watches the file, or finds it after a crash, sees the statement that is under way.
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il file di traccia \"" + path.toStdString() +
                                         "\" non si può scrivere: " + platform::systemReason(errno));
}

void TraceLog::add(const contract::Statement& statement) {
    ++count_;
    if (wanted())
        keep(statement.text());
}

void TraceLog::add(std::string_view word) {
    if (wanted())
        keep(word);
}

void TraceLog::keep(std::string_view text) {
    const QByteArray copy(text.data(), static_cast<qsizetype>(text.size()));
    if (recording_)
        texts_.add(copy);
    if (file_.isOpen()) {
        const QByteArray line = jsonString(QString::fromUtf8(copy)) + '\n';
        errno = 0;
        if (file_.write(line) != line.size())
            endFile(errno);
    }
}

void TraceLog::endFile(int reason) {
    const QString path = file_.fileName();
    file_.close();
    if (cut)
        cut(QStringLiteral(
                "Il file di traccia \"%1\" non si può più scrivere: %2. Le istruzioni che seguono non vi sono.")
                .arg(path, toQt(platform::systemReason(reason))));
}

void TraceLog::finished() {
    if (afterFinished)
        afterFinished();
}

QStringList TraceLog::take() {
    const auto [texts, missing] = texts_.take();
    missing_ = missing;
    QStringList handed;
    handed.reserve(static_cast<qsizetype>(texts.size()));
    for (const auto& text : texts)
        handed.append(QString::fromUtf8(text));
    return handed;
}

} // namespace host

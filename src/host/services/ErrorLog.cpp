#include "host/services/ErrorLog.h"

#include "host/services/Text.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace host {

QString categoryName(contract::ErrorCategory category) {
    using contract::ErrorCategory;
    switch (category) {
    case ErrorCategory::lostConnection:
        return QStringLiteral("lostConnection");
    case ErrorCategory::deadlock:
        return QStringLiteral("deadlock");
    case ErrorCategory::timeout:
        return QStringLiteral("timeout");
    case ErrorCategory::locked:
        return QStringLiteral("locked");
    case ErrorCategory::duplicate:
        return QStringLiteral("duplicate");
    case ErrorCategory::permission:
        return QStringLiteral("permission");
    case ErrorCategory::syntax:
        return QStringLiteral("syntax");
    case ErrorCategory::readOnly:
        return QStringLiteral("readOnly");
    case ErrorCategory::full:
        return QStringLiteral("full");
    case ErrorCategory::notADatabase:
        return QStringLiteral("notADatabase");
    case ErrorCategory::missingTable:
        return QStringLiteral("missingTable");
    case ErrorCategory::other:
        break;
    }
    return QStringLiteral("other");
}

bool ErrorLog::record(const Entry& entry) const {
    if (path_.isEmpty())
        return true;
    QJsonArray records;
    for (const auto& record : entry.records)
        records.append(QJsonObject{{QStringLiteral("state"), toQt(record.sqlState)},
                                   {QStringLiteral("number"), static_cast<qint64>(record.nativeError)},
                                   {QStringLiteral("description"), toQt(record.description)},
                                   {QStringLiteral("category"), categoryName(record.category)}});
    const QJsonObject line{
        {QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODateWithMs)},
        {QStringLiteral("application"), toQt(entry.application)},
        {QStringLiteral("caption"), toQt(entry.caption)},
        {QStringLiteral("procedure"), toQt(entry.procedure)},
        {QStringLiteral("number"), entry.error.number()},
        {QStringLiteral("description"), toQt(entry.error.description())},
        {QStringLiteral("records"), records},
        {QStringLiteral("answer"), entry.answer},
    };
    QDir().mkpath(QFileInfo(path_).absolutePath());
    QFile file(path_);
    // One write a line: lines of two programs on one log do not mix.
    return file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered) &&
           file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n') > 0;
}

bool ErrorLog::writable() const {
    if (path_.isEmpty())
        return true;
    QFileInfo file(path_);
    if (file.exists())
        return !file.isDir() && file.isWritable();
    // Folders that miss are made with the first entry.
    QFileInfo folder(file.absolutePath());
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.absolutePath());
    return folder.isDir() && folder.isWritable();
}

QString ErrorLog::complaint() const {
    return QStringLiteral("Il registro degli errori \"%1\" non si può scrivere: gli errori non vi restano.").arg(path_);
}

} // namespace host

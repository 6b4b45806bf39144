#include "host/script/ScriptRequest.h"

#include <QJsonDocument>
#include <QJsonParseError>

#include <algorithm>
#include <utility>

namespace host {

namespace {

QString parseProblem(const QJsonParseError& error) {
    switch (error.error) {
    case QJsonParseError::IllegalUTF8String:
        return QStringLiteral("il testo non è UTF-8");
    case QJsonParseError::GarbageAtEnd:
        return QStringLiteral("altro testo dopo la fine dell'oggetto");
    case QJsonParseError::DeepNesting:
        return QStringLiteral("troppi livelli annidati");
    case QJsonParseError::UnterminatedString:
        return QStringLiteral("testo senza virgolette finali");
    default:
        return QStringLiteral("sintassi errata");
    }
}

[[noreturn]] void refuseType(const QString& name, const char* wanted) {
    throw ScriptRefusal(QStringLiteral("\"%1\" deve essere %2").arg(name, QString::fromUtf8(wanted)));
}

} // namespace

ScriptRequest::ScriptRequest(QJsonObject members) : members_(std::move(members)) {
    verb_ = text(QStringLiteral("do"));
}

ScriptRequest ScriptRequest::parse(const QByteArray& line) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        throw ScriptRefusal(QStringLiteral("la riga non è JSON valido: %1 alla posizione %2")
                                .arg(parseProblem(error))
                                .arg(error.offset + 1));
    if (!document.isObject())
        throw ScriptRefusal(QStringLiteral("la riga non è un oggetto JSON"));
    return ScriptRequest(document.object());
}

bool ScriptRequest::isPassedOver(const QByteArray& line) {
    return line.startsWith('#') || std::all_of(line.begin(), line.end(), [](char c) {
               return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
           });
}

QJsonValue ScriptRequest::value(const QString& name) const {
    const auto found = members_.find(name);
    if (found == members_.end())
        throw ScriptRefusal(QStringLiteral("manca \"%1\"").arg(name));
    return *found;
}

QString ScriptRequest::text(const QString& name) const {
    const QJsonValue found = value(name);
    if (!found.isString())
        refuseType(name, "un testo");
    return found.toString();
}

std::optional<QString> ScriptRequest::optionalText(const QString& name) const {
    return has(name) ? std::optional(text(name)) : std::nullopt;
}

std::optional<qint64> ScriptRequest::wholeNumber(const QJsonValue& value) {
    // What is no whole number of 64 bits answers with the default: two of them tell it apart from each.
    const qint64 whole = value.toInteger(0);
    return value.toInteger(1) == whole ? std::optional(whole) : std::nullopt;
}

qint64 ScriptRequest::integer(const QString& name) const {
    const auto whole = wholeNumber(value(name));
    if (!whole)
        refuseType(name, "un numero intero");
    return *whole;
}

std::optional<qint64> ScriptRequest::optionalInteger(const QString& name) const {
    return has(name) ? std::optional(integer(name)) : std::nullopt;
}

int ScriptRequest::integer(const QString& name, int least, int most) const {
    const qint64 whole = integer(name);
    if (whole < least || whole > most)
        throw ScriptRefusal(
            QStringLiteral("\"%1\" deve stare tra %2 e %3, non %4").arg(name).arg(least).arg(most).arg(whole));
    return static_cast<int>(whole);
}

QJsonObject ScriptRequest::optionalObject(const QString& name) const {
    if (!has(name))
        return {};
    const QJsonValue found = value(name);
    if (!found.isObject())
        refuseType(name, "un oggetto");
    return found.toObject();
}

QJsonArray ScriptRequest::array(const QString& name) const {
    const QJsonValue found = value(name);
    if (!found.isArray())
        refuseType(name, "un elenco");
    return found.toArray();
}

QStringList ScriptRequest::optionalTexts(const QString& name) const {
    QStringList texts;
    if (!has(name))
        return texts;
    const QJsonArray elements = array(name);
    for (const auto& element : elements) {
        if (!element.isString())
            refuseType(name, "un elenco di testi");
        texts.append(element.toString());
    }
    return texts;
}

} // namespace host

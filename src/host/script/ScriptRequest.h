#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace host {

/// Why a script line is refused; the reason is in Italian, for the person who wrote the script.
class ScriptRefusal : public std::runtime_error {
public:
    explicit ScriptRefusal(const QString& reason) : std::runtime_error(reason.toStdString()), reason_(reason) {}
    const QString& reason() const { return reason_; }

private:
    QString reason_; ///< whole, even with a null character within
};

/// One request of a script with typed access to its members. Every access throws ScriptRefusal for a member that is
/// missing (where it must be there) or of another type.
class ScriptRequest {
public:
    /// The request of an object; throws ScriptRefusal without the text member `do`.
    explicit ScriptRequest(QJsonObject members);

    /// The request of a line of text. Throws ScriptRefusal for what is no JSON object.
    static ScriptRequest parse(const QByteArray& line);
    /// Whether a line is passed over without an answer: it is blank or begins with "#".
    static bool isPassedOver(const QByteArray& line);

    const QString& verb() const { return verb_; }
    const QJsonObject& members() const { return members_; }

    bool has(const QString& name) const { return members_.contains(name); }
    /// Any type, but there.
    QJsonValue value(const QString& name) const;
    QString text(const QString& name) const;
    std::optional<QString> optionalText(const QString& name) const;
    /// A whole number. Text in digits is none.
    qint64 integer(const QString& name) const;
    std::optional<qint64> optionalInteger(const QString& name) const;
    /// A whole number within the bounds, both included.
    int integer(const QString& name, int least, int most) const;
    /// Nothing where the member is missing.
    QJsonObject optionalObject(const QString& name) const;
    QJsonArray array(const QString& name) const;
    /// Empty where the member is missing.
    QStringList optionalTexts(const QString& name) const;

    /// The whole number that a JSON value is, nothing for fractions and for everything but numbers.
    static std::optional<qint64> wholeNumber(const QJsonValue& value);

private:
    QJsonObject members_;
    QString verb_;
};

} // namespace host

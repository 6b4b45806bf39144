#include "host/services/Text.h"

#include "platform/qt/look/PlainText.h"

#include <QTextDocument>

#include <limits>

namespace host {

QString toQt(std::string_view utf8) {
    return platform::qt::text(utf8);
}

QString plainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()) : text;
}

QJsonValue toJson(const contract::Value& value) {
    if (value.isMissing())
        return QJsonValue::Null;
    if (const auto* flag = value.as<bool>())
        return *flag;
    if (const auto* real = value.as<double>())
        return *real;
    if (value.isNumber() && value.as<contract::Decimal>() == nullptr)
        return static_cast<qint64>(value.integer().value_or(0));
    return toQt(value.text());
}

std::optional<std::int64_t> wholeNumber(const QJsonValue& value) {
    if (!value.isDouble())
        return std::nullopt;
    // toInteger() takes what is no whole number for its default: two different defaults tell.
    const qint64 one = value.toInteger(0);
    if (one == 0 && value.toInteger(1) != 0)
        return std::nullopt;
    return one;
}

std::optional<contract::Value> fromJson(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return contract::Value();
    case QJsonValue::Bool:
        return contract::Value(value.toBool());
    case QJsonValue::String:
        return contract::Value(value.toString().toStdString());
    case QJsonValue::Double:
        break;
    case QJsonValue::Array:
    case QJsonValue::Object:
        return std::nullopt;
    }
    const auto whole = wholeNumber(value);
    if (!whole)
        return contract::Value(value.toDouble());
    if (*whole >= std::numeric_limits<std::int32_t>::min() && *whole <= std::numeric_limits<std::int32_t>::max())
        return contract::Value(static_cast<std::int32_t>(*whole));
    return contract::Value(*whole);
}

} // namespace host

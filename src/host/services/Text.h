#pragma once

#include "contract/Value.h"

#include <QJsonValue>
#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// UTF-8 to the user interface's text.
QString toQt(std::string_view utf8);

/// A text as a tool tip that shows it letter by letter, whatever marks stand in it.
QString plainToolTip(const QString& text);

/// A value as JSON: a missing one as null, dates as "dd/mm/yyyy", decimals as text.
QJsonValue toJson(const contract::Value& value);
/// A JSON value as a property's value: null is empty, whole numbers are 32-bit where they fit. Nothing for lists and
/// objects.
std::optional<contract::Value> fromJson(const QJsonValue& value);
/// A whole number, nothing for any other JSON value.
std::optional<std::int64_t> wholeNumber(const QJsonValue& value);

} // namespace host

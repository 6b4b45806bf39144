#pragma once

#include "contract/Cinterface.h"

#include <QJsonValue>
#include <QString>

namespace host {

// The properties of a plug-in class by their names in the contract (exact case), as scripts know them. Objects are read
// as the text "object", null when there is none, and may only be set to null. Each answers with the reason of a
// refusal, empty when it was carried out.

QString readProperty(const contract::Cinterface& plugin, const QString& name, QJsonValue& value);
QString writeProperty(contract::Cinterface& plugin, const QString& name, const QJsonValue& value);

} // namespace host

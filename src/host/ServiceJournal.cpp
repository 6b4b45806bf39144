#include "host/ServiceJournal.h"

#include <utility>

namespace host {

void ServiceJournal::record(const QString& service, const QString& operation, const QJsonObject& arguments) {
    if (!recording_)
        return;
    QJsonObject call = arguments;
    call.insert(QStringLiteral("service"), service);
    call.insert(QStringLiteral("operation"), operation);
    calls_.append(call);
}

QJsonArray ServiceJournal::take() {
    return std::exchange(calls_, {});
}

} // namespace host

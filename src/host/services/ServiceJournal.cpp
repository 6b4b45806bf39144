#include "host/services/ServiceJournal.h"

#include <utility>

namespace host {

void ServiceJournal::record(const QString& service, const QString& operation, const QJsonObject& arguments) {
    if (!recording_)
        return;
    QJsonObject call = arguments;
    call.insert(QStringLiteral("service"), service);
    call.insert(QStringLiteral("operation"), operation);
    calls_.add(std::move(call));
}

QJsonArray ServiceJournal::take() {
    auto [calls, missing] = calls_.take();
    missing_ = missing;
    QJsonArray handed;
    for (auto& call : calls)
        handed.append(std::move(call));
    return handed;
}

} // namespace host

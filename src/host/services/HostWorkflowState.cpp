#include "host/services/HostWorkflowState.h"

#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"

#include <QUuid>

#include <algorithm>

namespace host {

namespace {

const QString service = QStringLiteral("WorkflowState");

} // namespace

std::string newGuid() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
}

std::string HostWorkflowState::GetNewGUID() {
    guid_ = newGuid();
    context_->journal.record(service, QStringLiteral("GetNewGUID"), {{QStringLiteral("result"), toQt(guid_)}});
    return guid_;
}

void HostWorkflowState::DuplicaStato(std::string_view from, std::string_view to) {
    context_->journal.record(service, QStringLiteral("DuplicaStato"),
                             {{QStringLiteral("from"), toQt(from)}, {QStringLiteral("to"), toQt(to)}});
    // A link without a state has none to give, and keeps what the other one has.
    if (const auto state = context_->states->state(from))
        context_->states->setState(to, *state, context_->user, from);
}

void HostWorkflowState::GetDefaultFlussoStato() {
    context_->journal.record(service, QStringLiteral("GetDefaultFlussoStato"));
    selected_.reset();
    if (const auto all = states(); !all.empty())
        selected_ = all.begin()->first;
}

void HostWorkflowState::ConfermaStato() {
    QJsonObject arguments{{QStringLiteral("guid"), toQt(guid_)}};
    arguments.insert(QStringLiteral("state"),
                     selected_ ? QJsonValue(static_cast<qint64>(*selected_)) : QJsonValue(QJsonValue::Null));
    context_->journal.record(service, QStringLiteral("ConfermaStato"), arguments);
    if (selected_ && !guid_.empty())
        context_->states->setState(guid_, *selected_, context_->user);
    selected_.reset();
}

void HostWorkflowState::ConfermaStatoDi(std::string_view guid) {
    guid_ = guid;
    ConfermaStato();
}

std::string HostWorkflowState::GetDescrizioneStatoFromGUID(std::string_view guid) {
    guid_ = guid;
    std::string description = descriptions({guid_}).front();
    context_->journal.record(service, QStringLiteral("GetDescrizioneStatoFromGUID"),
                             {{QStringLiteral("guid"), toQt(guid)}, {QStringLiteral("result"), toQt(description)}});
    return description;
}

std::vector<std::string> HostWorkflowState::descriptions(const std::vector<std::string>& guids) {
    std::vector<std::string> texts(guids.size());
    const auto found = context_->states->states(guids);
    if (std::none_of(found.begin(), found.end(), [](const auto& state) { return state.has_value(); }))
        return texts;
    const auto all = states();
    for (std::size_t i = 0; i < guids.size(); ++i)
        if (const auto at = found[i] ? all.find(*found[i]) : all.end(); at != all.end())
            texts[i] = at->second;
    return texts;
}

std::map<std::int64_t, std::string> HostWorkflowState::states() {
    contract::Snapshot rows;
    // Another connection would wait for a transaction that is under way on an embedded file.
    auto* underWay = context_->states->underWay();
    readAgainWhenLost(underWay != nullptr ? *underWay : *context_->connection,
                      contract::Statement("SELECT WF02_ID, WF02_DESCR FROM WF02_STATI ORDER BY WF02_ID"), rows);
    std::map<std::int64_t, std::string> all;
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        if (const auto id = rows.column(0).integer(row))
            all.emplace(*id, rows.column(1).value(row).text());
    return all;
}

} // namespace host

#include "platform/headless/HostWorkflow.h"

#include <algorithm>

namespace platform::headless {

std::string HostWorkflow::GetNewGUID() {
    journal_->call("WorkflowState.GetNewGUID");
    const auto digits = std::to_string(++store_->guidsMade);
    guid_ = "00000000-0000-4000-8000-" + std::string(12 - std::min<std::size_t>(digits.size(), 12), '0') + digits;
    return guid_;
}

void HostWorkflow::DuplicaStato(std::string_view from, std::string_view to) {
    journal_->call("WorkflowState.DuplicaStato", {std::string(from), std::string(to)});
    const auto state = store_->stateOf.find(std::string(from));
    if (state != store_->stateOf.end())
        store_->stateOf[std::string(to)] = state->second;
}

void HostWorkflow::GetDefaultFlussoStato() {
    journal_->call("WorkflowState.GetDefaultFlussoStato");
    selected_.reset();
    if (!store_->states.empty())
        selected_ = store_->states.begin()->first;
}

void HostWorkflow::ConfermaStato() {
    journal_->call("WorkflowState.ConfermaStato");
    if (selected_ && !guid_.empty())
        store_->stateOf[guid_] = *selected_;
}

void HostWorkflow::ConfermaStatoDi(std::string_view guid) {
    guid_ = guid;
    ConfermaStato();
}

std::string HostWorkflow::GetDescrizioneStatoFromGUID(std::string_view guid) {
    journal_->call("WorkflowState.GetDescrizioneStatoFromGUID", {std::string(guid)});
    guid_ = guid;
    return description(guid);
}

std::vector<std::string> HostWorkflow::descriptions(const std::vector<std::string>& guids) {
    std::vector<std::string> texts;
    texts.reserve(guids.size());
    for (const auto& guid : guids)
        texts.push_back(description(guid));
    return texts;
}

bool HostWorkflow::select(std::int64_t state) {
    if (!store_->states.contains(state))
        return false;
    selected_ = state;
    return true;
}

std::string HostWorkflow::description(std::string_view guid) const {
    const auto state = store_->stateOf.find(std::string(guid));
    if (state == store_->stateOf.end())
        return {};
    const auto text = store_->states.find(state->second);
    return text == store_->states.end() ? std::string() : text->second;
}

} // namespace platform::headless

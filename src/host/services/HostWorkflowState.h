#pragma once

#include "contract/Fields.h"
#include "host/services/HostContext.h"

#include <map>
#include <memory>
#include <optional>

namespace host {

/// The host's workflow of links over its state store and the database's list of states.
class HostWorkflowState : public contract::WorkflowState {
public:
    explicit HostWorkflowState(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}

    std::string GetNewGUID() override;
    void DuplicaStato(std::string_view from, std::string_view to) override;
    void GetDefaultFlussoStato() override;
    void ConfermaStato() override;
    void ConfermaStatoDi(std::string_view guid) override;
    std::string GetDescrizioneStatoFromGUID(std::string_view guid) override;
    std::vector<std::string> descriptions(const std::vector<std::string>& guids) override;

    /// Selects a state that the user chose; the next ConfermaStato() gives it.
    void select(std::int64_t state) { selected_ = state; }

private:
    std::map<std::int64_t, std::string> states();

    std::shared_ptr<HostContext> context_;
    std::string guid_;
    std::optional<std::int64_t> selected_;
};

/// A new random global identifier: 36 characters, upper case.
std::string newGuid();

} // namespace host

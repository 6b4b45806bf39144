#pragma once

#include "contract/Fields.h"
#include "platform/headless/HostJournal.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// The host's workflow in memory: states, and which link has which.
struct WorkflowStore {
    std::map<std::int64_t, std::string> states;  ///< WF02_ID and description
    std::map<std::string, std::int64_t> stateOf; ///< by GUID
    std::int64_t guidsMade = 0;
};

class HostWorkflow : public contract::WorkflowState {
public:
    HostWorkflow(std::shared_ptr<HostJournal> journal, std::shared_ptr<WorkflowStore> store)
        : journal_(std::move(journal)), store_(std::move(store)) {}
    ~HostWorkflow() override { journal_->note("~WorkflowState"); }

    /// "00000000-0000-4000-8000-" and twelve digits that count up.
    std::string GetNewGUID() override;
    void DuplicaStato(std::string_view from, std::string_view to) override;
    void GetDefaultFlussoStato() override;
    void ConfermaStato() override;
    void ConfermaStatoDi(std::string_view guid) override;
    std::string GetDescrizioneStatoFromGUID(std::string_view guid) override;
    std::vector<std::string> descriptions(const std::vector<std::string>& guids) override;

    // The field's

    /// The GUID on which operations without one of their own act.
    void setGuid(std::string_view guid) { guid_ = guid; }
    /// The user's choice in the field's list; false when there is no such state.
    bool select(std::int64_t state);

private:
    std::string description(std::string_view guid) const;

    std::shared_ptr<HostJournal> journal_;
    std::shared_ptr<WorkflowStore> store_;
    std::string guid_;
    std::optional<std::int64_t> selected_;
};

} // namespace platform::headless

#pragma once

#include "platform/headless/HostServices.h"

namespace platform::headless {

/// The host's log: it notes what it would show, and answers from HostState::answers.
class HostLog : public contract::LogClass {
public:
    explicit HostLog(std::shared_ptr<HostState> state) : state_(std::move(state)) {}
    ~HostLog() override { state_->journal->note("~LogClass"); }

    void setInterface(contract::Cinterface* host) override;
    void vbError(const contract::RuntimeError& error) override;
    void ADOError(const contract::ErrorList& errors) override;
    int ShowError(std::string_view application, std::string_view caption, std::string_view procedure,
                  int style) override;
    void setDetail(std::string_view detail) override { detail_ = detail; }
    int ShowMessage(std::string_view title, std::string_view text, int style) override;

private:
    int answer(int unasked);

    std::shared_ptr<HostState> state_;
    int number_ = 0;
    std::string description_;
    std::string detail_; ///< of the next box
    contract::ErrorList databaseErrors_;
};

} // namespace platform::headless

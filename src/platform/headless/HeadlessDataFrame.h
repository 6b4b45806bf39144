#pragma once

#include "platform/headless/HeadlessFields.h"
#include "platform/headless/HostJournal.h"
#include "platform/shared/EditedRecord.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// A data-entry frame without a screen.
class HeadlessDataFrame : public HeadlessFrameOf<contract::DataFrame> {
public:
    HeadlessDataFrame(std::string_view name, FormContext& context, std::shared_ptr<HostJournal> journal)
        : HeadlessFrameOf(name, context), journal_(std::move(journal)), record_(name) {}

    void initialise(contract::Cinterface*& host, std::shared_ptr<contract::Connection> connection,
                    std::shared_ptr<contract::Recordset> records, const contract::Statement& statement,
                    std::string_view keyField) override;
    std::shared_ptr<contract::Recordset> load(const contract::Statement& statement,
                                              std::shared_ptr<contract::Recordset> records) override;

    void bindField(contract::DateField& control, std::string_view field) override;
    void bindField(contract::ComboBox& control, std::string_view field) override;
    void bindField(contract::CheckBox& control, std::string_view field) override;
    void bindField(contract::TextField& control, std::string_view field) override;

    void setTable(std::string_view table, const std::vector<std::string>& keyColumns) override;
    void setDefault(std::string_view field, const contract::Value& value) override;
    void setRecordValue(std::string_view field, const contract::Value& value) override;

    void show() override;
    int status() const override { return status_; }
    bool changed() const override;
    bool save() override;
    void undo() override { showRecord(); }
    void close() override;

    std::shared_ptr<contract::Recordset> records() const { return record_.records(); }
    std::shared_ptr<contract::Connection> connection() const { return record_.connection(); }

    // User

    /// What a person's change of the record, or the host's, does to the frame's state.
    void enterStatus(int status);

private:
    struct Binding {
        std::string field;
        std::function<contract::Value()> read;
        std::function<void(const contract::Value&)> write;
        std::string shown; ///< text of the value when the record was shown
    };

    void bind(std::string_view field, std::function<contract::Value()> read,
              std::function<void(const contract::Value&)> write);
    std::function<void()> touch();
    void showRecord();

    std::shared_ptr<HostJournal> journal_;
    shared::EditedRecord record_;
    std::vector<Binding> bindings_;
    std::vector<HeadlessDateField*> dates_;
    int status_ = browsing;
};

class HeadlessGridNavigator : public HeadlessControl<contract::GridNavigator> {
public:
    using HeadlessControl::HeadlessControl;

    void bind(contract::DataFrame& frame) override { frame_ = &frame; }
    void setAllowInsert(bool allowed) override { allowInsert_ = allowed; }
    void setAllowDelete(bool allowed) override { allowDelete_ = allowed; }
    void setAskBeforeMove(bool ask) override { askBeforeMove_ = ask; }
    void release() override { frame_ = nullptr; }

    const contract::DataFrame* frame() const { return frame_; }
    /// Nothing while it was never set.
    std::optional<bool> allowInsert() const { return allowInsert_; }
    std::optional<bool> allowDelete() const { return allowDelete_; }
    std::optional<bool> askBeforeMove() const { return askBeforeMove_; }

private:
    contract::DataFrame* frame_ = nullptr;
    std::optional<bool> allowInsert_;
    std::optional<bool> allowDelete_;
    std::optional<bool> askBeforeMove_;
};

} // namespace platform::headless

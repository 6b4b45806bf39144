#pragma once

#include "contract/Fields.h"
#include "platform/qt/fields/FieldControls.h"
#include "platform/qt/forms/Surfaces.h"
#include "platform/shared/EditedRecord.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace platform::qt {

/// A data-entry frame: it fills the fields bound to it from the record at the cursor and writes them back.
class DataFrameControl : public FrameBase<contract::DataFrame> {
public:
    DataFrameControl(std::string_view name, QWidget* parent);
    ~DataFrameControl() override;

    void initialise(contract::Cinterface*& host, std::shared_ptr<contract::Connection> connection,
                    std::shared_ptr<contract::Recordset> records, const contract::Statement& statement,
                    std::string_view keyField) override;
    /// Reads the rows where the record set is not open yet.
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
    /// Throws RuntimeError 91 without a connection, 13 for a text that its column can not hold, 3021 when the record is
    /// no longer there, and what the connection throws; the fields keep what was typed then. Throws RuntimeError 5 when
    /// the record no longer holds what was shown; the fields show what it holds now.
    bool save() override;
    void undo() override;
    void close() override;

    // For the navigator

    /// Nothing without rows.
    const contract::Recordset* records() const { return record_.records().get(); }
    /// Shows the record of that row, counted from 0.
    void showRow(std::size_t row);
    /// Shows a new record with the defaults.
    void showNew();
    /// Deletes the record shown and reads the rows again.
    void deleteRecord();
    /// The database's records of the last failure.
    contract::ErrorList errors() const { return record_.errors(); }

    QJsonObject read() const override;

    /// The fields hold a record that is not in the table yet.
    bool showsNew() const { return !record_.exists(); }
    /// For the navigator of the frame: the status was set, perhaps on another record.
    std::function<void()> statusChanged;

private:
    struct Binding {
        std::string field;
        const contract::Control* control;
        std::function<std::string()> content; ///< as it stands in the field
        std::function<contract::Value()> value;
        std::function<void(const contract::Value&)> put;
        std::string shown; ///< content when the record was shown
    };

    // DataFrameBindings.cpp: the fields
    void addBinding(const contract::Control& control, EditSource* source, Binding binding);
    contract::Value textValue(const std::string& field, const std::string& content) const;

    // DataFrameControl.cpp: the record
    void showRecord();
    void fill();
    void setStatus(int status);
    void followEdit();
    /// The first field in which the user typed what is no date; nothing where there is none.
    contract::DateField* mistypedDate() const;

    shared::EditedRecord record_;
    std::vector<Binding> bindings_;
    std::vector<contract::DateField*> dates_;
    std::vector<EditSource*> sources_;
    bool filling_ = false;
    int status_ = browsing;
};

} // namespace platform::qt

#include "platform/sqlite/BulkWriter.h"

#include "contract/RuntimeError.h"
#include "platform/sqlite/Binder.h"

namespace platform::sqlite {

BulkWriter::BulkWriter(Connection& connection, std::string_view table, const std::vector<std::string>& columns)
    : connection_(connection), operation_("Inserimento nella tabella " + std::string(table)), columns_(columns.size()) {
    if (!connection.InTransaction())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     operation_ + " non ammesso senza una transazione aperta.");
    std::string text = "INSERT INTO [" + std::string(table) + "] (";
    std::string places;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += (i > 0 ? ", [" : "[") + columns[i] + "]";
        places += i > 0 ? ", ?" : "?";
    }
    text += ") VALUES (" + places + ")";
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v3(connection.handle(), text.data(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    statement_.reset(raw);
    if (code != SQLITE_OK)
        connection.fail(code, operation_);
}

void BulkWriter::append(std::span<const contract::Value> row) {
    if (row.size() != columns_)
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     operation_ + ": il numero dei valori non è quello delle colonne.");
    const Reset reset(statement_.get());
    int code = SQLITE_OK;
    for (std::size_t i = 0; i < row.size() && code == SQLITE_OK; ++i)
        code = bindValue(statement_.get(), static_cast<int>(i + 1), row[i]);
    if (code == SQLITE_OK)
        code = sqlite3_step(statement_.get());
    if (code != SQLITE_DONE)
        connection_.fail(code, operation_);
    ++rows_;
}

} // namespace platform::sqlite

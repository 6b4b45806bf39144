#include "host/demo/DemoTarget.h"

#include "contract/RuntimeError.h"
#include "platform/odbc/BulkWriter.h"
#include "platform/sqlite/BulkWriter.h"

#include <algorithm>

namespace host {

namespace {

class EmbeddedWriter : public RowWriter {
public:
    EmbeddedWriter(platform::sqlite::Connection& connection, std::string_view table,
                   const std::vector<std::string>& columns)
        : writer_(connection, table, columns) {}
    void append(std::span<const contract::Value> row) override { writer_.append(row); }
    void finish() override {}

private:
    platform::sqlite::BulkWriter writer_;
};

class EmbeddedTarget : public DemoTarget {
public:
    explicit EmbeddedTarget(platform::sqlite::Connection& connection) : connection_(connection) {}

protected:
    std::unique_ptr<RowWriter> newWriter(std::string_view table, const std::vector<std::string>& columns) override {
        return std::make_unique<EmbeddedWriter>(connection_, table, columns);
    }

private:
    platform::sqlite::Connection& connection_;
};

class ServerWriter : public RowWriter {
public:
    ServerWriter(platform::odbc::Connection& connection, const contract::TableDef& table,
                 const std::vector<std::string>& columns, platform::odbc::RowForm form)
        : writer_(connection, table, columns, form) {}
    void append(std::span<const contract::Value> row) override { writer_.append(row); }
    void finish() override { writer_.finish(); }

private:
    platform::odbc::BulkWriter writer_;
};

class ServerTarget : public DemoTarget {
public:
    ServerTarget(platform::odbc::Connection& connection, const contract::Schema& schema, platform::odbc::RowForm form)
        : connection_(connection), schema_(schema), form_(form) {}

protected:
    std::unique_ptr<RowWriter> newWriter(std::string_view table, const std::vector<std::string>& columns) override {
        const auto at = std::find_if(schema_.tables.begin(), schema_.tables.end(),
                                     [table](const auto& definition) { return definition.name == table; });
        if (at == schema_.tables.end())
            throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                         "Lo schema non ha la tabella " + std::string(table) + ".");
        return std::make_unique<ServerWriter>(connection_, *at, columns, form_);
    }

private:
    platform::odbc::Connection& connection_;
    const contract::Schema& schema_;
    platform::odbc::RowForm form_;
};

} // namespace

RowWriter& DemoTarget::table(std::string_view name, const std::vector<std::string>& columns) {
    return *writers_.emplace_back(newWriter(name, columns));
}

void DemoTarget::finish() {
    for (const auto& writer : writers_)
        writer->finish();
}

std::unique_ptr<DemoTarget> newTarget(platform::sqlite::Connection& connection) {
    return std::make_unique<EmbeddedTarget>(connection);
}

std::unique_ptr<DemoTarget> newTarget(platform::odbc::Connection& connection, const contract::Schema& schema,
                                      platform::odbc::RowForm form) {
    return std::make_unique<ServerTarget>(connection, schema, form);
}

} // namespace host

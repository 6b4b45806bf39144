#include "host/DemoDatabase.h"

#include "host/DemoWriter.h"
#include "host/StateStore.h"
#include "platform/odbc/BulkWriter.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/shared/SystemReason.h"
#include "platform/sqlite/DatabaseFile.h"
#include "plugin/contract/RuntimeError.h"

#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace host {

namespace {

namespace fs = std::filesystem;

/// A file that goes again unless it was kept.
class MadeFile {
public:
    explicit MadeFile(fs::path path) : path_(std::move(path)) {}
    MadeFile(const MadeFile&) = delete;
    MadeFile& operator=(const MadeFile&) = delete;
    ~MadeFile() {
        std::error_code ignored;
        if (!kept_)
            fs::remove(path_, ignored);
    }
    void renameTo(const fs::path& path) {
        std::error_code error;
        fs::rename(path_, path, error);
        if (error)
            throw contract::RuntimeError(contract::RuntimeError::database,
                                         "Il file \"" + path.string() +
                                             "\" non si può scrivere: " + platform::systemReason(error.value()));
        path_ = path;
    }
    void keep() { kept_ = true; }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
    bool kept_ = false;
};

void writeStatesFile(const DemoData& data, const fs::path& path) {
    platform::sqlite::createDatabase(path.string(), StateStore::schema(), [&](platform::sqlite::Connection& file) {
        const auto target = newTarget(file);
        writeDemoStates(data, *target);
        target->finish();
    });
}

} // namespace

void createDemoDatabase(const std::string& path, const contract::Schema& schema, std::int64_t largest) {
    const DemoData data = makeDemoData(largest);
    const std::string statesFile = StateStore::fileOf(path);
    MadeFile states(statesFile + ".nuovo" + std::to_string(::getpid()));
    platform::sqlite::createDatabase(path, schema, [&](platform::sqlite::Connection& connection) {
        const auto target = newTarget(connection);
        writeDemoData(data, *target);
        target->finish();
        writeStatesFile(data, states.path());
        // Before the database is committed: one that stands has its states. States of an earlier database under this
        // name belong to nothing any more.
        states.renameTo(statesFile);
    });
    states.keep();
}

void createDemoDatabase(platform::odbc::Connection& connection, const contract::Schema& schema, std::int64_t largest) {
    const DemoData data = makeDemoData(largest);
    const bool file = connection.engine() == platform::odbc::Engine::sqlite;
    const contract::Schema all = file ? schema : StateStore::beside(schema);
    const std::string statesFile = StateStore::fileOf(connection.databaseName());
    MadeFile states(statesFile + ".nuovo" + std::to_string(::getpid()));
    const auto form = platform::odbc::fastestRowForm(connection);
    platform::odbc::createTables(connection, all, [&](platform::odbc::Connection& open) {
        const auto target = newTarget(open, all, form);
        writeDemoData(data, *target);
        if (!file)
            writeDemoStates(data, *target);
        target->finish();
        if (file) {
            writeStatesFile(data, states.path());
            states.renameTo(statesFile);
        }
    });
    if (file)
        states.keep();
}

} // namespace host

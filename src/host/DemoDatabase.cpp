#include "host/DemoDatabase.h"

#include "host/DemoWriter.h"
#include "host/StateStore.h"
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
                                         "Il file \"" + path.string() + "\" non si può scrivere: " + error.message());
        path_ = path;
    }
    void keep() { kept_ = true; }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
    bool kept_ = false;
};

} // namespace

void createDemoDatabase(const std::string& path, const contract::Schema& schema, std::int64_t largest) {
    const DemoData data = makeDemoData(largest);
    const std::string statesFile = StateStore::fileOf(path);
    MadeFile states(statesFile + ".nuovo" + std::to_string(::getpid()));
    platform::sqlite::createDatabase(path, schema, [&](platform::sqlite::Connection& connection) {
        writeDemoData(data, connection);
        platform::sqlite::createDatabase(states.path().string(), StateStore::schema(),
                                         [&](platform::sqlite::Connection& file) { writeDemoStates(data, file); });
        // Before the database is committed: one that stands has its states. States of an earlier database under this
        // name belong to nothing any more.
        states.renameTo(statesFile);
    });
    states.keep();
}

} // namespace host

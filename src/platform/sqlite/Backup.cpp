#include "platform/sqlite/Backup.h"

#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <filesystem>
#include <memory>
#include <system_error>

namespace platform::sqlite {

namespace {

constexpr std::string_view copying = "Copia";
constexpr int pagesOfAPart = 2000;
constexpr int mostRestarts = 3;

struct Finish {
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

void copyPages(Connection& source, Connection& copy, const std::function<void(int)>& progress) {
    const std::unique_ptr<sqlite3_backup, Finish> backup(
        sqlite3_backup_init(copy.handle(), "main", source.handle(), "main"));
    if (!backup)
        copy.fail(sqlite3_errcode(copy.handle()), copying);
    int restarts = 0;
    int before = 0;
    for (int code = SQLITE_OK; code != SQLITE_DONE;) {
        // Another program's commit makes SQLite begin anew; whoever writes all the time must not keep the copy from its
        // end, so that one part takes it all then.
        code = sqlite3_backup_step(backup.get(), restarts < mostRestarts ? pagesOfAPart : -1);
        if (code != SQLITE_OK && code != SQLITE_DONE) {
            if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
                source.fail(code, copying);
            copy.fail(code, copying);
        }
        const int total = sqlite3_backup_pagecount(backup.get());
        const int done = total - sqlite3_backup_remaining(backup.get());
        if (done < before + pagesOfAPart && code == SQLITE_OK)
            ++restarts;
        before = done;
        if (progress && total > 0)
            progress(static_cast<int>(100LL * done / total));
    }
}

} // namespace

void copyDatabase(const std::string& from, const std::string& to, const std::function<void(int)>& progress) {
    // In parts it meets more commits of others than a command does.
    Connection source(std::string(Connection::scheme) + from + ";busy=20000");
    source.Open();
    makeEmptyFile(to);
    try {
        Connection copy(std::string(Connection::scheme) + to);
        copy.Open();
        copyPages(source, copy, progress);
    } catch (...) {
        std::error_code ignored;
        for (const char* ending : {"", "-journal"})
            std::filesystem::remove(to + ending, ignored);
        throw;
    }
}

} // namespace platform::sqlite

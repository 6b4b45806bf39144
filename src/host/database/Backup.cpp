#include "host/database/Backup.h"

#include "contract/RuntimeError.h"
#include "host/database/NewFile.h"
#include "host/database/StateTables.h"
#include "platform/shared/SystemReason.h"
#include "platform/sqlite/Backup.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/FilePlace.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& text) {
    throw contract::RuntimeError(contract::RuntimeError::database, text);
}

bool isOneOf(const fs::path& file, const std::string& database) {
    std::error_code error;
    const fs::path place = fs::weakly_canonical(file, error);
    for (const std::string& own : {database, database + "-journal", stateCompanionOf(database)})
        if (fs::equivalent(file, own, error) || place == fs::weakly_canonical(own, error))
            return true;
    return false;
}

/// A name that was given has reached the disk.
void flushFolder(const fs::path& file) {
    const int folder = ::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

} // namespace

namespace {

std::uintmax_t copyTo(const fs::path& file, const std::string& database, const std::function<void(int)>& progress) {
    if (isOneOf(file, database))
        refuse("La copia di sicurezza non si scrive sul database aperto né sui suoi file: scegliere un altro nome.");
    if (fs::is_directory(file))
        refuse("«" + file.string() + "» è una cartella: scegliere il nome di un file.");
    if (fs::exists(file) && !fs::is_regular_file(file))
        refuse("«" + file.string() + "» non è un file: scegliere un altro nome.");
    if (const auto why = platform::sqlite::strayJournal(file.string()))
        refuse("La copia di sicurezza «" + file.string() + "» non si può scrivere: " + *why + ".");
    removeLeftOvers(file);
    const fs::path making = makingName(file);
    std::error_code error;
    fs::remove(making, error);
    platform::sqlite::copyDatabase(database, making.string(), progress);
    // States that could not be taken into the database yet, because nothing may be written there.
    if (openStateCompanion(database)) {
        try {
            fs::copy_file(stateCompanionOf(database), stateCompanionOf(making.string()));
            platform::sqlite::Connection copy(std::string(platform::sqlite::Connection::scheme) + making.string());
            copy.Open();
            prepareStateTables(copy);
        } catch (const fs::filesystem_error& failure) {
            fs::remove(making, error);
            refuse("La copia di sicurezza «" + file.string() + "» non si può scrivere: " + failure.code().message() +
                   ".");
        }
        for (const char* ending : {"", ".acquisito"})
            fs::remove(stateCompanionOf(making.string()) + ending, error);
    }
    const std::uintmax_t bytes = fs::file_size(making, error);
    fs::rename(making, file, error);
    if (error) {
        const std::string why = error.message();
        fs::remove(making, error);
        refuse("La copia di sicurezza «" + file.string() + "» non si può scrivere: " + why + ".");
    }
    flushFolder(file);
    return bytes;
}

} // namespace

std::uintmax_t backUp(const std::string& database, const std::string& destination,
                      const std::function<void(int)>& progress) {
    try {
        return copyTo(fs::absolute(destination), database, progress);
    } catch (const fs::filesystem_error& failure) {
        // A folder that may not be searched, a name that no file can have.
        refuse("La copia di sicurezza «" + destination +
               "» non si può scrivere: " + platform::systemReason(failure.code().value()) + ".");
    }
}

} // namespace host

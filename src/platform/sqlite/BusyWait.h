#pragma once

#include "platform/shared/Waiting.h"

#include <string>

#include <sqlite3.h>

namespace platform::sqlite {

/// Who keeps a file locked, for the user: program, process and user; empty where the system does not tell.
std::string lockHolder(const std::string& file);

/// Waits for the locks of other programs, as long as the command may (platform::shared::Waiting), and says so.
class BusyWait {
public:
    /// Serves this database, whose file's path is given, from now on; longest: milliseconds. Must outlive it.
    void attach(sqlite3* database, std::string file, int longest);

private:
    static int onBusy(void* self, int tries);
    bool wait(int tries);

    std::string file_;
    shared::Waiting::Time longest_{0};
    shared::Waiting::Time waited_{0}; ///< by the present operation
    shared::Waiting::Time told_{0};   ///< how long it had waited when it was told last
};

} // namespace platform::sqlite

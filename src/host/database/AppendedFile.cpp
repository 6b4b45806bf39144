#include "host/database/AppendedFile.h"

#include "host/database/DatabaseAccess.h"
#include "host/start/StartFailure.h"

#include <filesystem>
#include <system_error>

namespace host {

void refuseDatabaseAs(const QString& appended, const std::string& connectionString, const std::string& what) {
    if (appended.isEmpty() || !isEmbedded(connectionString))
        return;
    namespace fs = std::filesystem;
    const fs::path file = appended.toStdString();
    const std::string database = embeddedPath(connectionString);
    std::error_code error;
    for (const std::string& own : {database, database + "-journal"})
        if (fs::equivalent(file, own, error) || fs::weakly_canonical(file, error) == fs::weakly_canonical(own, error))
            throw StartFailure(ExitStatus::usage, "«" + file.string() +
                                                      "» è il database stesso o il suo giornale e non può fare da " +
                                                      what + ": indicare un altro file");
}

} // namespace host

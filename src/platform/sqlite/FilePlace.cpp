#include "platform/sqlite/FilePlace.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace platform::sqlite {

namespace fs = std::filesystem;

std::optional<std::string> displacement(sqlite3* database, std::string_view file) {
    int moved = 0;
    if (database == nullptr || sqlite3_file_control(database, "main", SQLITE_FCNTL_HAS_MOVED, &moved) != SQLITE_OK ||
        moved == 0)
        return std::nullopt;
    std::error_code ignored;
    return fs::exists(fs::path(file), ignored)
               ? "il file è stato sostituito da un altro mentre era aperto; per lavorare sul nuovo chiudere il "
                 "programma "
                 "e riaprirlo"
               : "il file è stato cancellato o spostato mentre era aperto; rimetterlo al suo posto, o ripristinarlo da "
                 "una copia di sicurezza e riaprire il programma";
}

std::optional<std::string> closedFolder(std::string_view file) {
    std::error_code ignored;
    const fs::path folder = fs::absolute(fs::path(file), ignored).parent_path();
    if (!fs::is_directory(folder, ignored) || ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0)
        return std::nullopt;
    return "nella cartella «" + folder.string() +
           "» non si può scrivere, e una modifica ne ha bisogno; chiedere il permesso di scrivere nella cartella, o "
           "lavorare su una copia del database";
}

std::optional<std::string> strayJournal(std::string_view file) {
    const std::string journal = std::string(file) + "-journal";
    std::error_code error;
    if (const auto bytes = fs::file_size(journal, error); error || bytes == 0)
        return std::nullopt;
    return "accanto sta il giornale «" + journal +
           "» di un database che aveva quel nome, e lo guasterebbe; rimettere al suo posto quel database, o spostare "
           "il giornale";
}

} // namespace platform::sqlite

#include "host/start/UserFolders.h"

#include <cstdlib>
#include <system_error>

namespace host {

namespace {

constexpr const char* folderName = "distinte";

std::filesystem::path userFolder(const char* variable, const char* below) {
    // Relative paths in these variables are to be ignored, says the XDG convention.
    if (const char* folder = std::getenv(variable); folder != nullptr && folder[0] == '/')
        return std::filesystem::path(folder) / folderName;
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr && home[0] != '\0' ? home : "/") / below / folderName;
}

} // namespace

std::filesystem::path dataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}
std::filesystem::path configFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path defaultDatabase() {
    return dataFolder() / "demo.sqlite";
}
std::filesystem::path defaultErrorLog() {
    return dataFolder() / "errori.log";
}
std::filesystem::path settingsFile() {
    return configFolder() / "distinte.conf";
}

std::filesystem::path componentRegistryFile() {
    if (const char* file = std::getenv("DISTINTE_REGISTRY"); file != nullptr && file[0] != '\0')
        return file;
    return dataFolder() / "components";
}

std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : program.parent_path();
}

} // namespace host

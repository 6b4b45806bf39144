#pragma once

#include <filesystem>
#include <string>

namespace host {

/// The program's folder in the user's data folder: $XDG_DATA_HOME, else ~/.local/share, and "distinte" in it. Not made
/// here.
std::filesystem::path dataFolder();
/// The same of the user's settings: $XDG_CONFIG_HOME, else ~/.config.
std::filesystem::path configFolder();

/// The database that is opened when nothing else is asked for.
std::filesystem::path defaultDatabase();
std::filesystem::path defaultErrorLog();
/// The program's settings.
std::filesystem::path settingsFile();
/// The registry of components: DISTINTE_REGISTRY, else "components" in the data folder.
std::filesystem::path componentRegistryFile();

/// Where the running program stands.
std::filesystem::path programFolder();

} // namespace host

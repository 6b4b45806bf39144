#pragma once

#include <filesystem>
#include <string_view>

namespace qz {

/// The host's per-user component registry: where it stands, from the environment. Empty when the user has no folder.
std::filesystem::path fileRegistro();

/// Adds or replaces a class's line in a registry file, replacing the file as a whole under a lock; every other line
/// stays as it is, whoever else registers meanwhile. Throws std::exception for a library's path that is not absolute,
/// and when the file can not be read or written or stays locked for 5 s; it is then as it was.
void registraClasse(const std::filesystem::path& registro, std::string_view classe, std::string_view libreria);

/// Removes a class's line; harmless when there is none. Throws as registraClasse().
void annullaRegistrazione(const std::filesystem::path& registro, std::string_view classe);

} // namespace qz

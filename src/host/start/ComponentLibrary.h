#pragma once

#include "contract/EntryPoints.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Path of a class's library in a registry file, nothing when the file is not there or has no line for the class.
std::optional<std::filesystem::path> findInRegistry(const std::filesystem::path& registry, std::string_view classId);

/// A component's shared library in this process. It is never unloaded: its literals stand in prepared statements, and
/// its code in events, until the process ends.
class ComponentLibrary {
public:
    /// File name of the component's library.
    static constexpr const char* fileName = "QZUO_COPIADISTINTA.so";

    /// Loads the library that stands beside the program, or in ../lib/distinte/components, and lets it register itself
    /// where the registry names no library that is there. Without one of its own, the program loads the one that the
    /// registry names by an absolute path. Throws StartFailure with status 3, also for a library of another version of
    /// the contract.
    static ComponentLibrary load(const std::filesystem::path& programFolder, const std::filesystem::path& registry);

    std::unique_ptr<contract::PluginClass> newClass(const char* classId) const;
    const contract::Schema& schema() const { return *schema_; }
    const std::filesystem::path& path() const { return path_; }

private:
    explicit ComponentLibrary(std::filesystem::path path);
    void checkVersion() const;
    template <class Function> Function* entry(const char* name) const;

    std::filesystem::path path_;
    void* handle_ = nullptr;
    const contract::Schema* schema_ = nullptr;
};

} // namespace host

#pragma once

#include "host/start/ComponentLibrary.h"

#include <filesystem>
#include <string>

#include <unistd.h>

namespace host_test {

/// The component that was built with this test, loaded once.
inline host::ComponentLibrary& component() {
    static host::ComponentLibrary library = host::ComponentLibrary::load(
        std::filesystem::read_symlink("/proc/self/exe").parent_path(),
        std::filesystem::temp_directory_path() / ("distinte-registro-" + std::to_string(::getpid())));
    return library;
}

} // namespace host_test

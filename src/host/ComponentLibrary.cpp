#include "host/ComponentLibrary.h"

#include "host/StartFailure.h"

#include <fstream>
#include <system_error>

#include <dlfcn.h>

namespace host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& reason) {
    throw StartFailure(ExitStatus::database, "componente delle distinte: " + reason);
}

std::optional<fs::path> besideProgram(const fs::path& folder) {
    for (const fs::path& place : {folder, folder / "../lib/distinte/components"}) {
        std::error_code ignored;
        const fs::path file = place / ComponentLibrary::fileName;
        if (fs::is_regular_file(file, ignored))
            return fs::weakly_canonical(file);
    }
    return std::nullopt;
}

} // namespace

std::optional<fs::path> findInRegistry(const fs::path& registry, std::string_view classId) {
    std::ifstream file(registry);
    for (std::string line; std::getline(file, line);) {
        const auto tab = line.find('\t');
        if (tab != std::string::npos && std::string_view(line).substr(0, tab) == classId && tab + 1 < line.size())
            return fs::path(line.substr(tab + 1));
    }
    return std::nullopt;
}

ComponentLibrary ComponentLibrary::load(const fs::path& programFolder, const fs::path& registry) {
    const auto classId = contract::copiaDistintaClassId;
    const auto registered = findInRegistry(registry, classId);
    const auto own = besideProgram(programFolder);
    if (!own) {
        if (!registered)
            fail("la libreria " + std::string(fileName) + " non è accanto al programma e " + registry.string() +
                 " non la nomina");
        return ComponentLibrary(*registered);
    }
    ComponentLibrary library(*own);
    // The library that came with the program is the one to run; a user's folder that can not be written does not keep
    // it from that.
    if (registered != own) {
        const int written = library.entry<contract::DllRegisterServerFunction>("DllRegisterServer")();
        const auto now = findInRegistry(registry, classId);
        if (written == 0 && now && *now != library.path_)
            return ComponentLibrary(*now);
    }
    return library;
}

ComponentLibrary::ComponentLibrary(fs::path path) : path_(std::move(path)) {
    handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        fail("la libreria " + path_.string() + " non si carica: " + (reason != nullptr ? reason : ""));
    }
    schema_ = entry<contract::DatabaseSchemaFunction>("DatabaseSchema")();
    if (schema_ == nullptr)
        fail("la libreria " + path_.string() + " non dice su quale database lavora");
}

template <class Function> Function* ComponentLibrary::entry(const char* name) const {
    void* symbol = dlsym(handle_, name);
    if (symbol == nullptr)
        fail("la libreria " + path_.string() + " non ha la funzione " + name);
    return reinterpret_cast<Function*>(symbol);
}

std::unique_ptr<contract::PluginClass> ComponentLibrary::newClass(const char* classId) const {
    auto* factory = entry<contract::DllGetClassObjectFunction>("DllGetClassObject")(classId);
    return factory != nullptr ? factory->createInstance() : nullptr;
}

} // namespace host

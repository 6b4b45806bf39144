#include "host/start/ComponentLibrary.h"

#include "host/start/StartFailure.h"

#include <fstream>
#include <string>
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
    const auto registered = findInRegistry(registry, contract::copiaDistintaClassId);
    if (const auto own = besideProgram(programFolder)) {
        ComponentLibrary library(*own);
        // What the user has registered stays. A registry that can not be written keeps nobody from working, and what
        // stands in it afterwards does not matter here: another start may have written it.
        if (std::error_code ignored; !registered || !registered->is_absolute() || !fs::exists(*registered, ignored))
            library.entry<contract::DllRegisterServerFunction>("DllRegisterServer")();
        return library;
    }
    if (!registered)
        fail("la libreria " + std::string(fileName) + " non è accanto al programma e " + registry.string() +
             " non la nomina");
    if (!registered->is_absolute())
        fail(registry.string() + " nomina la libreria con un percorso relativo: " + registered->string());
    return ComponentLibrary(*registered);
}

ComponentLibrary::ComponentLibrary(fs::path path) : path_(std::move(path)) {
    handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        fail("la libreria " + path_.string() + " non si carica: " + (reason != nullptr ? reason : ""));
    }
    checkVersion();
    schema_ = entry<contract::DatabaseSchemaFunction>("DatabaseSchema")();
    if (schema_ == nullptr)
        fail("la libreria " + path_.string() + " non dice su quale database lavora");
}

/// Before any other call into it. A library from before there were versions has none to tell.
void ComponentLibrary::checkVersion() const {
    void* symbol = dlsym(handle_, "ContractVersion");
    const int version = symbol != nullptr ? reinterpret_cast<contract::ContractVersionFunction*>(symbol)() : 0;
    if (version != contract::contractVersion)
        fail("la libreria " + path_.string() + " ha la versione " + std::to_string(version) +
             " dell'interfaccia e questo programma la " + std::to_string(contract::contractVersion) +
             ": servono programma e componente della stessa versione");
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

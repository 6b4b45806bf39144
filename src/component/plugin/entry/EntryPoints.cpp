#include "contract/EntryPoints.h"

#include "component/data/Schema.h"
#include "component/plugin/CLSQZ_COPIADISTINTA.h"
#include "component/plugin/Registro.h"

#include <dlfcn.h>

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

class Fabbrica : public contract::ClassFactory {
public:
    std::unique_ptr<contract::PluginClass> createInstance() override {
        return std::make_unique<qz::CLSQZ_COPIADISTINTA>();
    }
};

std::string questaLibreria();

} // namespace

extern "C" {

int ContractVersion() {
    return contract::contractVersion;
}

int DllRegisterServer() {
    try {
        qz::registraClasse(qz::fileRegistro(), contract::copiaDistintaClassId, questaLibreria());
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}

int DllUnregisterServer() {
    try {
        qz::annullaRegistrazione(qz::fileRegistro(), contract::copiaDistintaClassId);
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}

contract::ClassFactory* DllGetClassObject(const char* classId) {
    static Fabbrica fabbrica;
    return classId != nullptr && std::string_view(classId) == contract::copiaDistintaClassId ? &fabbrica : nullptr;
}

int DllCanUnloadNow() {
    return qz::oggettiVivi() == 0 ? 0 : 1;
}

const contract::Schema* DatabaseSchema() {
    return &qz::schema();
}
}

namespace {

std::string questaLibreria() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&DllCanUnloadNow), &info) == 0 || info.dli_fname == nullptr)
        throw std::runtime_error("Percorso della libreria sconosciuto.");
    return std::filesystem::absolute(info.dli_fname).string();
}

} // namespace

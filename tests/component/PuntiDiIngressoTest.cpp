// The functions that the shared library exports, called as a host calls them.

#include "contract/EntryPoints.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <dlfcn.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class PuntiDiIngresso : public testing::Test {
protected:
    PuntiDiIngresso() : libreria(dlopen(DISTINTE_COMPONENT, RTLD_NOW | RTLD_LOCAL)) {
        auto nome = (fs::temp_directory_path() / "distinte-ingressi-XXXXXX").string();
        EXPECT_NE(::mkdtemp(nome.data()), nullptr);
        cartella = nome;
        registro = cartella / "components";
        ::setenv("DISTINTE_REGISTRY", registro.c_str(), 1);
    }
    ~PuntiDiIngresso() override {
        ::unsetenv("DISTINTE_REGISTRY");
        std::error_code ignorato;
        fs::remove_all(cartella, ignorato);
        if (libreria)
            dlclose(libreria);
    }

    void SetUp() override { ASSERT_NE(libreria, nullptr) << dlerror(); }

    template <class Funzione> Funzione* ingresso(const char* nome) const {
        void* simbolo = dlsym(libreria, nome);
        EXPECT_NE(simbolo, nullptr) << nome;
        return reinterpret_cast<Funzione*>(simbolo);
    }
    std::string contenuto() const {
        std::ifstream dati(registro);
        return {std::istreambuf_iterator<char>(dati), {}};
    }

    void* libreria;
    fs::path cartella;
    fs::path registro;
};

TEST_F(PuntiDiIngresso, TellTheVersionOfTheContract) {
    EXPECT_EQ(ingresso<contract::ContractVersionFunction>("ContractVersion")(), contract::contractVersion);
    EXPECT_GE(contract::contractVersion, 1);
}

TEST_F(PuntiDiIngresso, RegisterAndUnregisterTheClassWithTheLibrarysOwnPath) {
    EXPECT_EQ(ingresso<contract::DllRegisterServerFunction>("DllRegisterServer")(), 0);
    EXPECT_EQ(contenuto(),
              "QZUO_COPIADISTINTA.CLSQZ_COPIADISTINTA\t" + fs::absolute(DISTINTE_COMPONENT).string() + "\n");
    const auto annulla = ingresso<contract::DllUnregisterServerFunction>("DllUnregisterServer");
    EXPECT_EQ(annulla(), 0);
    EXPECT_EQ(contenuto(), "");
    EXPECT_EQ(annulla(), 0);
}

TEST_F(PuntiDiIngresso, TellWhenTheRegistryCanNotBeWritten) {
    fs::create_directories(registro / "piena");
    EXPECT_EQ(ingresso<contract::DllRegisterServerFunction>("DllRegisterServer")(), -1);
    EXPECT_EQ(ingresso<contract::DllUnregisterServerFunction>("DllUnregisterServer")(), -1);
}

TEST_F(PuntiDiIngresso, MakeTheComponentsClassOnly) {
    const auto oggetto = ingresso<contract::DllGetClassObjectFunction>("DllGetClassObject");
    for (const char* altra : {static_cast<const char*>(nullptr), "", "Altra.Classe", "QZUO_COPIADISTINTA"})
        EXPECT_EQ(oggetto(altra), nullptr);
    auto* fabbrica = oggetto(contract::copiaDistintaClassId);
    ASSERT_NE(fabbrica, nullptr);
    const auto classe = fabbrica->createInstance();
    ASSERT_NE(classe, nullptr);
    EXPECT_EQ(classe->plugin().ActiveDll(), &classe->plugin());
}

TEST_F(PuntiDiIngresso, LetTheLibraryGoOnlyWithoutObjects) {
    const auto libera = ingresso<contract::DllCanUnloadNowFunction>("DllCanUnloadNow");
    auto* fabbrica = ingresso<contract::DllGetClassObjectFunction>("DllGetClassObject")(contract::copiaDistintaClassId);
    ASSERT_NE(fabbrica, nullptr);
    EXPECT_EQ(libera(), 0);
    auto una = fabbrica->createInstance();
    auto altra = fabbrica->createInstance();
    EXPECT_EQ(libera(), 1);
    una.reset();
    EXPECT_EQ(libera(), 1);
    altra.reset();
    EXPECT_EQ(libera(), 0);
}

TEST_F(PuntiDiIngresso, HandTheSchemaOver) {
    const auto* schema = ingresso<contract::DatabaseSchemaFunction>("DatabaseSchema")();
    ASSERT_NE(schema, nullptr);
    ASSERT_FALSE(schema->tables.empty());
    EXPECT_EQ(schema->tables.front().name, "QZ01_TIPODISTINTA");
}

} // namespace

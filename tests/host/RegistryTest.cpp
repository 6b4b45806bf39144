#include "host/ComponentLibrary.h"

#include "TestFolder.h"
#include "TestSchema.h"
#include "host/StartFailure.h"
#include "host/UserFolders.h"

#include <gtest/gtest.h>

namespace {

using host::ComponentLibrary;
using host::findInRegistry;
using host_test::Environment;
using host_test::Folder;

const auto classId = contract::copiaDistintaClassId;

TEST(Registry, FindsTheLineOfAClass) {
    const Folder folder;
    const std::string file = folder.file("components");
    host_test::write(file, "Altro.Classe\t/altrove/a.so\nsenza tabulazione\n" + std::string(classId) +
                               "\t/con spazi/b.so\nVuota.Classe\t\n");
    EXPECT_EQ("/con spazi/b.so", findInRegistry(file, classId));
    EXPECT_EQ("/altrove/a.so", findInRegistry(file, "Altro.Classe"));
    EXPECT_FALSE(findInRegistry(file, "Vuota.Classe").has_value());
    EXPECT_FALSE(findInRegistry(file, "Altro").has_value());
    EXPECT_FALSE(findInRegistry(folder.file("manca"), classId).has_value());
}

TEST(Registry, StandsWhereTheEnvironmentSays) {
    {
        const Environment named("DISTINTE_REGISTRY", "/da/qualche/parte");
        EXPECT_EQ("/da/qualche/parte", host::componentRegistryFile());
    }
    const Environment none("DISTINTE_REGISTRY", nullptr);
    {
        const Environment data("XDG_DATA_HOME", "/dati");
        EXPECT_EQ("/dati/distinte/components", host::componentRegistryFile());
    }
    const Environment data("XDG_DATA_HOME", "relativa");
    const Environment home("HOME", "/casa");
    EXPECT_EQ("/casa/.local/share/distinte/components", host::componentRegistryFile());
}

TEST(Registry, TheComponentRegistersItselfWhenItIsLoaded) {
    const Folder folder;
    const std::string file = folder.file("components");
    host_test::write(file, "Altro.Classe\t/altrove/a.so\n");
    const Environment named("DISTINTE_REGISTRY", file.c_str());
    const auto programFolder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const auto library = ComponentLibrary::load(programFolder, file);
    EXPECT_EQ(programFolder / ComponentLibrary::fileName, library.path());
    EXPECT_EQ(library.path(), findInRegistry(file, classId));
    EXPECT_EQ("/altrove/a.so", findInRegistry(file, "Altro.Classe"));
}

TEST(Registry, LoadsWhatTheRegistryNamesWhenNothingStandsBesideTheProgram) {
    const Folder folder;
    const std::string file = folder.file("components");
    const auto own = host_test::component().path();
    host_test::write(file, std::string(classId) + "\t" + own.string() + "\n");
    EXPECT_EQ(own, ComponentLibrary::load(folder.path(), file).path());
}

TEST(Registry, SaysWhatIsMissing) {
    const Folder folder;
    try {
        ComponentLibrary::load(folder.path(), folder.file("components"));
        FAIL();
    } catch (const host::StartFailure& failure) {
        EXPECT_EQ(host::ExitStatus::database, failure.status());
        EXPECT_NE(std::string::npos, std::string(failure.what()).find(ComponentLibrary::fileName));
    }
    host_test::write(folder.file("components"), std::string(classId) + "\t" + folder.file("rotta.so") + "\n");
    host_test::write(folder.file("rotta.so"), "non è una libreria");
    try {
        ComponentLibrary::load(folder.path(), folder.file("components"));
        FAIL();
    } catch (const host::StartFailure& failure) {
        EXPECT_NE(std::string::npos, std::string(failure.what()).find("rotta.so"));
    }
}

TEST(Registry, MakesOnlyTheComponentsClass) {
    EXPECT_NE(nullptr, host_test::component().newClass(classId));
    EXPECT_EQ(nullptr, host_test::component().newClass("Altro.Classe"));
}

} // namespace

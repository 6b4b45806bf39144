#include "host/start/ComponentLibrary.h"

#include "TestFolder.h"
#include "TestSchema.h"
#include "host/start/StartFailure.h"
#include "host/start/UserFolders.h"

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

TEST(Registry, LoadsWhatStandsBesideTheProgramWhateverTheRegistrySays) {
    const Folder folder;
    const std::string file = folder.file("components");
    const Environment named("DISTINTE_REGISTRY", file.c_str());
    const auto programFolder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const auto own = programFolder / ComponentLibrary::fileName;
    // A line for a library that is there is the user's, and stays.
    const std::string users = std::string(classId) + "\t" + COMPONENT_LATER + "\n";
    host_test::write(file, users);
    EXPECT_EQ(own, ComponentLibrary::load(programFolder, file).path());
    EXPECT_EQ(users, host_test::contentOf(file));
    // One for a library that is not, or by a relative path, is of no use to anybody.
    for (const auto* lost : {"/non/esiste.so", "relativa.so"}) {
        host_test::write(file, std::string(classId) + "\t" + lost + "\n");
        EXPECT_EQ(own, ComponentLibrary::load(programFolder, file).path());
        EXPECT_EQ(own, findInRegistry(file, classId));
    }
}

TEST(Registry, WhatAnotherStartWritesMeanwhileIsNotLoaded) {
    const Folder folder;
    // The library registers itself in the file that the environment names; the program reads another one, where
    // another start has written.
    const std::string file = folder.file("components");
    const Environment named("DISTINTE_REGISTRY", folder.file("altrove").c_str());
    host_test::write(file, std::string(classId) + "\t/non/esiste.so\n");
    const auto programFolder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(programFolder / ComponentLibrary::fileName, ComponentLibrary::load(programFolder, file).path());
}

std::string refusalOf(const Folder& folder, const std::string& library) {
    host_test::write(folder.file("components"), std::string(classId) + "\t" + library + "\n");
    try {
        ComponentLibrary::load(folder.path(), folder.file("components"));
    } catch (const host::StartFailure& failure) {
        EXPECT_EQ(host::ExitStatus::database, failure.status());
        return failure.what();
    }
    return "loaded";
}

TEST(Registry, RefusesARelativePath) {
    const Folder folder;
    std::filesystem::copy_file(host_test::component().path(), folder.path() / "vicina.so");
    EXPECT_EQ("componente delle distinte: " + folder.file("components") +
                  " nomina la libreria con un percorso relativo: ./vicina.so",
              refusalOf(folder, "./vicina.so"));
}

TEST(Registry, RefusesALibraryOfAnotherVersionOfTheContract) {
    const Folder folder;
    const auto version = std::to_string(contract::contractVersion);
    const auto told = [&](const std::string& library, const std::string& other) {
        return "componente delle distinte: la libreria " + library + " ha la versione " + other +
               " dell'interfaccia e questo programma la " + version +
               ": servono programma e componente della stessa versione";
    };
    EXPECT_EQ(told(COMPONENT_LATER, std::to_string(contract::contractVersion + 1)), refusalOf(folder, COMPONENT_LATER));
    EXPECT_EQ(told(COMPONENT_WITHOUT_VERSION, "0"), refusalOf(folder, COMPONENT_WITHOUT_VERSION));
    // Nor when it stands beside the program.
    std::filesystem::copy_file(COMPONENT_LATER, folder.path() / ComponentLibrary::fileName);
    EXPECT_NE(std::string::npos, refusalOf(folder, "/altrove.so").find("della stessa versione"));
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

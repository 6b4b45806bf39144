// The user's component registry: where it stands and what is written into it.

#include "component/plugin/Registro.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Sets an environment variable while it lives; a null value takes it away.
class Ambiente {
public:
    Ambiente(const char* nome, const char* valore) : nome_(nome) {
        if (const char* prima = std::getenv(nome)) { // NOLINT(concurrency-mt-unsafe): tests run on one thread
            prima_ = prima;
            cEra_ = true;
        }
        imposta(valore);
    }
    Ambiente(const Ambiente&) = delete;
    Ambiente& operator=(const Ambiente&) = delete;
    ~Ambiente() { imposta(cEra_ ? prima_.c_str() : nullptr); }

private:
    void imposta(const char* valore) const {
        if (valore)
            ::setenv(nome_, valore, 1);
        else
            ::unsetenv(nome_);
    }
    const char* nome_;
    std::string prima_;
    bool cEra_ = false;
};

class RegistroTest : public testing::Test {
protected:
    RegistroTest() {
        auto nome = (fs::temp_directory_path() / "distinte-registro-XXXXXX").string();
        EXPECT_NE(::mkdtemp(nome.data()), nullptr);
        cartella = nome;
    }
    ~RegistroTest() override {
        std::error_code ignorato;
        fs::remove_all(cartella, ignorato);
    }

    static std::string contenuto(const fs::path& file) {
        std::ifstream dati(file);
        return {std::istreambuf_iterator<char>(dati), {}};
    }
    static void scrivi(const fs::path& file, const std::string& testo) { std::ofstream(file) << testo; }

    fs::path cartella;
};

TEST(FileRegistro, StandsWhereTheEnvironmentSays) {
    const Ambiente casa("HOME", "/casa");
    const Ambiente dati("XDG_DATA_HOME", "/dati");
    const Ambiente registro("DISTINTE_REGISTRY", "/da/qualche/parte");
    EXPECT_EQ(qz::fileRegistro(), "/da/qualche/parte");
}

TEST(FileRegistro, StandsInTheUsersDataFolder) {
    const Ambiente registro("DISTINTE_REGISTRY", nullptr);
    const Ambiente casa("HOME", "/casa");
    {
        const Ambiente dati("XDG_DATA_HOME", "/dati");
        EXPECT_EQ(qz::fileRegistro(), "/dati/distinte/components");
    }
    for (const char* nessuna : {static_cast<const char*>(nullptr), "", "relativa"}) {
        const Ambiente dati("XDG_DATA_HOME", nessuna);
        EXPECT_EQ(qz::fileRegistro(), "/casa/.local/share/distinte/components");
    }
}

TEST(FileRegistro, StandsNowhereForAUserWithoutFolders) {
    const Ambiente registro("DISTINTE_REGISTRY", "");
    const Ambiente dati("XDG_DATA_HOME", nullptr);
    const Ambiente casa("HOME", nullptr);
    EXPECT_TRUE(qz::fileRegistro().empty());
    EXPECT_THROW(qz::registraClasse(qz::fileRegistro(), "A.B", "/x.so"), std::exception);
    EXPECT_NO_THROW(qz::annullaRegistrazione(qz::fileRegistro(), "A.B"));
}

TEST_F(RegistroTest, MakesFileAndFolders) {
    const auto file = cartella / "una" / "due" / "components";
    qz::registraClasse(file, "A.B", "/con spazi/a.so");
    EXPECT_EQ(contenuto(file), "A.B\t/con spazi/a.so\n");
}

TEST_F(RegistroTest, WritesAFileOfTheCurrentFolder) {
    const auto prima = fs::current_path();
    fs::current_path(cartella);
    EXPECT_NO_THROW(qz::registraClasse("components", "A.B", "/a.so"));
    fs::current_path(prima);
    EXPECT_EQ(contenuto(cartella / "components"), "A.B\t/a.so\n");
}

TEST_F(RegistroTest, ReplacesAClasssLineAndKeepsTheOthers) {
    const auto file = cartella / "components";
    scrivi(file, "Altra.Classe\t/x.so\nA.B\t/vecchia.so\nA.BC\t/y.so\n");
    qz::registraClasse(file, "A.B", "/nuova.so");
    EXPECT_EQ(contenuto(file), "Altra.Classe\t/x.so\nA.BC\t/y.so\nA.B\t/nuova.so\n");
    qz::registraClasse(file, "A.B", "/nuova.so");
    EXPECT_EQ(contenuto(file), "Altra.Classe\t/x.so\nA.BC\t/y.so\nA.B\t/nuova.so\n");
}

TEST_F(RegistroTest, RemovesAClasssLineOnly) {
    const auto file = cartella / "components";
    scrivi(file, "Altra.Classe\t/x.so\nA.B\t/vecchia.so\n");
    qz::annullaRegistrazione(file, "A.B");
    EXPECT_EQ(contenuto(file), "Altra.Classe\t/x.so\n");
    qz::annullaRegistrazione(file, "A.B");
    EXPECT_EQ(contenuto(file), "Altra.Classe\t/x.so\n");
}

TEST_F(RegistroTest, RemovesNothingFromAMissingFile) {
    const auto file = cartella / "components";
    EXPECT_NO_THROW(qz::annullaRegistrazione(file, "A.B"));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(RegistroTest, KeepsEveryByteOfTheOthers) {
    const auto file = cartella / "components";
    scrivi(file, "# scritto a mano\n\nA.B\t/vecchia.so\nAltra.Classe\t/x.so\r\nA.B\nUltima\t/senza fine");
    qz::registraClasse(file, "A.B", "/nuova.so");
    EXPECT_EQ(contenuto(file), "# scritto a mano\n\nAltra.Classe\t/x.so\r\nA.B\nUltima\t/senza fine\nA.B\t/nuova.so\n");
}

TEST_F(RegistroTest, FollowsNoLink) {
    const auto file = cartella / "components";
    const auto vittima = cartella / "vittima";
    scrivi(vittima, "intatta\n");
    fs::create_symlink(vittima, cartella / "components.nuovo");
    qz::registraClasse(file, "A.B", "/a.so");
    EXPECT_EQ(contenuto(file), "A.B\t/a.so\n");
    EXPECT_FALSE(fs::is_symlink(file));
    fs::remove(cartella / "components.lock");
    fs::create_symlink(vittima, cartella / "components.lock");
    EXPECT_THROW(qz::registraClasse(file, "A.B", "/b.so"), std::exception);
    EXPECT_EQ(contenuto(file), "A.B\t/a.so\n");
    EXPECT_EQ(contenuto(vittima), "intatta\n");
}

TEST_F(RegistroTest, LosesNoLineOfProgramsThatRegisterAtOnce) {
    const auto file = cartella / "components";
    constexpr int programmi = 6;
    constexpr int classi = 20;
    std::vector<pid_t> figli;
    for (int programma = 0; programma < programmi; ++programma) {
        const pid_t figlio = ::fork();
        if (figlio == 0) {
            int esito = 0;
            for (int i = 0; i < classi && esito == 0; ++i)
                try {
                    qz::registraClasse(file, "P" + std::to_string(programma) + ".C" + std::to_string(i), "/a.so");
                } catch (...) {
                    esito = 1;
                }
            ::_exit(esito);
        }
        figli.push_back(figlio);
    }
    for (const auto figlio : figli) {
        int esito = -1;
        EXPECT_EQ(::waitpid(figlio, &esito, 0), figlio);
        EXPECT_EQ(esito, 0);
    }
    const auto testo = contenuto(file);
    EXPECT_EQ(std::count(testo.begin(), testo.end(), '\n'), programmi * classi);
    for (int programma = 0; programma < programmi; ++programma)
        for (int i = 0; i < classi; ++i) {
            const auto riga = "P" + std::to_string(programma) + ".C" + std::to_string(i) + "\t/a.so\n";
            EXPECT_NE(testo.find(riga), std::string::npos) << riga;
        }
}

TEST_F(RegistroTest, LeavesNothingBehindButItsLockAndIsTheUsersOwn) {
    const auto file = cartella / "nuova" / "components";
    qz::registraClasse(file, "A.B", "/a.so");
    qz::registraClasse(file, "A.C", "/a.so");
    qz::annullaRegistrazione(file, "A.B");
    std::set<std::string> nomi;
    for (const auto& voce : fs::directory_iterator(file.parent_path()))
        nomi.insert(voce.path().filename().string());
    EXPECT_EQ(nomi, (std::set<std::string>{"components", "components.lock"}));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(RegistroTest, RefusesAPathThatIsNotAbsoluteOrNoLine) {
    const auto file = cartella / "components";
    for (const auto* libreria : {"", "a.so", "./a.so", "/a\nAltra.Classe\t/b.so"})
        EXPECT_THROW(qz::registraClasse(file, "A.B", libreria), std::exception) << libreria;
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(RegistroTest, LeavesAFileThatItCanNotReplaceAsItWas) {
    const auto file = cartella / "components";
    scrivi(file, "Altra.Classe\t/x.so\n");
    fs::create_directory(cartella / "components.lock"); // nobody can lock it
    EXPECT_THROW(qz::registraClasse(file, "A.B", "/a.so"), std::exception);
    EXPECT_THROW(qz::annullaRegistrazione(file, "Altra.Classe"), std::exception);
    EXPECT_EQ(contenuto(file), "Altra.Classe\t/x.so\n");
}

TEST_F(RegistroTest, SaysSoWhenAFolderStandsInItsPlace) {
    fs::create_directories(cartella / "components" / "piena");
    EXPECT_THROW(qz::registraClasse(cartella / "components", "A.B", "/a.so"), std::exception);
}

} // namespace

#include "component/plugin/Registro.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qz {

namespace {

std::string ambiente(const char* nome) {
    const char* valore = std::getenv(nome); // NOLINT(concurrency-mt-unsafe): everything runs on one thread
    return valore ? valore : "";
}

[[noreturn]] void nonScrivibile(const std::filesystem::path& registro) {
    throw std::runtime_error("Non si può scrivere il registro dei componenti " + registro.string() + ".");
}

class Descrittore {
public:
    explicit Descrittore(int numero) : numero_(numero) {}
    Descrittore(const Descrittore&) = delete;
    Descrittore& operator=(const Descrittore&) = delete;
    ~Descrittore() {
        if (numero_ >= 0)
            ::close(numero_);
    }
    int numero() const { return numero_; }
    bool aperto() const { return numero_ >= 0; }

private:
    int numero_;
};

/// Keeps other programs from writing while it lives. The registry itself is replaced as a whole, so that the lock is on
/// a file of its own, which stays.
class Esclusiva {
public:
    explicit Esclusiva(const std::filesystem::path& registro)
        : file_(::open((registro.string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                       S_IRUSR | S_IWUSR)) {
        if (!file_.aperto())
            nonScrivibile(registro);
        // A program that hangs must not keep others from starting.
        for (int prova = 0; ::flock(file_.numero(), LOCK_EX | LOCK_NB) != 0; ++prova) {
            if ((errno != EWOULDBLOCK && errno != EINTR) || prova == 100)
                nonScrivibile(registro);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }

private:
    Descrittore file_;
};

/// What the registry holds, nothing when there is none. Throws when it can not be read: what is not known would be
/// lost.
std::optional<std::string> leggi(const std::filesystem::path& registro) {
    const Descrittore file(::open(registro.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.aperto()) {
        if (errno == ENOENT)
            return std::nullopt;
        nonScrivibile(registro);
    }
    std::string testo;
    char parte[4096];
    for (;;) {
        const auto letti = ::read(file.numero(), parte, sizeof parte);
        if (letti < 0 && errno == EINTR)
            continue;
        if (letti < 0)
            nonScrivibile(registro);
        if (letti == 0)
            return testo;
        testo.append(parte, static_cast<std::size_t>(letti));
    }
}

/// All but a class's lines, as they stand, with an end of line at the end.
std::string altreRighe(std::string_view testo, std::string_view classe) {
    std::string altre;
    while (!testo.empty()) {
        const auto riga = testo.substr(0, testo.find('\n'));
        if (riga.substr(0, riga.find('\t')) != classe || riga.find('\t') == std::string_view::npos)
            altre.append(riga).push_back('\n');
        testo.remove_prefix(std::min(testo.size(), riga.size() + 1));
    }
    return altre;
}

bool scriviTutto(int file, std::string_view testo) {
    while (!testo.empty()) {
        const auto scritti = ::write(file, testo.data(), testo.size());
        if (scritti < 0 && errno == EINTR)
            continue;
        if (scritti <= 0)
            return false;
        testo.remove_prefix(static_cast<std::size_t>(scritti));
    }
    return ::fsync(file) == 0;
}

/// Replaces the registry by way of a new file beside it, which is nobody's link: mkostemp() makes it or fails.
void sostituisci(const std::filesystem::path& registro, std::string_view testo) {
    std::string nuovo = registro.string() + ".XXXXXX";
    const Descrittore file(::mkostemp(nuovo.data(), O_CLOEXEC));
    if (!file.aperto())
        nonScrivibile(registro);
    if (!scriviTutto(file.numero(), testo) || std::rename(nuovo.c_str(), registro.c_str()) != 0) {
        ::unlink(nuovo.c_str());
        nonScrivibile(registro);
    }
}

void preparaCartella(const std::filesystem::path& registro) {
    if (registro.empty())
        throw std::runtime_error("Nessuna cartella per il registro dei componenti.");
    const auto cartella = registro.parent_path();
    if (!cartella.empty() && std::filesystem::create_directories(cartella))
        std::filesystem::permissions(cartella, std::filesystem::perms::owner_all);
}

} // namespace

std::filesystem::path fileRegistro() {
    if (const auto file = ambiente("DISTINTE_REGISTRY"); !file.empty())
        return file;
    // A relative one does not count; the host looks for it in the same way.
    if (const std::filesystem::path dati = ambiente("XDG_DATA_HOME"); dati.is_absolute())
        return dati / "distinte" / "components";
    if (const auto casa = ambiente("HOME"); !casa.empty())
        return std::filesystem::path(casa) / ".local" / "share" / "distinte" / "components";
    return {};
}

void registraClasse(const std::filesystem::path& registro, std::string_view classe, std::string_view libreria) {
    if (!std::filesystem::path(libreria).is_absolute() || libreria.find('\n') != std::string_view::npos)
        throw std::runtime_error("Il percorso della libreria non è assoluto: " + std::string(libreria) + ".");
    preparaCartella(registro);
    const Esclusiva esclusiva(registro);
    const auto prima = leggi(registro);
    const auto dopo =
        altreRighe(prima.value_or(""), classe) + std::string(classe) + '\t' + std::string(libreria) + '\n';
    if (dopo != prima)
        sostituisci(registro, dopo);
}

void annullaRegistrazione(const std::filesystem::path& registro, std::string_view classe) {
    if (!std::filesystem::exists(registro))
        return;
    const Esclusiva esclusiva(registro);
    const auto prima = leggi(registro);
    if (!prima)
        return;
    if (const auto dopo = altreRighe(*prima, classe); dopo != *prima)
        sostituisci(registro, dopo);
}

} // namespace qz

#include "plugin/Registro.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace qz {

namespace {

std::string ambiente(const char* nome) {
    const char* valore = std::getenv(nome); // NOLINT(concurrency-mt-unsafe): everything runs on one thread
    return valore ? valore : "";
}

std::vector<std::string> altreRighe(const std::filesystem::path& registro, std::string_view classe) {
    std::vector<std::string> righe;
    std::ifstream file(registro);
    for (std::string riga; std::getline(file, riga);)
        if (!riga.empty() && riga.substr(0, riga.find('\t')) != classe)
            righe.push_back(riga);
    return righe;
}

void sostituisci(const std::filesystem::path& registro, const std::vector<std::string>& righe) {
    if (registro.empty())
        throw std::runtime_error("Nessuna cartella per il registro dei componenti.");
    if (registro.has_parent_path())
        std::filesystem::create_directories(registro.parent_path());
    auto nuovo = registro;
    nuovo += ".nuovo";
    {
        std::ofstream file(nuovo, std::ios::trunc);
        for (const auto& riga : righe)
            file << riga << '\n';
        file.flush();
        if (!file)
            throw std::runtime_error("Non si può scrivere il registro dei componenti " + registro.string() + ".");
    }
    std::filesystem::rename(nuovo, registro);
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
    auto righe = altreRighe(registro, classe);
    righe.push_back(std::string(classe) + '\t' + std::string(libreria));
    sostituisci(registro, righe);
}

void annullaRegistrazione(const std::filesystem::path& registro, std::string_view classe) {
    if (!std::filesystem::exists(registro))
        return;
    sostituisci(registro, altreRighe(registro, classe));
}

} // namespace qz

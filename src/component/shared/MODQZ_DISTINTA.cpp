#include "component/shared/MODQZ_DISTINTA.h"

#include "contract/RuntimeError.h"

#include <array>
#include <ctime>

namespace qz {

std::string_view senzaBlanksFinali(std::string_view testo) {
    const auto ultimo = testo.find_last_not_of(' ');
    return ultimo == std::string_view::npos ? std::string_view() : testo.substr(0, ultimo + 1);
}

std::string_view senzaBlanks(std::string_view testo) {
    testo = senzaBlanksFinali(testo);
    const auto primo = testo.find_first_not_of(' ');
    return primo == std::string_view::npos ? std::string_view() : testo.substr(primo);
}

contract::Value ValoreODefaultTrim(const contract::Value& valore, const contract::Value& predefinito) {
    if (valore.isMissing())
        return predefinito;
    const std::string testo = valore.text();
    const auto rifilato = senzaBlanks(testo);
    if (rifilato.empty())
        return predefinito;
    return contract::Value(rifilato);
}

std::string TestoDaValore(const contract::Value& valore) {
    return std::string(senzaBlanksFinali(valore.text()));
}

contract::Date dataDelTesto(std::string_view testo) {
    const auto data = contract::Date::parse(testo);
    if (!data)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + std::string(testo) + "\" non è una data.");
    return *data;
}

std::string oraDiAdesso() {
    const std::time_t adesso = std::time(nullptr);
    std::tm parti{};
    localtime_r(&adesso, &parti);
    std::array<char, 9> testo{};
    std::strftime(testo.data(), testo.size(), "%H:%M:%S", &parti);
    return testo.data();
}

} // namespace qz

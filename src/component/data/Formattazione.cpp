#include "component/data/Formattazione.h"

#include "component/shared/MODQZ_DISTINTA.h"

#include <algorithm>
#include <string_view>

namespace qz {

namespace {

using contract::FieldType;

bool numerico(FieldType tipo) {
    switch (tipo) {
    case FieldType::smallInt:
    case FieldType::integer:
    case FieldType::bigInt:
    case FieldType::unsignedSmallInt:
    case FieldType::unsignedInt:
    case FieldType::unsignedBigInt:
    case FieldType::tinyInt:
    case FieldType::unsignedTinyInt:
    case FieldType::single:
    case FieldType::doublePrecision:
    case FieldType::currency:
    case FieldType::decimal:
    case FieldType::numeric:
    case FieldType::varBinary:
    case FieldType::longVarBinary:
        return true;
    default:
        return false;
    }
}

bool data(FieldType tipo) {
    return tipo == FieldType::date || tipo == FieldType::dbDate || tipo == FieldType::dbTime ||
           tipo == FieldType::dbTimeStamp;
}

bool soloCifre(std::string_view testo) {
    return !testo.empty() && std::all_of(testo.begin(), testo.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Adds one to a run of digits; it grows by a digit when all of them were nines.
void incrementa(std::string& cifre) {
    for (auto cifra = cifre.rbegin(); cifra != cifre.rend(); ++cifra) {
        if (*cifra != '9') {
            ++*cifra;
            return;
        }
        *cifra = '0';
    }
    cifre.insert(cifre.begin(), '1');
}

std::string raggruppa(const std::string& cifre) {
    std::string testo;
    for (std::size_t i = 0; i < cifre.size(); ++i) {
        if (i != 0 && (cifre.size() - i) % 3 == 0)
            testo.push_back('.');
        testo.push_back(cifre[i]);
    }
    return testo;
}

/// A decimal text ("-1234.5") with this many decimals, grouped; nothing changes in a text that is no number.
std::string formattaNumero(const std::string& testo, std::size_t decimali) {
    std::string_view resto = senzaBlanks(testo);
    const bool negativo = resto.starts_with('-');
    if (negativo)
        resto.remove_prefix(1);
    const auto punto = resto.find('.');
    std::string intere(resto.substr(0, punto));
    std::string frazione(punto == std::string_view::npos ? std::string_view() : resto.substr(punto + 1));
    if (!soloCifre(intere) || (punto != std::string_view::npos && !soloCifre(frazione)))
        return std::string(senzaBlanks(testo));

    const bool arrotonda = frazione.size() > decimali && frazione[decimali] >= '5';
    frazione.resize(decimali, '0');
    std::string cifre = intere + frazione;
    if (arrotonda)
        incrementa(cifre);
    intere = cifre.substr(0, cifre.size() - decimali);
    frazione = cifre.substr(cifre.size() - decimali);
    intere.erase(0, std::min(intere.find_first_not_of('0'), intere.size() - 1));

    const bool zero = cifre.find_first_not_of('0') == std::string::npos;
    std::string risultato = negativo && !zero ? "-" : "";
    risultato += raggruppa(intere);
    if (decimali > 0)
        risultato += "," + frazione;
    return risultato;
}

} // namespace

std::string formattaValore(FieldType tipo, int decimali, const contract::Value& valore) {
    if (valore.isMissing())
        return {};
    if (numerico(tipo))
        return formattaNumero(valore.as<bool>() ? std::to_string(valore.integer().value_or(0)) : valore.text(),
                              decimali > 0 ? 2 : 0);
    if (data(tipo)) {
        const auto giorno = valore.date();
        return giorno ? giorno->text() : std::string(senzaBlanks(valore.text()));
    }
    return std::string(senzaBlanks(valore.text()));
}

} // namespace qz

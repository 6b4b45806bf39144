#include "component/maintenance/ValoriRegistro.h"

#include "component/data/Schema.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace qz {

using contract::ColumnDef;
using contract::ColumnType;
using contract::RowValues;
using contract::RuntimeError;
using contract::Value;

namespace {

[[noreturn]] void rifiuta(std::string_view testo) {
    throw RuntimeError(RuntimeError::typeMismatch,
                       "Tipo non corrispondente: il registro degli spostamenti contiene \"" + std::string(testo) +
                           "\", che non si può leggere.");
}

bool eNumero(ColumnType tipo) {
    return tipo == ColumnType::identity || tipo == ColumnType::integer || tipo == ColumnType::number ||
           tipo == ColumnType::flag || tipo == ColumnType::amount;
}

std::string senzaCoda(std::string testo) {
    while (testo.ends_with(' '))
        testo.pop_back();
    return testo;
}

std::string guidNormale(std::string_view guid) {
    std::string testo;
    for (const char c : guid)
        if (c != '{' && c != '}')
            testo += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return testo;
}

void aggiungiTesto(std::string& json, std::string_view testo) {
    json += '"';
    for (const char c : testo) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            static constexpr std::string_view cifre = "0123456789abcdef";
            const auto codice = static_cast<unsigned char>(c);
            json += "\\u00";
            json += cifre[codice >> 4U];
            json += cifre[codice & 0xFU];
        } else {
            json += c;
        }
    }
    json += '"';
}

const ColumnDef& colonnaDi(std::string_view nome, std::string_view testo) {
    const auto& colonne = colonneRegistrate();
    const auto trovata =
        std::find_if(colonne.begin(), colonne.end(), [&](const ColumnDef& colonna) { return colonna.name == nome; });
    if (trovata == colonne.end())
        rifiuta(testo);
    return *trovata;
}

/// Reads one flat object of texts, whole numbers and nulls.
class Lettore {
public:
    explicit Lettore(std::string_view testo) : testo_(testo) {}

    RowValues leggi() {
        RowValues valori;
        attendi('{');
        if (!accetta('}')) {
            do {
                auto nome = leggiTesto();
                attendi(':');
                auto valore = leggiValore(colonnaDi(nome, testo_));
                valori.emplace_back(std::move(nome), std::move(valore));
            } while (accetta(','));
            attendi('}');
        }
        bianchi();
        if (da_ != testo_.size())
            rifiuta(testo_);
        return valori;
    }

private:
    void bianchi() {
        while (da_ < testo_.size() &&
               (testo_[da_] == ' ' || testo_[da_] == '\t' || testo_[da_] == '\r' || testo_[da_] == '\n'))
            ++da_;
    }
    bool accetta(char c) {
        bianchi();
        if (da_ >= testo_.size() || testo_[da_] != c)
            return false;
        ++da_;
        return true;
    }
    void attendi(char c) {
        if (!accetta(c))
            rifiuta(testo_);
    }
    char prendi() {
        if (da_ >= testo_.size())
            rifiuta(testo_);
        return testo_[da_++];
    }

    Value leggiValore(const ColumnDef& colonna) {
        bianchi();
        if (testo_.substr(da_).starts_with("null")) {
            da_ += 4;
            return Value::null();
        }
        if (da_ < testo_.size() && testo_[da_] == '"') {
            const auto letto = leggiTesto();
            if (colonna.type == ColumnType::date) {
                const auto giorno = contract::Date::parse(letto);
                if (!giorno)
                    rifiuta(testo_);
                return *giorno;
            }
            if (eNumero(colonna.type))
                rifiuta(testo_);
            return letto;
        }
        std::int64_t numero = 0;
        const auto* inizio = testo_.data() + da_;
        const auto [fine, errore] = std::from_chars(inizio, testo_.data() + testo_.size(), numero);
        if (errore != std::errc() || !eNumero(colonna.type))
            rifiuta(testo_);
        da_ += static_cast<std::size_t>(fine - inizio);
        return numero;
    }

    std::string leggiTesto() {
        attendi('"');
        std::string letto;
        for (char c = prendi(); c != '"'; c = prendi()) {
            if (c != '\\') {
                letto += c;
                continue;
            }
            const char dopo = prendi();
            if (dopo == 'u')
                letto += leggiCodice();
            else if (dopo == '"' || dopo == '\\' || dopo == '/')
                letto += dopo;
            else if (dopo == 'n')
                letto += '\n';
            else if (dopo == 't')
                letto += '\t';
            else
                rifiuta(testo_);
        }
        return letto;
    }

    /// Only control characters are written by their code.
    char leggiCodice() {
        if (testo_.size() - da_ < 4)
            rifiuta(testo_);
        unsigned codice = 0;
        const auto* inizio = testo_.data() + da_;
        const auto [fine, errore] = std::from_chars(inizio, inizio + 4, codice, 16);
        if (errore != std::errc() || fine != inizio + 4 || codice > 0x7F)
            rifiuta(testo_);
        da_ += 4;
        return static_cast<char>(codice);
    }

    std::string_view testo_;
    std::size_t da_ = 0;
};

} // namespace

const std::vector<ColumnDef>& colonneRegistrate() {
    static const std::vector<ColumnDef> colonne = [] {
        std::vector<ColumnDef> tutte;
        for (const auto& tabella : schema().tables)
            if (tabella.name == "QZ02_DISTINTA")
                for (const auto& colonna : tabella.columns)
                    if (colonna.type != ColumnType::identity)
                        tutte.push_back(colonna);
        return tutte;
    }();
    return colonne;
}

Value valoreRegistrato(const ColumnDef& colonna, const Value& valore) {
    if (valore.isMissing())
        return Value::null();
    if (colonna.type == ColumnType::date) {
        const auto giorno = valore.date();
        return giorno ? Value(*giorno) : Value::null();
    }
    if (eNumero(colonna.type)) {
        const auto numero = valore.integer();
        return numero ? Value(*numero) : Value::null();
    }
    return colonna.type == ColumnType::guid ? guidNormale(valore.text()) : senzaCoda(valore.text());
}

RowValues valoriDelRecord(const contract::Recordset& record, bool missing) {
    RowValues valori;
    for (const auto& colonna : colonneRegistrate()) {
        auto valore = valoreRegistrato(colonna, record[colonna.name]);
        if (missing || !valore.isNull())
            valori.emplace_back(colonna.name, std::move(valore));
    }
    return valori;
}

const Value* valoreDi(const RowValues& valori, std::string_view colonna) {
    const auto trovato =
        std::find_if(valori.begin(), valori.end(), [&](const auto& valore) { return valore.first == colonna; });
    return trovato == valori.end() ? nullptr : &trovato->second;
}

std::string_view didascaliaColonna(std::string_view colonna) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 22> didascalie{
        {{"QZ02_ID_QZ01", "distinta"},
         {"QZ02_IDPARENT_QZ02", "padre"},
         {"QZ02_DITTA_CG18", "azienda"},
         {"QZ02_TIPOCF_CG44", "tipo di conto"},
         {"QZ02_CLIFOR_CG44", "conto"},
         {"QZ02_DESCR", "descrizione"},
         {"QZ02_DATAINIZIOVAL", "inizio"},
         {"QZ02_DATAFINEVAL", "fine"},
         {"QZ02_ID_WF02", "stato"},
         {"QZ02_GUID", "identificativo"},
         {"QZ02_INDREGPROV", "registrazione provvisoria"},
         {"QZ02_CLIFORFATT_CG44", "conto di fatturazione"},
         {"QZ02_TIPOANAGFATT", "tipo di fatturazione"},
         {"QZ02_IDSTRUTTURA_LP09", "struttura"},
         {"QZ02_IDLOCALIZZATA_LP09", "struttura localizzata"},
         {"QZ02_INDEREPROMO", "promozione"},
         {"QZ02_UTENTECRE", "creato da"},
         {"QZ02_GRUPPOCRE", "gruppo di chi ha creato"},
         {"QZ02_DATACRE", "creato il"},
         {"QZ02_UTENTEVAR", "variato da"},
         {"QZ02_GRUPPOVAR", "gruppo di chi ha variato"},
         {"QZ02_DATAVAR", "variato il"}}};
    const auto trovata = std::find_if(didascalie.begin(), didascalie.end(),
                                      [&](const auto& didascalia) { return didascalia.first == colonna; });
    return trovata == didascalie.end() ? colonna : trovata->second;
}

std::string testoDeiValori(const std::optional<RowValues>& valori) {
    if (!valori)
        return {};
    std::string json = "{";
    for (const auto& [nome, valore] : *valori) {
        if (json.size() > 1)
            json += ", ";
        aggiungiTesto(json, nome);
        json += ": ";
        if (valore.isMissing())
            json += "null";
        else if (valore.isNumber())
            json += valore.text();
        else
            aggiungiTesto(json, valore.text());
    }
    return json + "}";
}

std::optional<RowValues> valoriDelTesto(std::string_view testo) {
    if (testo.find_first_not_of(' ') == std::string_view::npos)
        return std::nullopt;
    return Lettore(testo).leggi();
}

} // namespace qz

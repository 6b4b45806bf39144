#include "host/moves/MoveFile.h"

#include "contract/RuntimeError.h"
#include "host/moves/CsvRecords.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace host {

namespace {

enum class Column { account, parent, origin, destination, kind, end };
constexpr std::array<std::string_view, 6> names{"conto", "nuovo_padre", "distinta_origine", "distinta_destinazione",
                                                "tipo",  "data_fine"};
using Places = std::array<std::optional<std::size_t>, names.size()>;

[[noreturn]] void refuse(const std::string& reason) {
    throw contract::RuntimeError(contract::RuntimeError::invalidCall, reason);
}

/// A name as a person may have typed it: any case, blanks for underscores.
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char c : name)
        plain += c == ' ' ? '_' : (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
    return plain;
}

/// The one that stands oftenest in the header.
char separatorOf(std::string_view text) {
    const auto header =
        text.substr(text.find_first_not_of("\r\n") == std::string_view::npos ? 0 : text.find_first_not_of("\r\n"));
    const auto line = header.substr(0, header.find_first_of("\r\n"));
    char best = ';';
    std::ptrdiff_t most = 0;
    for (const char candidate : {';', ',', '\t'}) {
        const auto count = std::count(line.begin(), line.end(), candidate);
        if (count > most) {
            best = candidate;
            most = count;
        }
    }
    return best;
}

Places placesOf(const CsvRecord& header) {
    Places places;
    for (std::size_t i = 0; i < header.fields.size(); ++i) {
        const auto name = plainName(header.fields[i]);
        if (name.empty())
            continue; // a column without a name is nobody's
        const auto* const known = std::find(names.begin(), names.end(), name);
        if (known == names.end())
            refuse("Colonna sconosciuta «" + header.fields[i] +
                   "»: l'intestazione nomina conto, nuovo_padre, distinta_origine, distinta_destinazione, tipo, "
                   "data_fine.");
        auto& place = places[static_cast<std::size_t>(known - names.begin())];
        if (place)
            refuse("La colonna «" + header.fields[i] + "» c'è due volte.");
        place = i;
    }
    for (const auto column : {Column::account, Column::parent})
        if (!places[static_cast<std::size_t>(column)])
            refuse("Manca la colonna «" + std::string(names[static_cast<std::size_t>(column)]) +
                   "»: la prima riga dell'elenco nomina le colonne.");
    return places;
}

/// A line's values as they are read.
class LineReader {
public:
    LineReader(const CsvRecord& record, const Places& places) : record_(record), places_(places) {
        line_.line = record.line;
    }

    contract::MoveLine read() {
        line_.account = account(Column::account);
        line_.parentAccount = account(Column::parent);
        line_.originCode = text(Column::origin);
        line_.destinationCode = text(Column::destination);
        readKind();
        readEnd();
        for (std::size_t i = 0; i < record_.fields.size(); ++i)
            if (!record_.fields[i].empty() &&
                std::find(places_.begin(), places_.end(), std::optional(i)) == places_.end())
                wrong("il valore «" + record_.fields[i] + "» non sta sotto nessuna colonna");
        return std::move(line_);
    }

private:
    std::string text(Column column) const {
        const auto place = places_[static_cast<std::size_t>(column)];
        return place && *place < record_.fields.size() ? record_.fields[*place] : std::string();
    }
    void wrong(const std::string& reason) { line_.wrong += (line_.wrong.empty() ? "" : "; ") + reason; }
    std::int64_t account(Column column) {
        const auto written = text(column);
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), number);
        if (error == std::errc() && end == written.data() + written.size() && number > 0)
            return number;
        const std::string name(names[static_cast<std::size_t>(column)]);
        wrong(written.empty() ? name + " manca" : name + " «" + written + "» non è il codice di un conto");
        return 0;
    }
    void readKind() {
        const auto kind = plainName(text(Column::kind));
        line_.manner.validity = kind == "validita" || kind == "validità";
        if (!line_.manner.validity && !kind.empty() && kind != "struttura")
            wrong("tipo «" + text(Column::kind) + "» non è né struttura né validita");
    }
    void readEnd() {
        const auto day = text(Column::end);
        if (day.empty())
            return;
        line_.manner.end = contract::Date::parse(day);
        if (!line_.manner.end)
            wrong("data_fine «" + day + "» non è un giorno gg/mm/aaaa");
    }

    const CsvRecord& record_;
    const Places& places_;
    contract::MoveLine line_;
};

} // namespace

std::vector<contract::MoveLine> readMoves(std::string_view bytes) {
    const std::string text = asUtf8(bytes);
    const auto records = csvRecords(text, separatorOf(text));
    if (records.empty())
        refuse("L'elenco è vuoto.");
    const auto places = placesOf(records.front());
    if (records.size() == 1)
        refuse("L'elenco è vuoto: sotto l'intestazione non c'è nessuna riga.");
    if (records.size() - 1 > mostMoveLines)
        refuse("L'elenco ha più di " + std::to_string(mostMoveLines) + " righe.");
    std::vector<contract::MoveLine> lines;
    lines.reserve(records.size() - 1);
    for (std::size_t i = 1; i < records.size(); ++i)
        lines.push_back(LineReader(records[i], places).read());
    return lines;
}

std::vector<contract::MoveLine> readMoveFile(const QString& path) {
    QFile file(path);
    const auto unreadable = [&](const QString& reason) {
        refuse(QStringLiteral("L'elenco «%1» non si può leggere: %2").arg(path, reason).toStdString());
    };
    if (!file.open(QIODevice::ReadOnly))
        unreadable(file.errorString());
    const QByteArray bytes = file.read(longestMoveFile + 1);
    if (file.error() != QFileDevice::NoError)
        unreadable(file.errorString());
    if (bytes.size() > longestMoveFile)
        unreadable(QStringLiteral("è più grande di 64 MB"));
    try {
        return readMoves({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    } catch (const contract::RuntimeError& error) {
        refuse(QStringLiteral("«%1» non è un elenco di spostamenti: %2")
                   .arg(path, QString::fromStdString(error.description()))
                   .toStdString());
    }
}

} // namespace host

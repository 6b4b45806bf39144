#include "host/moves/CsvRecords.h"

#include "contract/RuntimeError.h"

#include <QStringDecoder>

#include <csv.h>
#include <iconv.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace host {

namespace {

[[noreturn]] void refuse(const std::string& reason) {
    throw contract::RuntimeError(contract::RuntimeError::invalidCall, reason);
}

bool isUtf8(std::string_view bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return !text.isNull() && !decoder.hasError();
}

std::string fromWindows1252(std::string_view bytes) {
    const iconv_t converter = iconv_open("UTF-8", "WINDOWS-1252");
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): iconv's own sign of failure
        refuse("Su questa macchina manca la tabella dei caratteri Windows-1252.");
    std::string in(bytes);
    std::string out(bytes.size() * 3, '\0');
    char* from = in.data();
    char* to = out.data();
    std::size_t inLeft = in.size();
    std::size_t outLeft = out.size();
    const auto result = iconv(converter, &from, &inLeft, &to, &outLeft);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1))
        refuse("Il testo non è né UTF-8 né Windows-1252.");
    out.resize(out.size() - outLeft);
    return out;
}

/// What the parser hands over, gathered.
struct Gathered {
    std::vector<CsvRecord> records;
    CsvRecord open;
    std::int64_t line = 1; ///< in which the parser stands

    void field(std::string_view text) {
        if (open.fields.empty())
            open.line = line;
        open.fields.emplace_back(text);
        line += std::count(text.begin(), text.end(), '\n');
    }
    void end(bool lineFeed) {
        if (std::any_of(open.fields.begin(), open.fields.end(), [](const auto& text) { return !text.empty(); }))
            records.push_back(std::move(open));
        open = {};
        line += lineFeed ? 1 : 0;
    }
};

void takeField(void* text, std::size_t length, void* gathered) {
    static_cast<Gathered*>(gathered)->field({static_cast<const char*>(text), length});
}

void takeEnd(int letter, void* gathered) {
    static_cast<Gathered*>(gathered)->end(letter == '\n');
}

struct ParserEnd {
    void operator()(csv_parser* parser) const { csv_free(parser); }
};

/// Line feeds alone end lines.
std::string withLineFeeds(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            out += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            out += '\n';
    }
    return out;
}

} // namespace

std::string asUtf8(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.find('\0') != std::string_view::npos)
        refuse("Non è un testo.");
    if (bytes.empty())
        return {};
    if (isUtf8(bytes))
        return std::string(bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes);
    return fromWindows1252(bytes);
}

std::vector<CsvRecord> csvRecords(std::string_view text, char separator) {
    csv_parser parser;
    if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL) != 0)
        refuse("Memoria insufficiente per leggere l'elenco.");
    const std::unique_ptr<csv_parser, ParserEnd> end(&parser);
    csv_set_delim(&parser, static_cast<unsigned char>(separator));
    Gathered gathered;
    const std::string lines = withLineFeeds(text);
    const bool whole = csv_parse(&parser, lines.data(), lines.size(), takeField, takeEnd, &gathered) == lines.size() &&
                       csv_fini(&parser, takeField, takeEnd, &gathered) == 0;
    if (!whole)
        refuse("Riga " + std::to_string(gathered.line) + ": le virgolette non tornano.");
    return std::move(gathered.records);
}

} // namespace host

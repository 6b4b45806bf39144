// Whatever stands in a statement, the translator answers with a translation or with a refusal that quotes the place,
// and an argument never becomes part of the statement's structure.

#include "component/data/Schema.h"
#include "platform/dialect/Translator.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace {

using contract::Statement;
using platform::dialect::Source;
using platform::dialect::Translation;
using Kind = Statement::Kind;

// Bytes that stand for an argument of a kind in the input: they occur in no text of a person's.
constexpr char numberMark = '\x01';
constexpr char textMark = '\x02';
constexpr char dateMark = '\x03';

void must(bool condition) {
    if (!condition)
        std::abort();
}

Source sourceOf(std::string_view input, std::string_view number, std::string_view text, std::string_view date) {
    Source source;
    std::string fragment;
    const auto flush = [&] {
        if (!fragment.empty())
            source.push_back({Kind::fragment, fragment});
        fragment.clear();
    };
    for (const char c : input) {
        if (c != numberMark && c != textMark && c != dateMark) {
            fragment.push_back(c);
            continue;
        }
        flush();
        if (c == numberMark)
            source.push_back({Kind::number, std::string(number)});
        else if (c == textMark)
            source.push_back({Kind::text, std::string(text)});
        else
            source.push_back({Kind::date, std::string(date)});
    }
    flush();
    return source;
}

std::optional<Translation> translate(const Source& source) {
    static const platform::dialect::SchemaCatalog catalog(qz::schema());
    static const platform::dialect::Translator translator(catalog);
    try {
        return translator.translate(source);
    } catch (const platform::dialect::TranslationError& error) {
        must(error.description().rfind("Istruzione SQL non compresa presso «", 0) == 0);
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto source = sourceOf(input, "1", "a", "01/01/2024");
    const auto plain = translate(source);
    if (plain) {
        must(!plain->text.empty());
        for (const auto& parameter : plain->parameters) {
            must(parameter.piece < source.size());
            must(source[parameter.piece].kind != Kind::fragment);
        }
    }
    // The same shape with other values, hostile ones among them, is the same statement.
    const auto hostile =
        translate(sourceOf(input, "-9223372036854775808", "''; DROP TABLE QZ02_DISTINTA; --''", "31/12/9999"));
    must(plain.has_value() == hostile.has_value());
    if (plain)
        must(plain->text == hostile->text);
    return 0;
}

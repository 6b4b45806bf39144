#include "platform/odbc/StatementCache.h"

#include "platform/odbc/Literals.h"

#include <charconv>

namespace platform::odbc {

namespace {

/// Splits a translated text at its numbered places, "?1" and so on; question marks within quotes are characters.
void split(std::string_view text, const std::vector<dialect::Parameter>& parameters, std::vector<std::string>& fixed,
           std::vector<dialect::Parameter>& places) {
    std::string piece;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '\'' || c == '"') {
            const auto end = std::min(text.find(c, at + 1), text.size() - 1);
            piece += text.substr(at, end + 1 - at);
            at = end + 1;
            continue;
        }
        if (c != '?') {
            piece += c;
            ++at;
            continue;
        }
        std::size_t number = 0;
        const auto* end = std::from_chars(text.data() + at + 1, text.data() + text.size(), number).ptr;
        at = static_cast<std::size_t>(end - text.data());
        fixed.push_back(std::exchange(piece, {}));
        places.push_back(parameters.at(number - 1));
    }
    fixed.push_back(std::move(piece));
}

} // namespace

TranslatedStatement::TranslatedStatement(const contract::Statement& statement, dialect::Translation translation)
    : shape_(statement.withoutValues()), columns_(std::move(translation.columns)) {
    split(translation.text, translation.parameters, fixed_, places_);
}

std::string TranslatedStatement::text(const contract::Statement& statement) const {
    std::string text = fixed_.front();
    for (std::size_t i = 0; i < places_.size(); ++i) {
        appendLiteral(statement, places_[i], text);
        text += fixed_[i + 1];
    }
    return text;
}

const TranslatedStatement* StatementCache::find(const contract::Statement& statement) const {
    const auto [first, last] = statements_.equal_range(statement.shape());
    for (auto at = first; at != last; ++at)
        if (at->second->shape().sameShape(statement))
            return at->second.get();
    return nullptr;
}

const TranslatedStatement& StatementCache::store(std::unique_ptr<TranslatedStatement> statement) {
    if (statements_.size() >= capacity)
        statements_.clear();
    const auto shape = statement->shape().shape();
    return *statements_.emplace(shape, std::move(statement))->second;
}

} // namespace platform::odbc

#pragma once

#include "contract/Schema.h"
#include "platform/dialect/Translator.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace dialect_test {

using contract::ColumnType;
using contract::Statement;
using platform::dialect::Binding;
using platform::dialect::Source;
using platform::dialect::Translation;
using platform::dialect::Translator;

/// A few tables with a column of every kind, enough to see what depends on the catalog.
inline contract::Schema smallSchema() {
    contract::Schema schema;
    schema.tables.push_back({"QZ02_DISTINTA",
                             {{"QZ02_ID", ColumnType::identity, false},
                              {"QZ02_ID_QZ01", ColumnType::integer},
                              {"QZ02_IDPARENT_QZ02", ColumnType::integer},
                              {"QZ02_DITTA_CG18", ColumnType::number},
                              {"QZ02_TIPOCF_CG44", ColumnType::number},
                              {"QZ02_CLIFOR_CG44", ColumnType::number},
                              {"QZ02_DESCR", ColumnType::text, true, 100},
                              {"QZ02_DATAINIZIOVAL", ColumnType::date},
                              {"QZ02_DATAFINEVAL", ColumnType::date},
                              {"QZ02_GRUPPOVAR", ColumnType::text, true, 50},
                              {"QZ02_UTENTEVAR", ColumnType::text, true, 50},
                              {"QZ02_DATAVAR", ColumnType::date},
                              {"QZ02_GUID", ColumnType::guid}},
                             {"QZ02_ID"},
                             {}});
    schema.tables.push_back({"QZ01_TIPODISTINTA",
                             {{"QZ01_ID", ColumnType::identity, false},
                              {"QZ01_CODICE", ColumnType::text, true, 20},
                              {"QZ01_DESCR", ColumnType::text, true, 100}},
                             {"QZ01_ID"},
                             {}});
    schema.tables.push_back({"CG44_CLIFOR",
                             {{"CG44_DITTA_CG18", ColumnType::number, false},
                              {"CG44_TIPOCF", ColumnType::number, false},
                              {"CG44_CLIFOR", ColumnType::number, false},
                              {"CG44_CODICE_CG16", ColumnType::integer}},
                             {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR"},
                             {}});
    schema.tables.push_back(
        {"CG16_ANAGGEN",
         {{"CG16_CODICE", ColumnType::integer, false}, {"CG16_RAGSOANAG", ColumnType::text, true, 100}},
         {"CG16_CODICE"},
         {}});
    for (const std::string_view name : {"A", "B", "C", "D"})
        schema.tables.push_back({name,
                                 {{"K", ColumnType::integer},
                                  {"N", ColumnType::integer},
                                  {"T", ColumnType::text, true, 20},
                                  {"G", ColumnType::date},
                                  {"Q", ColumnType::amount}},
                                 {},
                                 {}});
    return schema;
}

/// Translates texts without arguments, and statements, over the small schema.
class DialectTest : public testing::Test {
protected:
    Translation translate(const Statement& statement) const { return translator_.translate(statement); }
    Translation translate(const Source& source) const { return translator_.translate(source); }
    Translation translateText(std::string_view text) const {
        return translator_.translate(Source{{Statement::Kind::fragment, std::string(text)}});
    }
    std::string textOf(std::string_view text) const { return translateText(text).text; }

    /// The description of the refusal; fails the test when there is none.
    template <class Statementlike> std::string refusalOf(const Statementlike& statement) const {
        try {
            const Translation translation = translate(statement);
            ADD_FAILURE() << "not refused: " << translation.text;
        } catch (const platform::dialect::TranslationError& error) {
            return error.description();
        }
        return {};
    }
    std::string refusalOfText(std::string_view text) const {
        return refusalOf(Source{{Statement::Kind::fragment, std::string(text)}});
    }

private:
    platform::dialect::SchemaCatalog catalog_{smallSchema()};
    Translator translator_{catalog_};
};

inline std::vector<Binding> bindingsOf(const Translation& translation) {
    std::vector<Binding> bindings;
    for (const auto& parameter : translation.parameters)
        bindings.push_back(parameter.binding);
    return bindings;
}

inline std::vector<std::size_t> piecesOf(const Translation& translation) {
    std::vector<std::size_t> pieces;
    for (const auto& parameter : translation.parameters)
        pieces.push_back(parameter.piece);
    return pieces;
}

} // namespace dialect_test

#include "Replay.h"

#include "platform/dialect/Translator.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>

namespace bench {

namespace {

using contract::Statement;
using platform::dialect::Binding;

/// Reads every column of the row at which the statement stands.
void readRow(sqlite3_stmt* handle) {
    const int count = sqlite3_column_count(handle);
    for (int i = 0; i < count; ++i) {
        switch (sqlite3_column_type(handle, i)) {
        case SQLITE_INTEGER:
            benchmark::DoNotOptimize(sqlite3_column_int64(handle, i));
            break;
        case SQLITE_FLOAT:
            benchmark::DoNotOptimize(sqlite3_column_double(handle, i));
            break;
        case SQLITE_TEXT:
            benchmark::DoNotOptimize(sqlite3_column_text(handle, i));
            benchmark::DoNotOptimize(sqlite3_column_bytes(handle, i));
            break;
        default:
            break;
        }
    }
}

} // namespace

Replay::Replay(platform::sqlite::Connection& connection, const std::vector<Statement>& statements) {
    calls_.reserve(statements.size());
    for (const auto& statement : statements) {
        Call call;
        call.shape = shapeOf(connection, statement);
        for (const auto& [piece, kind] : shapes_[call.shape].parameters) {
            const auto value = statement.argument(statement.pieces()[piece]);
            switch (static_cast<Binding>(kind)) {
            case Binding::date: {
                const auto date = value.date();
                call.arguments.emplace_back(date ? date->iso() : std::string());
                break;
            }
            case Binding::text:
                call.arguments.emplace_back(value.text());
                break;
            case Binding::number:
            case Binding::whole:
                call.arguments.emplace_back(value.integer().value_or(0));
                break;
            }
        }
        calls_.push_back(std::move(call));
    }
}

Replay::~Replay() {
    for (const auto& shape : shapes_)
        sqlite3_finalize(shape.handle);
}

std::size_t Replay::shapeOf(platform::sqlite::Connection& connection, const Statement& statement) {
    const auto known =
        std::find_if(shapes_.begin(), shapes_.end(), [&](const Shape& s) { return s.statement.sameShape(statement); });
    if (known != shapes_.end())
        return static_cast<std::size_t>(known - shapes_.begin());
    const auto translation = platform::dialect::Translator(connection.catalog()).translate(statement);
    Shape shape{statement.withoutValues(), nullptr, {}};
    if (sqlite3_prepare_v3(connection.handle(), translation.text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &shape.handle,
                           nullptr) != SQLITE_OK)
        std::abort();
    for (const auto& parameter : translation.parameters)
        shape.parameters.emplace_back(parameter.piece, static_cast<int>(parameter.binding));
    shapes_.push_back(std::move(shape));
    return shapes_.size() - 1;
}

bool Replay::run() {
    bool good = true;
    for (const auto& call : calls_) {
        sqlite3_stmt* handle = shapes_[call.shape].handle;
        int at = 0;
        for (const auto& argument : call.arguments) {
            ++at;
            if (const auto* text = std::get_if<std::string>(&argument))
                sqlite3_bind_text(handle, at, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
            else if (const auto* real = std::get_if<double>(&argument))
                sqlite3_bind_double(handle, at, *real);
            else
                sqlite3_bind_int64(handle, at, std::get<std::int64_t>(argument));
        }
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(handle)) == SQLITE_ROW)
            readRow(handle);
        good = good && code == SQLITE_DONE;
        sqlite3_reset(handle);
    }
    return good;
}

} // namespace bench

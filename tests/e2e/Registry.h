#pragma once

#include "e2e/Program.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

#include <string>
#include <vector>

namespace e2e {

/// The operations of the registry, newest first.
inline QJsonArray operations(Dialogue& program) {
    return program.must(R"({"do":"registry"})").value(QStringLiteral("operations")).toArray();
}

/// The rows of one.
inline QJsonArray rowsOf(Dialogue& program, int operation) {
    return program.must(R"({"do":"registry","id":)" + QByteArray::number(operation) + "}")
        .value(QStringLiteral("rows"))
        .toArray();
}

inline QJsonObject undo(Dialogue& program, int operation, bool preview = false) {
    return program.must(R"({"do":"undo","id":)" + QByteArray::number(operation) +
                        (preview ? R"(,"preview":true})" : "}"));
}

/// Takes an operation back, which must go.
inline bool undone(const QJsonObject& reply) {
    return reply.value(QStringLiteral("undone")).toBool() &&
           reply.value(QStringLiteral("obstacles")).toArray().isEmpty();
}

/// "id: reason" of each obstacle; an undo that was not refused fails the test.
inline std::vector<std::string> obstacles(const QJsonObject& reply) {
    std::vector<std::string> told;
    const QJsonArray all = reply.value(QStringLiteral("obstacles")).toArray();
    for (const auto& each : all) {
        const QJsonObject obstacle = each.toObject();
        const QJsonValue id = obstacle.value(QStringLiteral("id"));
        told.push_back((id.isNull() ? std::string("-") : text(id)) + ": " +
                       text(obstacle.value(QStringLiteral("reason"))));
    }
    EXPECT_FALSE(reply.value(QStringLiteral("undone")).toBool(true));
    return told;
}

} // namespace e2e

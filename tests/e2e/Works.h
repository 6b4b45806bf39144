#pragma once

#include "e2e/Database.h"
#include "e2e/Program.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

#include <cstdint>
#include <string>
#include <vector>

namespace e2e {

/// What a person changes rows with, on the forest: node 3 moved under 25, node 2 with its children moved under 21 from
/// the 1st of July 2024 on, and the end of node 5 typed.
enum class Work : std::uint8_t { structure, validity, edit };

inline std::string nameOf(Work work) {
    return work == Work::structure ? "Structure" : (work == Work::validity ? "Validity" : "Edit");
}

inline std::string nameOfCase(const ::testing::TestParamInfo<Work>& info) {
    return nameOf(info.param);
}

/// Shows the two sides of the work, with its nodes in focus.
inline void aim(Dialogue& program, Work work) {
    program.select(origList, QStringLiteral("C1"));
    program.select(destList, work == Work::edit ? QStringLiteral("C1") : QStringLiteral("C2"));
    if (work == Work::edit)
        return;
    program.focus(origTree, work == Work::structure ? 3 : 2);
    program.focus(destTree, work == Work::structure ? 25 : 21);
}

/// Does it, saying yes; what is shown besides gets the answers, and then 3 (leave the procedure).
inline QJsonObject doWork(Dialogue& program, Work work, std::vector<int> answers = {}) {
    if (work != Work::edit)
        answers.insert(answers.begin(), 6);
    QJsonArray values;
    for (const int answer : answers)
        values.append(answer);
    program.ask(QJsonObject{{QStringLiteral("do"), QStringLiteral("answer")}, {QStringLiteral("values"), values}});
    if (work == Work::edit)
        return program.must(
            R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAFINEVAL","value":"30/06/2050"})");
    if (work == Work::validity)
        program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                     R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2024"},)"
                     R"({"do":"click","control":"CMD_ESEGUI"}]})");
    return program.click(work == Work::structure ? QStringLiteral("CMD_SPOSTASTRU")
                                                 : QStringLiteral("CMD_SPOSTAVALID"));
}

/// Whether its rows are there.
inline bool isDone(Database& database, Work work) {
    switch (work) {
    case Work::structure:
        return database.value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 3") == "25";
    case Work::validity:
        return database.value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 2") == "2024-06-30" &&
               database.value("SELECT COUNT(*) FROM QZ02_DISTINTA WHERE QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 IN "
                              "(110, 111)") == "2";
    case Work::edit:
        break;
    }
    return database.value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 5") == "2050-06-30";
}

/// Descriptions of the error displays of a reply, in order.
inline std::vector<std::string> errors(const QJsonObject& reply) {
    std::vector<std::string> texts;
    const QJsonArray shown = reply.value(QStringLiteral("messages")).toArray();
    for (const QJsonValue& value : shown)
        if (const QJsonObject message = value.toObject(); text(message.value(QStringLiteral("kind"))) == "error")
            texts.push_back(text(message.value(QStringLiteral("description"))));
    return texts;
}

} // namespace e2e

// Moves statement by statement and in blocks over worlds that no form would have made: both leave the same.

#include "component/maintenance/Blocchi.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/ScrittureSingole.h"
#include "component/maintenance/Spostamento.h"
#include "property/WildWorld.h"
#include "property/WorldDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace property {

namespace {

/// Notes what it is asked; its GUIDs are the same in every run.
class NotedWorkflow : public contract::WorkflowState {
public:
    std::vector<std::string> calls;

    std::string GetNewGUID() override {
        std::array<char, 40> guid{};
        std::snprintf(guid.data(), guid.size(), "ABCDEF00-0000-4000-8000-%012zX", ++made_);
        calls.emplace_back(guid.data());
        return guid.data();
    }
    void DuplicaStato(std::string_view from, std::string_view to) override {
        calls.push_back("DuplicaStato " + std::string(from) + " " + std::string(to));
    }
    void GetDefaultFlussoStato() override { calls.emplace_back("GetDefaultFlussoStato"); }
    void ConfermaStato() override { calls.emplace_back("ConfermaStato"); }
    std::string GetDescrizioneStatoFromGUID(std::string_view) override { return {}; }
    std::vector<std::string> descriptions(const std::vector<std::string>& guids) override {
        return std::vector<std::string>(guids.size());
    }

private:
    std::size_t made_ = 0;
};

/// What a move left and said.
struct Left {
    std::string message;
    std::string error;
    std::string plan;
    std::string rows; ///< of a move that is kept
    std::vector<std::string> workflow;
    int copied = 0;
    int passed = 0;
};

template <class Id> std::string number(const std::optional<Id>& id) {
    return id ? std::to_string(id->numero()) : "-";
}

std::string described(const qz::Legame& link) {
    return number(link.distinta) + " " + number(link.padre) + " " + (link.inizio ? link.inizio->text() : "-") + ".." +
           (link.fine ? link.fine->text() : "-");
}

std::string described(const qz::RigaPiano& row) {
    return std::to_string(row.nodo.numero()) + " (" + number(row.account) + ") " +
           std::to_string(static_cast<int>(row.esito)) + " " + row.motivo + " [" + described(row.prima) + "] [" +
           described(row.dopo) + "]" +
           (row.copia ? " [" + number(row.copia->accountPadre) + ": " + described(row.copia->legame) + "]" : "") + "\n";
}

std::string described(const qz::Piano& plan) {
    std::string text = plan.fineNuoviLegami.value_or("-") + "\n";
    for (const auto& row : plan.righe)
        text += described(row);
    return text;
}

Left move(contract::Connection& database, const qz::Richiesta& request, bool inBlocks) {
    NotedWorkflow workflow;
    const qz::FlussoStati flow = [&]() -> contract::WorkflowState& { return workflow; };
    Left left;
    qz::Piano plan;
    database.BeginTrans();
    try {
        if (inBlocks) {
            qz::Blocchi blocks(database, request, flow);
            qz::sposta(blocks, blocks, request, plan);
        } else {
            qz::LettureSingole reads(database);
            qz::ScrittureSingole writes(database, request.autore, flow);
            qz::sposta(reads, writes, request, plan);
        }
        if (!plan.rifiutato())
            left.rows = everything(database);
    } catch (const contract::RuntimeError& error) {
        left.error = error.description();
    }
    database.RollbackTrans();
    left.message = plan.messaggio;
    left.plan = described(plan);
    for (const auto& row : plan.righe) {
        left.copied += row.esito == qz::Esito::siCopia;
        left.passed += row.esito == qz::Esito::siSposta || row.esito == qz::Esito::siCopia;
    }
    left.workflow = std::move(workflow.calls);
    return left;
}

/// Whether a plan that was only supposed says what was done. Where its links have provisional ids the database has
/// given its own, in the same order.
bool sameButForNewIds(const std::string& supposed, const std::string& done) {
    std::istringstream one(supposed);
    std::istringstream other(done);
    std::optional<std::int64_t> apart;
    std::string a;
    std::string b;
    while (one >> a) {
        if (!(other >> b))
            return false;
        if (a == b)
            continue;
        const bool provisional = a.size() == 19 && a.find_first_not_of("0123456789") == std::string::npos;
        if (!provisional || b.find_first_not_of("0123456789") != std::string::npos)
            return false;
        const auto distance = std::stoll(a) - std::stoll(b);
        if (apart.value_or(distance) != distance)
            return false;
        apart = distance;
    }
    return !(other >> b);
}

struct Tally {
    int kept = 0;
    int refused = 0;
    int failed = 0;
    int partly = 0; ///< of those kept: some nodes stayed behind
    int wide = 0;   ///< of those kept: more than a hundred nodes
    int copies = 0; ///< of those kept: with validity, and more than one node
};

/// The first line in which two texts differ.
std::string difference(const std::string& one, const std::string& other) {
    std::size_t at = 0;
    while (at < one.size() && at < other.size() && one[at] == other[at])
        ++at;
    const auto from = at == 0 ? 0 : one.rfind('\n', at - 1) + 1;
    return one.substr(from, one.find('\n', at) - from) + "\n  <> " + other.substr(from, other.find('\n', at) - from) +
           "\n";
}

class BothWays : public ::testing::Test {
protected:
    BothWays() : database_(place_.connectionString()) {
        database_.Open();
        database_.runNative("PRAGMA synchronous = OFF");
        database_.runNative("PRAGMA journal_mode = MEMORY");
        database_.runNative("INSERT INTO QZ02_DISTINTA (QZ02_ID) VALUES (1)"); // numbers are given from now on
    }

    /// Stops at the first difference.
    Tally compare(unsigned firstSeed, int worlds, bool huge = false) {
        constexpr int movesAWorld = 4;
        Tally tally;
        for (unsigned seed = firstSeed; seed < firstSeed + static_cast<unsigned>(worlds) && !HasFailure(); ++seed) {
            std::mt19937 random(seed);
            const auto world = wildWorld(random, huge);
            database_.BeginTrans();
            write(world, database_);
            database_.CommitTrans();
            for (int i = 0; i < (huge ? 1 : movesAWorld) && !HasFailure(); ++i)
                compare(wildMove(world, random, database_), "seed " + std::to_string(seed), tally);
        }
        return tally;
    }

private:
    void compare(const qz::Richiesta& request, const std::string& where, Tally& tally) {
        const auto single = move(database_, request, false);
        const auto blocks = move(database_, request, true);
        const auto what = where + ": node " + std::to_string(request.nodo.id.numero()) + " under " +
                          std::to_string(request.sotto.numero()) + ", " + std::to_string(request.da.numero()) + " to " +
                          std::to_string(request.a.numero()) +
                          (request.validita ? " after " + request.validita->fine.text() : "") + "\n";
        EXPECT_EQ(single.error, blocks.error) << what;
        EXPECT_EQ(single.message, blocks.message) << what;
        EXPECT_TRUE(single.plan == blocks.plan) << what << difference(single.plan, blocks.plan);
        EXPECT_TRUE(single.rows == blocks.rows) << what << difference(single.rows, blocks.rows);
        EXPECT_EQ(single.workflow, blocks.workflow) << what;
        if (single.error.empty())
            suppose(request, single, what);
        const bool kept = !single.rows.empty();
        ++(kept ? tally.kept : single.error.empty() ? tally.refused : tally.failed);
        if (!kept)
            return;
        const auto all = static_cast<int>(std::count(single.plan.begin(), single.plan.end(), '\n')) - 1;
        tally.partly += single.passed < all;
        tally.wide += single.passed > 100;
        tally.copies += single.copied > 1;
    }

    /// Without a transaction, and without a write.
    void suppose(const qz::Richiesta& request, const Left& done, const std::string& what) {
        const int before = sqlite3_total_changes(database_.handle());
        qz::Piano plan;
        qz::Blocchi supposing(database_, request);
        qz::sposta(supposing, supposing, request, plan);
        EXPECT_EQ(plan.messaggio, done.message) << what;
        EXPECT_TRUE(sameButForNewIds(described(plan), done.plan)) << what << difference(described(plan), done.plan);
        EXPECT_EQ(sqlite3_total_changes(database_.handle()), before) << what;
    }

    WorldDatabase place_;
    platform::sqlite::Connection database_;
};

/// So many times as many worlds as in the everyday run.
int longer() {
    const char* times = std::getenv("DISTINTE_BOTH_WAYS_TIMES");
    return times != nullptr ? std::max(1, std::atoi(times)) : 1;
}

TEST_F(BothWays, LeaveTheSameInWildWorlds) {
    const auto tally = compare(1, 600 * longer());
    std::printf("kept %d (partly %d, over 100 nodes %d, copies %d), refused %d, failed %d\n", tally.kept, tally.partly,
                tally.wide, tally.copies, tally.refused, tally.failed);
    // Every end must be well represented for the agreement to mean something.
    EXPECT_GT(tally.kept, 400);
    EXPECT_GT(tally.partly, 20);
    EXPECT_GT(tally.wide, 5);
    EXPECT_GT(tally.copies, 50);
    EXPECT_GT(tally.refused, 100);
    EXPECT_GT(tally.failed, 0);
}

TEST_F(BothWays, LeaveTheSameWhereALevelTakesMoreThanOneStatement) {
    const auto tally = compare(900001, 4 * longer(), true);
    std::printf("kept %d, of them over 100 nodes %d\n", tally.kept, tally.wide);
    EXPECT_GT(tally.wide, 0);
}

} // namespace

} // namespace property

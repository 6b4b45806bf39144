#include "BenchDatabase.h"

#include "component/data/Schema.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"

#include <cstdlib>
#include <filesystem>

namespace bench {

namespace {

constexpr std::int64_t fanOut = 10;

contract::Date day(int year, int month, int dayOfMonth) {
    return contract::Date::of(year, month, dayOfMonth).value_or(contract::Date());
}

} // namespace

Database::Database(std::size_t movedNodes) {
    std::string name = (std::filesystem::temp_directory_path() / "distinte-bench-XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file < 0)
        std::abort();
    path_ = name;
    std::filesystem::remove(path_);

    const auto moved = static_cast<std::int64_t>(movedNodes);
    const auto all = moved * 10;
    target_ = all + 3;
    platform::sqlite::createDatabase(path_, qz::schema(), [&](platform::sqlite::Connection& connection) {
        platform::sqlite::BulkWriter types(
            connection, "QZ01_TIPODISTINTA",
            {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR", "QZ01_INDTIPOSOGG"});
        types.append({std::int64_t{1}, std::int64_t{1}, "A", "Origine", std::int64_t{0}});
        types.append({std::int64_t{2}, std::int64_t{1}, "B", "Destinazione", std::int64_t{0}});
        platform::sqlite::BulkWriter registry(connection, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
        platform::sqlite::BulkWriter accounts(connection, "CG44_CLIFOR",
                                              {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
        platform::sqlite::BulkWriter nodes(connection, "QZ02_DISTINTA",
                                           {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18",
                                            "QZ02_TIPOCF_CG44", "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL",
                                            "QZ02_DATAFINEVAL", "QZ02_ID_WF02", "QZ02_GUID"});
        for (std::int64_t i = 1; i <= all + 3; ++i) {
            registry.append({i, "Commerciale Rossi & Figli " + std::to_string(i) + " S.r.l."});
            accounts.append({std::int64_t{1}, std::int64_t{0}, i, i});
            const bool destination = i > all;
            contract::Value parent = contract::Value::null();
            if (destination && i > all + 1)
                parent = i - 1;
            else if (!destination && i != 1 && i != moved + 1)
                // Two trees of ten children a node: the one that is moved, and the rest.
                parent = i <= moved ? (i - 2) / fanOut + 1 : (i - moved - 2) / fanOut + moved + 1;
            std::string guid = "00000000-0000-4000-8000-000000000000";
            const auto digits = std::to_string(i);
            guid.replace(guid.size() - digits.size(), digits.size(), digits);
            nodes.append({i, std::int64_t{destination ? 2 : 1}, parent, std::int64_t{1}, std::int64_t{0}, i,
                          day(2020, 1, 1), day(2099, 12, 31), std::int64_t{1}, guid});
        }
    });
}

Database::~Database() {
    std::filesystem::remove(path_);
}

std::shared_ptr<platform::sqlite::Connection> Database::open() const {
    auto connection =
        std::make_shared<platform::sqlite::Connection>(std::string(platform::sqlite::Connection::scheme) + path_);
    connection->Open();
    return connection;
}

} // namespace bench

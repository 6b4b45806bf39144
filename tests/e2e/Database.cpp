#include "e2e/Database.h"

#include "component/data/Schema.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "e2e/Program.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <regex>

namespace e2e {

namespace {

/// The statements of a text; semicolons within quotes are characters.
std::vector<std::string> statementsOf(const std::string& sql) {
    std::vector<std::string> statements(1);
    bool quoted = false;
    for (const char c : sql) {
        if (c == '\'')
            quoted = !quoted;
        if (c == ';' && !quoted)
            statements.emplace_back();
        else
            statements.back() += c;
    }
    std::erase_if(statements, [](const auto& text) { return text.find_first_not_of(" \n") == std::string::npos; });
    return statements;
}

/// The table of an insert that gives numbers which the server counts by itself; empty for any other statement.
std::string tableWithIdentity(const std::string& statement) {
    for (const auto& table : qz::schema().tables) {
        const bool inserts = statement.find("INSERT INTO " + std::string(table.name) + " (") != std::string::npos;
        for (const auto& column : table.columns) {
            const auto names = statement.substr(0, statement.find("VALUES"));
            if (inserts && column.type == contract::ColumnType::identity &&
                names.find(std::string(column.name) + ",") != std::string::npos)
                return std::string(table.name);
        }
    }
    return {};
}

/// The same with its days between quotes as a server reads them whatever its language is: eight digits.
std::string forServer(const std::string& statement) {
    static const std::regex day("'(\\d{4})-(\\d{2})-(\\d{2})'");
    return std::regex_replace(statement, day, "'$1$2$3'");
}

/// A value as SQLite keeps it.
std::string stored(const contract::Value& value) {
    if (value.isNull())
        return "null";
    if (const auto* date = value.as<contract::Date>())
        return date->iso();
    if (const auto* flag = value.as<bool>())
        return *flag ? "1" : "0";
    return value.text();
}

} // namespace

Database::Database(const QString& file) {
    open(file);
}

Database::Database(const Workplace& place) {
    if (!place.onServer()) {
        open(place.database());
        return;
    }
    server_ = std::make_unique<platform::odbc::Connection>(place.server());
    server_->Open();
}

Database::~Database() {
    sqlite3_close(database_);
}

void Database::open(const QString& file) {
    EXPECT_EQ(SQLITE_OK, sqlite3_open_v2(file.toUtf8().constData(), &database_, SQLITE_OPEN_READWRITE, nullptr))
        << file.toStdString();
    sqlite3_busy_timeout(database_, 5000);
}

void Database::run(const std::string& sql) {
    if (server_)
        return runOnServer(sql);
    char* error = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, &error)) << sql << ": " << error;
    sqlite3_free(error);
}

void Database::runOnServer(const std::string& sql) {
    for (const auto& statement : statementsOf(forServer(sql))) {
        try {
            const std::string table = tableWithIdentity(statement);
            if (!table.empty())
                server_->runNative("SET IDENTITY_INSERT " + table + " ON");
            server_->runNative(statement);
            if (!table.empty())
                server_->runNative("SET IDENTITY_INSERT " + table + " OFF");
        } catch (const contract::RuntimeError& error) {
            ADD_FAILURE() << statement << ": " << error.description();
        }
    }
}

std::vector<std::vector<std::string>> Database::rows(const std::string& sql) {
    if (server_)
        return rowsOfServer(sql);
    std::vector<std::vector<std::string>> result;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr))
        << sql << ": " << sqlite3_errmsg(database_);
    while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
        auto& row = result.emplace_back();
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const unsigned char* text = sqlite3_column_text(statement, column);
            row.emplace_back(text == nullptr ? "null" : reinterpret_cast<const char*>(text));
        }
    }
    sqlite3_finalize(statement);
    return result;
}

std::vector<std::vector<std::string>> Database::rowsOfServer(const std::string& sql) {
    std::vector<std::vector<std::string>> result;
    try {
        contract::Snapshot rows;
        server_->readNative(forServer(sql), rows);
        for (std::size_t row = 0; row < rows.rowCount(); ++row) {
            auto& cells = result.emplace_back();
            for (std::size_t column = 0; column < rows.columnCount(); ++column)
                cells.push_back(stored(rows.column(column).value(row)));
        }
    } catch (const contract::RuntimeError& error) {
        ADD_FAILURE() << sql << ": " << error.description();
    }
    return result;
}

std::string Database::value(const std::string& sql) {
    const auto result = rows(sql);
    return result.empty() ? "none" : result.front().front();
}

std::string Database::nodes() {
    std::string all;
    for (const auto& row : rows("SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID")) {
        for (const auto& cell : row)
            all += cell + "|";
        all += "\n";
    }
    return all;
}

std::set<std::string> tablesOfTheProgram() {
    std::set<std::string> names{"STATI_LEGAME", "STATI_STORIA"};
    for (const auto& table : qz::schema().tables)
        names.emplace(table.name);
    return names;
}

void dropServerTables(const std::string& connectionString) {
    platform::odbc::Connection connection(connectionString);
    connection.Open();
    for (const auto& name : tablesOfTheProgram())
        if (platform::odbc::columnsOf(connection, name))
            connection.runNative("DROP TABLE " + name);
}

// Company 1, customers (node number, account, name)
//
//   AG-Agenti (1)                    ZN-Zone (2)                     VU-Vuota (4): no nodes
//     1  100 Rossi S.p.A.              20  200 Nord
//       2  110 Bianchi S.r.l.            21  210 Ovest
//         3  111 Verdi & C.                22  211 Piemonte
//       4  120 Neri S.n.c. (2024)        24  120 Neri S.n.c. (from 2025)
//     5  130 Gialli                    25  220 Sud
//       6  999 (not in the registry)
//     7  no account: never shown
//
// Company 1, suppliers: FO-Fornitori (3): 30  500 Acciai, below it 31  510 Viti
// Company 2, suppliers only: F2-Altri (5): 50  700 Carta
void fillForest(Database& database) {
    database.run(R"(
INSERT INTO QZ01_TIPODISTINTA (QZ01_ID,QZ01_DITTA_CG18,QZ01_CODICE,QZ01_DESCR,QZ01_INDTIPOSOGG,QZ01_IDDIV_CO1A,QZ01_GUID)
VALUES (1,1,'AG','Agenti',0,NULL,'11111111-0000-0000-0000-000000000001'),
       (2,1,'ZN','Zone',0,'DV','11111111-0000-0000-0000-000000000002'),
       (3,1,'FO','Fornitori',1,NULL,'11111111-0000-0000-0000-000000000003'),
       (4,1,'VU','Vuota   ',0,NULL,NULL),
       (5,2,'F2','Altri',1,NULL,NULL);
INSERT INTO CG16_ANAGGEN (CG16_CODICE,CG16_RAGSOANAG,CG16_INDIRIZZO,CG16_CITTA,CG16_PROV,CG16_TEL1NUM,CG16_FAXNUM)
VALUES (1100,'Rossi S.p.A.','Via Roma 1','Torino','TO','011 1','011 2'),(1110,'Bianchi S.r.l.',NULL,NULL,NULL,NULL,NULL),
       (1111,'Verdi & C.',NULL,NULL,NULL,NULL,NULL),(1120,'Neri S.n.c.',NULL,NULL,NULL,NULL,NULL),
       (1130,'Gialli',NULL,NULL,NULL,NULL,NULL),(1200,'Nord',NULL,NULL,NULL,NULL,NULL),
       (1210,'Ovest',NULL,NULL,NULL,NULL,NULL),(1211,'Piemonte',NULL,NULL,NULL,NULL,NULL),
       (1220,'Sud',NULL,NULL,NULL,NULL,NULL),(1500,'Acciai',NULL,NULL,NULL,NULL,NULL),
       (1510,'Viti',NULL,NULL,NULL,NULL,NULL),(1700,'Carta',NULL,NULL,NULL,NULL,NULL);
INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18,CG44_TIPOCF,CG44_CLIFOR,CG44_CODICE_CG16)
VALUES (1,0,100,1100),(1,0,110,1110),(1,0,111,1111),(1,0,120,1120),(1,0,130,1130),(1,0,200,1200),(1,0,210,1210),
       (1,0,211,1211),(1,0,220,1220),(1,1,500,1500),(1,1,510,1510),(2,1,700,1700);
INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,
                           QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_GUID)
VALUES (1,1,NULL,1,0,100,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000001'),
       (2,1,1,1,0,110,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000002'),
       (3,1,2,1,0,111,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000003'),
       (4,1,1,1,0,120,'2024-01-01','2024-12-31','22222222-0000-0000-0000-000000000004'),
       (5,1,NULL,1,0,130,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000005'),
       (6,1,5,1,0,999,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000006'),
       (7,1,NULL,1,0,NULL,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000007'),
       (20,2,NULL,1,0,200,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000020'),
       (21,2,20,1,0,210,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000021'),
       (22,2,21,1,0,211,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000022'),
       (24,2,20,1,0,120,'2025-01-01','2099-12-31','22222222-0000-0000-0000-000000000024'),
       (25,2,NULL,1,0,220,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000025'),
       (30,3,NULL,1,1,500,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000030'),
       (31,3,30,1,1,510,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000031'),
       (50,5,NULL,2,1,700,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000050');
INSERT INTO WF02_STATI (WF02_ID,WF02_DESCR) VALUES (10,'Bozza'),(20,'Approvato'),(30,'Chiuso');
)");
}

} // namespace e2e

#pragma once

#include "odbc/OdbcFixture.h"
#include "odbc/driver/Script.h"

#include <algorithm>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace odbc_test {

/// A connection over the driver that a test answers for.
class ScriptedServer : public testing::Test {
protected:
    void SetUp() override {
        library_ = ::dlopen(SCRIPTED_DRIVER, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(nullptr, library_) << ::dlerror();
        const auto give = reinterpret_cast<scripted::ScriptFunction>(::dlsym(library_, scripted::scriptFunction));
        ASSERT_NE(nullptr, give);
        script_ = give();
        *script_ = scripted::Script();
        connection.SetConnectionString(string());
        connection.Open();
        script().calls.clear();
    }
    void TearDown() override {
        connection.Close();
        if (script_ != nullptr)
            *script_ = scripted::Script();
        if (library_ != nullptr)
            ::dlclose(library_);
    }

    static std::string string(const std::string& more = {}) {
        return std::string("Driver=") + SCRIPTED_DRIVER + ";Server=erp;Database=Conti;UID=sa;PWD=segreto" + more;
    }
    scripted::Script& script() { return *script_; }

    /// From now on every statement fails with these records, but for the count of transactions, which is the number.
    void failWith(std::vector<scripted::Diagnostic> records, int transactions = 1) {
        script().answer = [records = std::move(records), transactions](const std::string& text) {
            if (text.find("@@TRANCOUNT") != std::string::npos)
                return oneRow({{"", SQL_INTEGER, 10, 0}}, {transactions == 0 ? u"0" : u"1"});
            scripted::Answer answer;
            answer.failure = records;
            return answer;
        };
    }
    void succeed() { script().answer = nullptr; }

    static scripted::Answer oneRow(std::vector<scripted::ResultColumn> columns, std::vector<scripted::Cell> cells) {
        scripted::Answer answer;
        answer.columns = std::move(columns);
        answer.rows.push_back(std::move(cells));
        return answer;
    }

    std::int64_t run() { return connection.Execute("UPDATE PROVA SET CODICE = 1"_sql); }
    std::size_t callsOf(const std::string& call) {
        return static_cast<std::size_t>(std::count(script().calls.begin(), script().calls.end(), call));
    }

    Connection connection;

private:
    void* library_ = nullptr;
    scripted::Script* script_ = nullptr;
};

} // namespace odbc_test

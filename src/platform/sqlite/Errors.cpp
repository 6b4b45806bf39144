#include "platform/sqlite/Errors.h"

#include "contract/RuntimeError.h"
#include "platform/shared/Outcome.h"
#include "platform/sqlite/BusyWait.h"
#include "platform/sqlite/FilePlace.h"

#include <sqlite3.h>

namespace platform::sqlite {

namespace {

using contract::ErrorCategory;

ErrorCategory categoryOf(int code, std::string_view message) {
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorCategory::locked;
    case SQLITE_CONSTRAINT:
        return code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY ||
                       code == SQLITE_CONSTRAINT_ROWID
                   ? ErrorCategory::duplicate
                   : ErrorCategory::other;
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return ErrorCategory::permission;
    case SQLITE_READONLY:
        return ErrorCategory::readOnly;
    case SQLITE_FULL:
        return ErrorCategory::full;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_CANTOPEN:
        return ErrorCategory::notADatabase;
    case SQLITE_ERROR:
        return message.substr(0, 14) == "no such table:" ? ErrorCategory::missingTable : ErrorCategory::syntax;
    default:
        return ErrorCategory::other;
    }
}

// The SQLSTATE of the category, so that a reader of the records needs to know no engine.
std::string_view stateOf(ErrorCategory category, int code) {
    switch (category) {
    case ErrorCategory::locked:
        return "HYT00";
    case ErrorCategory::duplicate:
        return "23000";
    case ErrorCategory::permission:
    case ErrorCategory::syntax:
        return "42000";
    case ErrorCategory::readOnly:
        return "25006";
    case ErrorCategory::full:
        return "53100";
    case ErrorCategory::missingTable:
        return "42S02";
    case ErrorCategory::notADatabase:
        return "08001";
    default:
        return (code & 0xff) == SQLITE_CONSTRAINT ? "23000" : "HY000";
    }
}

std::string_view explanationOf(const contract::DatabaseErrorRecord& record) {
    switch (record.nativeError & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "il database è occupato da un altro programma e l'attesa è finita";
    case SQLITE_CONSTRAINT:
        return record.category == ErrorCategory::duplicate ? "esiste già una riga con la stessa chiave"
                                                           : "un vincolo della tabella non è rispettato";
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return "l'operazione non è permessa";
    case SQLITE_READONLY:
        return "il file è di sola lettura";
    case SQLITE_FULL:
        return "non c'è più spazio sul disco o nel database";
    case SQLITE_NOTADB:
        return "il file non è un database";
    case SQLITE_CORRUPT:
        return "il file del database è danneggiato";
    case SQLITE_CANTOPEN:
        return "il file non si può aprire";
    case SQLITE_IOERR:
        return "errore di lettura o scrittura del file";
    case SQLITE_NOMEM:
        return "memoria esaurita";
    case SQLITE_INTERRUPT:
        return "operazione interrotta";
    case SQLITE_TOOBIG:
        return "un valore o l'istruzione è troppo grande";
    case SQLITE_SCHEMA:
        return "la struttura delle tabelle è cambiata";
    case SQLITE_MISMATCH:
        return "un valore non è del tipo della sua colonna";
    case SQLITE_ERROR:
        return record.category == ErrorCategory::missingTable ? "una tabella non esiste"
                                                              : "l'istruzione non è stata accettata";
    default:
        return "errore del database";
    }
}

} // namespace

contract::DatabaseErrorRecord recordOf(int code, std::string_view message) {
    contract::DatabaseErrorRecord record;
    record.category = categoryOf(code, message);
    record.sqlState = stateOf(record.category, code);
    record.nativeError = code;
    record.description = message;
    return record;
}

std::string describe(std::string_view operation, std::string_view file, const contract::DatabaseErrorRecord& record) {
    std::string text = shared::notDone(operation, file);
    text += explanationOf(record);
    text += " (SQLite ";
    text += std::to_string(record.nativeError);
    text += ": ";
    text += record.description;
    return text + ").";
}

void fail(contract::ErrorList& errors, sqlite3* database, int code, std::string_view operation, std::string_view file) {
    // The database's own message and code tell more than the code that was returned, as long as they are of this error.
    int number = code;
    std::string message = sqlite3_errstr(code);
    if (database && (sqlite3_errcode(database) & 0xff) == (code & 0xff)) {
        number = sqlite3_extended_errcode(database);
        message = sqlite3_errmsg(database);
    }
    errors.assign(1, recordOf(number, message));
    const int primary = number & 0xff;
    if (primary == SQLITE_READONLY || primary == SQLITE_CANTOPEN || primary == SQLITE_IOERR) {
        auto why = displacement(database, file);
        if (!why && primary != SQLITE_IOERR)
            why = closedFolder(file);
        if (why)
            throw contract::RuntimeError(contract::RuntimeError::database, shared::notDone(operation, file) + *why +
                                                                               " (SQLite " + std::to_string(number) +
                                                                               ": " + message + ").");
    }
    std::string text = describe(operation, file, errors.front());
    if (errors.front().category == ErrorCategory::locked)
        if (const std::string holder = lockHolder(std::string(file)); !holder.empty())
            text += " Lo occupa " + holder + ".";
    throw contract::RuntimeError(contract::RuntimeError::database, std::move(text));
}

void fail(contract::ErrorList& errors, ErrorCategory category, std::string_view description, std::string_view operation,
          std::string_view file) {
    contract::DatabaseErrorRecord record;
    record.category = category;
    record.sqlState = stateOf(category, 0);
    record.description = description;
    errors.clear();
    errors.push_back(std::move(record));
    std::string text = shared::notDone(operation, file);
    text += description;
    throw contract::RuntimeError(contract::RuntimeError::database, text + ".");
}

} // namespace platform::sqlite

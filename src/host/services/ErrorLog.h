#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"

#include <QString>

#include <string_view>

namespace host {

/// The host's error log: a text file, one JSON object a line with the members time, application, caption, procedure,
/// number, description, records (of the database: state, number, description, category) and answer.
class ErrorLog {
public:
    /// Empty: nothing is recorded.
    void setFile(const QString& path) { path_ = path; }
    const QString& file() const { return path_; }

    struct Entry {
        std::string_view application;
        std::string_view caption;
        std::string_view procedure;
        const contract::RuntimeError& error;
        const contract::ErrorList& records;
        int answer;
    };

    /// Appends an entry; false when the file can not be written. Whoever shows an error has shown it by then, so a log
    /// that fails stops nothing.
    bool record(const Entry& entry) const;
    /// Whether an entry could be written, as far as names and rights tell; nothing is made. True without a file.
    bool writable() const;
    /// What to tell the user of a log that can not be written.
    QString complaint() const;

private:
    QString path_;
};

/// "deadlock", "locked", ...
QString categoryName(contract::ErrorCategory category);

} // namespace host

#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace host {

/// What stays true for as long as the session lasts and its user must know: a database that can not be written, a
/// connection that others may read, a log that is not kept.
struct Notice {
    QString brief;    ///< a few words for the status line
    QString sentence; ///< what it means and what to do
    bool atEnd;       ///< told once more on standard error when the program ends: something asked for was not done
};

class Notices {
public:
    /// Adds a notice; one with the same few words is not said twice.
    void add(const Notice& notice);
    void remove(const QString& brief);
    const std::vector<Notice>& all() const { return all_; }

    /// Called after every change.
    std::function<void()> changed;

private:
    std::vector<Notice> all_;
};

/// The same few words wherever a notice is made.
namespace notice {
inline const QString readOnly = QStringLiteral("Sola lettura");
inline const QString plain = QStringLiteral("Collegamento non cifrato");
inline const QString traceCut = QStringLiteral("Traccia incompleta");
inline const QString logCut = QStringLiteral("Errori non registrati");
} // namespace notice

} // namespace host

#pragma once

#include "platform/qt/forms/Session.h"

#include <QByteArray>
#include <QMainWindow>
#include <QSettings>
#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What the program remembers for a user: window, theme, zoom, the splitters and columns of forms, and the connection.
class UserSettings {
public:
    UserSettings();

    void restoreAppearance();
    void saveAppearance();
    /// False when nothing was remembered.
    bool restoreWindow(QMainWindow& window);
    void saveWindow(const QMainWindow& window);
    /// The shares of a form's splitters, and the widths that the user gave to the columns of its trees.
    void restoreForm(platform::qt::FormWindow& form);
    void saveForm(platform::qt::FormWindow& form);
    /// Forgets the window's size and what is remembered of every form.
    void forgetSizes();

    /// Connection string of the database to open when the command line names none; no password stands in it.
    std::optional<std::string> savedConnection() const;
    /// Puts a database that was opened in front of the recent ones; no secret is kept.
    void noteOpened(std::string_view connectionString);
    /// The databases that were opened last, the last one first.
    std::vector<std::string> recentDatabases() const;
    /// Saves a connection string without its passwords.
    void saveConnection(std::string_view connectionString);

private:
    QSettings settings_;
};

/// Puts a form's splitters and the columns of its trees back where the form itself puts them.
void resetForm(platform::qt::FormWindow& form);

} // namespace host

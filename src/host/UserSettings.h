#pragma once

#include "platform/qt/Session.h"

#include <QByteArray>
#include <QMainWindow>
#include <QSettings>
#include <QString>

#include <optional>
#include <string>

namespace host {

/// What the program remembers for a user: window, theme, zoom, the splitters of forms, and the connection.
class UserSettings {
public:
    UserSettings();

    void restoreAppearance();
    void saveAppearance();
    /// False when nothing was remembered.
    bool restoreWindow(QMainWindow& window);
    void saveWindow(const QMainWindow& window);
    void restoreSplitters(platform::qt::FormWindow& form);
    void saveSplitters(platform::qt::FormWindow& form);

    /// Path of the embedded database to open when the command line names none.
    std::optional<std::string> savedDatabase() const;
    void saveDatabase(const QString& path);

private:
    QSettings settings_;
};

} // namespace host

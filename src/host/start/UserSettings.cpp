#include "host/start/UserSettings.h"

#include "contract/Controls.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"
#include "host/start/UserFolders.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/tree/TreeListControl.h"

namespace host {

using platform::qt::Appearance;
using platform::qt::ThemeKind;

namespace {

const QString themeKey = QStringLiteral("aspetto/tema");
const QString zoomKey = QStringLiteral("aspetto/zoom");
const QString geometryKey = QStringLiteral("finestra/geometria");
const QString splitterGroup = QStringLiteral("divisori/");
const QString columnGroup = QStringLiteral("colonne/");
const QString databaseKey = QStringLiteral("connessione/database");
const QString recentKey = QStringLiteral("connessione/recenti");
constexpr int mostRecent = 9; ///< each has a digit for its key
const QString odbcKey = QStringLiteral("connessione/odbc");

// Of a column that a person could have made, in pixels at 8 points.
constexpr double narrowest = 8;
constexpr double widest = 4000;

/// Calls the action with every splitter of a form.
template <class Action> void forEachSplitter(platform::qt::FormWindow& form, Action action) {
    const QStringList names = form.controlNames();
    for (const QString& name : names)
        if (auto* splitter = dynamic_cast<contract::Splitter*>(form.control(name)))
            action(splitterGroup + form.formName() + QLatin1Char('/') + name, *splitter);
}

/// The same with every tree.
template <class Action> void forEachTree(platform::qt::FormWindow& form, Action action) {
    const QStringList names = form.controlNames();
    for (const QString& name : names)
        if (auto* tree = dynamic_cast<platform::qt::TreeListControl*>(form.control(name)))
            action(columnGroup + form.formName() + QLatin1Char('/') + name + QLatin1Char('/'), *tree);
}

} // namespace

void resetForm(platform::qt::FormWindow& form) {
    forEachSplitter(form, [](const QString&, contract::Splitter& splitter) {
        splitter.setShare(splitter.settings().start);
        contract::fire(splitter.Move);
    });
    forEachTree(form, [](const QString&, platform::qt::TreeListControl& tree) { tree.setColumnWidths({}); });
}

UserSettings::UserSettings() : settings_(QString::fromStdString(settingsFile().string()), QSettings::IniFormat) {
}

void UserSettings::restoreAppearance() {
    auto& appearance = Appearance::instance();
    if (settings_.value(themeKey).toString() == QLatin1String("scuro"))
        appearance.setTheme(ThemeKind::dark);
    if (settings_.contains(zoomKey))
        appearance.setZoom(settings_.value(zoomKey).toInt());
}

void UserSettings::saveAppearance() {
    const auto& appearance = Appearance::instance();
    settings_.setValue(themeKey,
                       appearance.theme() == ThemeKind::dark ? QStringLiteral("scuro") : QStringLiteral("chiaro"));
    settings_.setValue(zoomKey, appearance.zoom());
}

bool UserSettings::restoreWindow(QMainWindow& window) {
    return window.restoreGeometry(settings_.value(geometryKey).toByteArray());
}

void UserSettings::saveWindow(const QMainWindow& window) {
    settings_.setValue(geometryKey, window.saveGeometry());
}

void UserSettings::restoreForm(platform::qt::FormWindow& form) {
    forEachSplitter(form, [this](const QString& key, contract::Splitter& splitter) {
        bool number = false;
        const double share = settings_.value(key).toDouble(&number);
        if (!number || share < 0 || share > 100)
            return;
        splitter.setShare(share);
        contract::fire(splitter.Move);
    });
    forEachTree(form, [this](const QString& key, platform::qt::TreeListControl& tree) {
        std::map<QString, double> widths;
        for (const auto& column : tree.columns()) {
            const auto name = toQt(column.name);
            const double width = settings_.value(key + name).toDouble();
            if (width >= narrowest && width <= widest)
                widths[name] = width;
        }
        tree.setColumnWidths(widths);
    });
}

void UserSettings::saveForm(platform::qt::FormWindow& form) {
    forEachSplitter(form, [this](const QString& key, const contract::Splitter& splitter) {
        settings_.setValue(key, splitter.share());
    });
    forEachTree(form, [this](const QString& key, const platform::qt::TreeListControl& tree) {
        settings_.remove(key.chopped(1));
        for (const auto& [column, width] : tree.columnWidths())
            settings_.setValue(key + column, width);
    });
}

void UserSettings::forgetSizes() {
    for (const auto& key : {geometryKey, splitterGroup.chopped(1), columnGroup.chopped(1)})
        settings_.remove(key);
}

std::optional<std::string> UserSettings::savedConnection() const {
    const QString odbc = settings_.value(odbcKey).toString();
    if (!odbc.isEmpty())
        return odbc.toStdString();
    const QString path = settings_.value(databaseKey).toString();
    return path.isEmpty() ? std::nullopt : std::optional(embeddedDatabase(path.toStdString()));
}

void UserSettings::noteOpened(std::string_view connectionString) {
    const QString opened = isEmbedded(connectionString)
                               ? toQt(embeddedDatabase(placeOf(connectionString).toStdString()))
                               : toQt(withoutSecrets(connectionString));
    QStringList all = settings_.value(recentKey).toStringList();
    all.removeAll(opened);
    all.prepend(opened);
    settings_.setValue(recentKey, all.mid(0, mostRecent));
}

std::vector<std::string> UserSettings::recentDatabases() const {
    std::vector<std::string> found;
    for (const QString& each : settings_.value(recentKey).toStringList())
        found.push_back(each.toStdString());
    return found;
}

void UserSettings::saveConnection(std::string_view connectionString) {
    settings_.remove(odbcKey);
    settings_.remove(databaseKey);
    if (isEmbedded(connectionString)) {
        settings_.setValue(databaseKey, toQt(embeddedPath(connectionString)));
        return;
    }
    settings_.setValue(odbcKey, toQt(withoutSecrets(connectionString)));
}

} // namespace host

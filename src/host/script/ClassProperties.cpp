#include "host/script/ClassProperties.h"

#include "contract/Host.h"
#include "contract/MoveSettings.h"
#include "host/services/Text.h"

#include <cstdint>
#include <limits>
#include <map>

namespace host {

namespace {

using contract::Cinterface;
using contract::MoveSettings;

/// How a property is read, and written; a writer answers false for a value of the wrong kind.
struct Property {
    QJsonValue (*read)(const Cinterface&) = nullptr;
    bool (*write)(Cinterface&, const QJsonValue&) = nullptr;
    const char* wanted = ""; ///< for refusals
    /// Whether a class has it; every class where there is none.
    bool (*there)(const Cinterface&) = nullptr;
};

template <class T> bool inRange(std::int64_t value) {
    return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

template <bool (Cinterface::*Get)() const, void (Cinterface::*Set)(bool)> constexpr Property flag() {
    return {[](const Cinterface& plugin) { return QJsonValue((plugin.*Get)()); },
            [](Cinterface& plugin, const QJsonValue& value) {
                if (!value.isBool())
                    return false;
                (plugin.*Set)(value.toBool());
                return true;
            },
            "true o false"};
}

template <class Got, class T, Got (Cinterface::*Get)() const, void (Cinterface::*Set)(T)> constexpr Property number() {
    return {[](const Cinterface& plugin) { return toJson(contract::Value((plugin.*Get)())); },
            [](Cinterface& plugin, const QJsonValue& value) {
                const auto whole = wholeNumber(value);
                if (!whole || !inRange<T>(*whole))
                    return false;
                (plugin.*Set)(static_cast<T>(*whole));
                return true;
            },
            "un numero intero"};
}

template <contract::Value (Cinterface::*Get)() const, void (Cinterface::*Set)(const contract::Value&)>
constexpr Property variant() {
    return {[](const Cinterface& plugin) { return toJson((plugin.*Get)()); },
            [](Cinterface& plugin, const QJsonValue& value) {
                const auto converted = fromJson(value);
                if (converted)
                    (plugin.*Set)(*converted);
                return converted.has_value();
            },
            "un testo, un numero, un booleano o null"};
}

QJsonValue objectJson(bool there) {
    return there ? QJsonValue(QStringLiteral("object")) : QJsonValue(QJsonValue::Null);
}

template <class T, std::shared_ptr<T> (Cinterface::*Get)() const, void (Cinterface::*Set)(std::shared_ptr<T>)>
constexpr Property object() {
    return {[](const Cinterface& plugin) { return objectJson((plugin.*Get)() != nullptr); },
            [](Cinterface& plugin, const QJsonValue& value) {
                if (!value.isNull())
                    return false;
                (plugin.*Set)(nullptr);
                return true;
            },
            "null"};
}

/// Of the settings of moves, which not every class has.
Property nodesForBlocks() {
    return {[](const Cinterface& plugin) {
                return toJson(contract::Value(dynamic_cast<const MoveSettings&>(plugin).NodiPerBlocchi()));
            },
            [](Cinterface& plugin, const QJsonValue& value) {
                const auto whole = wholeNumber(value);
                if (!whole || !inRange<std::int32_t>(*whole))
                    return false;
                dynamic_cast<MoveSettings&>(plugin).NodiPerBlocchi(static_cast<std::int32_t>(*whole));
                return true;
            },
            "un numero intero",
            [](const Cinterface& plugin) { return dynamic_cast<const MoveSettings*>(&plugin) != nullptr; }};
}

const std::map<QString, Property>& properties() {
    using C = Cinterface;
    static const std::map<QString, Property> all{
        {QStringLiteral("ActiveDll"),
         {[](const C& plugin) { return objectJson(plugin.ActiveDll() != nullptr); },
          [](C& plugin, const QJsonValue& value) {
              if (!value.isNull())
                  return false;
              plugin.ActiveDll(nullptr);
              return true;
          },
          "null"}},
        {QStringLiteral("ActiveFrame"), object<contract::ActiveFrame, &C::ActiveFrame, &C::ActiveFrame>()},
        {QStringLiteral("ActiveNavigator"), object<contract::Navigator, &C::ActiveNavigator, &C::ActiveNavigator>()},
        {QStringLiteral("CanDelete"), flag<&C::CanDelete, &C::CanDelete>()},
        {QStringLiteral("CanInsert"), flag<&C::CanInsert, &C::CanInsert>()},
        {QStringLiteral("CanQbe"), flag<&C::CanQbe, &C::CanQbe>()},
        {QStringLiteral("CanUpdate"), flag<&C::CanUpdate, &C::CanUpdate>()},
        {QStringLiteral("Caption"), variant<&C::Caption, &C::Caption>()},
        {QStringLiteral("ClsGlobal"), object<contract::ClsGlobal, &C::ClsGlobal, &C::ClsGlobal>()},
        {QStringLiteral("Connection"), object<contract::Connection, &C::Connection, &C::Connection>()},
        {QStringLiteral("Cwindow"), {[](const C& plugin) { return objectJson(plugin.Cwindow() != nullptr); }}},
        {QStringLiteral("Filtro"), variant<&C::Filtro, &C::Filtro>()},
        {QStringLiteral("hwndParent"), number<std::int32_t, std::int32_t, &C::hwndParent, &C::hwndParent>()},
        {QStringLiteral("IsCalled"), flag<&C::IsCalled, &C::IsCalled>()},
        {QStringLiteral("MenuModulo"), variant<&C::MenuModulo, &C::MenuModulo>()},
        {QStringLiteral("MenuPadre"), variant<&C::MenuPadre, &C::MenuPadre>()},
        {QStringLiteral("MenuProg"), variant<&C::MenuProg, &C::MenuProg>()},
        {QStringLiteral("NodiPerBlocchi"), nodesForBlocks()},
        {QStringLiteral("ProgramMode"), number<std::int16_t, std::int32_t, &C::ProgramMode, &C::ProgramMode>()},
        {QStringLiteral("StatusBar"), object<contract::StatusBar, &C::StatusBar, &C::StatusBar>()},
        {QStringLiteral("WindowModal"), flag<&C::WindowModal, &C::WindowModal>()},
        {QStringLiteral("WindowState"), number<std::int16_t, std::int16_t, &C::WindowState, &C::WindowState>()},
        {QStringLiteral("Top"), number<contract::Value, std::int32_t, &C::Top, &C::Top>()},
        {QStringLiteral("Left"), number<contract::Value, std::int32_t, &C::Left, &C::Left>()},
        {QStringLiteral("IsActive"), flag<&C::IsActive, &C::IsActive>()},
        {QStringLiteral("ClsVoceMenu"), object<contract::HostObject, &C::ClsVoceMenu, &C::ClsVoceMenu>()},
    };
    return all;
}

QString unknown(const QString& name) {
    return QStringLiteral("la classe non ha la proprietà \"%1\"").arg(name);
}

} // namespace

QString readProperty(const contract::Cinterface& plugin, const QString& name, QJsonValue& value) {
    const auto at = properties().find(name);
    if (at == properties().end() || (at->second.there != nullptr && !at->second.there(plugin)))
        return unknown(name);
    value = at->second.read(plugin);
    return {};
}

QString writeProperty(contract::Cinterface& plugin, const QString& name, const QJsonValue& value) {
    const auto at = properties().find(name);
    if (at == properties().end() || (at->second.there != nullptr && !at->second.there(plugin)))
        return unknown(name);
    if (at->second.write == nullptr)
        return QStringLiteral("la proprietà \"%1\" si legge soltanto").arg(name);
    // No window shows more, and some of them do not survive many times that.
    constexpr qsizetype longestCaption = 1000;
    if (name == QLatin1String("Caption") && value.toString().size() > longestCaption)
        return QStringLiteral("la proprietà \"%1\" vuole un testo di non più di %2 caratteri")
            .arg(name)
            .arg(longestCaption);
    if (!at->second.write(plugin, value))
        return QStringLiteral("la proprietà \"%1\" vuole %2").arg(name, QString::fromUtf8(at->second.wanted));
    return {};
}

} // namespace host

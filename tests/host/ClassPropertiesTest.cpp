#include "host/script/ClassProperties.h"

#include "TestSchema.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

using host::readProperty;
using host::writeProperty;

class ClassProperties : public testing::Test {
protected:
    std::unique_ptr<contract::PluginClass> object = host_test::component().newClass(contract::copiaDistintaClassId);
    contract::Cinterface& plugin = object->plugin();

    QJsonValue read(const char* name) const {
        QJsonValue value;
        EXPECT_EQ("", readProperty(plugin, QString::fromUtf8(name), value));
        return value;
    }
};

TEST_F(ClassProperties, StartAtZeroFalseAndEmpty) {
    for (const char* name : {"CanDelete", "CanInsert", "CanQbe", "CanUpdate", "IsCalled", "IsActive", "WindowModal"})
        EXPECT_EQ(QJsonValue(false), read(name)) << name;
    for (const char* name : {"hwndParent", "ProgramMode", "WindowState", "Top", "Left"})
        EXPECT_EQ(QJsonValue(0), read(name)) << name;
    for (const char* name : {"Caption", "MenuModulo", "MenuPadre", "MenuProg", "Filtro", "ClsGlobal", "Connection",
                             "StatusBar", "ActiveFrame", "ActiveNavigator", "ClsVoceMenu", "Cwindow"})
        EXPECT_TRUE(read(name).isNull()) << name;
    EXPECT_EQ(QJsonValue("object"), read("ActiveDll"));
}

TEST_F(ClassProperties, AreWrittenAndReadBack) {
    const std::pair<const char*, QJsonValue> values[] = {
        {"CanDelete", true}, {"IsActive", true},  {"hwndParent", -5}, {"WindowState", 2}, {"Top", 1500},
        {"Left", -20},       {"Caption", "Ciao"}, {"MenuModulo", 12}, {"MenuPadre", 1.5}, {"MenuProg", true},
    };
    for (const auto& [name, value] : values) {
        EXPECT_EQ("", writeProperty(plugin, name, value)) << name;
        EXPECT_EQ(value, read(name)) << name;
    }
}

TEST_F(ClassProperties, TheFilterDiscardsItsValue) {
    EXPECT_EQ("", writeProperty(plugin, "Filtro", "x"));
    EXPECT_TRUE(read("Filtro").isNull());
}

TEST_F(ClassProperties, TheProgramModeIsNarrowed) {
    EXPECT_EQ("", writeProperty(plugin, "ProgramMode", 65537));
    EXPECT_EQ(QJsonValue(1), read("ProgramMode"));
}

TEST_F(ClassProperties, TheNodesForBlocksAreAWholeNumberOf32Bits) {
    EXPECT_EQ(QJsonValue(100), read("NodiPerBlocchi"));
    for (const int value : {0, -1, 2147483647}) {
        EXPECT_EQ("", writeProperty(plugin, "NodiPerBlocchi", value));
        EXPECT_EQ(QJsonValue(value), read("NodiPerBlocchi"));
    }
    EXPECT_EQ("la proprietà \"NodiPerBlocchi\" vuole un numero intero",
              writeProperty(plugin, "NodiPerBlocchi", 2147483648.0));
    EXPECT_NE("", writeProperty(plugin, "NodiPerBlocchi", "tutti"));
    EXPECT_EQ(QJsonValue(2147483647), read("NodiPerBlocchi"));
}

TEST_F(ClassProperties, RefuseWhatTheyCanNotHold) {
    EXPECT_NE("", writeProperty(plugin, "Top", "alto"));
    EXPECT_NE("", writeProperty(plugin, "Top", 1.5));
    EXPECT_NE("", writeProperty(plugin, "Top", 3e12));
    EXPECT_NE("", writeProperty(plugin, "WindowState", 40000));
    EXPECT_NE("", writeProperty(plugin, "IsActive", 1));
    EXPECT_NE("", writeProperty(plugin, "Caption", QJsonArray{1}));
    EXPECT_EQ("", writeProperty(plugin, "Caption", QString(1000, QLatin1Char('x'))));
    EXPECT_EQ("la proprietà \"Caption\" vuole un testo di non più di 1000 caratteri",
              writeProperty(plugin, "Caption", QString(30'000'000, QLatin1Char('y'))));
    EXPECT_EQ(QJsonValue(QString(1000, QLatin1Char('x'))), read("Caption"));
    EXPECT_NE("", writeProperty(plugin, "ClsGlobal", "x"));
    EXPECT_NE("", writeProperty(plugin, "Cwindow", QJsonValue::Null));
    EXPECT_NE("", writeProperty(plugin, "top", 1));
    QJsonValue value;
    EXPECT_NE("", readProperty(plugin, "Altro", value));
}

} // namespace

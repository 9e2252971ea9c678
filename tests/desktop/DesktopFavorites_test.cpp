// Favourite lists of the desktop host: what one list saves, another loads;
// damaged values read as a shorter list; paths compare as the dialogs do.
#include "desktop/DesktopRegistry.h"
#include "desktop/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using fw::FavoriteItem;
using fw::HiveCurrentUser;
using fw::desktop::DesktopRegistry;
using fw::desktop::SettingsStore;

namespace {

constexpr auto kUserKey = "Software\\Valdrenix\\Core\\Settings\\FolderFavorites";
constexpr auto kAppKey = "Software\\Valdrenix\\Demo\\Ext\\FolderFavorites";

std::vector<std::string> pathsOf(fw::FavoriteList& list)
{
    std::vector<std::string> paths;
    for (int n = 1; n <= list.Count(); ++n)
        paths.push_back(list.Item(n).Path);
    return paths;
}

TEST(DesktopFavorites, WhatOneListSavesASecondListLoadsInOrder)
{
    QTemporaryDir dir;
    DesktopRegistry registry(std::make_shared<SettingsStore>(dir.path()));
    auto user = registry.NewFavoriteList();
    ASSERT_TRUE(user);
    const FavoriteItem odd{"Bericht \"2024\"\nneu", "Zeile|mit;Zeichen", "Ico\\16\\x.ico",
                           "C:\\tmp\\caf\xef\x9f\xa9\\"};
    user->Add(odd);
    user->AddNew("Zwei", "C:\\home\\anna\\");
    user->Add({"Drei", "", "", "D:\\"});
    ASSERT_TRUE(user->Save(HiveCurrentUser, kUserKey));
    auto app = registry.NewFavoriteList();
    app->AddNew("App", "C:\\opt\\");
    ASSERT_TRUE(app->Save(HiveCurrentUser, kAppKey));

    auto again = registry.NewFavoriteList();
    ASSERT_TRUE(again->Load(HiveCurrentUser, kUserKey));
    ASSERT_EQ(pathsOf(*again), (std::vector<std::string>{odd.Path, "C:\\home\\anna\\", "D:\\"}));
    const FavoriteItem& first = again->Item(1);
    EXPECT_EQ(std::tie(first.Name, first.Description, first.Icon),
              std::tie(odd.Name, odd.Description, odd.Icon));

    // A shorter list leaves no entry of the longer one behind.
    again->RemoveAt(1);
    again->RemoveAt(7);
    ASSERT_TRUE(again->Save(HiveCurrentUser, kUserKey));
    user->Load(HiveCurrentUser, kUserKey);
    EXPECT_EQ(pathsOf(*user), (std::vector<std::string>{"C:\\home\\anna\\", "D:\\"}));
    app->Load(HiveCurrentUser, kAppKey);
    EXPECT_EQ(pathsOf(*app), (std::vector<std::string>{"C:\\opt\\"}));
    EXPECT_TRUE(again->Item(9).Path.empty()) << "out of range reads blank, not a crash";
    EXPECT_FALSE(again->Save(fw::HiveClassesRoot, kUserKey));
}

TEST(DesktopFavorites, DamagedValuesReadAsAnEmptyOrShortenedList)
{
    QTemporaryDir dir;
    auto store = std::make_shared<SettingsStore>(dir.path());
    DesktopRegistry registry(store);
    struct Row {
        const char* name;
        QJsonObject values;
        std::vector<std::string> paths;
    };
    const Row rows[] = {
        {"absent key", {}, {}},
        {"count not a number", {{"Count", "viele"}, {"Path1", "C:\\a\\"}}, {}},
        {"negative count", {{"Count", -3}, {"Path1", "C:\\a\\"}}, {}},
        {"count as text", {{"Count", "1"}, {"Path1", "C:\\a\\"}}, {"C:\\a\\"}},
        {"count beyond the entries", {{"Count", 5}, {"Path1", "C:\\a\\"}}, {"C:\\a\\"}},
        {"gap cuts the list",
         {{"Count", 3}, {"Path1", "C:\\a\\"}, {"Path3", "C:\\c\\"}},
         {"C:\\a\\"}},
        {"path not a text", {{"Count", 2}, {"Path1", 17}, {"Path2", "C:\\b\\"}}, {}},
        {"huge count", {{"Count", 2147483647}, {"Path1", "C:\\a\\"}}, {"C:\\a\\"}},
        {"fields of other types",
         {{"Count", 1}, {"Name1", QJsonArray{1}}, {"Icon1", true}, {"Path1", "C:\\a\\"}},
         {"C:\\a\\"}},
    };
    auto list = registry.NewFavoriteList();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(store->ReplaceKey("HKEY_CURRENT_USER", kUserKey, row.values));
        list->AddNew("stale", "C:\\stale\\");
        EXPECT_TRUE(list->Load(HiveCurrentUser, kUserKey));
        EXPECT_EQ(pathsOf(*list), row.paths);
    }
    EXPECT_EQ(list->Item(1).Name, "") << "a field that is no text reads as empty";

    // A store that is no JSON at all reads as no favourites and is kept aside.
    QFile file(store->FilePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("{\"HKEY_CURRENT_USER\": {\"Software\\\\Valdrenix\\\\Core\\\\Settings\\\\Fol");
    file.close();
    EXPECT_TRUE(list->Load(HiveCurrentUser, kUserKey));
    EXPECT_EQ(list->Count(), 0);
    EXPECT_EQ(QDir(dir.path()).entryList({"registry.json.broken-*"}, QDir::Files).size(), 1);
    list->AddNew("Neu", "C:\\neu\\");
    EXPECT_TRUE(list->Save(HiveCurrentUser, kUserKey));
}

TEST(DesktopFavorites, PathsCompareWithoutCaseAndTrailingBackslash)
{
    QTemporaryDir dir;
    DesktopRegistry registry(std::make_shared<SettingsStore>(dir.path()));
    auto list = registry.NewFavoriteList();
    list->AddNew("Anna", "C:\\home\\Anna\\");
    list->AddNew("Größe", "C:\\Größe");
    list->AddNew("Bob", "C:\\home\\bob\\");
    struct Row {
        const char* path;
        bool held;
    };
    const Row rows[] = {
        {"C:\\home\\Anna\\", true},   {"c:\\HOME\\anna", true}, {"C:\\GRÖSSE\\", false},
        {"c:\\größe\\", true},        {"C:\\home\\", false},    {"", false},
        {"C:\\home\\Anna\\x", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(list->Contains(row.path), row.held) << row.path;
    EXPECT_TRUE(list->RemoveKey("C:\\HOME\\ANNA"));
    EXPECT_FALSE(list->RemoveKey("C:\\HOME\\ANNA"));
    EXPECT_EQ(pathsOf(*list), (std::vector<std::string>{"C:\\Größe", "C:\\home\\bob\\"}));
}

} // namespace

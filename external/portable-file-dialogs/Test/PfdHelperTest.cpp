#include "subset/helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scripts.h"

namespace pfd { namespace internal { namespace {

using ::testing::ElementsAre;

TEST(PfdHelperTest, DesktopDecidesWhatComesFirst) {
    EXPECT_THAT(helper_order(""), ElementsAre("zenity", "matedialog", "qarma", "kdialog", "yad"));
    EXPECT_THAT(helper_order("gnome:ubuntu"),
        ElementsAre("zenity", "matedialog", "qarma", "kdialog", "yad"));
    EXPECT_THAT(
        helper_order("kde:plasma"), ElementsAre("kdialog", "zenity", "matedialog", "qarma", "yad"));
    EXPECT_EQ(helper_order("::plasmawayland").front(), "kdialog");
    EXPECT_EQ(helper_order("lxqt").front(), "qarma");
    EXPECT_EQ(helper_order("mate").front(), "matedialog");
}

TEST(PfdHelperTest, SessionSaysItsDesktopInThreeVariables) {
    const Scripts scripts;
    scripts.add("zenity", "");
    scripts.add("kdialog", "");
    EXPECT_EQ(find_helper().name, "zenity");
    for(const char* const i: {"XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "DESKTOP_SESSION"}) {
        setenv(i, "KDE", 1);
        EXPECT_EQ(find_helper().name, "kdialog") << i;
        unsetenv(i);
    }
}

TEST(PfdHelperTest, WhatIsNotInstalledIsPassedOver) {
    const Scripts scripts;
    setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    EXPECT_EQ(find_helper().path, "");
    const std::string yad = scripts.add("yad", "");
    EXPECT_EQ(find_helper().path, yad);
    EXPECT_EQ(find_helper().name, "yad");
}

TEST(PfdHelperTest, OnlyProgramsCount) {
    const Scripts scripts;
    std::filesystem::create_directory(scripts.folder / "zenity");
    EXPECT_EQ(find_program("zenity"), "");
    std::filesystem::permissions(scripts.add("qarma", ""), std::filesystem::perms::owner_read);
    EXPECT_EQ(find_program("qarma"), "");
}

TEST(PfdHelperTest, FoldersOfThePathAreSearchedInOrder) {
    const Scripts first, second;
    second.add("zenity", "");
    setenv(
        "PATH", ("/nowhere::" + first.folder.string() + ":" + second.folder.string()).c_str(), 1);
    EXPECT_EQ(find_program("zenity"), second.folder / "zenity");
    first.add("zenity", "");
    EXPECT_EQ(find_program("zenity"), first.folder / "zenity");
}

TEST(PfdHelperTest, RelativeFoldersOfThePathAreNotSearched) {
    const Scripts scripts;
    scripts.add("zenity", "");
    std::filesystem::current_path(scripts.folder.parent_path());
    const std::string folder = scripts.folder.filename();
    setenv("PATH", (folder + ":./" + folder).c_str(), 1);
    EXPECT_EQ(find_program("zenity"), "");
    std::filesystem::current_path(scripts.folder);
    for(const char* const path: {"", ":", ".", "./", "/nowhere::", ":/nowhere:", "/nowhere:."}) {
        setenv("PATH", path, 1);
        EXPECT_EQ(find_program("zenity"), "") << path;
    }
    std::filesystem::current_path("/");
}

TEST(PfdHelperTest, SystemsFoldersAreSearchedWithoutAPath) {
    const Scripts scripts;
    scripts.add("sh", "");
    std::filesystem::current_path(scripts.folder);
    unsetenv("PATH");
    EXPECT_THAT(find_program("sh"), ::testing::AnyOf("/usr/bin/sh", "/bin/sh"));
    std::filesystem::current_path("/");
}

TEST(PfdHelperTest, SearchIsMadeOnceUntilARescan) {
    EXPECT_FALSE(cached_helper().searched);
    const Scripts scripts;
    rescan_helpers();
    EXPECT_EQ(current_helper().path, "");
    const std::string zenity = scripts.add("zenity", "");
    EXPECT_EQ(current_helper().path, "");
    rescan_helpers();
    EXPECT_EQ(current_helper().path, zenity);
}

}}}

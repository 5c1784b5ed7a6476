#include <portable-file-dialogs.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialog.h"
#include "scripts.h"

namespace pfd { namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

struct PfdMacTest: ::testing::Test {
    PfdMacTest() {
        scripts.add("zenity", "echo /wrong");
        scripts.add("osascript", std::string{Scripts::noting} + "printf '/a b\\n/c\\n'");
        settings::rescan();
    }

    /* The script's line that shows the dialog, and its arguments */
    std::string choosing_line() const { return scripts.arguments_of("osascript").at(3); }

    std::vector<std::string> script_arguments() const {
        const std::vector<std::string> all = scripts.arguments_of("osascript");
        const auto end = std::find(all.begin(), all.end(), "--");
        return {end == all.end() ? end : end + 1, all.end()};
    }

    Scripts scripts;
};

TEST_F(PfdMacTest, SeveralFilesAreChosen) {
    EXPECT_THAT((dialog{dialog::kind::open, "\" & quit", "/nowhere/x", {"Text", "*.txt *.md"},
                    opt::multiselect}
                        .vector_result()),
        ElementsAre("/a b", "/c"));
    EXPECT_EQ(choosing_line(),
        "set chosen to {choose file with prompt (item 1 of argv) of type (paragraphs of (item 4 of "
        "argv)) with multiple selections allowed}");
    EXPECT_THAT(script_arguments(), ElementsAre("\" & quit", "", "x", "txt\nmd"));
}

TEST_F(PfdMacTest, OneFileIsChosen) {
    dialog{dialog::kind::open, "-e", scripts.folder, {"Text", "*.txt", "All", "*"}}.vector_result();
    EXPECT_EQ(choosing_line(),
        "set chosen to {choose file with prompt (item 1 of argv) default location (POSIX file "
        "(item "
        "2 of argv))}");
    EXPECT_THAT(script_arguments(), ElementsAre("-e", scripts.folder.string(), "", ""));
}

TEST_F(PfdMacTest, FolderIsChosen) {
    dialog{dialog::kind::folder, "Title"}.string_result();
    EXPECT_EQ(choosing_line(), "set chosen to {choose folder with prompt (item 1 of argv)}");
}

TEST_F(PfdMacTest, FileToSaveIsChosen) {
    const std::string path = scripts.folder / "new.txt";
    dialog{dialog::kind::save, "Title", path, {"Text", "*.txt"}}.string_result();
    EXPECT_EQ(choosing_line(),
        "set chosen to {choose file name with prompt (item 1 of argv) default location (POSIX file "
        "(item 2 of argv)) default name (item 3 of argv)}");
    EXPECT_THAT(
        script_arguments(), ElementsAre("Title", scripts.folder.string() + "/", "new.txt", "txt"));
}

TEST_F(PfdMacTest, NotificationGetsItsTextAsArguments) {
    EXPECT_THAT(internal::notify_command(internal::current_helper(), "\"T", "\\M", 0),
        ElementsAre(EndsWith("/osascript"), "-e", "on run argv", "-e",
            "display notification (item 2 of argv) with title (item 1 of argv)", "-e", "end run",
            "--", "\"T", "\\M"));
}

TEST_F(PfdMacTest, ExtensionsAreThoseOfThePatterns) {
    EXPECT_EQ(internal::filter_extensions({}), "");
    EXPECT_EQ(internal::filter_extensions({"A", " *.a  *.tar.gz ", "B", "*.b"}), "a\ntar.gz\nb");
    for(const char* const all: {"*", "*.*", "*.a *", "name.txt", "*.[ab]"})
        EXPECT_EQ(internal::filter_extensions({"A", all}), "") << all;
}

TEST_F(PfdMacTest, DefaultPathBecomesAFolderThatExistsAndAName) {
    using Split = std::pair<std::string, std::string>;
    const std::string folder = scripts.folder;
    EXPECT_EQ(internal::split_default_path(""), (Split{"", ""}));
    EXPECT_EQ(internal::split_default_path(folder), (Split{folder, ""}));
    EXPECT_EQ(internal::split_default_path(folder + "/x"), (Split{folder + "/", "x"}));
    EXPECT_EQ(internal::split_default_path("/nowhere/x"), (Split{"", "x"}));
    EXPECT_EQ(internal::split_default_path("no-such-file"), (Split{".", "no-such-file"}));
}

}}

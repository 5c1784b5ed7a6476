#include "QuillmereEditor/Tools/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <portable-file-dialogs.h>

/* The source of the dialogs on a portable-file-dialogs that notes what it's asked for and a system
   whose paths have backslashes */

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> openFiles(
    const std::initializer_list<std::string> filters, const bool single) {
    const Containers::Array<std::string> out = openFileDialog(
        "Title", "C:\\start", filters, single);
    return {out.begin(), out.end()};
}

void expectAsked(const char* const type, const pfd::opt options) {
    EXPECT_EQ(pfd::note.type, type);
    EXPECT_EQ(pfd::note.title, "Title");
    EXPECT_EQ(pfd::note.default_path, "C:\\start");
    EXPECT_EQ(pfd::note.options, options);
}

struct DialogsWrapperTest: ::testing::Test {
    DialogsWrapperTest() { pfd::note = {}; }
    ~DialogsWrapperTest() { setDialogAnswer(nullptr, nullptr); }
};

TEST_F(DialogsWrapperTest, FolderDialogHasNoOptions) {
    pfd::note.options = pfd::opt::multiselect;
    pfd::note.answer = {"C:\\a\\b"};
    EXPECT_EQ(openFolderDialog("Title", "C:\\start"), "C:/a/b");
    expectAsked("folder", pfd::opt::none);
    EXPECT_THAT(pfd::note.filters, IsEmpty());
}

TEST_F(DialogsWrapperTest, OpenDialogTakesSeveralUnlessSingle) {
    pfd::note.answer = {"C:\\a", "D:\\b\\c"};
    EXPECT_THAT(openFiles({"Text", "*.txt"}, false), ElementsAre("C:/a", "D:/b/c"));
    expectAsked("open", pfd::opt::multiselect);
    EXPECT_THAT(pfd::note.filters, ElementsAre("Text", "*.txt"));

    pfd::note.answer = {"C:\\a"};
    EXPECT_THAT(openFiles({}, true), ElementsAre("C:/a"));
    expectAsked("open", pfd::opt::none);
    EXPECT_THAT(pfd::note.filters, IsEmpty());
}

TEST_F(DialogsWrapperTest, SaveDialogHasNoOptions) {
    pfd::note.options = pfd::opt::force_overwrite;
    pfd::note.answer = {"C:\\a\\b"};
    EXPECT_EQ(saveFileDialog("Title", "C:\\start", {"Text", "*.txt"}), "C:/a/b");
    expectAsked("save", pfd::opt::none);
    EXPECT_THAT(pfd::note.filters, ElementsAre("Text", "*.txt"));
}

TEST_F(DialogsWrapperTest, CancelledDialogsAreEmpty) {
    EXPECT_EQ(openFolderDialog("Title", ""), "");
    EXPECT_THAT(openFiles({}, true), IsEmpty());
    EXPECT_THAT(openFiles({}, false), IsEmpty());
    EXPECT_EQ(saveFileDialog("Title", "", {}), "");
}

TEST_F(DialogsWrapperTest, IconsHaveTheLibrarysOrder) {
    const std::pair<NotificationIcon, pfd::icon> icons[]{{NotificationIcon::Info, pfd::icon::info},
        {NotificationIcon::Warning, pfd::icon::warning},
        {NotificationIcon::Error, pfd::icon::error},
        {NotificationIcon::Question, pfd::icon::question}};
    for(const auto& [icon, expected]: icons) {
        pfd::note = {};
        notification("Title", "Message", icon);
        EXPECT_EQ(pfd::note.type, "notify");
        EXPECT_EQ(pfd::note.title, "Title");
        EXPECT_EQ(pfd::note.message, "Message");
        EXPECT_EQ(pfd::note.kind, expected);
    }
}

TEST_F(DialogsWrapperTest, AnswersGetForwardSlashes) {
    setDialogAnswer(
        [](const DialogRequest& request, void*) {
            /* What is asked stays as it was given */
            EXPECT_EQ(request.defaultPath, "C:\\start");
            Containers::Array<std::string> out{ValueInit, 2};
            out[0] = "C:\\a\\b";
            out[1] = "\\\\host\\c";
            return out;
        },
        nullptr);
    EXPECT_EQ(openFolderDialog("Title", "C:\\start"), "C:/a/b");
    EXPECT_THAT(openFiles({}, false), ElementsAre("C:/a/b", "//host/c"));
    EXPECT_THAT(openFiles({}, true), ElementsAre("C:/a/b"));
    EXPECT_EQ(saveFileDialog("Title", "C:\\start", {}), "C:/a/b");
    EXPECT_EQ(pfd::note.type, "") << "a dialog was made";
}

}}

#include "subset/command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scripts.h"

namespace pfd { namespace internal { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

file_request asked(const file_kind kind) {
    file_request out;
    out.kind = kind;
    out.title = "Title";
    out.default_path = "/start";
    out.filters = {"Images", "*.png *.jpg", "All", "*"};
    return out;
}

TEST(PfdCommandTest, NothingIsRunWithoutAHelper) {
    EXPECT_THAT(file_command({}, asked(file_kind::save)), IsEmpty());
    EXPECT_THAT(notify_command({}, "Title", "Message", 0), IsEmpty());
}

TEST(PfdCommandTest, ZenityDialogs) {
    const helper zenity{"zenity", "/bin/zenity"};
    const std::string images = "--file-filter=Images | *.png *.jpg", all = "--file-filter=All | *";
    EXPECT_THAT(file_command(zenity, asked(file_kind::open_one)),
        ElementsAre(
            "/bin/zenity", "--file-selection", "--title=Title", "--filename=/start", images, all));
    EXPECT_THAT(file_command(zenity, asked(file_kind::open_several)),
        ElementsAre("/bin/zenity", "--file-selection", "--title=Title", "--filename=/start",
            "--multiple", "--separator=\n", images, all));
    EXPECT_THAT(file_command(zenity, asked(file_kind::save)),
        ElementsAre("/bin/zenity", "--file-selection", "--title=Title", "--filename=/start",
            "--save", "--confirm-overwrite", images, all));
    file_request folder = asked(file_kind::folder);
    folder.filters.clear();
    folder.default_path.clear();
    EXPECT_THAT(file_command(zenity, folder),
        ElementsAre("/bin/zenity", "--file-selection", "--title=Title", "--directory"));
}

TEST(PfdCommandTest, ForcedOverwriteLeavesTheQuestionOut) {
    file_request request = asked(file_kind::save);
    request.confirm_overwrite = false;
    request.filters.clear();
    EXPECT_THAT(file_command({"zenity", "z"}, request),
        ElementsAre("z", "--file-selection", "--title=Title", "--filename=/start", "--save"));
}

TEST(PfdCommandTest, FiltersOfAnOddShape) {
    EXPECT_THAT(filter_pairs({}), IsEmpty());
    EXPECT_THAT(filter_pairs({"Alone"}), IsEmpty());
    EXPECT_THAT(filter_pairs({"", "*.a", "Alone"}), ElementsAre(file_filter{"*.a", "*.a"}));
    file_request request = asked(file_kind::open_one);
    request.filters = {"A|B (C)", "*"};
    EXPECT_EQ(file_command({"zenity", "z"}, request).back(), "--file-filter=A/B (C) | *");
    EXPECT_EQ(file_command({"kdialog", "k"}, request).back(), "A/B [C] (*)");
}

TEST(PfdCommandTest, YadAndZenitysRelativesTakeItsOptions) {
    EXPECT_THAT(file_command({"yad", "y"}, asked(file_kind::save)),
        ElementsAre("y", "--file", "--title=Title", "--filename=/start", "--save",
            "--confirm-overwrite", "--file-filter=Images | *.png *.jpg", "--file-filter=All | *"));
    for(const char* const name: {"qarma", "matedialog"})
        EXPECT_EQ(file_command({name, "z"}, asked(file_kind::open_several)),
            file_command({"zenity", "z"}, asked(file_kind::open_several)));
}

TEST(PfdCommandTest, KdialogDialogs) {
    const helper kdialog{"kdialog", "k"};
    const std::string filters = "Images (*.png *.jpg) | All (*)";
    EXPECT_THAT(file_command(kdialog, asked(file_kind::open_one)),
        ElementsAre("k", "--title=Title", "--getopenfilename", "--", "/start", filters));
    EXPECT_THAT(file_command(kdialog, asked(file_kind::open_several)),
        ElementsAre("k", "--title=Title", "--getopenfilename", "--multiple", "--separate-output",
            "--", "/start", filters));
    EXPECT_THAT(file_command(kdialog, asked(file_kind::save)),
        ElementsAre("k", "--title=Title", "--getsavefilename", "--", "/start", filters));
    file_request folder = asked(file_kind::folder);
    folder.default_path.clear();
    EXPECT_THAT(file_command(kdialog, folder),
        ElementsAre("k", "--title=Title", "--getexistingdirectory", "--", "."));
}

TEST(PfdCommandTest, NotificationsHaveAnIconATitleAndAMessage) {
    EXPECT_THAT(notify_command({"zenity", "z"}, "Ti\ntle", "C:\\new\nline", 1),
        ElementsAre("z", "--notification", "--window-icon=dialog-warning",
            "--text=Ti tle\nC:\\\\new\nline"));
    EXPECT_THAT(notify_command({"kdialog", "k"}, "Title", "Message", 2),
        ElementsAre("k", "--title=Title", "--icon=dialog-error", "--passivepopup=Message", "5"));
    EXPECT_THAT(notify_command({"yad", "y"}, "Title", "Message", 3),
        ElementsAre("y", "--title=Title", "--text=Message", "--no-markup",
            "--image=dialog-question", "--no-buttons", "--no-focus", "--timeout=5"));
    for(const std::size_t icon: {std::size_t{0}, std::size_t{4}, ~std::size_t{}})
        EXPECT_THAT(notify_command({"zenity", "z"}, "", "", icon),
            ElementsAre("z", "--notification", "--window-icon=dialog-information", "--text=\n"));
}

TEST(PfdCommandTest, OutputIsSplitWhereSeveralAreChosen) {
    EXPECT_THAT(split_output("", true), IsEmpty());
    EXPECT_THAT(split_output("\n", true), IsEmpty());
    EXPECT_THAT(split_output("/a", true), ElementsAre("/a"));
    EXPECT_THAT(split_output("/a\n/b \n", true), ElementsAre("/a", "/b "));
    EXPECT_THAT(split_output("/a\n\n/b\n\n", true), ElementsAre("/a", "/b"));
}

TEST(PfdCommandTest, OutputIsOneNameElsewhere) {
    EXPECT_THAT(split_output("", false), IsEmpty());
    EXPECT_THAT(split_output("\n", false), IsEmpty());
    EXPECT_THAT(split_output("/a\nb\n", false), ElementsAre("/a\nb"));
}

}}}

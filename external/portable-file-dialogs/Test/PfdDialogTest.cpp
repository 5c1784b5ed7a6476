#include <portable-file-dialogs.h>

#include <chrono>
#include <sys/syscall.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialog.h"
#include "scripts.h"

namespace pfd { namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

std::vector<int> pipe_flags;

}}

/* In place of the C library's function. A pipe that isn't closed to other threads' children from the
   beginning can't be seen in time. Sanitizers make pipes themselves, but not with this one. */
int pipe2(int* const ends, const int flags) noexcept {
    pfd::pipe_flags.push_back(flags);
    return int(syscall(SYS_pipe2, ends, flags));
}

namespace pfd { namespace {

struct PfdDialogTest: ::testing::Test {
    void zenity_does(const std::string& script) {
        scripts.add("zenity", Scripts::noting + script);
        settings::rescan();
    }

    Scripts scripts;
};

TEST_F(PfdDialogTest, HelperIsAvailableOnceItIsFound) {
    settings::rescan();
    EXPECT_FALSE(settings::available());
    zenity_does("");
    EXPECT_TRUE(settings::available());
}

TEST_F(PfdDialogTest, ResultsCanBeAskedForAgain) {
    zenity_does("printf '/a b\\n/c\\n'");
    dialog several{dialog::kind::open, "Title", "", {}, opt::multiselect};
    EXPECT_THAT(several.vector_result(), ElementsAre("/a b", "/c"));
    EXPECT_THAT(several.vector_result(), ElementsAre("/a b", "/c"));
    EXPECT_EQ(several.string_result(), "/a b");
    EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--multiple"));
}

TEST_F(PfdDialogTest, SingleNameMayHaveANewline) {
    zenity_does("printf '/a\\nb\\n'");
    EXPECT_THAT((dialog{dialog::kind::open, "Title"}.vector_result()), ElementsAre("/a\nb"));
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "/a\nb");
}

TEST_F(PfdDialogTest, SeveralAreOnlyForOpenDialogs) {
    zenity_does("echo /a");
    for(const auto kind: {dialog::kind::save, dialog::kind::folder}) {
        EXPECT_EQ((dialog{kind, "Title", "", {}, opt::multiselect}.string_result()), "/a");
        EXPECT_THAT(scripts.arguments_of("zenity"), Not(Contains("--multiple")));
    }
}

TEST_F(PfdDialogTest, FolderAsDefaultPathIsShownItself) {
    zenity_does("echo /a");
    const std::string path = scripts.folder;
    for(const auto kind: {dialog::kind::open, dialog::kind::save, dialog::kind::folder}) {
        for(const std::string& folder: {path, path + "/"}) {
            dialog{kind, "Title", folder}.string_result();
            EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--filename=" + path + "/"));
        }
        for(const std::string& file: {path + "/zenity", path + "/new"}) {
            dialog{kind, "Title", file}.string_result();
            EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--filename=" + file));
        }
    }
}

TEST_F(PfdDialogTest, OverwritingIsAskedForUnlessForced) {
    zenity_does("echo /a");
    dialog{dialog::kind::save, "Title"}.string_result();
    EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--confirm-overwrite"));
    dialog{dialog::kind::save, "Title", "", {}, opt::force_overwrite | opt::multiselect}
        .string_result();
    EXPECT_THAT(scripts.arguments_of("zenity"), Not(Contains("--confirm-overwrite")));
}

TEST_F(PfdDialogTest, DialogWithoutAQuestionForItsResultIsWaitedFor) {
    zenity_does("sleep 0.2; touch \"$0.ended\"");
    dialog{dialog::kind::folder, "Title"};
    EXPECT_TRUE(std::filesystem::exists(scripts.folder / "zenity.ended"));
}

TEST_F(PfdDialogTest, OutputThatNobodyAsksForIsNotKept) {
    /* More than a pipe holds */
    zenity_does("head -c 1000000 /dev/zero && touch \"$0.ended\"");
    dialog{dialog::kind::folder, "Title"};
    EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--directory"));
    EXPECT_FALSE(std::filesystem::exists(scripts.folder / "zenity.ended"));
}

TEST_F(PfdDialogTest, HelperGetsALocaleWithUtf8) {
    zenity_does("echo \"$LC_ALL\"");
    for(const char* const i: {"LC_ALL", "LC_CTYPE", "LANG"})
        unsetenv(i);
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "C.UTF-8");
    setenv("LC_ALL", "de_DE.ISO-8859-1", 1);
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "C.UTF-8");
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "de_DE.UTF-8");
    /* The first one that's set counts */
    unsetenv("LC_ALL");
    setenv("LC_CTYPE", "C", 1);
    setenv("LANG", "de_DE.UTF-8", 1);
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "C.UTF-8");
    setenv("LC_CTYPE", "en_US.utf8", 1);
    EXPECT_THAT((dialog{dialog::kind::folder, "Title"}.vector_result()), IsEmpty());
}

TEST_F(PfdDialogTest, HelperBlocksAndIgnoresNoSignals) {
    /* A script that ignores it can't be ended by it */
    zenity_does("kill -PIPE $$; echo /survived");
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "");
    pthread_sigmask(SIG_UNBLOCK, &pipe, nullptr);
    std::signal(SIGPIPE, before);
    EXPECT_THAT(scripts.arguments_of("zenity"), Contains("--directory"));
}

TEST_F(PfdDialogTest, StandardStreamsMayBeClosed) {
    zenity_does("read line && exit 1; echo /a");
    const int input = dup(STDIN_FILENO), output = dup(STDOUT_FILENO);
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    const std::string result = dialog{dialog::kind::folder, "Title"}.string_result();
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    close(input);
    close(output);
    EXPECT_EQ(result, "/a");
}

TEST_F(PfdDialogTest, NobodyElseInheritsThePipe) {
    zenity_does("echo /a");
    pipe_flags.clear();
    EXPECT_EQ((dialog{dialog::kind::folder, "Title"}.string_result()), "/a");
    EXPECT_THAT(pipe_flags, ElementsAre(O_CLOEXEC));
}

TEST_F(PfdDialogTest, NoFileIsLeftOpen) {
    zenity_does("echo /a");
    const int before = dup(STDIN_FILENO);
    close(before);
    for(int i = 0; i != 3; ++i) {
        dialog{dialog::kind::folder, "Title"}.string_result();
        dialog{dialog::kind::folder, "Title"};
        notify{"Title", "Message", icon::question};
    }
    /* The scripts have to outlive the notifications' helpers */
    siginfo_t info;
    while(waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    const int after = dup(STDIN_FILENO);
    close(after);
    EXPECT_EQ(after, before);
}

}}

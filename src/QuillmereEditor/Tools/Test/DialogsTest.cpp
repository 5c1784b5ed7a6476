#include "QuillmereEditor/Tools/System.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <portable-file-dialogs.h>

#include "testing/Environment.h"

/* The dialogs with a script in place of zenity, so that they run on any header */

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Testing::readFile;
using Testing::ScriptedPrograms;
namespace Files = std::filesystem;

struct DialogsTest: ::testing::Test {
    ~DialogsTest() { setDialogAnswer(nullptr, nullptr); }

    void helperDoes(const std::string& script) const {
        programs.addNoting("zenity", script);
        pfd::settings::rescan();
    }

    std::vector<std::string> arguments() const { return programs.argumentsOf("zenity"); }

    ScriptedPrograms programs;
    /* With a desktop that prefers another helper an installed one would be used */
    EnvironmentVariable currentDesktop{"XDG_CURRENT_DESKTOP", nullptr};
    EnvironmentVariable sessionDesktop{"XDG_SESSION_DESKTOP", nullptr};
    EnvironmentVariable desktopSession{"DESKTOP_SESSION", nullptr};
};

/* GoogleMock's matchers need the types of a standard container */
std::vector<std::string> standard(const Containers::Array<std::string>& array) {
    return {array.begin(), array.end()};
}

std::vector<std::string> openFiles(const std::string& title, const std::string& defaultPath,
    const std::initializer_list<std::string> filters, const bool single) {
    return standard(openFileDialog(title, defaultPath, filters, single));
}

/* Polls: what other processes do can't be waited for otherwise. False means that it never came. */
template<class F> bool comes(const F& condition) {
    for(int i = 0; i != 6000; ++i) {
        if(condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    return false;
}

TEST_F(DialogsTest, FolderDialogGivesTheFolder) {
    helperDoes("echo '/my folder'");
    EXPECT_EQ(openFolderDialog("Where?", "/tmp/"), "/my folder");
    EXPECT_THAT(arguments(),
        AllOf(Contains("--file-selection"), Contains("--directory"), Contains(HasSubstr("Where?")),
            Contains(HasSubstr("/tmp/")), Not(Contains("--multiple")), Not(Contains("--save"))));
}

TEST_F(DialogsTest, SingleTakesOneFile) {
    helperDoes("echo /one");
    EXPECT_THAT(openFiles("Which?", "/tmp/x", {}, true), ElementsAre("/one"));
    EXPECT_THAT(arguments(),
        AllOf(Contains("--file-selection"), Contains(HasSubstr("Which?")),
            Contains(HasSubstr("/tmp/x")), Not(Contains("--multiple")), Not(Contains("--save")),
            Not(Contains("--directory"))));
}

TEST_F(DialogsTest, NotSingleTakesSeveralFiles) {
    helperDoes("printf '/one\\n/two\\n/three\\n'");
    EXPECT_THAT(openFiles("Which?", "", {}, false), ElementsAre("/one", "/two", "/three"));
    EXPECT_THAT(arguments(), Contains("--multiple"));
}

TEST_F(DialogsTest, SingleGivesOneFileWhateverIsPrinted) {
    helperDoes("printf '/one\\n/two\\n'");
    EXPECT_EQ(openFiles("Which?", "", {}, true).size(), 1);
}

TEST_F(DialogsTest, NamesComeBackWhole) {
    const std::vector<std::string> names{"/with  two spaces ", "/it's", "/\"quoted\"",
        "/back\\slash", "/$HOME `id` $(id)", "/tab\tand;more|&*?",
        "/\xc3\xbc\xe6\x97\xa5\xf0\x9f\x98\x80", "/not UTF-8 \xff\xfe", "/%s%n"};
    std::string printed;
    for(const std::string& i: names)
        printed += i + "\n";
    programs.folder().write("printed", printed);
    helperDoes("cat \"${0%/*}/printed\"");
    const std::vector<std::string> chosen = openFiles("", "", {}, false);
    EXPECT_THAT(chosen, ::testing::ElementsAreArray(names));
}

TEST_F(DialogsTest, MoreFilesThanAPipeHolds) {
    helperDoes(
        "i=0; while [ $i != 5000 ]; do echo /a/file/with/a/longish/name/$i; i=$((i+1)); done");
    const std::vector<std::string> chosen = openFiles("", "", {}, false);
    ASSERT_EQ(chosen.size(), 5000);
    EXPECT_EQ(chosen.front(), "/a/file/with/a/longish/name/0");
    EXPECT_EQ(chosen.back(), "/a/file/with/a/longish/name/4999");
}

TEST_F(DialogsTest, SaveDialogAsksBeforeItOverwrites) {
    helperDoes("echo /saved.txt");
    EXPECT_EQ(saveFileDialog("As?", "/tmp/new.txt", {}), "/saved.txt");
    EXPECT_THAT(arguments(),
        AllOf(Contains("--save"), Contains("--confirm-overwrite"), Contains(HasSubstr("As?")),
            Contains(HasSubstr("/tmp/new.txt"))));
}

TEST_F(DialogsTest, FiltersArePairs) {
    const std::string filters[]{"Images", "*.png *.jpg", "All files", "*"};
    const auto shown = AllOf(Contains(AllOf(HasSubstr("Images"), HasSubstr("*.png *.jpg"))),
        Contains(AllOf(HasSubstr("All files"), HasSubstr("*"))));
    helperDoes("echo /x");
    EXPECT_THAT(standard(openFileDialog("", "", filters, true)), ElementsAre("/x"));
    EXPECT_THAT(arguments(), shown);
    EXPECT_EQ(saveFileDialog("", "", filters), "/x");
    EXPECT_THAT(arguments(), shown);
    EXPECT_EQ(saveFileDialog("", "", {"Images", "*.png *.jpg", "All files", "*"}), "/x");
    EXPECT_THAT(arguments(), shown);
}

TEST_F(DialogsTest, NoShellSeesTheUsersText) {
    const std::string nasty = "a'b\"c$(touch " + programs.folder().file("touched") + ")`;&|\\";
    helperDoes("echo /x");
    EXPECT_THAT(openFiles(nasty, nasty, {nasty, "*.x"}, true), ElementsAre("/x"));
    EXPECT_THAT(arguments(), Contains(HasSubstr(nasty)));
    notification(nasty, nasty, NotificationIcon::Info);
    EXPECT_FALSE(Files::exists(programs.folder().file("touched")));
}

struct Failing {
    const char* name;
    const char* script;
};

struct FailingDialogTest: DialogsTest, ::testing::WithParamInterface<Failing> {
    void expectEmptyResults() const {
        EXPECT_EQ(openFolderDialog("", ""), "");
        EXPECT_THAT(openFiles("", "", {}, true), IsEmpty());
        EXPECT_THAT(openFiles("", "", {}, false), IsEmpty());
        EXPECT_EQ(saveFileDialog("", "", {}), "");
    }
};

TEST_P(FailingDialogTest, ResultIsEmpty) {
    helperDoes(GetParam().script);
    expectEmptyResults();
    EXPECT_TRUE(programs.hasRun("zenity"));
}

INSTANTIATE_TEST_SUITE_P(All, FailingDialogTest,
    ::testing::Values(Failing{"Cancelled", "exit 1"}, Failing{"NothingPrinted", "exit 0"},
        Failing{"EmptyLine", "echo"}, Failing{"Killed", "kill -KILL $$"},
        Failing{"KilledAfterItPrinted", "echo /x; kill -SEGV $$"}),
    [](const auto& i) { return std::string{i.param.name}; });

TEST_F(FailingDialogTest, HelperThatCanNotBeStartedGivesTheEmptyResult) {
    helperDoes("echo /x");
    ASSERT_EQ(openFolderDialog("", ""), "/x");
    Files::remove(programs.folder().file("zenity"));
    Files::create_directory(programs.folder().file("zenity"));
    /* Without a new search the program that was found is taken */
    expectEmptyResults();
    notification("", "", NotificationIcon::Info);
}

TEST_F(FailingDialogTest, NoHelperGivesTheEmptyResult) {
    const Testing::TemporaryFolder empty;
    const EnvironmentVariable path{"PATH", empty.path().c_str()};
    pfd::settings::rescan();
    expectEmptyResults();
    notification("", "", NotificationIcon::Info);
}

/* A process that the helper left, by the file that holds its id */
bool isRunning(const std::string& file) { return kill(pid_t(std::stol(readFile(file))), 0) == 0; }

TEST_F(DialogsTest, GrandchildThatHoldsTheOutputIsNotWaitedFor) {
    helperDoes("sleep 1000 & echo $! > \"$0.id\"; echo /x; [ ! -e \"$0.fails\" ]");
    const std::string id = programs.folder().file("zenity.id");
    EXPECT_EQ(openFolderDialog("", ""), "/x");
    EXPECT_TRUE(isRunning(id));
    kill(pid_t(std::stol(readFile(id))), SIGKILL);

    programs.folder().write("zenity.fails", "");
    EXPECT_THAT(openFiles("", "", {}, false), IsEmpty());
    EXPECT_TRUE(isRunning(id));
    kill(pid_t(std::stol(readFile(id))), SIGKILL);
}

TEST_F(DialogsTest, HelperIsWaitedForAlsoAfterItClosedItsOutput) {
    helperDoes("echo /x; exec >&-; sleep 0.3; touch \"$0.ended\"");
    EXPECT_EQ(openFolderDialog("", ""), "/x");
    EXPECT_TRUE(Files::exists(programs.folder().file("zenity.ended")));
}

TEST_F(DialogsTest, ResultComesWhereEndedChildrenAreIgnored) {
    helperDoes("echo /x");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(openFolderDialog("", ""), "/x");
    std::signal(SIGCHLD, before);
}

TEST_F(DialogsTest, EveryIconIsANotification) {
    std::vector<std::vector<std::string>> all;
    for(const NotificationIcon icon: {NotificationIcon::Info, NotificationIcon::Warning,
            NotificationIcon::Error, NotificationIcon::Question}) {
        Files::remove(programs.folder().file("zenity.arguments"));
        helperDoes("");
        notification("Saved", "All is well", icon);
        ASSERT_TRUE(comes([&] { return programs.hasRun("zenity"); }));
        EXPECT_THAT(arguments(),
            AllOf(Contains("--notification"), Contains(HasSubstr("Saved")),
                Contains(HasSubstr("All is well"))));
        EXPECT_THAT(all, Not(Contains(arguments())));
        all.push_back(arguments());
    }
}

/* A zombie counts, too */
bool hasChildren() {
    siginfo_t info{};
    return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

TEST_F(DialogsTest, NotificationIsNotWaitedForAndLeavesNoZombie) {
#ifdef QUILLMERE_PFD_IS_INSTALLED
    GTEST_SKIP() << "The installed portable-file-dialogs waits for a notification's helper";
#endif
    /* Sleeps until somebody writes into the pipe */
    const std::string pipe = programs.folder().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    helperDoes("read line < \"${0%/*}/pipe\"; echo \"$line\" > \"$0.ended\"");
    notification("Title", "Message", NotificationIcon::Info);
    EXPECT_TRUE(hasChildren());
    EXPECT_FALSE(Files::exists(programs.folder().file("zenity.ended")));

    programs.folder().write("pipe", "go\n");
    EXPECT_TRUE(comes([] { return !hasChildren(); }));
    EXPECT_EQ(readFile(programs.folder().file("zenity.ended")), "go\n");
}

/* Answers with `paths` and notes what was asked */
struct Answering {
    explicit Answering(std::initializer_list<std::string> answered): paths{answered} {}

    Containers::Array<std::string> operator()(const DialogRequest& request) {
        type = request.type;
        title = request.title;
        defaultPath = request.defaultPath;
        filters = {request.filters.begin(), request.filters.end()};
        Containers::Array<std::string> out{ValueInit, paths.size()};
        std::copy(paths.begin(), paths.end(), out.begin());
        return out;
    }

    static Containers::Array<std::string> answer(const DialogRequest& request, void* userData) {
        return (*static_cast<Answering*>(userData))(request);
    }

    std::vector<std::string> paths;
    DialogType type{};
    std::string title, defaultPath;
    std::vector<std::string> filters;
};

TEST_F(DialogsTest, AnswerTakesThePlaceOfAllDialogs) {
    helperDoes("echo /from/the/helper");
    Answering answering{"/one", "/two"};
    setDialogAnswer(Answering::answer, &answering);

    EXPECT_EQ(openFolderDialog("T1", "/p1"), "/one");
    EXPECT_EQ(answering.type, DialogType::Folder);
    EXPECT_EQ(answering.title, "T1");
    EXPECT_EQ(answering.defaultPath, "/p1");
    EXPECT_THAT(answering.filters, IsEmpty());

    EXPECT_THAT(openFiles("T2", "/p2", {"Text", "*.txt"}, false), ElementsAre("/one", "/two"));
    EXPECT_EQ(answering.type, DialogType::OpenFiles);
    EXPECT_EQ(answering.title, "T2");
    EXPECT_EQ(answering.defaultPath, "/p2");
    EXPECT_THAT(answering.filters, ElementsAre("Text", "*.txt"));

    EXPECT_THAT(openFiles("T3", "", {}, true), ElementsAre("/one"));
    EXPECT_EQ(answering.type, DialogType::OpenOneFile);

    EXPECT_EQ(saveFileDialog("T4", "/p4", {"Text", "*.txt"}), "/one");
    EXPECT_EQ(answering.type, DialogType::SaveFile);
    EXPECT_THAT(answering.filters, ElementsAre("Text", "*.txt"));

    EXPECT_FALSE(programs.hasRun("zenity"));
}

TEST_F(DialogsTest, NoPathsInTheAnswerCancelADialog) {
    Answering answering{};
    setDialogAnswer(Answering::answer, &answering);
    EXPECT_EQ(openFolderDialog("", ""), "");
    EXPECT_THAT(openFiles("", "", {}, false), IsEmpty());
    EXPECT_EQ(saveFileDialog("", "", {}), "");
}

TEST_F(DialogsTest, NullBringsTheDesktopsDialogsBack) {
    helperDoes("echo /from/the/helper");
    Answering answering{"/one"};
    setDialogAnswer(Answering::answer, &answering);
    setDialogAnswer(nullptr, nullptr);
    EXPECT_EQ(openFolderDialog("", ""), "/from/the/helper");
}

}}

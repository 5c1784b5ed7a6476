#include "QuillmereEditor/Tools/System.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <set>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "limitedMemory.h"
#include "testing/Environment.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::IsEmpty;
using Testing::linesOf;
using Testing::readFile;
using Testing::ScriptedPrograms;
using Testing::TemporaryFolder;
namespace Files = std::filesystem;

TEST(AppDirectoryTest, LiesInTheUsersDataFolder) {
    const EnvironmentVariable data{"XDG_DATA_HOME", "/data/mine"};
    EXPECT_EQ(appDirectory(), "/data/mine/QuillmereEngine");
}

TEST(AppDirectoryTest, LiesInTheHomeWithoutADataFolder) {
    const EnvironmentVariable home{"HOME", "/home/me"};
    for(const char* const unusable: {static_cast<const char*>(nullptr), "", "relative", "./x"}) {
        const EnvironmentVariable data{"XDG_DATA_HOME", unusable};
        EXPECT_EQ(appDirectory(), "/home/me/.local/share/QuillmereEngine")
            << (unusable ? unusable : "unset");
    }
}

TEST(AppDirectoryTest, LiesInTheHomeOfTheUsersEntryWithoutTheVariable) {
    const passwd* const user = getpwuid(getuid());
    ASSERT_TRUE(user);
    const EnvironmentVariable data{"XDG_DATA_HOME", nullptr};
    for(const char* const unusable: {static_cast<const char*>(nullptr), "", "relative"}) {
        const EnvironmentVariable home{"HOME", unusable};
        EXPECT_EQ(appDirectory(), Files::path{user->pw_dir} / ".local/share/QuillmereEngine")
            << (unusable ? unusable : "unset");
    }
}

TEST(AppDirectoryTest, IsNotCreated) {
    const TemporaryFolder folder;
    const EnvironmentVariable data{"XDG_DATA_HOME", folder.path().c_str()};
    EXPECT_FALSE(Files::exists(appDirectory()));
}

TEST(OpenerTest, BrowserGetsTheBareUrl) {
    const ScriptedPrograms programs;
    programs.addNoting("xdg-open");
    openBrowser("http://localhost:8080/a%20b");
    EXPECT_THAT(programs.argumentsOf("xdg-open"), ElementsAre("http://localhost:8080/a%20b"));
}

TEST(OpenerTest, SpaceInAUrlBreaksTheCommandLine) {
    const ScriptedPrograms programs;
    programs.addNoting("xdg-open");
    openBrowser("http://localhost/a b");
    EXPECT_THAT(programs.argumentsOf("xdg-open"), ElementsAre("http://localhost/a", "b"));
}

TEST(OpenerTest, PathsAreQuoted) {
    const ScriptedPrograms programs;
    programs.addNoting("xdg-open");
    openWithSystemFilebrowser("/my folder;x");
    EXPECT_THAT(programs.argumentsOf("xdg-open"), ElementsAre("/my folder;x"));
    openWithSystemDefault("/my {} file's.txt");
    EXPECT_THAT(programs.argumentsOf("xdg-open"), ElementsAre("/my {} file's.txt"));
}

TEST(OpenerTest, DollarsInAPathAreNotEscaped) {
    const ScriptedPrograms programs;
    programs.addNoting("xdg-open");
    const EnvironmentVariable variable{"QUILLMERE_TEST", "value"};
    openWithSystemDefault("/a/$QUILLMERE_TEST");
    EXPECT_THAT(programs.argumentsOf("xdg-open"), ElementsAre("/a/value"));
}

TEST(OpenerTest, FailureIsIgnored) {
    const ScriptedPrograms programs;
    programs.addNoting("xdg-open", "exit 4");
    openBrowser("x");
    openWithSystemFilebrowser("x");
    openWithSystemDefault("x");
    EXPECT_TRUE(programs.hasRun("xdg-open"));
}

TEST(RunCommandCaptureTest, OutputIsAppended) {
    std::string output = "before ";
    EXPECT_EQ(runCommandCapture("echo after", output), 0);
    EXPECT_EQ(output, "before after\n");
}

TEST(RunCommandCaptureTest, ExitStatusIsTheRawWaitStatus) {
    std::string output = "as it was";
    const int status = runCommandCapture("exit 3", output);
    EXPECT_EQ(status, 3 << 8);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(output, "as it was");
}

TEST(RunCommandCaptureTest, ErrorsAreCaptured) {
    std::string output;
    EXPECT_EQ(runCommandCapture("(echo wrong >&2)", output), 0);
    EXPECT_EQ(output, "wrong\n");
}

TEST(RunCommandCaptureTest, UnknownCommandSaysSoInTheOutput) {
    std::string output;
    EXPECT_EQ(runCommandCapture("quillmere-no-such-command", output), 127 << 8);
    EXPECT_THAT(output, ::testing::HasSubstr("quillmere-no-such-command"));
}

TEST(RunCommandCaptureTest, KilledCommandGivesItsSignal) {
    std::string output;
    const int status = runCommandCapture("echo first; kill -KILL $$", output);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_EQ(output, "first\n");
}

struct Printed {
    const char* name;
    std::string content;
};

struct CapturedOutputTest: ::testing::TestWithParam<Printed> {};

TEST_P(CapturedOutputTest, ComesBackByteForByte) {
    const TemporaryFolder folder;
    const std::string file = folder.write("printed", GetParam().content);
    std::string output;
    EXPECT_EQ(runCommandCapture("cat '" + file + "'", output), 0);
    /* No EXPECT_EQ, which would print megabytes */
    EXPECT_EQ(output.size(), GetParam().content.size());
    EXPECT_TRUE(output == GetParam().content);
}

std::string allBytes() {
    std::string out;
    for(int i = 0; i != 65536; ++i)
        out += char(i * 7 + i / 256);
    return out;
}

INSTANTIATE_TEST_SUITE_P(All, CapturedOutputTest,
    ::testing::Values(Printed{"Nothing", ""}, Printed{"NoNewlineAtTheEnd", "one\ntwo"},
        Printed{"OneNul", std::string(1, '\0')}, Printed{"OnlyNuls", std::string(1000, '\0')},
        Printed{"NulsAroundNewlines", std::string{"a\0\n\0\n\0b\0", 8}},
        Printed{"NulBeforeTheBuffersEnd", std::string(126, 'x') + '\0' + "y\n"},
        Printed{"NulBehindTheBuffersEnd", std::string(127, 'x') + '\0' + "y\n"},
        Printed{"LineAsLongAsTheBuffer", std::string(126, 'x') + "\n" + std::string(127, 'y')},
        Printed{"EveryByte", allBytes()}, Printed{"Megabytes", std::string(5000000, 'z')}),
    [](const auto& i) { return std::string{i.param.name}; });

TEST(RunCommandCaptureTest, CommandThatCanNotBeStartedGivesZero) {
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    std::string output = "as it was";
    const int status = runCommandCapture("echo x; exit 3", output);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(output, "as it was");
}

TEST(RunCommandCaptureTest, CommandIsReapedWhenMemoryRunsOut) {
    std::string output;
    const std::string command = "exec yes";
    int status;
    /* The command inherits whether it's ignored */
    const auto before = std::signal(SIGPIPE, SIG_DFL);
    {
        const Testing::LimitedMemory memory{100000};
        status = runCommandCapture(command, output);
    }
    std::signal(SIGPIPE, before);
    /* Nobody reads any more */
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGPIPE);
    EXPECT_EQ(output.substr(0, 4), "y\ny\n");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
}

TEST(ChangeDirectoryTest, GivesWhatChdirGives) {
    const std::string before = Files::current_path();
    const TemporaryFolder folder;
    EXPECT_EQ(changeDirectory(folder.path()), 0);
    EXPECT_TRUE(Files::equivalent(Files::current_path(), folder.path()));
    errno = 0;
    EXPECT_EQ(changeDirectory(folder.file("missing")), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(Files::equivalent(Files::current_path(), folder.path()));
    EXPECT_EQ(changeDirectory(before), 0);
}

/* Two folders, and what a copy says */
struct CopyRecursiveTest: ::testing::Test {
    CopyRecursiveTest(): from{folder.file("from")}, to{folder.file("deep/er/to")} {
        Files::create_directory(from);
    }

    int copy() { return copy(from, to); }

    int copy(const std::string& source, const std::string& target) {
        std::ostringstream debug, error;
        Utility::Debug redirectDebug{&debug};
        Utility::Error redirectError{&error};
        const int result = copyRecursive(source, target);
        printed = debug.str();
        errors = error.str();
        return result;
    }

    void write(const std::string& path, const std::string& content) const {
        Files::create_directories(Files::path{folder.file(path)}.parent_path());
        folder.write(path, content);
    }

    /* Relative paths of all that's there, sorted */
    static std::vector<std::string> contentOf(const std::string& path) {
        std::set<std::string> out;
        for(const auto& i: Files::recursive_directory_iterator{path})
            out.insert(Files::relative(i.path(), path).string());
        return {out.begin(), out.end()};
    }

    TemporaryFolder folder;
    std::string from, to, printed, errors;
};

TEST_F(CopyRecursiveTest, EmptyFolderIsCreated) {
    EXPECT_EQ(copy(), 0);
    EXPECT_TRUE(Files::is_directory(to));
    EXPECT_THAT(contentOf(to), IsEmpty());
    EXPECT_EQ(printed + errors, "");
}

TEST_F(CopyRecursiveTest, NestedFoldersAreCopiedWithTheirFiles) {
    write("from/a/b/c/deep.bin", std::string{"\0\xff\n", 3});
    write("from/a/name with spaces", "1");
    write("from/\xc3\xbc\xe6\x97\xa5/\xf0\x9f\x98\x80", "2");
    write("from/empty", "");
    write("from/.hidden/.x", "3");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ::testing::ContainerEq(contentOf(from)));
    EXPECT_EQ(readFile(to + "/a/b/c/deep.bin"), (std::string{"\0\xff\n", 3}));
    EXPECT_EQ(readFile(to + "/\xc3\xbc\xe6\x97\xa5/\xf0\x9f\x98\x80"), "2");
    EXPECT_EQ(errors, "");
}

TEST_F(CopyRecursiveTest, EachFileIsPrinted) {
    write("from/file", "");
    write("from/a/file", "");
    EXPECT_EQ(copy(), 0);
    /* Level by level */
    EXPECT_THAT(linesOf(printed),
        ElementsAre("Copying " + from + "/file to " + to + "/file",
            "Copying " + from + "/a/file to " + to + "/a/file"));
}

TEST_F(CopyRecursiveTest, ExistingTargetIsFilledUp) {
    write("from/both", "new");
    write("from/sub/source", "new");
    write("deep/er/to/both", "old and longer");
    write("deep/er/to/sub/target", "old");
    EXPECT_EQ(copy(), 0);
    EXPECT_EQ(readFile(to + "/both"), "new");
    EXPECT_EQ(readFile(to + "/sub/target"), "old");
    EXPECT_THAT(contentOf(to), ElementsAre("both", "sub", "sub/source", "sub/target"));
}

TEST_F(CopyRecursiveTest, SlashesAtTheEndMakeNoDifference) {
    write("from/a/file", "1");
    EXPECT_EQ(copy(from + "/", to + "/"), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("a", "a/file"));
}

TEST_F(CopyRecursiveTest, LinksAreFollowed) {
    write("elsewhere/file", "1");
    Files::create_symlink("../elsewhere", from + "/folder");
    Files::create_symlink("../elsewhere/file", from + "/link");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("folder", "folder/file", "link"));
    EXPECT_FALSE(Files::is_symlink(to + "/folder"));
    EXPECT_FALSE(Files::is_symlink(to + "/link"));
    EXPECT_EQ(readFile(to + "/link"), "1");
}

TEST_F(CopyRecursiveTest, DanglingLinkFails) {
    Files::create_symlink("nowhere", from + "/link");
    EXPECT_EQ(copy(), 1);
    EXPECT_EQ(printed, "Copying " + from + "/link to " + to + "/link\n");
    EXPECT_EQ(errors,
        "Utility::Path::copy(): can't open " + from +
            "/link for reading: error 2 (No such file or directory)\n");
}

TEST_F(CopyRecursiveTest, MissingSourceFails) {
    EXPECT_EQ(copy(folder.file("missing"), to), 1);
    EXPECT_EQ(printed, "Copying " + folder.file("missing/") + " to " + to + "/\n");
    EXPECT_FALSE(Files::exists(to));
}

TEST_F(CopyRecursiveTest, SourceHasToBeAFolder) {
    write("file", "1");
    EXPECT_EQ(copy(folder.file("file"), to), 1);
    EXPECT_FALSE(Files::exists(to));
}

TEST_F(CopyRecursiveTest, FirstFailureEndsItAndKeepsWhatWasCopied) {
    write("from/first", "1");
    write("from/sub/second", "2");
    write("from/sub/sub/third", "3");
    /* A folder is in the way of a file */
    Files::create_directories(to + "/sub/second");
    EXPECT_EQ(copy(), 1);
    EXPECT_THAT(contentOf(to), ElementsAre("first", "sub", "sub/second", "sub/sub"));
    EXPECT_EQ(errors,
        "Utility::Path::copy(): can't open " + to +
            "/sub/second for writing: error 21 (Is a directory)\n");
}

TEST_F(CopyRecursiveTest, FolderThatCanNotBeCreatedFailsAtItsFiles) {
    write("from/sub/file", "1");
    write("deep/er/to/sub", "in the way");
    EXPECT_EQ(copy(), 1);
    EXPECT_THAT(
        linesOf(printed), ElementsAre("Copying " + from + "/sub/file to " + to + "/sub/file"));
    EXPECT_EQ(readFile(to + "/sub"), "in the way");
}

/* As a user whom permissions hold back, also where the tests run as root */
struct Unprivileged {
    Unprivileged() {
        if(geteuid() == 0 && seteuid(65534) != 0)
            std::abort();
    }
    ~Unprivileged() {
        if(getuid() == 0 && seteuid(0) != 0)
            std::abort();
    }
};

TEST_F(CopyRecursiveTest, UnreadableFileFails) {
    write("from/file", "1");
    Files::permissions(from + "/file", Files::perms::none);
    for(const char* const i: {"", "/from"})
        Files::permissions(folder.path() + i, Files::perms(0755));
    Files::create_directories(to);
    Files::permissions(to, Files::perms::all);
    const Unprivileged unprivileged;
    EXPECT_EQ(copy(), 1);
    EXPECT_EQ(errors,
        "Utility::Path::copy(): can't open " + from +
            "/file for reading: error 13 (Permission denied)\n");
}

TEST_F(CopyRecursiveTest, UnreadableFolderCountsAsEmpty) {
    write("from/locked/file", "1");
    Files::permissions(from + "/locked", Files::perms::none);
    for(const char* const i: {"", "/from"})
        Files::permissions(folder.path() + i, Files::perms(0755));
    Files::create_directories(to);
    Files::permissions(to, Files::perms::all);
    {
        const Unprivileged unprivileged;
        EXPECT_EQ(copy(), 0);
    }
    EXPECT_THAT(contentOf(to), ElementsAre("locked"));
    EXPECT_EQ(errors,
        "Utility::Path::list(): can't list " + from + "/locked: error 13 (Permission denied)\n");
    Files::permissions(from + "/locked", Files::perms::owner_all);
}

TEST_F(CopyRecursiveTest, TargetInTheSourceIsNotEntered) {
    write("from/a/file", "1");
    to = from + "/a/to";
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(from), ElementsAre("a", "a/file", "a/to", "a/to/a", "a/to/a/file"));
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(from), ElementsAre("a", "a/file", "a/to", "a/to/a", "a/to/a/file"));
}

TEST_F(CopyRecursiveTest, TargetBehindALinkIsNotEntered) {
    write("from/file", "1");
    Files::create_directories(to);
    Files::create_symlink(to, from + "/link");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("file"));
}

TEST_F(CopyRecursiveTest, FolderOfTheTargetIsNotEntered) {
    write("from/p/file", "1");
    to = folder.file("to");
    Files::create_symlink("../../to/p", from + "/p/l");
    /* The second time the folder is there before */
    for(int i = 0; i != 2; ++i) {
        EXPECT_EQ(copy(), 0);
        EXPECT_THAT(contentOf(to), ElementsAre("p", "p/file"));
    }
    EXPECT_EQ(errors, "");
}

TEST_F(CopyRecursiveTest, FoldersOfTheTargetThatLeadToEachOtherAreNotEntered) {
    write("from/a/file", "1");
    write("from/b/file", "2");
    to = folder.file("to");
    Files::create_symlink("../../to/b", from + "/a/l");
    Files::create_symlink("../../to/a", from + "/b/l");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("a", "a/file", "b", "b/file"));
}

TEST_F(CopyRecursiveTest, FolderInItselfIsNotEntered) {
    write("from/a/file", "1");
    Files::create_symlink(".", from + "/self");
    Files::create_symlink("../..", from + "/a/up");
    EXPECT_EQ(copy(), 0);
    /* The folder above the source isn't in itself; the source in it is. The target was created
       before, so it's there, too. */
    EXPECT_THAT(contentOf(to), ElementsAre("a", "a/file", "a/up", "a/up/deep", "a/up/deep/er"));
}

TEST_F(CopyRecursiveTest, FolderMetTwiceButNotInItselfIsCopiedTwice) {
    write("from/a/file", "1");
    Files::create_symlink("a", from + "/b");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("a", "a/file", "b", "b/file"));
}

TEST_F(CopyRecursiveTest, SourceOnItselfStaysAsItIs) {
    write("from/file", "content");
    EXPECT_EQ(copy(from, from), 0);
    EXPECT_EQ(readFile(from + "/file"), "content");
}

TEST_F(CopyRecursiveTest, FileThatIsItsOwnTargetStaysAsItIs) {
    write("from/file", "content");
    Files::create_directories(to);
    Files::create_symlink(from + "/file", to + "/file");
    EXPECT_EQ(copy(), 0);
    EXPECT_EQ(readFile(from + "/file"), "content");
    EXPECT_EQ(printed, "Copying " + from + "/file to " + to + "/file\n");
    EXPECT_EQ(errors, "");
}

TEST_F(CopyRecursiveTest, WhatHasNoEndIsLeftOut) {
    write("from/sub/file", "1");
    ASSERT_EQ(mkfifo((from + "/pipe").c_str(), 0600), 0);
    Files::create_symlink("/dev/zero", from + "/zero");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("sub", "sub/file"));
    EXPECT_EQ(printed, "Copying " + from + "/sub/file to " + to + "/sub/file\n");
    EXPECT_EQ(errors, "");
}

TEST_F(CopyRecursiveTest, NullDeviceIsAnEmptyFile) {
    write("from/sub/file", "1");
    Files::create_symlink("/dev/null", from + "/null");
    EXPECT_EQ(copy(), 0);
    EXPECT_THAT(contentOf(to), ElementsAre("null", "sub", "sub/file"));
    EXPECT_TRUE(Files::is_regular_file(to + "/null"));
    EXPECT_EQ(readFile(to + "/null"), "");
    EXPECT_EQ(errors, "");
}

TEST_F(CopyRecursiveTest, PipeInTheTargetsPlaceFails) {
    write("from/file", "1");
    Files::create_directories(to);
    ASSERT_EQ(mkfifo((to + "/file").c_str(), 0600), 0);
    EXPECT_EQ(copy(), 1);
    EXPECT_EQ(printed, "Copying " + from + "/file to " + to + "/file\n");
    EXPECT_EQ(errors, "copyRecursive(): " + to + "/file is a pipe, nothing is copied to it\n");
}

TEST(GenerateUuidTest, IsRandomOfVersionFour) {
    std::set<std::string> all;
    std::string seen;
    for(int i = 0; i != 1000; ++i) {
        const std::string uuid = generateUUID();
        EXPECT_EQ(uuid.size(), 36);
        EXPECT_THAT(uuid,
            ::testing::MatchesRegex(
                "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
        all.insert(uuid);
        seen += uuid;
    }
    EXPECT_EQ(all.size(), 1000);
    for(const char digit: std::string{"0123456789ABCDEF-"})
        EXPECT_NE(seen.find(digit), std::string::npos) << digit;
}

}}

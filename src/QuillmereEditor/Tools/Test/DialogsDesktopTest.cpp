#include "QuillmereEditor/Tools/System.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <portable-file-dialogs.h>

#include "testing/Environment.h"

extern char** environ;

/* The dialogs with the real zenity in an X server without a window manager, and xdotool as the
   user */

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::EnvironmentVariable;
using ::testing::IsEmpty;
using Testing::readFile;
using Testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

/* An X server on a display that nobody else has. After some minutes it ends by itself, which ends
   the dialogs, so that a test that waits for one fails and doesn't hang. */
class XServer {
public:
    XServer() {
        int ends[2];
        if(pipe(ends) != 0)
            std::abort();
        const std::string displayFd = std::to_string(ends[1]);
        const char* const arguments[]{"timeout", "200", "Xvfb", "-displayfd", displayFd.c_str(),
            "-screen", "0", "1024x768x24", "-nolisten", "tcp", nullptr};
        if(posix_spawnp(&_process, arguments[0], nullptr, nullptr,
               const_cast<char* const*>(arguments), environ) != 0)
            std::abort();
        close(ends[1]);
        _display = ":";
        /* Written as soon as it can be connected to */
        for(char digit; read(ends[0], &digit, 1) == 1 && digit != '\n';)
            _display += digit;
        close(ends[0]);
    }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    ~XServer() {
        kill(_process, SIGTERM);
        waitpid(_process, nullptr, 0);
    }

    const std::string& display() const { return _display; }

private:
    pid_t _process = -1;
    std::string _display;
};

struct DialogsDesktopTest: ::testing::Test {
    DialogsDesktopTest() {
        pfd::settings::rescan();
        files.write("a first.txt", "1");
        files.write("it's \"second\".txt", "2");
        files.write("\xc3\xbc\xe6\x97\xa5$HOME.txt", "3");
    }

    /* What `dialog` returns while the user does something. Again and again, as nothing tells when
       a window is ready for input. */
    template<class User, class Dialog>
    static auto whileUser(const User& user, const Dialog& dialog) {
        std::atomic<bool> isClosed{false};
        std::thread thread{[&] {
            while(!isClosed) {
                user();
                std::this_thread::sleep_for(std::chrono::milliseconds{300});
            }
        }};
        auto out = dialog();
        isClosed = true;
        thread.join();
        return out;
    }

    /* Arguments of xdotool, in a shell's words; what it prints */
    static std::string xdotool(const std::string& arguments) {
        std::string out;
        runCommandCapture("timeout 20 xdotool " + arguments, out);
        return out;
    }

    /* The user does `actions` in the window of that title */
    template<class Dialog> static auto userDoes(
        const std::string& title, const std::string& actions, const Dialog& dialog) {
        return whileUser([&] { inWindow("--name '^" + title + "$'", "%1", actions); }, dialog);
    }

    /* In two steps, as the second one of a single command would send its keys to the first window
       that was found and not to the one that has the focus */
    static void inWindow(
        const std::string& which, const std::string& index, const std::string& actions) {
        xdotool("search --onlyvisible " + which + " windowfocus " + index +
            " && timeout 20 xdotool " + actions);
    }

    /* GoogleMock's matchers need the types of a standard container */
    static std::vector<std::string> openFiles(
        const std::string& title, const std::string& defaultPath, const bool single) {
        const Containers::Array<std::string> chosen = openFileDialog(
            title, defaultPath, {"Text files", "*.txt"}, single);
        return {chosen.begin(), chosen.end()};
    }

    XServer server;
    TemporaryFolder home, files;
    EnvironmentVariable display{"DISPLAY", server.display().c_str()};
    EnvironmentVariable wayland{"WAYLAND_DISPLAY", nullptr};
    EnvironmentVariable currentDesktop{"XDG_CURRENT_DESKTOP", nullptr};
    EnvironmentVariable sessionDesktop{"XDG_SESSION_DESKTOP", nullptr};
    EnvironmentVariable desktopSession{"DESKTOP_SESSION", nullptr};
    /* GTK notes what was used and how large the dialog was */
    EnvironmentVariable homeFolder{"HOME", home.path().c_str()};
    EnvironmentVariable configFolder{"XDG_CONFIG_HOME", home.path().c_str()};
    EnvironmentVariable dataFolder{"XDG_DATA_HOME", home.path().c_str()};
    EnvironmentVariable cacheFolder{"XDG_CACHE_HOME", home.path().c_str()};
    /* Neither settings nor accessibility are to look for services */
    EnvironmentVariable settings{"GSETTINGS_BACKEND", "memory"};
    EnvironmentVariable accessibility{"NO_AT_BRIDGE", "1"};
    EnvironmentVariable bus{"DBUS_SESSION_BUS_ADDRESS", "disabled:"};
};

TEST_F(DialogsDesktopTest, OneFileIsChosen) {
    const std::string path = files.file("it's \"second\".txt");
    EXPECT_THAT(userDoes("One", "key Return", [&] { return openFiles("One", path, true); }),
        UnorderedElementsAre(path));
}

TEST_F(DialogsDesktopTest, OneFileIsChosenInALocaleWithoutItsLetters) {
    const EnvironmentVariable locale{"LC_ALL", "C"};
    const std::string path = files.file("\xc3\xbc\xe6\x97\xa5$HOME.txt");
    EXPECT_THAT(userDoes("One", "key Return", [&] { return openFiles("One", path, true); }),
        UnorderedElementsAre(path));
}

TEST_F(DialogsDesktopTest, SeveralFilesAreChosen) {
    /* Hidden by the filter */
    files.write("other.bin", "");
    const auto chosen = userDoes("Several", "key ctrl+a key Return",
        [&] { return openFiles("Several", files.file(""), false); });
    EXPECT_THAT(chosen,
        UnorderedElementsAre(files.file("a first.txt"), files.file("it's \"second\".txt"),
            files.file("\xc3\xbc\xe6\x97\xa5$HOME.txt")));
}

TEST_F(DialogsDesktopTest, SingleDialogSelectsNoMoreThanOneFile) {
    const std::string path = files.file("a first.txt");
    EXPECT_THAT(
        userDoes("One", "key ctrl+a key Return", [&] { return openFiles("One", path, true); }),
        UnorderedElementsAre(path));
}

TEST_F(DialogsDesktopTest, CancelledDialogsGiveNothing) {
    const std::string path = files.file("a first.txt");
    EXPECT_THAT(
        userDoes("One", "key Escape", [&] { return openFiles("One", path, true); }), IsEmpty());
    EXPECT_THAT(
        userDoes("Several", "key Escape", [&] { return openFiles("Several", path, false); }),
        IsEmpty());
    EXPECT_EQ(userDoes("Folder", "key Escape", [&] { return openFolderDialog("Folder", ""); }), "");
    EXPECT_EQ(userDoes("Save", "key Escape", [&] { return saveFileDialog("Save", path, {}); }), "");
}

TEST_F(DialogsDesktopTest, FolderIsChosen) {
    const TemporaryFolder chosen;
    std::string result;
    /* On a busy machine the window may be ready for Return, but not yet for what comes before, which
       gives the folder where the dialog starts. Then the user tries again. */
    for(int i = 0; i != 5 && (i == 0 || result == files.path()); ++i)
        result = userDoes("Folder",
            "key ctrl+l key ctrl+a type --delay 20 '" + chosen.path() + "'; xdotool key Return",
            [&] { return openFolderDialog("Folder", files.file("")); });
    EXPECT_EQ(result, chosen.path());
}

TEST_F(DialogsDesktopTest, FolderWithoutASlashIsWhereTheDialogStarts) {
    EXPECT_EQ(
        userDoes("Folder", "key Return", [&] { return openFolderDialog("Folder", files.path()); }),
        files.path());
}

TEST_F(DialogsDesktopTest, NewFileIsSaved) {
    const std::string path = files.file("new file.txt");
    EXPECT_EQ(
        userDoes("Save", "key Return", [&] { return saveFileDialog("Save", path, {}); }), path);
}

TEST_F(DialogsDesktopTest, ExistingFileIsSavedAfterAQuestion) {
    const std::string path = files.file("a first.txt");
    std::atomic<bool> wasAsked{false};
    const auto user = [&] {
        /* The question is the dialog's second window */
        if(Testing::linesOf(xdotool("search --onlyvisible --class zenity")).size() > 1) {
            wasAsked = true;
            inWindow("--class zenity", "%2", "key Return");
        } else
            inWindow("--name '^Save$'", "%1", "key Return");
    };
    const std::string chosen = whileUser(user, [&] { return saveFileDialog("Save", path, {}); });
    EXPECT_EQ(chosen, path);
    EXPECT_TRUE(wasAsked);
    EXPECT_EQ(readFile(path), "1");
}

}}

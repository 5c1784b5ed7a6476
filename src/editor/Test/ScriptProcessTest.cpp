/* Against programs that aren't what they should be */

#include "editor/ScriptProcess.h"

#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "Process.h"
#include "ScriptFixture.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;

constexpr const char* StartedAnew =
    " Its variables are gone, the next script starts the engine anew.";

struct ScriptProcessTest: ScriptFixture {
    /* Lines after a script was given to a program that does this, with the socket as 3 */
    std::vector<std::string> runWith(const std::string& shell) {
        const std::string program = folder.write("engine", "#!/bin/sh\n" + shell + "\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        start(farLimits(), program);
        return run("");
    }

    Testing::TemporaryFolder folder;
};

TEST_F(ScriptProcessTest, FrameThatIsTooLargeEndsIt) {
    EXPECT_THAT(runWith(R"(printf '\377\377\377\377' >&3; exec sleep 1000)"),
        ElementsAre("[error] The JavaScript engine was ended: a message of 4294967295 bytes, the"
                    " most is 67108864." +
            std::string{StartedAnew}));
}

TEST_F(ScriptProcessTest, FrameThatIsNoMessageEndsIt) {
    for(const char* const frame: {R"(\003\000\000\000abc)", R"(\000\000\000\000)",
            R"(\012\000\000\000{"type":""})", R"(\002\000\000\000[])"})
        EXPECT_THAT(runWith("printf '" + std::string{frame} + "' >&3; exec sleep 1000"),
            ElementsAre("[error] The JavaScript engine was ended: it sent something that is not a"
                        " message." +
                std::string{StartedAnew}))
            << frame;
}

TEST_F(ScriptProcessTest, FrameThatBreaksOffEndsIt) {
    EXPECT_THAT(runWith(R"(printf '\003\000\000\000a' >&3)"),
        ElementsAre("[error] The JavaScript engine was ended: a part of a message." +
            std::string{StartedAnew}));
}

TEST_F(ScriptProcessTest, ExitStatusIsNamed) {
    EXPECT_THAT(runWith("exit 5"),
        ElementsAre("[error] The JavaScript engine ended unexpectedly with exit status 5 while it"
                    " ran a.js." +
            std::string{StartedAnew}));
}

TEST_F(ScriptProcessTest, LevelOutsideOfTheLogIsAnError) {
    EXPECT_THAT(
        runWith(
            R"(printf '\046\000\000\000{"type":"log","level":99,"text":"far"}' >&3)"
            R"(; printf '\036\000\000\000{"type":"done","end":"other"} ' >&3; exec sleep 1000)"),
        ElementsAre("[error] far"));
}

TEST(ScriptProgramTest, EndsWhenItIsToldNonsense) {
    for(const std::vector<std::string>& arguments: std::vector<std::vector<std::string>>{{}, {"3"},
            {"3", "1000", "x"}, {"3", "0", "64"}, {"-1", "1000", "64"}, {"3", "1000", "64", "x"}}) {
        std::vector<std::string> command{QUILLMERE_SCRIPT_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        Process program{command};
        EXPECT_EQ(program.wait(), 2);
        EXPECT_EQ(program.error(),
            "quillmere-script is started by quillmere-editor: expected the number of a socket,"
            " milliseconds and megabytes\n");
    }
}

}}

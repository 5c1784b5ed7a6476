#include "editor/checkProject.h"

#include <sstream>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

struct CheckedProject {
    const char* name;
    std::string text;
    const char* message;
};

struct CheckProjectTest: ::testing::TestWithParam<CheckedProject> {
    std::string messageFor(const std::string& path) {
        std::ostringstream out;
        Utility::Error redirectError{&out};
        const bool isGood = checkProject(path);
        EXPECT_EQ(isGood, out.str().empty());
        return out.str();
    }

    Testing::TemporaryFolder folder;
};

TEST_P(CheckProjectTest, NamesLineAndColumn) {
    const std::string path = folder.write("project.json", GetParam().text);
    const std::string message = GetParam().message;
    EXPECT_EQ(messageFor(path),
        message.empty() ? "" : "quillmere-editor: " + path + ":" + message + "\n");
}

const CheckedProject CheckedProjects[]{
    {"Object", "{\"a\": [1, 2]}\n", ""},
    {"Empty", "", "1:1: The document is empty."},
    {"FirstLine", "{\"a\" 1}", "1:6: Missing a colon after a name of object member."},
    {"LaterLine", "{\n  \"a\": 1\n  \"b\": 2\n}",
        "3:3: Missing a comma or '}' after an object member."},
    {"Rest", "{}\n{}", "2:1: The document root must not be followed by other values."},
    {"BrokenUtf8", "\"\xff\"", "1:2: Invalid encoding in string."},
    {"DeepNesting", std::string(1'000'000, '['), "1:1000001: Invalid value."},
};

INSTANTIATE_TEST_SUITE_P(All, CheckProjectTest, ::testing::ValuesIn(CheckedProjects),
    [](const auto& row) { return row.param.name; });

struct CheckProjectFileTest: CheckProjectTest {};

TEST_F(CheckProjectFileTest, MissingFileIsNamed) {
    EXPECT_EQ(messageFor(folder.file("no.json")),
        "quillmere-editor: can't read project " + folder.file("no.json") +
            ": No such file or directory\n");
}

TEST_F(CheckProjectFileTest, FolderIsNoProject) {
    EXPECT_EQ(messageFor(folder.path()),
        "quillmere-editor: can't read project " + folder.path() + ": Is a directory\n");
}

}}

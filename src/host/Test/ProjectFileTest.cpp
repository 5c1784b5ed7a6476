#include "host/ProjectFile.h"

#include <cmath>
#include <sstream>
#include <sys/stat.h>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "host/RapidJsonUtils.h"
#include "host/ValueAccess.h"
#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

using Testing::readFile;

class ProjectFileTest: public testing::Test {
protected:
    bool load(const std::string& content) {
        std::ostringstream errors, warnings;
        bool isLoaded;
        {
            const Utility::Error redirectError{&errors, Utility::Error::Flag::NoNewlineAtTheEnd};
            const Utility::Warning redirectWarning{
                &warnings, Utility::Warning::Flag::NoNewlineAtTheEnd};
            isLoaded = project.load(folder.write("in.json", content));
        }
        messages = errors.str() + warnings.str();
        return isLoaded;
    }

    std::string save() {
        EXPECT_TRUE(project.save(folder.file("out.json")));
        return readFile(folder.file("out.json"));
    }

    std::string valueAt(const char* const path) const {
        const rapidjson::Value* const value = project.getValue(path, true);
        return value ? RapidJsonUtils::toJson(*value) : "absent";
    }

    std::string document() const { return RapidJsonUtils::toJson(*project.document); }

    Testing::TemporaryFolder folder;
    ProjectFile project;
    std::string messages;
};

using ProjectFileDeathTest = ProjectFileTest;

}

TEST_F(ProjectFileTest, NewOneIsAnEmptyObject) {
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(&project.allocator(), &project.document->GetAllocator());
}

TEST_F(ProjectFileTest, ValuesAreFoundByPath) {
    ASSERT_TRUE(load(R"({"a":{"b":[1,null]},"~":{"/":2},"":3})"));
    EXPECT_EQ(valueAt("/a/b/0"), "1");
    EXPECT_EQ(valueAt("/a/b/1"), "null");
    EXPECT_EQ(valueAt("/~0/~1"), "2");
    EXPECT_EQ(valueAt("#/a/b/0"), "1");
    EXPECT_EQ(valueAt("/"), "3");
    EXPECT_EQ(project.getValue("", true), project.document.get());
    EXPECT_EQ(project.getValue("/a/b/0", false), &(*project.document)["a"]["b"][0]);
}

TEST_F(ProjectFileTest, AbsentValuesAreNullOneWayOrTheOther) {
    ASSERT_TRUE(load(R"({"a":[1],"s":"text"})"));
    for(const char* const path: {"/b", "/a/1", "/a/-", "/a/-1", "/a/01", "/a/99999999999999999999",
            "/s/x", "/a/0/x", "a", "/~2", "#/%"}) {
        EXPECT_EQ(project.getValue(path, true), nullptr) << path;
        ASSERT_NE(project.getValue(path, false), nullptr) << path;
        EXPECT_TRUE(project.getValue(path, false)->IsNull()) << path;
    }
}

TEST_F(ProjectFileTest, DefaultsStandInForWhatIsAbsent) {
    rapidjson::Document value;
    project.setDefault("/objects/*/name", value.Parse("\"unnamed\""));
    project.setDefault("/objects/7/name", value.Parse("\"seven\""));
    project.setDefault("/*/*/name", value.Parse("\"any\""));
    ASSERT_TRUE(load(R"({"objects":{"1":{"name":"first"}}})"));
    EXPECT_EQ(valueAt("/objects/1/name"), "\"first\"");
    EXPECT_EQ(valueAt("/objects/2/name"), "\"unnamed\"");
    EXPECT_EQ(valueAt("/objects/7/name"), "\"seven\"");
    EXPECT_EQ(valueAt("/meshes/7/name"), "\"any\"");
    EXPECT_EQ(valueAt("/objects/2/name/x"), "absent");
    EXPECT_EQ(valueAt("/name"), "absent");
    EXPECT_EQ(
        project.getValue("/objects/2/name", false), project.getValue("/objects/3/name", true));
    project.setDefault("/objects/*/name", value.Parse("\"nobody\""));
    EXPECT_EQ(valueAt("/objects/2/name"), "\"nobody\"");
}

TEST_F(ProjectFileTest, DefaultsAreCopies) {
    char text[] = "a text that is too long to be stored in a value";
    {
        const rapidjson::Value value{rapidjson::StringRef(text)};
        project.setDefault("/a", value);
    }
    text[0] = '!';
    EXPECT_EQ(valueAt("/a"), "\"a text that is too long to be stored in a value\"");
}

TEST_F(ProjectFileTest, ResourcesAreFoundByName) {
    ASSERT_TRUE(load(R"({"meshes":{"1":{"name":"box"},"2":{},"3":5,"4":{"name":7},"5":{"name":""},)"
                     R"("6":{"name":"box"}},"list":[],"objects":5})"));
    EXPECT_STREQ(project.resourceByName("meshes", "box"), "1");
    EXPECT_STREQ(project.resourceByName("meshes", ""), "5");
    EXPECT_EQ(project.resourceByName("meshes", "sphere"), nullptr);
    EXPECT_EQ(project.resourceByName("list", "box"), nullptr);
    EXPECT_EQ(project.resourceByName("objects", "box"), nullptr);
    EXPECT_EQ(project.resourceByName("none", "box"), nullptr);
    ASSERT_TRUE(load("[]"));
    EXPECT_EQ(project.resourceByName("meshes", "box"), nullptr);
}

TEST_F(ProjectFileTest, NamesAreComparedBehindANulToo) {
    ASSERT_TRUE(load(R"({"m":{"0":{"name":"box"}},"m\u0000n":{"1":{"name":"box\u0000a"},)"
                     R"("2":{"name":"box"},"3":{"name":"box\u0000b"}}})"));
    const std::string type{"m\0n", 3};
    EXPECT_STREQ(project.resourceByName("m", "box"), "0");
    EXPECT_STREQ(project.resourceByName(type, "box"), "2");
    EXPECT_STREQ(project.resourceByName(type, std::string{"box\0b", 5}), "3");
    EXPECT_EQ(project.resourceByName(type, std::string{"box\0", 4}), nullptr);
}

TEST_F(ProjectFileTest, NullArgumentsEndTheProcess) {
    const char* const none = nullptr;
    EXPECT_EXIT(project.setDefault(none, rapidjson::Value{}), testing::KilledBySignal(SIGABRT),
        "^ProjectFile::setDefault\\(\\): pattern was nullptr\n$");
    EXPECT_EXIT(project[none], testing::KilledBySignal(SIGABRT),
        "^ProjectFile::operator\\[\\]\\(\\): typeName was nullptr\n$");
}

TEST_F(ProjectFileTest, TypesAreAccessedByName) {
    ASSERT_TRUE(load(R"({"meshes":{"1":{"name":"box"}}})"));
    EXPECT_STREQ(project["meshes"]["1"]["name"].asString(), "box");
    EXPECT_FALSE(project["none"]["1"]["name"].exists());
}

TEST_F(ProjectFileTest, LoadingFullPrecisionKeepsTheBits) {
    ASSERT_TRUE(load("[0.1, 1.7976931348623157e308, 0.30000000000000004, 5e-324]"));
    const rapidjson::Document& values = *project.document;
    EXPECT_EQ(values[0].GetDouble(), 0.1);
    EXPECT_EQ(values[1].GetDouble(), 1.7976931348623157e308);
    EXPECT_EQ(values[2].GetDouble(), 0.1 + 0.2);
    EXPECT_EQ(values[3].GetDouble(), 5e-324);
}

TEST_F(ProjectFileTest, ByteOrderMarkIsSkipped) {
    ASSERT_TRUE(load("\xef\xbb\xbf{\"a\":1}"));
    EXPECT_EQ(messages, "");
    EXPECT_EQ(save(), "{\n    \"a\": 1\n}\n");
}

TEST_F(ProjectFileTest, DuplicateMembersAreKeptWithAWarning) {
    ASSERT_TRUE(load(R"({"a":1,"b":2,"a":3})"));
    EXPECT_EQ(messages,
        "ProjectFile::load(): " + folder.file("in.json") +
            " has more than one member /a, the first one counts\n");
    EXPECT_EQ(valueAt("/a"), "1");
    EXPECT_EQ(save(), "{\n    \"a\": 1,\n    \"b\": 2,\n    \"a\": 3\n}\n");
}

TEST_F(ProjectFileTest, LoadErrorNamesFileLineAndColumn) {
    ASSERT_TRUE(load(R"({"a":1})"));
    EXPECT_FALSE(load("{\n  \"a\": 1,\n  b\n}"));
    EXPECT_EQ(messages,
        "ProjectFile::load(): can't parse " + folder.file("in.json") +
            " line 3 column 3: Missing a name for object member.\n");
    EXPECT_EQ(document(), R"({"a":1})") << "the document stays as it was";
}

TEST_F(ProjectFileTest, LoadErrorOfAMissingFile) {
    std::ostringstream out;
    {
        const Utility::Error redirect{&out, Utility::Error::Flag::NoNewlineAtTheEnd};
        EXPECT_FALSE(project.load(folder.file("none.json")));
    }
    EXPECT_EQ(out.str(),
        "ProjectFile::load(): can't read " + folder.file("none.json") +
            ": No such file or directory\n");
}

TEST_F(ProjectFileTest, DeepNestingLoadsAndSaves) {
    const std::string deep = std::string(10000, '[') + std::string(10000, ']');
    ASSERT_TRUE(load(deep));
    const std::string saved = save();
    ASSERT_TRUE(project.load(folder.file("out.json")));
    EXPECT_EQ(save(), saved);
    EXPECT_EQ(document(), deep);
    EXPECT_FALSE(load("[" + deep + "]"));
    EXPECT_EQ(messages,
        "ProjectFile::load(): can't parse " + folder.file("in.json") +
            " line 1 column 10001: Nested deeper than 10000 levels.\n");
}

TEST_F(ProjectFileTest, WhatCouldNotBeLoadedIsNotSaved) {
    ASSERT_TRUE(load(std::string(10000, '[') + std::string(10000, ']')));
    rapidjson::Value inner;
    inner.Swap(*project.document);
    project.document->SetArray().PushBack(inner, project.allocator());
    const std::string file = folder.write("out.json", "old");
    std::ostringstream out;
    {
        const Utility::Error redirect{&out, Utility::Error::Flag::NoNewlineAtTheEnd};
        EXPECT_FALSE(project.save(file));
    }
    EXPECT_EQ(out.str(),
        "ProjectFile::save(): can't write " + file + ": Nested deeper than 10000 levels\n");
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(ProjectFileTest, SavedBytesAreStable) {
    ASSERT_TRUE(load(R"({"z":1,"a":[0.1,2.0,-0.0,1e300,-7,18446744073709551615,"\u0001ä\u2028"],)"
                     R"("o":{"y":{},"x":[]},"t":true,"n":null})"));
    project.document->AddMember("nan", std::nan(""), project.allocator());
    project.document->AddMember("last", 1, project.allocator());
    const std::string first = save();
    EXPECT_NE(first.find("\"nan\": null,\n    \"last\": 1"), std::string::npos) << first;
    ASSERT_TRUE(project.load(folder.file("out.json")));
    EXPECT_EQ(save(), first);
}

TEST_F(ProjectFileTest, SaveKeepsTheMode) {
    const std::string file = folder.write("out.json", "{}");
    chmod(file.c_str(), 0600);
    save();
    struct stat status;
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode_t(0600));
}

TEST_F(ProjectFileTest, FailedSaveSaysWhy) {
    const std::string file = folder.file("none/out.json");
    std::ostringstream out;
    {
        const Utility::Error redirect{&out, Utility::Error::Flag::NoNewlineAtTheEnd};
        EXPECT_FALSE(project.save(file));
    }
    EXPECT_EQ(
        out.str(), "ProjectFile::save(): can't write " + file + ": No such file or directory\n");
}

TEST_F(ProjectFileDeathTest, NoDocument) {
    project.document = nullptr;
    EXPECT_EXIT(project.getValue("", true), testing::KilledBySignal(SIGABRT),
        "^Containers::Pointer: the pointer is null\n$");
    EXPECT_EXIT(project.allocator(), testing::KilledBySignal(SIGABRT),
        "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(ProjectFileDeathTest, DefaultForNoPointer) {
    EXPECT_EXIT(project.setDefault("a", rapidjson::Value{1}), testing::KilledBySignal(SIGABRT),
        "^ProjectFile::setDefault\\(\\): expected a JSON pointer but got a\n$");
}

TEST_F(ProjectFileDeathTest, NullPath) {
    EXPECT_EXIT(project.getValue(nullptr, true), testing::KilledBySignal(SIGABRT),
        "^ProjectFile::getValue\\(\\): path was nullptr\n$");
}

}}

#include "editor/ModuleBuild.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "host/AbstractModule.h"
#include "host/Version.h"
#include "moduleConf.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using Testing::readFile;

struct ModuleBuildTest: ::testing::Test {
    ModuleBuild read(const std::string& metadata) {
        const std::optional<ModuleBuild> out = ModuleBuild::read(metadata, problem);
        EXPECT_TRUE(out) << problem;
        return out ? *out : ModuleBuild{};
    }

    std::string conf = readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.conf");
    std::string library = readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.so");
    std::string problem;
};

TEST_F(ModuleBuildTest, FitsTheModuleThatWasJustBuilt) {
    const ModuleBuild build = read(conf);
    EXPECT_EQ(build.whyUnfit(), "");
    EXPECT_EQ(build.whyIncomplete(library), "");
    EXPECT_EQ(build.type(), QUILLMERE_BUILD_TYPE);
}

TEST_F(ModuleBuildTest, OtherGroupsAndLinesOfTheAuthorDoNotCount) {
    const ModuleBuild build = read("\xef\xbb\xbf"
                                   "depends=Other\nlibrary=9.9.9\n"
                                   "[mine]\n"
                                   "library=8.8.8\n"
                                   "no equals\n" +
        conf + "[more]\nlibrary=7.7.7\n");
    EXPECT_EQ(build.whyUnfit(), "");
    EXPECT_EQ(build.whyIncomplete(library), "");
}

TEST_F(ModuleBuildTest, LinesMayEndAndBeWrittenLikeThoseOfThePluginManager) {
    std::string written = "  [build]\t\r\n; comment=1\r\n\r\n";
    for(const std::string& line: Testing::linesOf(conf))
        if(const std::size_t i = line.find('='); i != std::string::npos)
            written += " " + line.substr(0, i) + " = \"" + line.substr(i + 1) + "\" \r\n";
    const ModuleBuild build = read(written);
    EXPECT_EQ(build.whyUnfit(), "");
    EXPECT_EQ(build.whyIncomplete(library), "");
}

TEST_F(ModuleBuildTest, MissingGroupIsAProblemWithBothSides) {
    for(const char* const metadata:
        {"", "[", "[build", "build]\n", "library=0.1.0\n", "# [build]\n"}) {
        EXPECT_FALSE(ModuleBuild::read(metadata, problem));
        EXPECT_EQ(problem,
            "its .conf has no group [build] that tells what it was built against, but this is "
            "library " QUILLMERE_VERSION);
    }
}

TEST_F(ModuleBuildTest, MissingKeyIsNamed) {
    for(const char* const key: {"library", "pluginVersion", "interface", "imgui", "sizeof(ImGuiIO)",
            "sizeof(ImDrawIdx)", "type", "size", "sha256"}) {
        std::string without = conf;
        without.replace(without.find(std::string{"\n"} + key + "="), 1, "\n#");
        EXPECT_FALSE(ModuleBuild::read(without, problem));
        EXPECT_EQ(problem, std::string{"the group [build] of its .conf has no "} + key);
    }
}

struct Difference {
    const char* name;
    const char* key;
    const char* problem;
    std::string here;
};

struct DifferenceTest: ModuleBuildTest, ::testing::WithParamInterface<Difference> {};

TEST_P(DifferenceTest, IsToldWithBothSides) {
    const ModuleBuild build = read(withValue(conf, GetParam().key, "9.9"));
    EXPECT_EQ(build.whyUnfit(),
        std::string{"it was built against "} + GetParam().problem + " 9.9, but this is " +
            GetParam().here);
}

const Difference Differences[]{
    {"PluginVersion", "pluginVersion", "plugin version", "7"},
    {"Interface", "interface", "interface", QUILLMERE_MODULE_INTERFACE},
    {"Library", "library", "library", QUILLMERE_VERSION},
    {"ImGui", "imgui", "Dear ImGui", IMGUI_VERSION},
    {"Io", "sizeof(ImGuiIO)", "an ImGuiIO of size", std::to_string(sizeof(ImGuiIO))},
    {"Style", "sizeof(ImGuiStyle)", "an ImGuiStyle of size", std::to_string(sizeof(ImGuiStyle))},
    {"Vec2", "sizeof(ImVec2)", "an ImVec2 of size", "8"},
    {"Vec4", "sizeof(ImVec4)", "an ImVec4 of size", "16"},
    {"Vertex", "sizeof(ImDrawVert)", "an ImDrawVert of size", "20"},
    {"Index", "sizeof(ImDrawIdx)", "an ImDrawIdx of size", "2"},
};

INSTANTIATE_TEST_SUITE_P(All, DifferenceTest, ::testing::ValuesIn(Differences),
    [](const auto& row) { return row.param.name; });

TEST_F(ModuleBuildTest, BuildTypeIsNotCompared) {
    EXPECT_EQ(read(withValue(conf, "type", "Unheard")).whyUnfit(), "");
    EXPECT_EQ(read(withValue(conf, "type", "")).whyUnfit(), "");
}

/* The sizes are those of the module's own flags and not of whoever wrote the .conf */
TEST_F(ModuleBuildTest, ModuleWithAnotherIndexTypeIsToldByItsSize) {
    const ModuleBuild build = read(readFile(QUILLMERE_FIXTURES "/OtherImGui/Fixture.conf"));
    EXPECT_EQ(build.whyUnfit(), "it was built against an ImDrawIdx of size 4, but this is 2");
}

TEST_F(ModuleBuildTest, FileOfAnotherSizeIsIncomplete) {
    const ModuleBuild build = read(conf);
    EXPECT_EQ(build.whyIncomplete("1234"),
        "its file has 4 bytes, but its .conf says " + std::to_string(library.size()));
}

TEST_F(ModuleBuildTest, FileWithOneOtherBitIsIncomplete) {
    const ModuleBuild build = read(conf);
    library[library.size() / 2] ^= 1;
    EXPECT_EQ(build.whyIncomplete(library), "its file has another SHA-256 than its .conf says");
}

}}

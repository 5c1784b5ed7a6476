#include "editor/ModuleLoader.h"

#include <fstream>

#include <gmock/gmock.h>

#include "LoaderFixture.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ModuleLoaderTest: LoaderFixture {
    std::string line(const std::string& file, const std::string& problem) {
        return "[error] Module " + folder.file(file) + " can't be loaded: " + problem;
    }

    std::string waiting(const std::string& problem) {
        return "[warn] Module " + folder.file("Fixture.so") + " isn't loaded yet: " + problem +
            "; it's tried again";
    }
};

TEST_F(ModuleLoaderTest, EmptyFolderIsReported) {
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(loader.panels(), IsEmpty());
    EXPECT_THAT(lines(),
        ElementsAre("[warn] No modules in " + folder.path() +
            ", they are loaded as soon as they are put there"));
}

TEST_F(ModuleLoaderTest, LoadsAModuleAndBindsItsPanel) {
    install("Panel1", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    ASSERT_THAT(titles(loader), ElementsAre("Fixture 1"));
    EXPECT_EQ(&loader.panels()[0]->editor(), application.editor.get());
    loader.panels()[0]->update();
    EXPECT_EQ(data.frame, 1u);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ModuleLoaderTest, OtherFilesAreLeftAlone) {
    folder.write("readme.txt", "no module");
    folder.write("Other.so.new", "no module");
    std::filesystem::create_directory(folder.file("Folder.so"));
    install("Panel1", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
    EXPECT_THAT(lines(), IsEmpty());
}

struct RefusedModule {
    const char* name;
    const char* problem;
};

struct RefusedModuleTest: ModuleLoaderTest, ::testing::WithParamInterface<RefusedModule> {};

TEST_P(RefusedModuleTest, HasItsLineAndTheOthersLoad) {
    const std::string name = GetParam().name;
    install(name, name);
    install("Panel1", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
    EXPECT_THAT(loader.failedModules(), ElementsAre(name));

    ASSERT_EQ(lines().size(), 1u);
    EXPECT_THAT(lines()[0],
        ::testing::MatchesRegex(
            "\\[error\\] Module .*/" + name + "\\.so can't be loaded: " + GetParam().problem));
    /* It's said once, not with every look at the folder */
    settle(loader);
    settle(loader);
    EXPECT_EQ(lines().size(), 1u);
}

const RefusedModule RefusedModules[]{
    {"WrongVersion",
        "PluginManager::Manager::load\\(\\): wrong version of plugin WrongVersion, "
        "expected 7 but got 6"},
    {"WrongInterface",
        "PluginManager::Manager::load\\(\\): wrong interface string of plugin WrongInterface, "
        "expected com.quillmere.QuillmereEditor.AbstractModule/1.1 but got "
        "com.quillmere.QuillmereEditor.AbstractModule/1.0"},
    {"MissingSymbol",
        "PluginManager::Manager::load\\(\\): cannot get instancer of plugin "
        "MissingSymbol: .*undefined symbol: pluginInstancer"},
    {"NotAPanel", "expected a panel, module type 1, but got type 0"},
    {"ThrowingConstructor", "no panel today"},
};

INSTANTIATE_TEST_SUITE_P(All, RefusedModuleTest, ::testing::ValuesIn(RefusedModules),
    [](const auto& row) { return row.param.name; });

TEST_F(ModuleLoaderTest, MessagesNameTheOriginalAndNotTheCopy) {
    install("MissingSymbol", "MissingSymbol");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(lines(),
        ElementsAre(line("MissingSymbol.so",
            "PluginManager::Manager::load(): cannot get instancer of plugin MissingSymbol: " +
                folder.file("MissingSymbol.so") + ": undefined symbol: pluginInstancer")));
}

/* Its constructor would throw: an instance isn't made */
TEST_F(ModuleLoaderTest, ModuleOfAnotherLibraryIsNotOpened) {
    install("ThrowingConstructor", "ThrowingConstructor");
    claim("ThrowingConstructor", "library", "9.9.9");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(loader.failedModules(), ElementsAre("ThrowingConstructor"));
    EXPECT_THAT(lines(),
        ElementsAre(line("ThrowingConstructor.so",
            "it was built against library 9.9.9, but this is " QUILLMERE_VERSION)));
}

TEST_F(ModuleLoaderTest, ModuleWithOtherStructuresIsNotOpened) {
    install("OtherImGui", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(lines(),
        ElementsAre(
            line("Fixture.so", "it was built against an ImDrawIdx of size 4, but this is 2")));
}

TEST_F(ModuleLoaderTest, ModuleThatDoesNotSayHowItWasBuiltIsNotOpened) {
    install("Panel1", "Fixture");
    folder.write("Fixture.conf", "");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(lines(),
        ElementsAre(line("Fixture.so",
            "its .conf has no group [build] that tells what it was built against, but this is "
            "library " QUILLMERE_VERSION)));
}

TEST_F(ModuleLoaderTest, FileThatIsNoModuleHasTheDynamicLoadersMessage) {
    const std::string text = "this is no module";
    install("Panel1", "Fixture");
    folder.write("Fixture.so", text);
    folder.write("Fixture.conf",
        fittingTo(text, Testing::readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.conf")));
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(lines(),
        ElementsAre(line("Fixture.so",
            "PluginManager::Manager::load(): cannot load plugin Fixture from \"" +
                folder.file("Fixture.so") + "\": " + folder.file("Fixture.so") +
                ": file too short")));
}

TEST_F(ModuleLoaderTest, LoadedModulesAreListedWithTheirBuildType) {
    install("Panel1", "Fixture");
    install("NotAPanel", "NotAPanel");
    claim("Fixture", "type", "Debug");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(loader.loadedModules(), ElementsAre("Fixture (Debug build)"));
    claim("Fixture", "type", "");
    settle(loader);
    EXPECT_THAT(loader.loadedModules(), ElementsAre("Fixture"));
}

/* What is incomplete at the start is said at once: a short run would never tell */
TEST_F(ModuleLoaderTest, MissingMetadataIsReportedAndWaitedFor) {
    install("Panel1", "Fixture");
    std::filesystem::remove(folder.file("Fixture.conf"));
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(
        lines(), ElementsAre(waiting("its .conf can't be read: No such file or directory")));

    install("Panel1", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
}

TEST_F(ModuleLoaderTest, HalfWrittenFileIsLoadedOnceItIsWhole) {
    install("Panel1", "Fixture");
    const std::string whole = Testing::readFile(folder.file("Fixture.so"));
    folder.write("Fixture.so", whole.substr(0, 100));
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(lines(),
        ElementsAre(
            waiting("its file has 100 bytes, but its .conf says " + std::to_string(whole.size()))));

    folder.write("Fixture.so", whole);
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
}

TEST_F(ModuleLoaderTest, MetadataThatComesLateIsWaitedForInSilenceAtFirst) {
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    application.consoleLines.clear();
    install("Panel1", "Fixture");
    std::filesystem::remove(folder.file("Fixture.conf"));
    settle(loader);
    EXPECT_THAT(lines(), IsEmpty());
    install("Panel1", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(
        lines(), ElementsAre("[info] Module Fixture (" QUILLMERE_BUILD_TYPE " build) was loaded"));
}

TEST_F(ModuleLoaderTest, HashThatNeverFitsIsReportedOnceAndNeverOpened) {
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    application.consoleLines.clear();
    install("Panel1", "Fixture");
    claim("Fixture", "sha256", std::string(64, '0'));
    const auto start = now;
    while(now < start + std::chrono::minutes{1}) {
        EXPECT_FALSE(loader.poll(now += ModuleLoader::PollInterval));
        if(now < start + ModuleLoader::WaitReportTime) {
            ASSERT_THAT(lines(), IsEmpty());
        }
    }
    EXPECT_THAT(lines(), ElementsAre(waiting("its file has another SHA-256 than its .conf says")));
}

TEST_F(ModuleLoaderTest, NewModuleIsLoadedWhileItRuns) {
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    install("Panel1", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
}

TEST_F(ModuleLoaderTest, DeletedModuleStaysAsItIs) {
    install("Panel1", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    std::filesystem::remove(folder.file("Fixture.so"));
    EXPECT_FALSE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
}

TEST_F(ModuleLoaderTest, LooksAtTheFolderOnlyNowAndThen) {
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    install("Panel1", "Fixture");
    for(int i = 0; i != 100; ++i)
        EXPECT_FALSE(loader.poll(now + std::chrono::milliseconds{i}));
}

TEST_F(ModuleLoaderTest, ModuleThatFailedInAFrameIsClosedAndReported) {
    install("Panel1", "Fixture");
    ModuleLoader loader{folder.path(), host};
    loader.loadAll(now);
    loader.closeFailed(loader.panels()[0], "it had enough");
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(loader.failedModules(), ElementsAre("Fixture"));
    EXPECT_THAT(lines(), ElementsAre("[error] Module Fixture was closed: it had enough"));

    install("Panel2", "Fixture");
    settle(loader);
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 2"));
    EXPECT_THAT(loader.failedModules(), IsEmpty());
}

}}

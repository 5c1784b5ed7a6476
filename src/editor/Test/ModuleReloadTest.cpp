#include <array>
#include <atomic>
#include <fstream>
#include <malloc.h>
#include <set>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>

#include "LoaderFixture.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/* Files of module copies whose code is mapped. A sanitizer that names a place in the code keeps parts
   of the file mapped that can't be executed. */
std::set<std::string> mappedCopies() {
    std::set<std::string> out;
    std::istringstream maps{Testing::readFile("/proc/self/maps")};
    std::string range, permissions;
    for(std::string rest; maps >> range >> permissions && std::getline(maps, rest);) {
        const std::size_t i = rest.find("/quillmere-module-");
        if(i != std::string::npos && permissions.find('x') != std::string::npos)
            out.insert(rest.substr(i));
    }
    return out;
}

std::size_t mappingCount() {
    std::istringstream maps{Testing::readFile("/proc/self/maps")};
    std::size_t out = 0;
    for(std::string line; std::getline(maps, line);)
        ++out;
    return out;
}

std::size_t openFileCount() {
    std::size_t out = 0;
    for(const auto& entry: std::filesystem::directory_iterator{"/proc/self/fd"})
        out += entry.path().empty() ? 0 : 1;
    return out;
}

/* Of 90 reloads, each of which leaves nothing with glibc 2.36; other ones may keep some notes */
constexpr std::size_t AllowedHeapGrowth = 4096;

constexpr const char* ReloadLine = "[info] Module Fixture (" QUILLMERE_BUILD_TYPE
                                   " build) was reloaded";

struct ModuleReloadTest: LoaderFixture {
    ModuleReloadTest() {
        install("Panel1", "Fixture");
        loader.loadAll(now);
    }

    ModuleLoader loader{folder.path(), host};
};

TEST_F(ModuleReloadTest, RenamedFileTakesOver) {
    ASSERT_THAT(titles(loader), ElementsAre("Fixture 1"));
    install("Panel2", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 2"));
    EXPECT_THAT(lines(), ElementsAre(ReloadLine));
}

TEST_F(ModuleReloadTest, HostPointersAreKept) {
    install("Panel2", "Fixture");
    settle(loader);
    EXPECT_EQ(&loader.panels()[0]->editor(), application.editor.get());
    loader.panels()[0]->update();
    EXPECT_EQ(data.frame, 1u);
    EXPECT_EQ(ImGui::GetCurrentContext(), context);
}

TEST_F(ModuleReloadTest, OldFileIsUnmapped) {
    const std::set<std::string> before = mappedCopies();
    ASSERT_EQ(before.size(), 1u);
    install("Panel2", "Fixture");
    settle(loader);
    const std::set<std::string> after = mappedCopies();
    ASSERT_EQ(after.size(), 1u);
    EXPECT_NE(*before.begin(), *after.begin());
}

/* As a linker does it that truncates the file and writes it piece by piece, with pauses so long that
   the file seems to be left alone */
TEST_F(ModuleReloadTest, FileThatIsWrittenSlowlyInPlaceHarmsNothing) {
    const std::string next = Testing::readFile(QUILLMERE_FIXTURES "/Panel2/Fixture.so");
    const std::size_t piece = next.size() / 10 + 1;
    std::ofstream out{folder.file("Fixture.so"), std::ios::binary};
    for(std::size_t i = 0; i < next.size(); i += piece) {
        out.write(next.data() + i, std::streamsize(std::min(piece, next.size() - i))).flush();
        settle(loader);
        loader.poll(now += ModuleWatch::RetryTime);
        ASSERT_THAT(titles(loader), ElementsAre("Fixture 1")) << i;
        loader.panels()[0]->update();
    }
    out.close();
    EXPECT_FALSE(settle(loader));
    /* The file is whole, but nobody has said so yet */
    ASSERT_THAT(titles(loader), ElementsAre("Fixture 1"));
    folder.write("Fixture.conf", Testing::readFile(QUILLMERE_FIXTURES "/Panel2/Fixture.conf"));
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 2"));
    EXPECT_THAT(lines(),
        ElementsAre(::testing::MatchesRegex("\\[warn\\] Module .*Fixture.so isn't loaded yet: its "
                                            "file has [0-9]+ bytes, but its .conf says [0-9]+; "
                                            "it's tried again"),
            ReloadLine));
}

TEST_F(ModuleReloadTest, FileWithoutItsMetadataLeavesTheOldOneOpen) {
    const std::string conf = Testing::readFile(folder.file("Fixture.conf"));
    install("Panel2", "Fixture");
    folder.write("Fixture.conf", conf);
    EXPECT_FALSE(settle(loader));
    EXPECT_FALSE(loader.poll(now += std::chrono::hours{1}));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 1"));
    EXPECT_THAT(lines(), SizeIs(1));

    folder.write("Fixture.conf", Testing::readFile(QUILLMERE_FIXTURES "/Panel2/Fixture.conf"));
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Fixture 2"));
}

TEST_F(ModuleReloadTest, ModuleThatDoesNotFitClosesThePanelAndItsStateIsKept) {
    claim("Fixture", "library", "9.9.9");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(mappedCopies(), IsEmpty());

    install("Panel2", "Fixture");
    EXPECT_TRUE(settle(loader));
    ASSERT_THAT(titles(loader), ElementsAre("Fixture 2"));
    EXPECT_EQ(&loader.panels()[0]->editor(), application.editor.get());
}

TEST_F(ModuleReloadTest, FileThatDoesNotLoadKeepsThePanelClosedAndItsState) {
    namespace Fs = std::filesystem;
    for(const char* const suffix: {".so", ".conf"})
        Fs::copy_file(std::string{QUILLMERE_FIXTURES "/WrongVersion/WrongVersion"} + suffix,
            folder.file(std::string{"Fixture"} + suffix), Fs::copy_options::overwrite_existing);
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), IsEmpty());
    EXPECT_THAT(loader.failedModules(), ElementsAre("Fixture"));
    EXPECT_THAT(mappedCopies(), IsEmpty());
    log(LogLevel::Info, "in between");
    EXPECT_THAT(lines(), Contains("[info] in between"));

    install("Panel2", "Fixture");
    EXPECT_TRUE(settle(loader));
    ASSERT_THAT(titles(loader), ElementsAre("Fixture 2"));
    EXPECT_THAT(loader.failedModules(), IsEmpty());
    EXPECT_EQ(&loader.panels()[0]->editor(), application.editor.get());
}

/* deinit() of any panel removes the one callback of the process */
TEST_F(ModuleReloadTest, LogReachesTheConsoleAfterAPanelLetGo) {
    loader.panels()[0]->deinit();
    install("Panel2", "Fixture");
    settle(loader);
    log(LogLevel::Info, "still here");
    EXPECT_THAT(lines(), Contains("[info] still here"));
}

/* Draws the panels that are open, of which the console needs a server */
struct ModuleDrawingTest: LoaderFixture {
    ModuleDrawingTest() {
        application.editor->serverSource = Corrade::Containers::pointer<NoServer>();
        application.editor->javaScriptLines = Corrade::Containers::pointer<StringArray>();
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.DisplaySize = {1920.0f, 360.0f};
        io.DeltaTime = 1.0f / 60.0f;
        unsigned char* pixels;
        int width, height;
        io.Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
    }

    struct NoServer: ServerSource {
        StringArrayView& serverLines() override { return lines; }
        StringArray lines;
    };

    void drawFrame() {
        ImGui::NewFrame();
        ImGui::SetWindowSize("Console", {1900.0f, 300.0f});
        for(EditorView* const panel: loader.panels()) {
            panel->update();
            panel->draw();
        }
        ImGui::Render();
    }

    /* A line takes a frame to be measured and one to be scrolled to. Spaces draw nothing. */
    bool isShown(const char* const text) {
        for(int i = 0; i != 3; ++i)
            drawFrame();
        return bool(Testing::placeOfText(text));
    }

    ModuleLoader loader{folder.path(), host};
};

/* The console's panel, the real one, shows what's said of another module meanwhile */
TEST_F(ModuleDrawingTest, ConsoleShowsLinesWhileAnotherModuleIsReloadedInVain) {
    installFrom(QUILLMERE_MODULES, "ConsoleView");
    install("Panel1", "Fixture");
    loader.loadAll(now);
    ASSERT_THAT(titles(loader), ElementsAre("Console", "Fixture 1"));
    log(LogLevel::Info, "before");
    EXPECT_TRUE(isShown("before"));

    install("OtherImGui", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Console"));
    EXPECT_TRUE(isShown("anImDrawIdxofsize4,butthisis2"));
    log(LogLevel::Info, "afterwards");
    EXPECT_TRUE(isShown("afterwards"));

    install("Panel2", "Fixture");
    EXPECT_TRUE(settle(loader));
    EXPECT_THAT(titles(loader), ElementsAre("Console", "Fixture 2"));
    EXPECT_TRUE(isShown("build)wasloaded"));
}

/* Logs numbered lines and notes which of them were certainly logged outside of any reload */
class Logger {
public:
    explicit Logger(std::string name, const std::atomic<unsigned>& reloads):
        _name{std::move(name)},
        _reloads{reloads},
        _thread{[this] { run(); }} {}

    void stop() {
        _isStopping = true;
        _thread.join();
    }

    /** @brief How many lines were logged outside of reloads. Any thread. */
    std::size_t outsideCount() const { return _outsideCount; }

    /* Once it has stopped */
    const std::vector<std::string>& all() const { return _all; }
    const std::vector<std::string>& outsideOfReloads() const { return _outside; }

private:
    void run() {
        while(!_isStopping) {
            const std::string line = _name + " " + std::to_string(_all.size());
            const unsigned before = _reloads;
            log(LogLevel::Info, line.c_str());
            if(before % 2 == 0 && _reloads == before) {
                _outside.push_back("[info] " + line);
                _outsideCount = _outside.size();
            }
            _all.push_back("[info] " + line);
            std::this_thread::yield();
        }
    }

    std::string _name;
    const std::atomic<unsigned>& _reloads;
    std::vector<std::string> _all, _outside;
    std::atomic<std::size_t> _outsideCount{0};
    std::atomic<bool> _isStopping{false};
    std::thread _thread;
};

std::multiset<std::string> fileLines(const std::string& folder) {
    std::multiset<std::string> out;
    for(const auto& entry: std::filesystem::directory_iterator{folder}) {
        std::istringstream text{Testing::readFile(entry.path().string())};
        for(std::string line; std::getline(text, line);)
            out.insert(line.substr(25));
    }
    return out;
}

/* Modules that are exchanged a hundred times, by turns with the first and the second of two builds.
   The console is exchanged with itself, which its file's age alone tells. */
struct RepeatedReload {
    const char* name;
    const char* module;
    std::array<const char*, 2> folders;
    std::array<const char*, 2> titles;
};

constexpr RepeatedReload RepeatedReloads[]{
    {"Fixture", "Fixture", {QUILLMERE_FIXTURES "/Panel2", QUILLMERE_FIXTURES "/Panel1"},
        {"Fixture 2", "Fixture 1"}},
    {"Console", "ConsoleView", {QUILLMERE_MODULES, QUILLMERE_MODULES}, {"Console", "Console"}},
};

void PrintTo(const RepeatedReload& reload, std::ostream* const out) { *out << reload.name; }

std::string repeatedReloadName(const ::testing::TestParamInfo<RepeatedReload>& reload) {
    return reload.param.name;
}

struct RepeatedReloadTest: ModuleDrawingTest, ::testing::WithParamInterface<RepeatedReload> {
    RepeatedReloadTest() {
        installFrom(GetParam().folders[1], GetParam().module);
        loader.loadAll(now);
    }

    void reload(const int i) {
        const std::size_t build = std::size_t(i % 2);
        installFrom(GetParam().folders[build], GetParam().module);
        ASSERT_TRUE(settle(loader)) << i;
        ASSERT_THAT(titles(loader), ElementsAre(GetParam().titles[build])) << i;
        ASSERT_THAT(mappedCopies(), SizeIs(1)) << i;
    }
};

TEST_P(RepeatedReloadTest, HundredReloadsLeaveNothingBehind) {
    std::size_t mappings = 0, files = 0, heap = 0;
    for(int i = 1; i <= 100; ++i) {
        ASSERT_NO_FATAL_FAILURE(reload(i));
        drawFrame();
        application.consoleLines.clear();
        if(i == 10) {
            mappings = mappingCount();
            files = openFileCount();
            heap = mallinfo2().uordblks;
        }
    }
    EXPECT_EQ(openFileCount(), files);
    /* A sanitizer's allocator maps memory as it likes and doesn't count what is in use */
    if(Testing::IsSanitized)
        return;
    EXPECT_LE(mappingCount(), mappings + 2);
    EXPECT_LT(mallinfo2().uordblks, heap + AllowedHeapGrowth);
}

TEST_P(RepeatedReloadTest, HundredReloadsLoseNoLineOfTwoThreads) {
    const Testing::TemporaryFolder logs;
    setLogDir(logs.path().c_str());
    std::atomic<unsigned> reloads{0};
    Logger first{"first", reloads}, second{"second", reloads};
    const std::array<Logger*, 2> loggers{&first, &second};
    for(int i = 1; i <= 100; ++i) {
        ++reloads;
        reload(i);
        ++reloads;
        if(HasFatalFailure())
            break;
        drawFrame();
        /* However little the threads get to run there's something to look for after each reload */
        for(const Logger* const logger: loggers)
            for(const std::size_t before = logger->outsideCount();
                logger->outsideCount() == before;)
                std::this_thread::yield();
    }
    for(Logger* const logger: loggers)
        logger->stop();
    closeLogFile();

    const std::multiset<std::string> inFile = fileLines(logs.path());
    const std::vector<std::string> shown = lines();
    const std::multiset<std::string> inConsole{shown.begin(), shown.end()};
    for(const Logger* const logger: loggers) {
        EXPECT_GE(logger->outsideOfReloads().size(), HasFatalFailure() ? 0u : 100u);
        for(const std::string& line: logger->all())
            ASSERT_EQ(inFile.count(line), 1u) << line;
        for(const std::string& line: logger->outsideOfReloads())
            ASSERT_EQ(inConsole.count(line), 1u) << line;
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, RepeatedReloadTest, ::testing::ValuesIn(RepeatedReloads), repeatedReloadName);

}}

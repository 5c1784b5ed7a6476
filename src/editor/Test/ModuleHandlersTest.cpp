/* Functions of a real module that hear of changes, while the module is closed and opened */

#include <Corrade/Containers/StringStl.h>
#include <gmock/gmock.h>

#include "LoaderFixture.h"
#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ModuleHandlersTest: LoaderFixture {
    ModuleHandlersTest() {
        using namespace Corrade;
        application.project = Containers::pointer<ProjectFile>();
        application.changeManager = Containers::pointer<ChangeManager>(*application.project);
        install("Listening", "Listening");
        loader->loadAll(now);
    }

    void change(const char* const path) {
        application.changeManager->pushChange(path, rapidjson::Value{++value}, false);
    }

    std::vector<std::string> newLines() {
        std::vector<std::string> out = lines();
        const std::lock_guard<std::mutex> lock{application.logMutex};
        application.consoleLines.clear();
        return out;
    }

    std::unique_ptr<ModuleLoader> loader = std::make_unique<ModuleLoader>(folder.path(), host);
    int value = 0;
};

TEST_F(ModuleHandlersTest, FunctionOfAModuleIsCalledUnderACopyOfItsKey) {
    change("/objects/a");
    EXPECT_THAT(newLines(), ElementsAre("[info] Witness heard 1"));
}

TEST_F(ModuleHandlersTest, ClosedModuleHearsOfNothingAndItsFunctionsWereDestroyedBefore) {
    loader = nullptr;
    EXPECT_THAT(newLines(), ElementsAre("[info] Witness destroyed"));
    change("/objects/a");
    change("/failing");
    application.changeManager->reset(*application.project);
    change("/objects/a");
    EXPECT_THAT(newLines(), IsEmpty());
}

TEST_F(ModuleHandlersTest, ReloadedModuleHearsOnceOfEachChange) {
    for(int i = 0; i != 20; ++i) {
        install("Listening", "Listening");
        ASSERT_TRUE(settle(*loader));
        EXPECT_THAT(newLines(),
            ElementsAre("[info] Witness destroyed",
                "[info] Module Listening (" QUILLMERE_BUILD_TYPE " build) was reloaded"));
        change("/objects/a");
        EXPECT_THAT(newLines(), ElementsAre("[info] Witness heard 1"));
    }
}

TEST_F(ModuleHandlersTest, FunctionsStayWhenTheHistoryIsReset) {
    application.changeManager->reset(*application.project);
    change("/objects/a");
    EXPECT_THAT(newLines(), ElementsAre("[info] Witness heard 1"));
}

TEST_F(ModuleHandlersTest, ExceptionOfAModuleDoesNotLeaveIt) {
    change("/failing");
    EXPECT_THAT(newLines(),
        ElementsAre("[error] Listening failed at a change of \"failing\": it's of the module"));
    change("/objects/a");
    EXPECT_THAT(newLines(), ElementsAre("[info] Witness heard 1"));
}

TEST_F(ModuleHandlersTest, ModuleThatFailedIsForgottenToo) {
    loader->closeFailed(loader->panels()[0], "tested");
    EXPECT_THAT(newLines(),
        ElementsAre("[info] Witness destroyed", "[error] Module Listening was closed: tested"));
    change("/objects/a");
    EXPECT_THAT(newLines(), IsEmpty());
}

}}

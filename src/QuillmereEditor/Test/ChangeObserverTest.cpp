#include "QuillmereEditor/ChangeObserver.h"

#include <memory>

#include <Corrade/Containers/StringStl.h>
#include <gmock/gmock.h>

#include "changeFixture.h"

namespace QuillmereEngine { namespace Test { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Notes: public ChangeObserver {
public:
    explicit Notes(std::vector<std::string>& out): _out(out) {}

    void changeWritten(const Corrade::Containers::StringView path,
        const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue) override {
        _out.push_back(
            std::string{path.data(), path.size()} + " " + text(oldValue) + "->" + text(newValue));
    }

    void historyReset() override { _out.emplace_back("reset"); }

private:
    static std::string text(const rapidjson::Value* const value) {
        return value ? RapidJsonUtils::toJson(*value) : "()";
    }

    std::vector<std::string>& _out;
};

struct ChangeObserverTest: ChangeFixture {
    ChangeObserverTest() {
        setDocument("{\"a\":1}");
        manager.addObserver(*observer);
    }

    std::vector<std::string> written;
    std::unique_ptr<Notes> observer = std::make_unique<Notes>(written);
};

TEST_F(ChangeObserverTest, HearsOfEachWritingInItsOrder) {
    push("/a", "2");
    push("/b", "3");
    push("/b", "4", true);
    manager.pushRemoval("/a");
    manager.undoLast();
    manager.redoLastUndo();
    EXPECT_THAT(written,
        ElementsAre("/a 1->2", "/b ()->3", "/b ()->4", "/a 2->()", "/a ()->2", "/a 2->()"));
}

TEST_F(ChangeObserverTest, HearsOfAGroupBeforeItIsClosed) {
    manager.beginGroup();
    push("/a", "2");
    push("/b", "3");
    EXPECT_THAT(written, ElementsAre("/a 1->2", "/b ()->3"));
    manager.commit();
    EXPECT_EQ(written.size(), 2u);
    manager.undoLast();
    EXPECT_THAT(written, ElementsAre("/a 1->2", "/b ()->3", "/b 3->()", "/a 2->1"));
}

/* A handler's change is written after the one that it heard of */
TEST_F(ChangeObserverTest, HearsOfAChangeBeforeTheHandlersDo) {
    manager.addChangeHandler(
        "a", [this](const Change&, auto, void*) { push("/b", "0"); }, nullptr);
    push("/a", "2");
    EXPECT_THAT(written, ElementsAre("/a 1->2", "/b ()->0"));
}

TEST_F(ChangeObserverTest, HearsOfNothingThatIsRefused) {
    const std::string error = errorsOf([this] { push("no pointer", "1"); });
    EXPECT_EQ(error, "ChangeManager::pushChange(): no pointer is not a JSON pointer\n");
    EXPECT_THAT(written, IsEmpty());
}

TEST_F(ChangeObserverTest, StaysWhenTheHistoryIsReset) {
    manager.reset(project);
    push("/a", "2");
    EXPECT_THAT(written, ElementsAre("reset", "/a 1->2"));
}

TEST_F(ChangeObserverTest, StopsWithItsEndOrTheManagers) {
    {
        ChangeManager other{project};
        std::vector<std::string> outliving;
        Notes second{outliving};
        other.addObserver(second);
        EXPECT_TRUE(second.isObserving());
    }
    observer = nullptr;
    push("/a", "2");
    EXPECT_THAT(written, IsEmpty());

    Notes outliving{written};
    {
        ChangeManager other{project};
        other.addObserver(outliving);
    }
    EXPECT_FALSE(outliving.isObserving());
    manager.addObserver(outliving);
    push("/a", "3");
    EXPECT_THAT(written, ElementsAre("/a 2->3"));
}

using ChangeObserverDeathTest = ChangeObserverTest;

TEST_F(ChangeObserverDeathTest, ObserverOfTwoManagersAborts) {
    ChangeManager other{project};
    EXPECT_DEATH(other.addObserver(*observer),
        "^ChangeManager::addObserver\\(\\): the observer observes a manager already\n$");
    EXPECT_DEATH(other.removeObserver(*observer),
        "^ChangeManager::removeObserver\\(\\): the observer doesn't observe this manager\n$");
}

}}}

#include "editor/PanelEvent.h"

#include <stdexcept>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/EditorView.h"
#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;

/* Writes down what it's told and accepts what it's asked to */
class RecordingView: public EditorView {
public:
    explicit RecordingView(PluginManager::AbstractManager& manager, const char* const name,
        std::vector<std::string>& record):
        EditorView{manager, name},
        _name{name},
        _record{record} {}

    const char* title() const override { return _name; }
    void draw() override {}

    void mouseMoveEvent(MouseMoveEvent& event) override { note("move", event); }
    void mousePressEvent(MouseEvent& event) override { note("press", event); }
    void mouseReleaseEvent(MouseEvent& event) override { note("release", event); }
    void mouseScrollEvent(MouseScrollEvent& event) override { note("scroll", event); }
    void keyPressEvent(KeyEvent& event) override { note("key press", event); }
    void keyReleaseEvent(KeyEvent& event) override { note("key release", event); }
    void exitEvent(ExitEvent& event) override { note("exit", event); }

    bool accepts = false;
    bool throws = false;

private:
    template<class T> void note(const char* const what, T& event) {
        _record.push_back(std::string{_name} + " " + what);
        if(throws)
            throw std::runtime_error{"no events today"};
        event.accepted = accepts;
    }

    const char* _name;
    std::vector<std::string>& _record;
};

/* Knows the modules that the views say they come from */
struct Modules {
    Modules() {
        for(const char* const name: {"A", "B", "C"}) {
            folder.write(std::string{name} + ".so", "");
            folder.write(std::string{name} + ".conf", "");
        }
        manager.setPluginDirectory(folder.path());
    }

    Testing::TemporaryFolder folder;
    PluginManager::Manager<AbstractModule> manager{folder.path()};
};

struct PanelEventTest: ::testing::Test {
    bool deliverToAll(PanelEvent event) {
        return deliver(event, {&a, &b, &c}, [](EditorView&, const auto& call) {
            try {
                call();
            } catch(const std::runtime_error&) {}
        });
    }

    Modules modules;
    std::vector<std::string> record;
    RecordingView a{modules.manager, "A", record}, b{modules.manager, "B", record},
        c{modules.manager, "C", record};
};

struct EventOfKind {
    const char* name;
    PanelEvent event;
};

const EventOfKind EventsOfAllKinds[]{
    {"move", MouseMoveEvent{}},
    {"press", MousePress{}},
    {"release", MouseRelease{}},
    {"scroll", MouseScrollEvent{}},
    {"key press", KeyPress{}},
    {"key release", KeyRelease{}},
    {"exit", ExitEvent{}},
};

TEST_F(PanelEventTest, EveryKindReachesItsFunctionInTheOrderOfThePanels) {
    for(const EventOfKind& kind: EventsOfAllKinds) {
        record.clear();
        EXPECT_FALSE(deliverToAll(kind.event)) << kind.name;
        const std::string name = kind.name;
        EXPECT_THAT(record, ElementsAre("A " + name, "B " + name, "C " + name));
    }
}

TEST_F(PanelEventTest, PanelsBehindTheOneThatAcceptsAreNotTold) {
    b.accepts = true;
    for(const EventOfKind& kind: EventsOfAllKinds) {
        record.clear();
        EXPECT_TRUE(deliverToAll(kind.event)) << kind.name;
        const std::string name = kind.name;
        EXPECT_THAT(record, ElementsAre("A " + name, "B " + name));
    }
}

TEST_F(PanelEventTest, PanelsBehindTheOneThatThrowsAreTold) {
    a.throws = true;
    b.accepts = true;
    EXPECT_TRUE(deliverToAll(ExitEvent{}));
    EXPECT_THAT(record, ElementsAre("A exit", "B exit"));
}

TEST_F(PanelEventTest, WithoutPanelsNothingIsAccepted) {
    PanelEvent event = ExitEvent{};
    EXPECT_FALSE(deliver(event, {}, [](EditorView&, const auto& call) { call(); }));
}

}}

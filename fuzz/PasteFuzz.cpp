/* Any text on the clipboard, pasted onto a property of every kind: each is what it was, or has a
   value of the kind and size it had. Then every widget draws whatever there is, and all is undone. */

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <imgui.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"
#include "testing/HeadlessFrame.h"

using namespace Corrade;
using namespace QuillmereEngine;

namespace {

constexpr const char* Document =
    R"({"null":null,"true":true,"false":false,"integer":7,"double":2.5,"string":"text",)"
    R"("empty":[],"pair":[1,2],"vector":[1,2,3],"colour":[1,0.5,0,1],"list":["a","b"],)"
    R"("object":{"a":1},"a/b~c":{"":"x"},"nested":[[1,2],{"b":null}],)"
    R"("objects":{"o1":{"name":"Lamp"},"o2":{"name":"Box"}}})";

void expect(const bool condition, const char* const what, const std::string& path) {
    if(condition)
        return;
    std::fprintf(stderr, "%s: %s\n", path.c_str(), what);
    std::abort();
}

struct Editor {
    explicit Editor(Testing::HeadlessFrame& headless): frame(headless) {
        project.document->Parse(Document);
        ui.project = &project;
        ui.changeManager = &manager;
    }

    void run(const std::function<void()>& draw) {
        frame.run([&] {
            ImGui::Begin("Panel");
            draw();
            ImGui::End();
        });
    }

    std::vector<std::string> keys() const {
        std::vector<std::string> out;
        for(const auto& member: project.document->GetObject())
            out.push_back(member.name.GetString());
        return out;
    }

    Testing::HeadlessFrame& frame;
    ProjectFile project;
    ChangeManager manager{project};
    Ui ui;
};

/* Inside of others, of an element and of a key with escapes, and of something that isn't there */
constexpr const char* DeepPaths[]{"object/a", "a~1b~0c/", "nested/0", "nested/1/b", "vector/2",
    "vector/3", "missing", "string/0"};

bool isKept(const rapidjson::Value& before, const rapidjson::Value& after) {
    return before.GetType() == after.GetType() &&
        (!before.IsArray() || before.Size() == after.Size());
}

std::string escaped(const std::string& key) { return key == "a/b~c" ? "a~1b~0c" : key; }

void paste(Editor& editor, const std::string& name) {
    const std::string path = "/" + name;
    rapidjson::MemoryPoolAllocator<> pool;
    const rapidjson::Value before = RapidJsonUtils::copy(
        *editor.project.getValue(path.c_str(), false), pool);
    const std::string whole = RapidJsonUtils::toJson(*editor.project.document);
    const std::size_t changes = editor.manager.changeCount();
    editor.ui.pushScope(name.c_str());
    editor.ui.pasteValue();
    for(std::size_t i = 0; i != name.size(); ++i)
        if(name[i] == '/')
            editor.ui.popScope();
    editor.ui.popScope();
    const rapidjson::Value& after = *editor.project.getValue(path.c_str(), false);
    expect(isKept(before, after), "another kind or size", path);
    expect(editor.manager.changeCount() != changes ||
            RapidJsonUtils::toJson(*editor.project.document) == whole,
        "changed, but the history doesn't know", path);
}

/* The deep ones first, as the others may be replaced by what has no such parts */
void pasteEverywhere(Editor& editor) {
    for(const char* const path: DeepPaths)
        paste(editor, path);
    for(const std::string& key: editor.keys())
        paste(editor, escaped(key));
}

void drawEverything(Ui& ui, const char* const key) {
    int selected = 0;
    ui.text(key);
    ui.inputFloat(key);
    ui.inputInt(key, 1, 0);
    ui.inputFloat3(key);
    ui.inputInt4(key);
    ui.colorEdit3(key);
    const rapidjson::Value& value = *ui.project->getValue(("/" + std::string{key}).c_str(), false);
    if(!value.IsArray() || value.Size() > 3)
        ui.colorEdit4(key);
    ui.inputFloat2(key);
    ui.inputFloat4(key);
    ui.inputInt2(key);
    ui.inputInt3(key);
    ui.checkboxUnlabled(key);
    ui.checkboxBit(key, 31, nullptr);
    ui.checkbox(key);
    ui.checkboxBits(key, 10, {});
    ui.inputEnum(key, {"a", "b"});
    ui.inputText(key);
    ui.inputTextMultiline(key);
    ui.renameable(key);
    ui.stringList(key, selected);
    ui.selectResource(key, "objects", false);
    ui.selectResourceName(key, "objects");
    ui.fileSelect(key, "Title", {});
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    static Testing::HeadlessFrame frame;
    frame.clipboard.assign(reinterpret_cast<const char*>(data), size);

    std::ostringstream warnings;
    const Utility::Warning silence{&warnings, Utility::Warning::Flag::NoNewlineAtTheEnd};
    Editor editor{frame};
    const std::string before = RapidJsonUtils::toJson(*editor.project.document);
    editor.run([&] { pasteEverywhere(editor); });
    editor.run([&] {
        for(const std::string& key: editor.keys())
            drawEverything(editor.ui, escaped(key).c_str());
    });
    for(std::size_t i = editor.manager.changeCount(); i != 0; --i)
        editor.manager.undoLast();
    expect(RapidJsonUtils::toJson(*editor.project.document) == before, "not undone", "/");
    return 0;
}

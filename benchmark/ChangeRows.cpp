/* The history against what it's made of. Every body edits the same document in the same order; the
   documents of a body and its yardstick are their own, so that neither warms the other's memory. */

#include <algorithm>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <QUndoStack>
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/StaticMap.h"
#include "Ratio.h"
#include "host/ProjectFile.h"

using namespace Corrade;
using namespace QuillmereEngine;

namespace QuillmereBenchmark {

namespace {

constexpr int ObjectCount = 10000;
/* Edits of one iteration: enough for the history to grow as it does in use */
constexpr std::size_t EditCount = 10000;

rapidjson::Value vector3(const float x, rapidjson::MemoryPoolAllocator<>& allocator) {
    rapidjson::Value out{rapidjson::kArrayType};
    out.PushBack(x, allocator).PushBack(2.0f, allocator).PushBack(3.0f, allocator);
    return out;
}

void make(rapidjson::Document& document) {
    auto& allocator = document.GetAllocator();
    rapidjson::Value objects{rapidjson::kArrayType};
    for(int i = 0; i != ObjectCount; ++i) {
        rapidjson::Value object{rapidjson::kObjectType};
        const std::string name = "An object with the number " + std::to_string(i);
        object.AddMember("name", rapidjson::Value{name.c_str(), allocator}, allocator);
        object.AddMember("translation", vector3(float(i), allocator), allocator);
        object.AddMember("visible", true, allocator);
        objects.PushBack(object, allocator);
    }
    document.SetObject().AddMember("objects", objects, allocator);
}

void fill(rapidjson::Document& document) {
    static const std::unique_ptr<rapidjson::Document> original = [] {
        auto out = std::make_unique<rapidjson::Document>();
        make(*out);
        return out;
    }();
    document.CopyFrom(*original, document.GetAllocator());
}

/* Where all documents lie, one at a time. Fresh memory would have to come from the kernel page by page,
   which takes longer than the edits, and for how long depends on what else runs. */
std::vector<char>& documentMemory() {
    static std::vector<char> instance(std::size_t{1} << 25);
    return instance;
}

struct DocumentPool: rapidjson::MemoryPoolAllocator<> {
    DocumentPool(): MemoryPoolAllocator{documentMemory().data(), documentMemory().size()} {}
};

struct Edit {
    std::string path;
    rapidjson::Value value;
};

/* Scattered over the document, names and translations in turn */
class Edits {
public:
    Edits() {
        std::mt19937 random{17};
        for(std::size_t i = 0; i != EditCount; ++i) {
            const std::string object = "/objects/" + std::to_string(random() % ObjectCount);
            if(i % 2)
                _edits.push_back({object + "/name", nameAt(i)});
            else
                _edits.push_back({object + "/translation", vector3(float(i), _allocator)});
        }
    }

    const std::vector<Edit>& all() const { return _edits; }

private:
    rapidjson::Value nameAt(const std::size_t i) {
        const std::string name = "A name that was given to it in edit " + std::to_string(i);
        return rapidjson::Value{name.c_str(), _allocator};
    }

    rapidjson::MemoryPoolAllocator<> _allocator;
    std::vector<Edit> _edits;
};

const std::vector<Edit>& edits() {
    static const Edits instance;
    return instance.all();
}

void nothing(const Change&, Containers::ArrayView<const std::string>, void*) {}

/* None of them is part of a path of the edits */
constexpr const char* HandlerKeys[]{"animation", "body", "camera", "debug", "fog", "gravity",
    "light", "material", "mesh", "parent", "physics", "scale", "script", "skybox", "texture",
    "view"};

class History {
    DocumentPool _pool;

public:
    explicit History(const bool hasHandlers = false) {
        project.document.emplace(rapidjson::kObjectType, &_pool);
        fill(*project.document);
        if(hasHandlers)
            for(const char* const key: HandlerKeys)
                manager.addChangeHandler(key, nothing, nullptr);
    }

    void push() {
        for(const Edit& edit: edits())
            manager.pushChange(edit.path.c_str(), edit.value, false);
    }

    ProjectFile project;
    ChangeManager manager{project};
};

/* What one writes who needs an undo for the weekend: RapidJSON's pointers and copies, a vector */
class Handwritten {
    DocumentPool _pool;

public:
    Handwritten() { fill(document); }

    void push() {
        for(const Edit& edit: edits())
            push(edit);
    }

    void undo() {
        for(std::size_t i = entries.size(); i--;)
            rapidjson::Pointer{entries[i].path.c_str()}.Set(document, entries[i].oldValue);
    }

    void redo() {
        for(Entry& entry: entries)
            rapidjson::Pointer{entry.path.c_str()}.Set(document, entry.newValue);
    }

    rapidjson::Document document{rapidjson::kObjectType, &_pool};

private:
    struct Entry {
        std::string path;
        rapidjson::Value oldValue, newValue;
    };

    void push(const Edit& edit) {
        auto& allocator = document.GetAllocator();
        const rapidjson::Pointer pointer{edit.path.c_str()};
        const rapidjson::Value* const present = pointer.Get(document);
        entries.push_back({edit.path, rapidjson::Value{*present, allocator},
            rapidjson::Value{edit.value, allocator}});
        pointer.Set(document, edit.value);
    }

    std::vector<Entry> entries;
};

/* The same edit as a command of Qt's undo framework */
class EditCommand: public QUndoCommand {
public:
    explicit EditCommand(rapidjson::Document& document, const Edit& edit):
        _document(document),
        _path{edit.path},
        _oldValue{*rapidjson::Pointer{edit.path.c_str()}.Get(document), document.GetAllocator()},
        _newValue{edit.value, document.GetAllocator()} {}

    void undo() override { rapidjson::Pointer{_path.c_str()}.Set(_document, _oldValue); }
    void redo() override { rapidjson::Pointer{_path.c_str()}.Set(_document, _newValue); }

private:
    rapidjson::Document& _document;
    std::string _path;
    rapidjson::Value _oldValue, _newValue;
};

/* Runs a part of what a history goes through, on a fresh one each time: pools only grow, and the
   tenth run on the same one would measure the machine's memory */
template<class Subject, class Prepare, class Run>
Body measured(std::function<std::unique_ptr<Subject>()> make, Prepare prepare, Run run) {
    return [make, prepare, run](benchmark::State& state) {
        edits();
        for(auto _: state) {
            state.PauseTiming();
            std::unique_ptr<Subject> subject = make();
            prepare(*subject);
            state.ResumeTiming();
            run(*subject);
            state.PauseTiming();
            subject.reset();
            state.ResumeTiming();
        }
    };
}

template<class Subject> std::function<std::unique_ptr<Subject>()> fresh() {
    return [] { return std::make_unique<Subject>(); };
}

void undoAll(History& history) {
    for(std::size_t i = 0; i != EditCount; ++i)
        history.manager.undoLast();
}

void redoAll(History& history) {
    for(std::size_t i = 0; i != EditCount; ++i)
        history.manager.redoLastUndo();
}

void addHistoryRows() {
    const auto unprepared = [](auto&) {};
    const auto push = [](auto& subject) { subject.push(); };
    addRow({"change/push", "loop on RapidJSON", 1.3,
        measured<History>(fresh<History>(), unprepared, push),
        measured<Handwritten>(fresh<Handwritten>(), unprepared, push)});
    addRow({"change/push-16-handlers", "loop on RapidJSON", 1.7,
        measured<History>([] { return std::make_unique<History>(true); }, unprepared, push),
        measured<Handwritten>(fresh<Handwritten>(), unprepared, push)});
    addRow({"change/undo", "loop on RapidJSON", 1.3,
        measured<History>(fresh<History>(), push, undoAll),
        measured<Handwritten>(
            fresh<Handwritten>(), push, [](Handwritten& subject) { subject.undo(); })});
    addRow({"change/redo", "loop on RapidJSON", 1.3,
        measured<History>(
            fresh<History>(),
            [](History& history) {
                history.push();
                undoAll(history);
            },
            redoAll),
        measured<Handwritten>(
            fresh<Handwritten>(),
            [](Handwritten& subject) {
                subject.push();
                subject.undo();
            },
            [](Handwritten& subject) { subject.redo(); })});
}

void roundTrip(History& history) {
    history.push();
    undoAll(history);
    redoAll(history);
}

struct QtHistory {
    QtHistory() { fill(document); }

    DocumentPool pool;
    rapidjson::Document document{rapidjson::kObjectType, &pool};
    QUndoStack stack;
};

void roundTripInQt(QtHistory& history) {
    for(const Edit& edit: edits())
        history.stack.push(new EditCommand{history.document, edit});
    while(history.stack.canUndo())
        history.stack.undo();
    while(history.stack.canRedo())
        history.stack.redo();
}

void addRoundTripRow() {
    const auto unprepared = [](auto&) {};
    addRow({"change/round-trip", "QUndoStack", 0.9,
        measured<History>(fresh<History>(), unprepared, roundTrip),
        measured<QtHistory>(fresh<QtHistory>(), unprepared, roundTripInQt)});
}

std::vector<std::string> keysOf(const std::size_t count) {
    std::vector<std::string> keys;
    for(std::size_t i = 0; i != count; ++i)
        keys.push_back("component" + std::to_string(i * 7919 % 10007));
    return keys;
}

/* In a random order: in a fixed cycle the branches of the search would be learned by heart */
std::vector<const char*> lookupsIn(const std::vector<std::string>& keys) {
    std::mt19937 random{3};
    std::vector<const char*> out;
    for(int i = 0; i != 4096; ++i)
        out.push_back(keys[random() % keys.size()].c_str());
    return out;
}

const char* const* bareSearch(const char* const* const keys, const std::size_t count,
    const char* const key, const std::size_t n) {
    std::size_t first = 0, last = count;
    while(first != last) {
        const std::size_t middle = (first + last) / 2;
        if(std::strncmp(keys[middle], key, n) < 0)
            first = middle + 1;
        else
            last = middle;
    }
    return first != count && std::strncmp(keys[first], key, n) == 0 ? keys + first : nullptr;
}

template<class Find>
void lookUp(benchmark::State& state, const std::vector<const char*>& lookups, const Find& find) {
    std::size_t i = 0;
    for(auto _: state) {
        const char* const key = lookups[i++ % lookups.size()];
        benchmark::DoNotOptimize(find(key, std::strlen(key) + 1));
    }
}

void addFindRow(const std::size_t count) {
    const auto body = [count](benchmark::State& state) {
        const std::vector<std::string> keys = keysOf(count);
        StaticMap<Containers::Pointer<int>> map;
        map.grow(count);
        for(const std::string& key: keys)
            map.put(key.c_str(), Containers::pointer<int>(1));
        map.compile();
        lookUp(state, lookupsIn(keys),
            [&map](const char* const key, const std::size_t n) { return map.findn(key, n); });
    };
    const auto yardstick = [count](benchmark::State& state) {
        const std::vector<std::string> keys = keysOf(count);
        std::vector<const char*> sorted;
        for(const std::string& key: keys)
            sorted.push_back(key.c_str());
        std::sort(sorted.begin(), sorted.end(),
            [](const char* const a, const char* const b) { return std::strcmp(a, b) < 0; });
        lookUp(state, lookupsIn(keys), [&sorted](const char* const key, const std::size_t n) {
            return bareSearch(sorted.data(), sorted.size(), key, n);
        });
    };
    addRow({"change/findn/" + std::to_string(count), "strncmp over sorted pointers", 1.1, body,
        yardstick});
}

/* Big blocks, such as the array of the entries, are mapped and counted apart from the others */
std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/* What an entry of an existing member costs: in the document's pool its two copies and the document's
   own, apart from that its path, the two values that the copies hang on and its place in the array of
   the entries, which has room for more of them. */
void printEntrySize(
    const std::string& kind, const char* const path, const rapidjson::Value& value) {
    ProjectFile project;
    fill(*project.document);
    ChangeManager manager{project};
    const std::size_t pool = project.allocator().Size(), room = project.allocator().Capacity();
    const std::size_t heap = heapInUse();
    constexpr int count = 100000;
    for(int i = 0; i != count; ++i)
        manager.pushChange(path, value, false);
    /* The pool has its memory from the same heap */
    const std::size_t withPool = heapInUse() - heap;
    const std::size_t withoutPool = withPool - (project.allocator().Capacity() - room);
    printFigure("change/entry-of-" + kind + "/heap", double(withoutPool) / count, "bytes");
    printFigure("change/entry-of-" + kind + "/pool",
        double(project.allocator().Size() - pool) / count, "bytes");
}

void printEntrySizes() {
    printEntrySize("an-int", "/objects/1234/visible", rapidjson::Value{1});
    printEntrySize("a-string", "/objects/1234/name",
        rapidjson::Value{rapidjson::StringRef("A name of an object, 34 bytes long")});
}

/* A drag of a vector: each step leaves the entry's copy and the document's, 48 bytes each */
void printDragSize() {
    ProjectFile project;
    fill(*project.document);
    ChangeManager manager{project};
    rapidjson::MemoryPoolAllocator<> values;
    manager.pushChange("/first", rapidjson::Value{1}, false);
    manager.pushChange("/objects/7/translation", vector3(0.0f, values), true);
    const std::size_t pool = project.allocator().Size();
    for(int i = 0; i != 10000; ++i)
        manager.pushChange("/objects/7/translation", vector3(float(i), values), true);
    printFigure(
        "change/drag-of-10000-steps/pool", double(project.allocator().Size() - pool), "bytes");
    printFigure("change/drag-of-10000-steps/entries", double(manager.changeCount() - 1), "entries");
}

}

void addChangeRows() {
    addHistoryRows();
    addFindRow(16);
    addFindRow(64);
    addFindRow(1024);
    addRoundTripRow();
    printEntrySizes();
    printDragSize();
}

}

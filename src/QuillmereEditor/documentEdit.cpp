#include "QuillmereEditor/documentEdit.h"

#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>
#include <rapidjson/pointer.h>

#include "QuillmereEditor/changeLocation.h"
#include "QuillmereEditor/changePath.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

rapidjson::Pointer pointerTo(const Containers::StringView path) {
    return rapidjson::Pointer{std::string{path}.c_str(), path.size()};
}

bool isEmptyContainer(const rapidjson::Value* const value) {
    return value &&
        ((value->IsObject() && value->ObjectEmpty()) || (value->IsArray() && value->Empty()));
}

/* The loop ends below the root: an empty /objects is a part of the project's shape, an empty
   /objects/3/components isn't */
void removeAt(rapidjson::Document& document, const ChangeLocation& location) {
    using Pointer = ChangeLocation::Pointer;
    const Pointer& pointer = location.pointer();
    pointer.Erase(document);
    /* By components and not by the text, in which a URI fragment has one character more */
    for(std::size_t count = pointer.GetTokenCount(); count > 2; --count) {
        const Pointer container{pointer.GetTokens(), count - 1};
        if(!isEmptyContainer(container.Get(document)))
            return;
        container.Erase(document);
    }
}

void setAt(rapidjson::Document& document, const ChangeLocation& location,
    const rapidjson::Value& newValue) {
    rapidjson::Value copy = RapidJsonUtils::copy(newValue, document.GetAllocator());
    /* What is there already is found already */
    if(location.value())
        *location.value() = copy;
    else
        location.pointer().Create(document) = copy;
}

/* Inserting by appending and exchanging with each neighbour in turn: the values are moved, none is
   copied, and a reference to an element stays in the array */
void insertInto(rapidjson::Value& array, const rapidjson::SizeType index, rapidjson::Value& value,
    rapidjson::Document& document) {
    array.PushBack(value, document.GetAllocator());
    for(rapidjson::SizeType i = array.Size() - 1; i > index; --i)
        array[i].Swap(array[i - 1]);
}

void insertAt(rapidjson::Document& document, const ChangeLocation& location,
    const rapidjson::Value& newValue) {
    const rapidjson::Pointer parent = pointerTo(parentPath(location.path()));
    const bool existed = parent.Get(document);
    rapidjson::Value& value = parent.Create(document);
    if(!existed)
        value.SetArray();
    /* Tools that sort crash reports match on this text, the place in it included. So it stays as it
       is, whatever line it comes from. */
    CORRADE_ASSERT(value.IsArray(),
        "Assertion value.IsArray() failed at src/QuillmereEditor/ChangeManager:247", );

    const auto index = rapidjson::SizeType(indexValue(lastComponent(location.path())));
    rapidjson::Value copy = RapidJsonUtils::copy(newValue, document.GetAllocator());
    if(index < value.Size())
        insertInto(value, index, copy, document);
    else
        location.pointer().Create(document) = copy;
}

void createAt(
    ProjectFile& project, const ChangeLocation& location, const rapidjson::Value& newValue) {
    rapidjson::Document& document = *project.document;
    const bool isIndex = indexKind(lastComponent(location.path())) != IndexKind::None;
    const rapidjson::Pointer parent = pointerTo(parentPath(location.path()));

    if(const rapidjson::Value* const value = parent.Get(document)) {
        if(!value->IsObject() && isIndex)
            insertAt(document, location, newValue);
        else
            setAt(document, location, newValue);
        return;
    }

    /* Members that are numbers by name, such as a map from identifiers, have a default that says
       so: it's a plain value. Without one a number is an index. */
    const std::string path{location.path()};
    const rapidjson::Value* const standard = project.getValue(path.c_str(), true);
    if(standard && !standard->IsObject() && !standard->IsArray()) {
        parent.Create(document).SetObject();
        setAt(document, location, newValue);
    } else if(isIndex) {
        insertAt(document, location, newValue);
    } else {
        setAt(document, location, newValue);
    }
}

}

void writeChange(ProjectFile& project, const ChangeLocation& location,
    const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue) {
    if(!newValue)
        removeAt(*project.document, location);
    else if(!oldValue)
        createAt(project, location, *newValue);
    else
        setAt(*project.document, location, *newValue);
}

}

#include "plugins/outline/resourceTypes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> typesOf(const std::string& json) {
    rapidjson::Document document;
    document.Parse(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json;
    return resourceTypes(document);
}

TEST(ResourceTypesTest, ObjectsOfObjectsInTheirOrder) {
    EXPECT_THAT(typesOf(R"({"name": "x", "meshes": {"a": {}}, "objects": {"1": {}}, "list": [{}],
        "settings": {"gravity": 1}, "empty": {}, "clips": {"b": {"name": "B"}}})"),
        ElementsAre("meshes", "clips"));
}

TEST(ResourceTypesTest, NamesThatCannotBeDraggedAreLeftOut) {
    const std::string longest(32, 'x');
    EXPECT_THAT(typesOf("{\"" + longest + "\": {\"a\": {}}, \"" + longest +
                    "y\": {\"a\": {}}, \"\": {\"a\": {}}}"),
        ElementsAre(longest));
}

TEST(ResourceTypesTest, DocumentThatIsNoObjectHasNone) {
    for(const char* const json: {"null", "1", "\"objects\"", "[{\"a\": {}}]", "{}"})
        EXPECT_THAT(typesOf(json), IsEmpty()) << json;
}

}}

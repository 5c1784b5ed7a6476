/* The project that comes with the editor, in front of the inspector */

#include <set>
#include <sstream>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "plugins/inspector/InspectorView.h"
#include "plugins/inspector/objectMember.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"
#include "testing/ProjectHost.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

using ::testing::IsSupersetOf;

struct SampleProjectTest: ::testing::Test {
    SampleProjectTest() { EXPECT_TRUE(host.project().load(QUILLMERE_SAMPLE_PROJECT)); }

    const rapidjson::Value& objects() { return *host.project().getValue("/objects", true); }

    /* How a value is drawn, for arrays with their size */
    static void addShapes(const rapidjson::Value& value, std::set<std::string>& out) {
        const ValueShape shape = shapeOf(value);
        std::string name = std::to_string(int(shape));
        if(shape == ValueShape::Integers || shape == ValueShape::Numbers)
            name += "x" + std::to_string(value.Size());
        out.insert(name);
        if(value.IsObject())
            for(const auto& member: value.GetObject())
                addShapes(member.value, out);
    }

    static std::string shape(const ValueShape shape, const int size = 0) {
        return std::to_string(int(shape)) + (size ? "x" + std::to_string(size) : "");
    }

    Testing::ProjectHost host{"{}", {500.0f, 1200.0f}};
};

TEST_F(SampleProjectTest, EveryObjectIsShownWithoutAWarningAndAChange) {
    InspectorView view{host.modules, "InspectorView"};
    host.init(view);
    const std::string before = host.document();
    std::ostringstream warnings;
    const Utility::Warning redirectWarning{&warnings};
    Testing::InputDriver input{host.frame, [&] {
                                   ImGui::SetNextWindowPos({0.0f, 0.0f});
                                   ImGui::SetNextWindowSize({500.0f, 1200.0f});
                                   view.draw();
                               }};
    for(const auto& object: objects().GetObject()) {
        host.data.selectedObject = object.name.GetString();
        input.idle(3);
        EXPECT_TRUE(Testing::placeOfText("translation")) << object.name.GetString();
    }
    EXPECT_EQ(warnings.str(), "");
    EXPECT_EQ(host.document(), before);
    EXPECT_EQ(host.changes().changeCount(), 0);
    view.deinit();
}

/* So that whoever opens it sees all that the inspector can do */
TEST_F(SampleProjectTest, EveryKnownMemberAndEveryShapeOccur) {
    std::set<std::string> keys, shapes;
    std::set<std::size_t> colors;
    for(const auto& object: objects().GetObject()) {
        addShapes(object.value, shapes);
        for(const auto& member: object.value.GetObject())
            keys.insert(member.name.GetString());
        if(object.value.HasMember("color"))
            colors.insert(object.value["color"].Size());
    }
    EXPECT_THAT(keys,
        IsSupersetOf({"active", "animation", "color", "deleted", "layers", "lightType", "material",
            "mesh", "name", "notes", "rotation", "scale", "shadows", "tags", "target", "texture",
            "translation", "type"}));
    EXPECT_THAT(shapes,
        IsSupersetOf(
            {shape(ValueShape::Boolean), shape(ValueShape::Integer), shape(ValueShape::Number),
                shape(ValueShape::Text), shape(ValueShape::Texts), shape(ValueShape::Object),
                shape(ValueShape::Integers, 2), shape(ValueShape::Integers, 3),
                shape(ValueShape::Integers, 4), shape(ValueShape::Numbers, 2),
                shape(ValueShape::Numbers, 3), shape(ValueShape::Numbers, 4)}));
    EXPECT_EQ(colors, (std::set<std::size_t>{3, 4}));
}

/* What one object refers to is there, and of its type */
TEST_F(SampleProjectTest, ReferencesLeadSomewhere) {
    constexpr struct {
        const char *key, *type;
    } References[]{{"mesh", "meshes"}, {"material", "materials"}, {"target", "objects"}};
    for(const auto& object: objects().GetObject()) {
        for(const auto& reference: References)
            if(object.value.HasMember(reference.key)) {
                EXPECT_TRUE((*host.project().document)[reference.type].HasMember(
                    object.value[reference.key]))
                    << object.name.GetString() << " " << reference.key;
            }
        if(object.value.HasMember("animation")) {
            EXPECT_TRUE(
                host.project().resourceByName("animations", object.value["animation"].GetString()))
                << object.name.GetString();
        }
    }
}

}}

#include "QuillmereEditor/Ui.h"

#include <Corrade/Utility/Assert.h>
#include <imgui.h>

#include "QuillmereEditor/uiProperty.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr float FloatSpeed = 0.1f;
constexpr float IntSpeed = 1.0f;

/* An array of T as long as the one that Draw takes. All of them are alike but for that. */
template<class T, std::size_t count>
bool editArray(Ui& ui, const UiProperty& property, bool (*const draw)(T (&values)[count])) {
    T values[count];
    property.read(values);
    property.drawLabel();
    return property.finish(
        draw(values), [&] { return jsonArray(values, ui.project->allocator()); }, Merge::Yes);
}

}

bool Ui::inputFloat(const char* const label) {
    const UiProperty property{*this, label};
    float value = property.number();
    property.drawLabel();
    return property.finish(
        ImGui::DragFloat("##val", &value, FloatSpeed, 0.0f, 0.0f, "%.3f", 0),
        [&] { return jsonNumber(value); }, Merge::Yes);
}

bool Ui::inputFloat2(const char* const label) {
    return editArray<float, 2>(*this, UiProperty{*this, label}, [](float(&values)[2]) {
        return ImGui::DragFloat2("##val", values, FloatSpeed, 0.0f, 0.0f, "%.3f", 0);
    });
}

bool Ui::inputFloat3(const char* const label) {
    return editArray<float, 3>(*this, UiProperty{*this, label}, [](float(&values)[3]) {
        return ImGui::DragFloat3("##val", values, FloatSpeed, 0.0f, 0.0f, "%.3f", 0);
    });
}

bool Ui::inputFloat4(const char* const label) {
    return editArray<float, 4>(*this, UiProperty{*this, label}, [](float(&values)[4]) {
        return ImGui::DragFloat4("##val", values, FloatSpeed, 0.0f, 0.0f, "%.3f", 0);
    });
}

bool Ui::inputInt(const char* const label, const int speed, const int minimum) {
    const UiProperty property{*this, label};
    int value = property.integer();
    property.drawLabel();
    return property.finish(
        ImGui::DragInt("##val", &value, float(speed), minimum, 0, "%d", 0),
        [&] { return jsonNumber(value); }, Merge::Yes);
}

bool Ui::inputInt2(const char* const label) {
    return editArray<int, 2>(*this, UiProperty{*this, label},
        [](int(&values)[2]) { return ImGui::DragInt2("##val", values, IntSpeed, 0, 0, "%d", 0); });
}

bool Ui::inputInt3(const char* const label) {
    return editArray<int, 3>(*this, UiProperty{*this, label},
        [](int(&values)[3]) { return ImGui::DragInt3("##val", values, IntSpeed, 0, 0, "%d", 0); });
}

bool Ui::inputInt4(const char* const label) {
    return editArray<int, 4>(*this, UiProperty{*this, label},
        [](int(&values)[4]) { return ImGui::DragInt4("##val", values, IntSpeed, 0, 0, "%d", 0); });
}

bool Ui::colorEdit3(const char* const label) {
    return editArray<float, 3>(*this, UiProperty{*this, label},
        [](float(&values)[3]) { return ImGui::ColorEdit3("##val", values, 0); });
}

bool Ui::colorEdit4(const char* const label) {
    const UiProperty property{*this, label};
    CORRADE_ASSERT(!property.value().IsArray() || property.value().Size() > 3,
        "Ui::colorEdit4(): Json array for" << label << "too small", false);
    return editArray<float, 4>(
        *this, property, [](float(&values)[4]) { return ImGui::ColorEdit4("##val", values, 0); });
}

}

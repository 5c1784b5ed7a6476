#include "QuillmereEditor/Ui.h"

#include <algorithm>
#include <cstring>
#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/FormatStl.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/uiProperty.h"
#include "QuillmereEditor/uiTextBuffer.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Widgets nest, so a few larger steps do where each level would be a small one */
constexpr std::size_t LeastScopeGrowth = 64;

}

Ui& Ui::pushScope(const char* const name, unsigned int* const id) {
    const char* segment = name;
    for(const char* slash; (slash = std::strchr(segment, '/')); segment = slash + 1)
        if(slash != segment)
            ImGui::PushID(segment, slash);
    const ImGuiID segmentId = ImGui::GetID(segment);
    if(id)
        *id = segmentId;
    /* Pushes what PushID() would, which makes a hash of the segment once more */
    ImGui::PushOverrideID(segmentId);

    const std::size_t length = std::strlen(scopePath(*this));
    const std::size_t separator = *name == '/' ? 0 : 1;
    const std::size_t nameSize = std::strlen(name) + 1;
    const std::size_t needed = length + separator + nameSize;
    if(needed > scope.size())
        growZeroed(scope, std::max(needed, scope.size() + LeastScopeGrowth));
    if(separator)
        scope[length] = '/';
    std::memcpy(scope.data() + length + separator, name, nameSize);
    return *this;
}

Ui& Ui::pushScope(const unsigned long index, unsigned int* const id) {
    return pushScope(Utility::formatString("{}", index).c_str(), id);
}

Ui& Ui::popScope() {
    CORRADE_ASSERT(*scopePath(*this), "Ui::popScope(): push/pop mismatch", *this);
    if(char* const slash = std::strrchr(scope.data(), '/'))
        *slash = '\0';
    ImGui::PopID();
    return *this;
}

void Ui::pushFlags(const Flags added) {
    Containers::arrayAppend<Containers::ArrayMallocAllocator>(flagStack, flags);
    flags |= added;
}

void Ui::popFlags() {
    flags = flagStack.back();
    Containers::arrayRemoveSuffix<Containers::ArrayMallocAllocator>(flagStack);
}

int Ui::textResizeCallback(ImGuiInputTextCallbackData* const data) {
    if(data->EventFlag != ImGuiInputTextFlags_CallbackResize)
        return 0;
    auto& array = *static_cast<Containers::Array<char>*>(data->UserData);
    if(data->BufSize <= int(array.size()))
        return 0;
    growZeroed(array, std::size_t(data->BufSize));
    data->Buf = array.data();
    return 0;
}

}

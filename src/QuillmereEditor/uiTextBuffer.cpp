#include "QuillmereEditor/uiTextBuffer.h"

#include <algorithm>
#include <cstring>

#include <Corrade/Containers/GrowableArray.h>

using namespace Corrade;

namespace QuillmereEngine {

void growZeroed(Containers::Array<char>& array, const std::size_t size) {
    const std::size_t before = array.size();
    Containers::arrayResize<Containers::ArrayMallocAllocator>(array, Corrade::NoInit, size);
    std::fill(array.begin() + before, array.end(), '\0');
}

void fillTextBuffer(Containers::Array<char>& buffer, const char* const string) {
    const std::size_t length = std::strlen(string);
    if(buffer.size() < length + 2)
        growZeroed(buffer, length + 2);
    std::memcpy(buffer.data(), string, length + 1);
}

}

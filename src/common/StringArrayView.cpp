#include "common/StringArrayView.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>

#include "common/blockReserve.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* The one offset of every store without strings, so that an empty store needs no memory and a move
   can't fail. Not const only because arrays aren't; nobody writes to it, as growing an array
   copies it first. */
std::size_t _emptyOffset = 0;

Containers::Array<std::size_t> emptyOffsets() noexcept {
    return Containers::Array<std::size_t>{&_emptyOffset, 1, [](std::size_t*, std::size_t) {}};
}

Containers::Array<std::size_t> copyOf(const Containers::ArrayView<const std::size_t> offsets) {
    if(offsets.size() == 1)
        return emptyOffsets();
    Containers::Array<std::size_t> out = reserveArray<std::size_t>(offsets.size(), offsets.data());
    std::memcpy(out.data(), offsets.data(), offsets.size() * sizeof(std::size_t));
    return out;
}

}

StringArrayView::StringArrayView() noexcept: _offsets{emptyOffsets()} {}

StringArrayView::StringArrayView(const StringArrayView& other):
    _data{other._data},
    _offsets{copyOf(other._offsets)} {}

StringArrayView::StringArrayView(StringArrayView&& other) noexcept: StringArrayView{} {
    *this = std::move(other);
}

StringArrayView::~StringArrayView() = default;

StringArrayView& StringArrayView::operator=(const StringArrayView& other) {
    return *this = StringArrayView{other};
}

StringArrayView& StringArrayView::operator=(StringArrayView&& other) noexcept {
    if(this != &other) {
        _data = std::exchange(other._data, {});
        _offsets = std::exchange(other._offsets, emptyOffsets());
    }
    return *this;
}

void StringArrayView::append(const char*, int) {
    CORRADE_ASSERT_UNREACHABLE("StringArrayView::append(): a view doesn't own its strings", );
}

void StringArrayView::clear() {
    _data = {};
    _offsets = emptyOffsets();
}

const char* StringArrayView::get(const std::size_t i) const {
    CORRADE_ASSERT(
        i < size(), "StringArrayView::get(): invalid index" << i << "for size" << size(), {});
    return _data.data() + _offsets[i];
}

std::size_t StringArrayView::sizeOf(const std::size_t i) const {
    CORRADE_ASSERT(
        i < size(), "StringArrayView::sizeOf(): invalid index" << i << "for size" << size(), {});
    CORRADE_ASSERT(_offsets[i + 1] >= _offsets[i],
        "StringArrayView::sizeOf(): offset" << i + 1 << "is smaller than offset" << i
                                            << "previous:" << _offsets[i + 1] << "<" << _offsets[i],
        {});
    return _offsets[i + 1] - _offsets[i];
}

StringArray::StringArray() noexcept = default;

StringArray::StringArray(StringArray&& other) noexcept { *this = std::move(other); }

StringArray::~StringArray() = default;

StringArray& StringArray::operator=(StringArray&& other) noexcept {
    if(this != &other) {
        StringArrayView::operator=(std::move(other));
        _storage = std::exchange(other._storage, {});
    }
    return *this;
}

void StringArray::append(const char* const string, const int length) {
    CORRADE_ASSERT(length >= -1 && (string || length == 0),
        "StringArray::append(): expected a string with a length of at least -1 but got"
            << static_cast<const void*>(string) << "and" << length, );
    const std::size_t stringSize = length == -1 ? std::strlen(string) : std::size_t(length);
    const std::size_t begin = _offsets.back();
    const std::size_t end = begin + stringSize + 1;

    /* Growing may move the characters, and the string may be one of them */
    const bool isOwn = string >= _storage.data() && string < _storage.data() + _storage.size();
    const std::size_t ownOffset = isOwn ? std::size_t(string - _storage.data()) : 0;
    if(end + Padding > _storage.size())
        Containers::arrayResize(
            _storage, NoInit, std::max(end + Padding, _storage.size() + _storage.size() / 2));

    if(stringSize)
        std::memmove(
            _storage.data() + begin, isOwn ? _storage.data() + ownOffset : string, stringSize);
    std::memset(_storage.data() + begin + stringSize, 0, 1 + Padding);
    _data = {_storage.data(), end};
    Containers::arrayAppend(_offsets, end);
}

void StringArray::clear() {
    StringArrayView::clear();
    _storage = {};
    /* Blocks as large as this store was are hardly needed again soon */
    trimReserve();
}

StringArray filter(const StringArrayView& lines, bool (*const keep)(const char*)) {
    StringArray out;
    if(lines.isEmpty())
        return out;

    const char* const from = lines.data().data();
    const Containers::ArrayView<const std::size_t> offsets = lines.offsets();
    Containers::Array<char> storage = reserveArray<char>(
        lines.data().size() + StringArray::Padding, from);
    Containers::Array<std::size_t> kept = reserveArray<std::size_t>(offsets.size());

    /* Also a line that isn't kept is copied, the next one then lies over it: levels have no pattern,
       and a branch that's foreseen wrongly takes longer. In locals, as the compiler can't know what a
       predicate changes. */
    const std::size_t lineCount = lines.size();
    char* const to = storage.data();
    std::size_t* const keptOffsets = kept.data();
    std::size_t count = 0;
    std::size_t end = keptOffsets[0] = 0;
    for(std::size_t i = 0; i != lineCount; ++i) {
        const char* const line = from + offsets[i];
        const std::size_t size = lines.sizeOf(i);
        const bool isKept = keep(line);
        std::memcpy(to + end, line, size);
        end += isKept ? size : 0;
        count += isKept ? 1 : 0;
        keptOffsets[count] = end;
    }
    if(!count)
        return out;

    std::memset(storage.data() + end, 0, StringArray::Padding);
    out._data = {storage.data(), end};
    out._storage = std::move(storage);
    /* The block's own size doesn't matter to the deleter, so the array may be shorter */
    const auto deleter = kept.deleter();
    out._offsets = Containers::Array<std::size_t>{kept.release(), count + 1, deleter};
    return out;
}

Containers::Array<char> join(const StringArrayView& lines, const char separator) {
    if(lines.isEmpty())
        return {};

    /* Packed strings are joined already but for what stands between them, so a piece of the
       buffer is copied at a time and, while it's still in the cache, mended */
    constexpr std::size_t PieceSize = 4 * 1024;
    const char* const from = lines.data().data();
    const Containers::ArrayView<const std::size_t> offsets = lines.offsets();
    Containers::Array<char> out = reserveArray<char>(offsets.back(), from);
    std::size_t i = 1;
    for(std::size_t begin = 0; begin != out.size();) {
        const std::size_t end = std::min(begin + PieceSize, out.size());
        std::memcpy(out.data() + begin, from + begin, end - begin);
        for(; i != offsets.size() && offsets[i] <= end; ++i)
            out[offsets[i] - 1] = separator;
        begin = end;
    }
    out.back() = '\0';
    return out;
}

}

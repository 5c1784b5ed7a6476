#ifndef Quillmere_QuillmereEditor_StaticMap_h
#define Quillmere_QuillmereEditor_StaticMap_h

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Assert.h>

namespace QuillmereEngine {

/**
@brief Map from C strings to values, for many lookups and few insertions

Entries are put in any order and then sorted once by @ref compile(); only then they can be looked
up. The map grows by @ref grow() alone. Keys are borrowed: the caller keeps them alive, string
literals in practice. Equal keys aren't refused, but only one of them is ever found.
*/
template<class T> class StaticMap {
public:
    /** @brief A key and what it stands for */
    struct Entry {
        /** Borrowed */
        const char* key;
        /** Owned by the map */
        T value;
    };

    /** @brief Number of entries in use */
    std::size_t size() const { return _size; }

    /** @brief Number of entries there's room for */
    std::size_t capacity() const { return _entries.size(); }

    /** @brief Whether lookups are possible. A new map is compiled. */
    bool isCompiled() const { return _compiled; }

    /** @brief Make room for @p count more entries */
    void grow(std::size_t count);

    /**
    @brief Add an entry, after which the map has to be compiled
    @param key      NUL-terminated, borrowed. Expected not to be null.
    @param value    Moved in
    @return The stored value, until the next @ref grow() or @ref compile()

    Expects that there's room for it.
    */
    T& put(const char* key, T&& value);

    /** @brief Sort by key, in byte order. The order of equal keys is open. */
    void compile();

    /**
    @brief Look up the first @p n bytes of a key
    @return The value of the smallest key that's equal to @p key in its first @p n bytes, as
        `strncmp()` has it, null if there's none. With the NUL counted in @p n it's the key itself
        that is found.

    Expects a compiled map. Allocates nothing.
    */
    T* findn(const char* key, std::size_t n);

    /** @brief Drop all entries. The capacity stays, and so does what @ref isCompiled() says. */
    void clear() {
        clear([](T&&) {});
    }

    /**
    @brief Drop all entries and hand each value to @p release, which may keep it

    By then the map is empty. What @p release, or a destructor, puts into it stays.
    */
    template<class F> void clear(F&& release);

private:
    bool _compiled = true;
    std::size_t _size = 0;
    /* Its size is the capacity. Behind _size all values are empty and the keys mean nothing. */
    Corrade::Containers::Array<Entry> _entries;
};

template<class T> void StaticMap<T>::grow(const std::size_t count) {
    Corrade::Containers::Array<Entry> grown{Corrade::ValueInit, _entries.size() + count};
    for(std::size_t i = 0; i != _entries.size(); ++i) {
        grown[i].key = _entries[i].key;
        grown[i].value = std::move(_entries[i].value);
    }
    _entries = std::move(grown);
}

template<class T> T& StaticMap<T>::put(const char* const key, T&& value) {
    CORRADE_ASSERT(key, "StaticMap::put(): key cannot be nullptr.", _entries[_size].value);
    CORRADE_ASSERT(
        _size < _entries.size(), "StaticMap::put(): capacity exhausted.", _entries[_size].value);

    Entry& entry = _entries[_size++];
    entry.key = key;
    /* Through a temporary, as the move assignment of a Pointer exchanges and would leave in the
       caller's hands what the entry held */
    entry.value = T{std::move(value)};
    _compiled = false;
    return entry.value;
}

template<class T> void StaticMap<T>::compile() {
    std::sort(_entries.begin(), _entries.begin() + _size,
        [](const Entry& a, const Entry& b) { return std::strcmp(a.key, b.key) < 0; });
    _compiled = true;
}

template<class T> T* StaticMap<T>::findn(const char* const key, const std::size_t n) {
    CORRADE_ASSERT(_compiled, "StaticMap::find(): Map needs to be compiled.", {});

    /* The lower bound is the entry that was last found not to be less, so its comparison tells
       already whether it's the key that is looked for. The outcome of each step is a coin toss, which
       makes conditional moves faster than a branch. */
    Entry* first = _entries.data();
    std::size_t left = _size;
    int boundOrder = 1;
    while(left) {
        const std::size_t half = left / 2;
        const int order = std::strncmp(first[half].key, key, n);
        const bool isLess = order < 0;
        first = isLess ? first + half + 1 : first;
        left = isLess ? left - half - 1 : half;
        boundOrder = isLess ? boundOrder : order;
    }
    return boundOrder == 0 ? &first->value : nullptr;
}

template<class T> template<class F> void StaticMap<T>::clear(F&& release) {
    /* All are out before the first is released, which may look at the map, and even put something
       into it that has to stay */
    Corrade::Containers::Array<T> values{Corrade::ValueInit, _size};
    for(std::size_t i = 0; i != values.size(); ++i) {
        _entries[i].key = nullptr;
        values[i] = std::move(_entries[i].value);
    }
    _size = 0;
    for(T& value: values)
        release(T{std::move(value)});
}

}

#endif

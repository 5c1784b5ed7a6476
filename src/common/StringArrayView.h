#ifndef Quillmere_common_StringArrayView_h
#define Quillmere_common_StringArrayView_h

#include <cstddef>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>

namespace QuillmereEngine {

/**
@brief Many short strings packed into one character buffer

String `i` is `[offsets()[i], offsets()[i + 1])` of @ref data(). Its last character is a NUL, so
that every string is a C string as well. There is always one offset more than there are strings,
the first is 0 and they never decrease; a store without strings holds the single offset 0.

A view owns its offsets and not the characters, which have to outlive it. No locks are taken.
*/
class StringArrayView {
public:
    /** @brief A view of no strings. Allocates nothing. */
    StringArrayView() noexcept;

    /** @brief View of the same characters with offsets of its own, so one allocation */
    StringArrayView(const StringArrayView& other);

    /** @brief Leaves @p other empty */
    StringArrayView(StringArrayView&& other) noexcept;

    /* Not virtual first: the order of the virtual functions is append(), clear(), destructor */

    /**
    @brief Append a string to a store that owns its characters
    @see @ref StringArray::append(). A plain view expects that this isn't called.
    */
    virtual void append(const char* string, int length);

    /** @brief Remove all strings. What the characters belong to stays untouched. */
    virtual void clear();

    virtual ~StringArrayView();

    /** @brief View of the same characters with offsets of its own */
    StringArrayView& operator=(const StringArrayView& other);

    /** @brief Leaves @p other empty */
    StringArrayView& operator=(StringArrayView&& other) noexcept;

    /** @brief Number of strings */
    std::size_t size() const { return _offsets.size() - 1; }

    /** @brief Whether there are none */
    bool isEmpty() const { return size() == 0; }

    /**
    @brief The i-th string, NUL-terminated
    @param i    Expected to be smaller than @ref size()
    @return Valid until the store that owns the characters changes
    */
    const char* get(std::size_t i) const;

    /**
    @brief Size of the i-th string in bytes, its NUL included
    @param i    Expected to be smaller than @ref size()
    */
    std::size_t sizeOf(std::size_t i) const;

    /** @brief All characters, the NULs included */
    Corrade::Containers::ArrayView<const char> data() const { return _data; }

    /** @brief Start of every string and the end of the last */
    Corrade::Containers::ArrayView<const std::size_t> offsets() const { return _offsets; }

protected:
    /** @brief See @ref data() */
    Corrade::Containers::ArrayView<const char> _data;

    /** @brief See @ref offsets() */
    Corrade::Containers::Array<std::size_t> _offsets;
};

/**
@brief A @ref StringArrayView that owns its characters

Behind the last string of a store that was appended to, and of what @ref filter() gives, lie at
least @ref Padding readable zero bytes, so that a look at a fixed place behind a short last string
stays inside of the buffer.
*/
class StringArray: public StringArrayView {
public:
    /** @brief Zero bytes behind the last string */
    static constexpr std::size_t Padding = 32;

    /** @brief An empty store. Allocates nothing. */
    StringArray() noexcept;

    StringArray(const StringArray&) = delete;

    /** @brief Leaves @p other empty */
    StringArray(StringArray&& other) noexcept;

    /**
    @brief Append a string and a NUL behind it
    @param string   Copied; may lie in this store. Null only if @p length is 0.
    @param length   In bytes, or -1 for a string that ends with its first NUL

    Amortized constant: the store grows by half when it's full. Views of it and pointers into it
    are invalid afterwards.
    */
    void append(const char* string, int length) override;

    /** @brief Remove all strings and free their memory */
    void clear() override;

    ~StringArray() override;

    StringArray& operator=(const StringArray&) = delete;

    /** @brief Leaves @p other empty */
    StringArray& operator=(StringArray&& other) noexcept;

private:
    friend StringArray filter(const StringArrayView& lines, bool (*keep)(const char*));

    /* Its size is the room there is, not what's used of it */
    Corrade::Containers::Array<char> _storage;
};

/**
@brief The strings for which a predicate holds, in their order
@param lines    Not changed
@param keep     Gets each string once
@return Independent of @p lines

The memory of the result goes back into a small reserve when it's freed, from where the next call
takes it: in a frame that filters 100 MB the page faults of fresh memory would cost more than all
else. Only memory is kept, never content. Any thread.
*/
StringArray filter(const StringArrayView& lines, bool (*keep)(const char*));

/**
@brief All strings in their order with a separator between two neighbours
@return The text with a NUL at its end that counts into the size. Without strings the array is
    empty, size 0 and null data.

As the NUL counts, a conversion that is limited by the size never loses the last character. The
memory comes from the same reserve as with @ref filter(). Any thread.
*/
Corrade::Containers::Array<char> join(const StringArrayView& lines, char separator);

}

#endif

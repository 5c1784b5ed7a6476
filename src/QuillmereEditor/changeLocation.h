#ifndef Quillmere_QuillmereEditor_changeLocation_h
#define Quillmere_QuillmereEditor_changeLocation_h

#include <cstddef>

#include <Corrade/Containers/StringView.h>
#include <rapidjson/pointer.h>

namespace QuillmereEngine {

class ProjectFile;

/** @brief What is to be done at a location */
enum class ChangeKind {
    Removal,    /**< Nothing is to stand there */
    Creation,   /**< A value is to stand where nothing stood */
    Replacement /**< A value is to stand where another one stood */
};

/** @brief What a change from one value to another does. Null is nothing. */
ChangeKind changeKind(const rapidjson::Value* oldValue, const rapidjson::Value* newValue);

/**
@brief A path as it lies in a project's document at one moment

Looks the path up and decides, before anything is recorded or written, whether a change can be made
there. Valid until the document changes.
*/
class ChangeLocation {
public:
    /** @brief A JSON pointer with its components in memory of the location */
    using Pointer = rapidjson::GenericPointer<rapidjson::Value, rapidjson::MemoryPoolAllocator<>>;

    /**
    @brief Constructor
    @param project  Expects that it has a document
    @param path     JSON pointer, not retained by the parsed one but viewed by @ref path()
    */
    explicit ChangeLocation(const ProjectFile& project, Corrade::Containers::StringView path);

    ChangeLocation(const ChangeLocation&) = delete;
    ChangeLocation& operator=(const ChangeLocation&) = delete;

    Corrade::Containers::StringView path() const { return _path; }

    /**
    @brief Whether a change can be made here
    @param function     Name of the function that wants to, for the message
    @param kind         What it wants to do

    If not, one line on the error output says why: the path isn't a JSON pointer, an array index in
    it is negative or above `INT_MAX`, or there's no memory for the arrays that writing a value would
    have to make. A removal makes none.
    */
    bool isUsable(const char* function, ChangeKind kind) const;

    /** @brief The parsed path, if @ref isUsable() */
    const Pointer& pointer() const { return _pointer; }

    /** @brief What stands there, null if nothing does */
    rapidjson::Value* value() const { return _value; }

private:
    using Token = Pointer::Token;

    void resolve();
    void enter(const Token& token);
    const char* problemOf(const Token& token) const;
    const char* paddingProblem(ChangeKind kind) const;
    bool isLast(const Token& token) const;
    bool isMadeAnObject() const;

    /* Parsing takes as long as all the rest of a change when it has to go to the heap */
    static constexpr std::size_t UsualPointerSize = 512;

    const ProjectFile& _project;
    Corrade::Containers::StringView _path;
    alignas(std::max_align_t) char _buffer[UsualPointerSize];
    rapidjson::MemoryPoolAllocator<> _pool;
    Pointer _pointer;
    rapidjson::Value* _value = nullptr;
    /* Whether the container of the last component is there, or something in its place */
    bool _hasParent = true;
    /* Bytes of the arrays that have to be made or to grow, for the last component and for all before
       it */
    std::size_t _lastPadding = 0, _outerPadding = 0;
    const char* _problem = nullptr;
};

}

#endif

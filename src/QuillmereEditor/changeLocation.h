#ifndef Quillmere_QuillmereEditor_changeLocation_h
#define Quillmere_QuillmereEditor_changeLocation_h

#include <cstddef>

#include <Corrade/Containers/StringView.h>
#include <rapidjson/pointer.h>

namespace QuillmereEngine {

class ProjectFile;

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

    If not, one line on the error output says why: the path isn't a JSON pointer, an array index in
    it is negative or above `INT_MAX`, or there's no memory for an array of that size.
    */
    bool isUsable(const char* function) const;

    /** @brief The parsed path, if @ref isUsable() */
    const Pointer& pointer() const { return _pointer; }

    /** @brief What stands there, null if nothing does */
    rapidjson::Value* value() const { return _value; }

private:
    using Token = Pointer::Token;

    void resolve(const ProjectFile& project);
    const char* problemOf(const ProjectFile& project, const Token& token) const;
    const char* enter(const ProjectFile& project, const Token& token);
    bool isMadeAnObject(const ProjectFile& project) const;

    /* Parsing takes as long as all the rest of a change when it has to go to the heap */
    static constexpr std::size_t UsualPointerSize = 512;

    Corrade::Containers::StringView _path;
    alignas(std::max_align_t) char _buffer[UsualPointerSize];
    rapidjson::MemoryPoolAllocator<> _pool;
    Pointer _pointer;
    rapidjson::Value* _value = nullptr;
    const char* _problem = nullptr;
};

}

#endif

#ifndef Quillmere_host_ProjectFile_h
#define Quillmere_host_ProjectFile_h

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "host/MemberIndex.h"

namespace QuillmereEngine {

class ValueAccess;

/**
@brief A project: a JSON document, its file and the defaults of what it doesn't say

Places in the document are JSON pointers (RFC 6901). UI thread only.
*/
class ProjectFile {
public:
    /** @brief A project with an empty object as its document and no defaults */
    explicit ProjectFile();
    ProjectFile(const ProjectFile&) = delete;
    ProjectFile& operator=(const ProjectFile&) = delete;
    virtual ~ProjectFile();

    /** @brief Memory pool of the document. Expects that there's one. */
    virtual rapidjson::MemoryPoolAllocator<>& allocator();

    /**
    @brief Value at a path
    @param path     JSON pointer. One that isn't valid is as absent as one to nothing.
    @param strict   What to give when there's neither a value nor a default: null if true, a shared
        JSON null that nobody is to write to if false
    @return The document's value, else the default for the path. Belongs to the project; one of the
        document's is valid until the document changes.

    Fast also in objects of many members, see @ref MemberIndex. Expects that there's a document.
    */
    rapidjson::Value* getValue(const char* path, bool strict) const;

    /**
    @brief Register a default
    @param pattern  JSON pointer in which a component `*` stands for any one component. Expected to
        be valid.
    @param value    Copied

    A pattern registered again gets the new value. For a path that several match, one without `*`
    wins, and then the one that was registered first. Defaults stay when another file is loaded.
    */
    void setDefault(const char* pattern, const rapidjson::Value& value);

    /**
    @brief Find a resource by its name
    @param typeName     Key in the document's root of the object with all resources of a type
    @param name         What the "name" member of the resource equals
    @return The key of the first such resource, null if there's none. Belongs to the document and is
        valid until that changes.

    Linear in the number of resources.
    */
    const char* resourceByName(const std::string& typeName, const std::string& name) const;

    /** @brief All resources of a type, see @ref ValueAccess. Defaults aren't looked at. */
    ValueAccess operator[](const char* typeName) const;

    /** @brief One resource by its type and key, as the operator finds it but fast among many */
    ValueAccess resource(const char* typeName, const char* key) const;

    /** @brief Gets the bytes of a project's file, valid during the call */
    using TextFunction = std::function<void(Corrade::Containers::StringView text)>;

    /**
    @brief Load a file
    @param file     JSON in UTF-8, with or without a byte order mark, nested at most 10,000 deep
    @param loaded   Gets what was in the file after that worked
    @return Whether that worked. If not, one line on the error output names the file, for an error
        in the JSON with line and column, and the document stays as it was.

    Of members with the same name all are kept, for @ref save() to write them again, and the first
    is the one that is found; a warning names one of them. A @ref ChangeManager of this project has
    to be reset afterwards, its history belongs to the former document.
    */
    bool load(const std::string& file, const TextFunction& loaded = {});

    /**
    @brief Save into a file
    @param file     Replaced as a whole or, if anything goes wrong, left as it is. Keeps its mode.
    @param aboutToWrite Gets what is going to be in the file before anything is written
    @return Whether that worked. If not, one line on the error output names the file and says why.

    Keys keep the document's order. What is written here, loaded and saved again, has the same
    bytes. Expects that there's a document; one nested more than 10,000 deep isn't written, as it
    couldn't be loaded again.
    */
    bool save(const std::string& file, const TextFunction& aboutToWrite = {}) const;

    /** May be null while no project is open */
    Corrade::Containers::Pointer<rapidjson::Document> document;

private:
    struct Default {
        rapidjson::Pointer pattern;
        rapidjson::Value value;
    };

    using Path = rapidjson::GenericPointer<rapidjson::Value, rapidjson::MemoryPoolAllocator<>>;

    const rapidjson::Value* child(
        const rapidjson::Value& value, std::string_view name, rapidjson::SizeType index) const;
    const rapidjson::Value* findPlain(const char* path) const;
    const rapidjson::Value* find(const Path& path) const;
    const Default* findDefault(const Path& path) const;

    /* The values of the defaults live as long as the project, unlike the document's pool */
    rapidjson::MemoryPoolAllocator<> _defaultAllocator;
    std::vector<Default> _defaults;
    mutable rapidjson::Value _absent;
    mutable MemberIndex _memberIndex;
};

}

#endif

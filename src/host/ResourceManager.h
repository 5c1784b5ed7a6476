#ifndef Quillmere_host_ResourceManager_h
#define Quillmere_host_ResourceManager_h

namespace QuillmereEngine {

/** @brief Manages the resources of one type */
class AbstractResourceManager {
public:
    virtual ~AbstractResourceManager();

    /** @brief Key in the document's root under which the resources are. Lives as long as the
        manager. */
    virtual const char* typeName() const = 0;
};

/** @brief The objects of the scene */
class ObjectResourceManager: public AbstractResourceManager {
public:
    /** @brief "objects" */
    const char* typeName() const override;
};

}

#endif

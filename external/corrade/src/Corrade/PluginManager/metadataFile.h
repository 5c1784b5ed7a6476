#ifndef Corrade_PluginManager_metadataFile_h
#define Corrade_PluginManager_metadataFile_h

#include <Corrade/Containers/String.h>
#include <vector>

namespace Corrade { namespace PluginManager {

/** @brief What a metadata file says */
struct MetadataFile {
    std::vector<Containers::String> depends, provides;
};

/**
@brief Read a metadata file

Lines of `key=value`, keys other than `depends` and `provides` and all groups
are left out. Prints a message and returns false if the file is missing or
malformed.
*/
bool readMetadataFile(const Containers::String& path, MetadataFile& out);

/** @brief Parse the contents of a metadata file */
bool parseMetadata(Containers::StringView text, MetadataFile& out);

}}

#endif

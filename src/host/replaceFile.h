#ifndef Quillmere_host_replaceFile_h
#define Quillmere_host_replaceFile_h

#include <string>

#include <Corrade/Containers/StringView.h>

namespace QuillmereEngine {

/**
@brief Read a whole file
@param content  Gets the bytes
@param error    Gets the reason if that fails, "No such file or directory" for example
*/
bool readWholeFile(const std::string& file, std::string& content, std::string& error);

/**
@brief Give a file new content, or leave it as it is
@param file     May exist or not. A symbolic link is followed, also to where nothing is yet. What is
    there has to be a regular file; its mode stays.
@param content  All bytes of it
@param error    Gets the reason if that fails

Writes a temporary file in the same folder, makes sure that it's on the disk and puts it in the
file's place, so that a crash at any moment leaves either the old content or the new one. The
temporary file of one that exists is its owner's alone until it's complete. After a failure there's no temporary file either.
*/
bool replaceFile(
    const std::string& file, Corrade::Containers::StringView content, std::string& error);

}

#endif

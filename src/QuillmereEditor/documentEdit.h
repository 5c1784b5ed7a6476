#ifndef Quillmere_QuillmereEditor_documentEdit_h
#define Quillmere_QuillmereEditor_documentEdit_h

#include <rapidjson/document.h>

namespace QuillmereEngine {

class ChangeLocation;
class ProjectFile;

/**
@brief Write a change into a project's document
@param project      Expects that it has a document
@param location     Where, usable and looked up in the present document
@param oldValue     What stood there when the change was recorded, null if nothing did. Only whether
    it's null matters.
@param newValue     What is to stand there, null to remove what does. Copied.

A removal prunes the containers it leaves empty, but never one whose parent is the root. A creation
under an index inserts into an array and moves what follows up by one. Expects that it's not under
an index of something that's neither an array nor an object.
*/
void writeChange(ProjectFile& project, const ChangeLocation& location,
    const rapidjson::Value* oldValue, const rapidjson::Value* newValue);

}

#endif

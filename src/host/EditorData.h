#ifndef Quillmere_host_EditorData_h
#define Quillmere_host_EditorData_h

#include <string>

namespace QuillmereEngine {

/**
@brief What the panels share about the editor's present state

Owned by the host, which outlives every panel. UI thread only.
*/
struct EditorData {
    /** Frames drawn since the start */
    unsigned long long frame = 0;

    /** Key of the selected object in the project's "objects", empty while none is. The object may
        be gone: undoing its creation doesn't change the selection. */
    std::string selectedObject;

    /** What @ref Ui::pickedObject points to, so that it outlives the panel in which the user has
        picked. Not to be changed while that isn't null. */
    std::string pickedObject;
};

}

#endif

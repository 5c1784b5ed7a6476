#ifndef Quillmere_host_EditorData_h
#define Quillmere_host_EditorData_h

namespace QuillmereEngine {

/**
@brief What the panels share about the editor's present state

Owned by the host, which outlives every panel. UI thread only.
*/
struct EditorData {
    /** Frames drawn since the start */
    unsigned long long frame = 0;
};

}

#endif

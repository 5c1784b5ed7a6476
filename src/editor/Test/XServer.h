#ifndef Quillmere_editor_Test_XServer_h
#define Quillmere_editor_Test_XServer_h

#include <string>

#include "EditorProcess.h"
#include "Process.h"

namespace QuillmereEngine {

/** @brief A display of the test's own, 1280x720, without a window manager */
class XServer {
public:
    /** @brief Start it on a free display, so that several tests can run at once */
    XServer();

    /** @brief Value for `DISPLAY`. Empty if there is no server. */
    const std::string& display() const { return _display; }

    /** @brief What can be seen now */
    Picture screen() const;

    /** @brief Ask a window to close, as a window manager does whose close button was clicked.
        Gives whether it was told. */
    bool requestClose(unsigned long window) const;

private:
    Testing::TemporaryFolder _folder;
    Process _server;
    std::string _display;
};

}

#endif

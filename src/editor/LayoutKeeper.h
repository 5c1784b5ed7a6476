#ifndef Quillmere_editor_LayoutKeeper_h
#define Quillmere_editor_LayoutKeeper_h

#include <string>

#include "editor/Layout.h"

namespace QuillmereEngine {

/**
@brief Arranges the panels' windows and remembers how the user does

Not left to Dear ImGui's own settings file, as the windows have to follow the size of the work area.
UI thread, inside of a frame.
*/
class LayoutKeeper {
public:
    /**
    @param userFile     Where the user's layout is kept, empty to neither read nor write one.
        Without the file the shipped layout is taken. One that can't be read is
        reported in the log and left as it is, too.
    */
    explicit LayoutKeeper(std::string userFile);

    /** @brief Arrange the windows before they are drawn. Does nothing while the area is the same. */
    void arrange(WorkArea area);

    /** @brief Write the user's layout if it changed a while ago. To be called every frame. */
    void saveIfDue();

    /** @brief Write the user's layout if it changed, before the end */
    void saveIfChanged();

private:
    void load();
    void save();

    std::string _userFile;
    WorkArea _area;
    bool _isLoaded = false;
};

}

#endif

#ifndef Quillmere_editor_Layout_h
#define Quillmere_editor_Layout_h

#include <string>
#include <string_view>

namespace QuillmereEngine {

/** @brief Size of the area that panels share, in pixels of the interface */
struct WorkArea {
    int width = 0;
    int height = 0;
};

inline bool operator==(const WorkArea a, const WorkArea b) {
    return a.width == b.width && a.height == b.height;
}
inline bool operator!=(const WorkArea a, const WorkArea b) { return !(a == b); }

/** @brief Place and size of a window in pixels of the interface */
struct PanelRectangle {
    int x = 0, y = 0, width = 0, height = 0;
};

/**
@brief Scale a window from one work area to another
@return Each edge keeps its share of the area, so a window that touched a border or another window
    still does. At least 32x32. As it is if @p from is empty.
*/
PanelRectangle fitted(PanelRectangle rectangle, WorkArea from, WorkArea to);

/**
@brief Scale a layout to a work area
@param settings Windows as Dear ImGui saves them, and the area that they were arranged for:

        [Quillmere][WorkArea]
        Size=1280,697

    Without it the windows are left alone.
@return The settings with the windows' `Pos` and `Size` scaled and the area replaced. All other
    lines stay as they are.
*/
std::string fittedLayout(std::string_view settings, WorkArea area);

/** @brief Settings as Dear ImGui saves them together with the area they were arranged for */
std::string layoutWithArea(std::string_view settings, WorkArea area);

}

#endif

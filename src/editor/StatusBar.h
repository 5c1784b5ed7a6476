#ifndef Quillmere_editor_StatusBar_h
#define Quillmere_editor_StatusBar_h

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "editor/FeedReader.h"

namespace QuillmereEngine {

/** @brief What the status bar tells */
struct Status {
    std::size_t lineCount = 0;
    std::optional<FeedProgress> feed;
    std::vector<std::string> loadedModules, failedModules;
    std::string project;
};

/** @brief "1 line", "12,345 lines" */
std::string lineCountText(std::size_t count);

/** @brief How far a feed was read, empty once it was read to its end */
std::string feedText(const FeedProgress& feed);

/** @brief The modules that are open, a line each, to look up how they were built */
std::string loadedModulesText(const std::vector<std::string>& modules);

/** @brief Which modules failed, empty if none did */
std::string failedModulesText(const std::vector<std::string>& modules);

/** @brief Height of the bar in the present font and style */
float statusBarHeight();

/** @brief Draw the bar along the bottom of the display */
void drawStatusBar(const Status& status);

}

#endif

#ifndef Quillmere_editor_files_h
#define Quillmere_editor_files_h

#include <optional>
#include <string>

namespace QuillmereEngine {

/**
@brief All bytes of a file
@param problem  Why there is no result, as in "No such file or directory". Untouched otherwise.
*/
std::optional<std::string> readWholeFile(const std::string& path, std::string& problem);

/**
@brief Replace a file as a whole
@return Empty, or why it failed. Then a file that was there before is as it was.

Written under another name and renamed, so that nobody ever sees half of it.
*/
std::string writeWholeFile(const std::string& path, const std::string& content);

/** @brief Folder of the running program, absolute and without a slash at its end */
std::string programFolder();

/**
@brief Where this user's files of the editor lie
@return `QuillmereEngine` below `$XDG_DATA_HOME` or, if that is unset, empty or relative, below
    `~/.local/share`. Empty when there is no
    home either. Not made.
*/
std::string userDataFolder();

/** @brief A file of `share/`, in the build or installed. Empty when it's missing. */
std::string sharedFile(const std::string& name);

/**
@brief Folder of the plugin modules, in the build or installed
@return The one that exists, otherwise the first place where it was looked for
*/
std::string defaultModuleFolder();

/**
@brief Path of quillmere-script, in the build or installed
@return The one that exists, otherwise the first place where it was looked for
*/
std::string scriptProgram();

}

#endif

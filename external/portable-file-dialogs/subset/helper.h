#ifndef QuillmerePortableFileDialogs_subset_helper_h
#define QuillmerePortableFileDialogs_subset_helper_h

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

/** @file
@brief Which program shows the dialogs
*/

/* 1 takes macOS' own helper in place of those of the free desktops. Tests set it. */
#ifndef PFD_SUBSET_MACOS
#ifdef __APPLE__
#define PFD_SUBSET_MACOS 1
#else
#define PFD_SUBSET_MACOS 0
#endif
#endif

namespace pfd { namespace internal {

/** @brief A program and the options it understands */
struct helper {
    std::string name;
    std::string path; /**< Empty if there's none */
};

/**
@brief Helpers from the most wanted to the least
@param desktop  Names of the session's desktop, in lower case
*/
inline std::vector<std::string> helper_order(const std::string& desktop) {
    if(PFD_SUBSET_MACOS)
        return {"osascript"};
    std::vector<std::string> out{"zenity", "matedialog", "qarma", "kdialog", "yad"};
    const auto prefer = [&](const char* const name) {
        const auto found = std::find(out.begin(), out.end(), name);
        std::rotate(out.begin(), found, found + 1);
    };
    const auto is = [&](const char* const name) { return desktop.find(name) != std::string::npos; };
    if(is("kde") || is("plasma"))
        prefer("kdialog");
    else if(is("lxqt"))
        prefer("qarma");
    else if(is("mate"))
        prefer("matedialog");
    return out;
}

inline std::string environment(const char* const name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

/** @brief What the session says its desktop is, in lower case, empty if it doesn't say */
inline std::string session_desktop() {
    std::string out = environment("XDG_CURRENT_DESKTOP") + ":" +
        environment("XDG_SESSION_DESKTOP") + ":" + environment("DESKTOP_SESSION");
    for(char& i: out)
        if(i >= 'A' && i <= 'Z')
            i = char(i - 'A' + 'a');
    return out;
}

/**
@brief Path of a program on `$PATH`, empty if it isn't there

Without the variable in the system's own folders. Relative entries, to which the empty one belongs,
don't count: whoever put a program into the working directory would decide what runs.
*/
inline std::string find_program(const std::string& name) {
    const char* const value = std::getenv("PATH");
    const std::string path = (value ? value : "/usr/bin:/bin") + std::string{":"};
    for(std::size_t begin = 0, end; (end = path.find(':', begin)) != std::string::npos;
        begin = end + 1) {
        if(path[begin] != '/')
            continue;
        const std::string candidate = path.substr(begin, end - begin) + "/" + name;
        struct stat status;
        if(stat(candidate.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return {};
}

/** @brief The first helper that is on `$PATH` */
inline helper find_helper() {
    for(const std::string& name: helper_order(session_desktop())) {
        const std::string path = find_program(name);
        if(!path.empty())
            return {name, path};
    }
    return {};
}

/** @brief What was found, for all who use it in this process */
struct helper_cache {
    std::mutex mutex;
    bool searched = false;
    helper found;
};

inline helper_cache& cached_helper() {
    static helper_cache cache;
    return cache;
}

/** @brief The helper to use. Searches for it in the first call. */
inline helper current_helper() {
    helper_cache& cache = cached_helper();
    const std::lock_guard<std::mutex> lock{cache.mutex};
    if(!cache.searched)
        cache.found = find_helper();
    cache.searched = true;
    return cache.found;
}

/** @brief Make the next @ref current_helper() search again */
inline void rescan_helpers() {
    helper_cache& cache = cached_helper();
    const std::lock_guard<std::mutex> lock{cache.mutex};
    cache.searched = false;
}

}}

#endif

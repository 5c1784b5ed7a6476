#ifndef QuillmerePortableFileDialogs_subset_command_h
#define QuillmerePortableFileDialogs_subset_command_h

#include <algorithm>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "helper.h"

/** @file
@brief What the helpers are told and what they answer
*/

namespace pfd { namespace internal {

enum class file_kind { open_one, open_several, save, folder };

/** @brief What a file dialog is asked for */
struct file_request {
    file_kind kind = file_kind::open_one;
    std::string title;
    std::string default_path;
    std::vector<std::string> filters;
    bool confirm_overwrite = true;
};

/** @brief A description and its patterns, separated by spaces */
using file_filter = std::pair<std::string, std::string>;

/** @brief The filters as pairs. A last description without patterns is left out. */
inline std::vector<file_filter> filter_pairs(const std::vector<std::string>& filters) {
    std::vector<file_filter> out;
    for(std::size_t i = 0; i + 1 < filters.size(); i += 2)
        out.emplace_back(filters[i].empty() ? filters[i + 1] : filters[i], filters[i + 1]);
    return out;
}

inline std::string replaced(std::string text, const char from, const char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

inline bool is_folder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/** @brief With a slash behind a folder, without which zenity shows the one above with it selected */
inline std::string zenity_default_path(const std::string& path) {
    return is_folder(path) && path.back() != '/' ? path + "/" : path;
}

/** @brief For zenity 3 and what descends from it. Version 4 ignores what it dropped. */
inline std::vector<std::string> zenity_file_command(
    const helper& program, const file_request& request) {
    /* yad knows the same options, but for the one that asks for a file dialog */
    std::vector<std::string> out{program.path,
        program.name == "yad" ? "--file" : "--file-selection", "--title=" + request.title};
    if(!request.default_path.empty())
        out.push_back("--filename=" + zenity_default_path(request.default_path));
    if(request.kind == file_kind::folder)
        out.push_back("--directory");
    else if(request.kind == file_kind::save)
        out.push_back("--save");
    else if(request.kind == file_kind::open_several)
        out.insert(out.end(), {"--multiple", "--separator=\n"});
    if(request.kind == file_kind::save && request.confirm_overwrite)
        out.push_back("--confirm-overwrite");
    /* The first bar ends the description, so it can't have one itself */
    for(const file_filter& i: filter_pairs(request.filters))
        out.push_back("--file-filter=" + replaced(i.first, '|', '/') + " | " + i.second);
    return out;
}

/** @brief For KDE's dialogs. They ask before overwriting, whatever the request says. */
inline std::vector<std::string> kdialog_file_command(
    const helper& program, const file_request& request) {
    std::vector<std::string> out{program.path, "--title=" + request.title};
    if(request.kind == file_kind::folder)
        out.push_back("--getexistingdirectory");
    else if(request.kind == file_kind::save)
        out.push_back("--getsavefilename");
    else
        out.push_back("--getopenfilename");
    if(request.kind == file_kind::open_several)
        out.insert(out.end(), {"--multiple", "--separate-output"});
    /* What follows is no option, even if it looks like one */
    out.insert(out.end(), {"--", request.default_path.empty() ? "." : request.default_path});
    std::string filters;
    /* The first parenthesis begins the patterns, and bars stand between filters */
    for(const file_filter& i: filter_pairs(request.filters))
        filters += (filters.empty() ? "" : " | ") +
            replaced(replaced(replaced(i.first, '|', '/'), '(', '['), ')', ']') + " (" + i.second +
            ")";
    if(!filters.empty() && request.kind != file_kind::folder)
        out.push_back(filters);
    return out;
}

/** @brief The folder to start in, empty if there's none, and the name to propose */
inline std::pair<std::string, std::string> split_default_path(const std::string& path) {
    if(path.empty() || is_folder(path))
        return {path, ""};
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    return {is_folder(folder) ? folder : "",
        slash == std::string::npos ? path : path.substr(slash + 1)};
}

/** @brief Filename extensions of all patterns, one a line; none if one takes all files */
inline std::string filter_extensions(const std::vector<std::string>& filters) {
    std::string out;
    for(const file_filter& filter: filter_pairs(filters)) {
        const std::string patterns = filter.second + " ";
        for(std::size_t begin = 0, end; (end = patterns.find(' ', begin)) != std::string::npos;
            begin = end + 1) {
            const std::string pattern = patterns.substr(begin, end - begin);
            const std::string extension = pattern.compare(0, 2, "*.") == 0 ? pattern.substr(2)
                                                                           : std::string{};
            if(pattern.empty())
                continue;
            if(extension.empty() || extension.find_first_of("*?[") != std::string::npos)
                return {};
            out += (out.empty() ? "" : "\n") + extension;
        }
    }
    return out;
}

/**
@brief For macOS' script interpreter

All text of the user's is an argument of the script and never part of it. The system asks before it
overwrites, whatever the request says.
*/
inline std::vector<std::string> osascript_file_command(
    const helper& program, const file_request& request) {
    const bool save = request.kind == file_kind::save;
    const bool folder = request.kind == file_kind::folder;
    const auto [start, name] = split_default_path(request.default_path);
    const std::string extensions = filter_extensions(request.filters);

    std::string choose = save ? "choose file name" : folder ? "choose folder" : "choose file";
    choose += " with prompt (item 1 of argv)";
    if(!start.empty())
        choose += " default location (POSIX file (item 2 of argv))";
    if(save && !name.empty())
        choose += " default name (item 3 of argv)";
    if(!save && !folder && !extensions.empty())
        choose += " of type (paragraphs of (item 4 of argv))";
    if(request.kind == file_kind::open_several)
        choose += " with multiple selections allowed";
    return {program.path, "-e", "on run argv", "-e", "set chosen to {" + choose + "}", "-e",
        "if class of (item 1 of chosen) is list then set chosen to item 1 of chosen", "-e",
        "set out to \"\"", "-e", "repeat with i in chosen", "-e",
        "set out to out & (POSIX path of (contents of i)) & linefeed", "-e", "end repeat", "-e",
        "return text 1 thru -2 of out", "-e", "end run", "--", request.title, start, name,
        extensions};
}

/** @brief Path and arguments, empty if there's no helper */
inline std::vector<std::string> file_command(const helper& program, const file_request& request) {
    if(program.path.empty())
        return {};
    if(program.name == "kdialog")
        return kdialog_file_command(program, request);
    if(program.name == "osascript")
        return osascript_file_command(program, request);
    return zenity_file_command(program, request);
}

/** @brief Both lines of a zenity notification, in which `\n` and the like have a meaning */
inline std::string zenity_notification_text(const std::string& title, const std::string& message) {
    std::string out;
    for(const char i: replaced(title, '\n', ' ') + "\n" + message)
        out.append(i == '\\' ? 2 : 1, i);
    return out;
}

/**
@brief Path and arguments, empty if there's no helper
@param icon Index of the icon's name. One that has no name counts as the first.
*/
inline std::vector<std::string> notify_command(const helper& program, const std::string& title,
    const std::string& message, const std::size_t icon) {
    /* Icon names as freedesktop.org has them */
    constexpr const char* names[]{
        "dialog-information", "dialog-warning", "dialog-error", "dialog-question"};
    const std::string name = names[icon < 4 ? icon : 0];
    if(program.path.empty())
        return {};
    if(program.name == "osascript")
        return {program.path, "-e", "on run argv", "-e",
            "display notification (item 2 of argv) with title (item 1 of argv)", "-e", "end run",
            "--", title, message};
    if(program.name == "kdialog")
        return {
            program.path, "--title=" + title, "--icon=" + name, "--passivepopup=" + message, "5"};
    /* What yad calls a notification is an icon that waits to be clicked */
    if(program.name == "yad")
        return {program.path, "--title=" + title, "--text=" + message, "--no-markup",
            "--image=" + name, "--no-buttons", "--no-focus", "--timeout=5"};
    return {program.path, "--notification", "--window-icon=" + name,
        "--text=" + zenity_notification_text(title, message)};
}

/**
@brief The paths that a helper printed
@param multiple Whether each line is one. Else all is, newlines in the name included.
*/
inline std::vector<std::string> split_output(std::string output, const bool multiple) {
    if(!output.empty() && output.back() == '\n')
        output.pop_back();
    std::vector<std::string> out;
    std::size_t begin = 0;
    for(std::size_t end; multiple && (end = output.find('\n', begin)) != std::string::npos;
        begin = end + 1)
        out.push_back(output.substr(begin, end - begin));
    out.push_back(output.substr(begin));
    out.erase(std::remove(out.begin(), out.end(), std::string{}), out.end());
    return out;
}

}}

#endif

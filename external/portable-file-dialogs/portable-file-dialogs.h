#ifndef QuillmerePortableFileDialogs_portable_file_dialogs_h
#define QuillmerePortableFileDialogs_portable_file_dialogs_h

#include <cstdint>
#include <string>
#include <vector>

#include "subset/command.h"
#include "subset/helper.h"
#include "subset/process.h"

/** @file
@brief Native file dialogs and notifications, shown by whatever helper program the desktop has

See README.md for what is here and what isn't.
*/

namespace pfd {

/** @brief What a notification is about */
enum class icon { info = 0, warning, error, question };

/** @brief What a file dialog does differently */
enum class opt : std::uint8_t {
    none = 0,
    multiselect = 1,    /**< An open dialog takes more than one file */
    force_overwrite = 2 /**< A save dialog doesn't ask before an existing file is chosen */
};

inline opt operator|(opt a, opt b) { return opt(std::uint8_t(a) | std::uint8_t(b)); }
inline bool operator&(opt a, opt b) { return std::uint8_t(a) & std::uint8_t(b); }

/** @brief Which helper is used. Any thread. */
class settings {
public:
    /** @brief Whether there is a helper. Looks for one if nobody has yet. */
    static bool available() { return !internal::current_helper().path.empty(); }

    /** @brief Look for a helper again, in the environment as it is now */
    static void rescan() { internal::rescan_helpers(); }
};

namespace internal {

/**
@brief A dialog that's shown from construction on

The results wait for the user, however long it takes. They are empty if the dialog was cancelled,
if its helper failed, and if there is none. Protected: who wants one derives from it.
*/
class file_dialog {
protected:
    enum class type { open, save, folder };

    /**
    @param dialog_type  What can be chosen
    @param title        Title of the window
    @param default_path File or folder where the dialog starts, empty: the helper's choice
    @param filters      Pairs of a description and its patterns, separated by spaces. A last one
        without patterns is ignored.
    @param options      See @ref opt
    */
    file_dialog(type dialog_type, const std::string& title, const std::string& default_path = "",
        const std::vector<std::string>& filters = {}, opt options = opt::none):
        _multiple{dialog_type == type::open && (options & opt::multiselect)},
        _process{file_command(
                     current_helper(), request(dialog_type, title, default_path, filters, options)),
            process::output::captured} {}

    /** @brief What was chosen, the first item where it's several. Waits. */
    std::string string_result() {
        const std::vector<std::string> all = vector_result();
        return all.empty() ? std::string{} : all.front();
    }

    /** @brief All that was chosen, in the dialog's order. Waits. */
    std::vector<std::string> vector_result() {
        if(!_finished) {
            _result = split_output(_process.wait(), _multiple);
            _finished = true;
        }
        return _result;
    }

private:
    static file_request request(type dialog_type, const std::string& title,
        const std::string& default_path, const std::vector<std::string>& filters, opt options) {
        file_request out;
        out.kind = dialog_type == type::folder ? file_kind::folder
            : dialog_type == type::save        ? file_kind::save
            : options & opt::multiselect       ? file_kind::open_several
                                               : file_kind::open_one;
        out.title = title;
        out.default_path = default_path;
        out.filters = filters;
        out.confirm_overwrite = !(options & opt::force_overwrite);
        return out;
    }

    bool _multiple;
    bool _finished = false;
    process _process;
    std::vector<std::string> _result;
};

}

/** @brief Notification that's shown from construction on. Nothing waits for it. */
class notify {
public:
    notify(const std::string& title, const std::string& message, icon kind = icon::info) {
        internal::process{
            internal::notify_command(internal::current_helper(), title, message, std::size_t(kind)),
            internal::process::output::discarded}
            .detach();
    }
};

}

#endif

#ifndef Quillmere_QuillmereEditor_Tools_Test_mockPfd_portable_file_dialogs_h
#define Quillmere_QuillmereEditor_Tools_Test_mockPfd_portable_file_dialogs_h

#include <cstdint>
#include <string>
#include <vector>

/** @file
@brief What the dialogs use of portable-file-dialogs, noting what it's asked for

As narrow as the public version of the library: constructor and results are protected, types of
dialogs are named in the class, and there is nothing else.
*/

/* Inline, so that nothing has the name of a symbol in the library that we test beside */
namespace pfd { inline namespace mock {

enum class icon { info = 0, warning, error, question };

enum class opt : std::uint8_t { none = 0, multiselect = 1, force_overwrite = 2 };

struct noted {
    std::string type, title, default_path, message;
    std::vector<std::string> filters;
    opt options{};
    icon kind{};
    std::vector<std::string> answer; /* What the next dialog gives */
};

inline noted note;

class notify {
public:
    notify(std::string const& title, std::string const& message, icon kind = icon::info) {
        note.type = "notify";
        note.title = title;
        note.message = message;
        note.kind = kind;
    }
};

namespace internal {

class file_dialog {
protected:
    enum type { open, save, folder };

    file_dialog(type in_type, std::string const& title, std::string const& default_path = "",
        std::vector<std::string> const& filters = {}, opt options = opt::none) {
        note.type = in_type == open ? "open" : in_type == save ? "save" : "folder";
        note.title = title;
        note.default_path = default_path;
        note.filters = filters;
        note.options = options;
    }

    std::string string_result() {
        return note.answer.empty() ? std::string{} : note.answer.front();
    }

    std::vector<std::string> vector_result() { return note.answer; }
};

}

}}

#endif

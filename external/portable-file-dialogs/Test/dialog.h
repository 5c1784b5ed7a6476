#ifndef QuillmerePortableFileDialogs_Test_dialog_h
#define QuillmerePortableFileDialogs_Test_dialog_h

#include <string>
#include <vector>

#include <portable-file-dialogs.h>

namespace pfd { namespace {

/* The dialogs' common base as it is, whose results only its children can reach otherwise */
struct dialog: internal::file_dialog {
    using kind = type;
    explicit dialog(const kind dialog_kind, const std::string& title,
        const std::string& default_path = "", const std::vector<std::string>& filters = {},
        const opt options = opt::none):
        file_dialog{dialog_kind, title, default_path, filters, options} {}
    using file_dialog::string_result;
    using file_dialog::vector_result;
};

}}

#endif

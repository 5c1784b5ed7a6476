#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Directory.h>
#include <portable-file-dialogs.h>

#include "QuillmereEditor/Tools/System.h"

namespace QuillmereEngine {

using namespace Corrade;

namespace {

DialogAnswer _dialogAnswer = nullptr;
void* _dialogAnswerUserData = nullptr;

/* Results, and the names of the types, are for derived classes only */
class FileDialog: public pfd::internal::file_dialog {
public:
    using Type = type;

    explicit FileDialog(const Type dialogType, const DialogRequest& request,
        const pfd::opt options = pfd::opt::none):
        file_dialog{dialogType, request.title, request.defaultPath,
            std::vector<std::string>{request.filters.begin(), request.filters.end()}, options} {}

    using file_dialog::string_result;
    using file_dialog::vector_result;
};

std::string choosePath(const FileDialog::Type type, const DialogRequest& request) {
    std::string chosen;
    if(_dialogAnswer) {
        const Containers::Array<std::string> answer = _dialogAnswer(request, _dialogAnswerUserData);
        if(!answer.isEmpty())
            chosen = answer.front();
    } else
        chosen = FileDialog{type, request}.string_result();

    if(chosen.empty())
        return {};
    return Utility::Directory::fromNativeSeparators(chosen);
}

std::vector<std::string> chooseFiles(const DialogRequest& request) {
    if(_dialogAnswer) {
        const Containers::Array<std::string> answer = _dialogAnswer(request, _dialogAnswerUserData);
        return {answer.begin(), answer.end()};
    }
    return FileDialog{FileDialog::Type::open, request,
        request.type == DialogType::OpenFiles ? pfd::opt::multiselect : pfd::opt::none}
        .vector_result();
}

}

std::string openFolderDialog(const std::string& title, const std::string& defaultPath) {
    return choosePath(FileDialog::Type::folder, {DialogType::Folder, title, defaultPath, {}});
}

Containers::Array<std::string> openFileDialog(const std::string& title,
    const std::string& defaultPath, const Containers::ArrayView<const std::string> filters,
    const bool single) {
    std::vector<std::string> chosen = chooseFiles(
        {single ? DialogType::OpenOneFile : DialogType::OpenFiles, title, defaultPath, filters});
    /* Some helpers' lines can't be told from a name with a newline in it */
    if(single && chosen.size() > 1)
        chosen.resize(1);

    Containers::Array<std::string> out;
    arrayReserve(out, chosen.size());
    for(const std::string& i: chosen)
        arrayAppend(out, Utility::Directory::fromNativeSeparators(i));
    return out;
}

Containers::Array<std::string> openFileDialog(const std::string& title,
    const std::string& defaultPath, const std::initializer_list<std::string> filters,
    const bool single) {
    const Containers::Array<std::string> copy{InPlaceInit, filters};
    return openFileDialog(title, defaultPath, copy, single);
}

std::string saveFileDialog(const std::string& title, const std::string& defaultPath,
    const Containers::ArrayView<const std::string> filters) {
    return choosePath(FileDialog::Type::save, {DialogType::SaveFile, title, defaultPath, filters});
}

std::string saveFileDialog(const std::string& title, const std::string& defaultPath,
    const std::initializer_list<std::string> filters) {
    const Containers::Array<std::string> copy{InPlaceInit, filters};
    return saveFileDialog(title, defaultPath, copy);
}

void notification(
    const std::string& title, const std::string& message, const NotificationIcon icon) {
    pfd::notify{title, message, pfd::icon(icon)};
}

void setDialogAnswer(const DialogAnswer answer, void* const userData) {
    _dialogAnswer = answer;
    _dialogAnswerUserData = userData;
}

}

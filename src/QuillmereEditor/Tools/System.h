#ifndef Quillmere_QuillmereEditor_Tools_System_h
#define Quillmere_QuillmereEditor_Tools_System_h

#include <initializer_list>
#include <string>

#include <Corrade/Containers/Array.h>

/** @file
@brief What the editor asks of the operating system

All strings are UTF-8. Paths are handed on as they are, relative ones are relative to the working
directory. Any thread, unless a function says otherwise.
*/

namespace QuillmereEngine {

/**
@brief Folder for the user's own data of this application

`~/Library/Application Support/QuillmereEngine` on macOS; elsewhere `QuillmereEngine` in
`$XDG_DATA_HOME` if that is an absolute path, else in `~/.local/share`, where the home is that of the
user's entry in the system if `$HOME` isn't an absolute path. Neither created nor checked.
*/
std::string appDirectory();

/**
@brief Open a web page in the user's browser
@param url  Goes into a shell command line bare. Whoever takes it from outside has to percent-encode
    spaces and whatever means something to a shell first.

Returns when the system's opener does, usually at once. Failures are ignored.
*/
void openBrowser(const std::string& url);

/**
@brief Show a folder in the system's file browser
@param path Goes into a shell command line in double quotes. Expected to hold none of `"`, `$`,
    `` ` `` and `\`, which are not escaped.

Returns when the system's opener does, usually at once. Failures are ignored.
*/
void openWithSystemFilebrowser(const std::string& path);

/** @brief Open a file with the user's application for it. The same holds as for @ref openWithSystemFilebrowser(). */
void openWithSystemDefault(const std::string& path);

/**
@brief Run a shell command to its end
@param command  Run by `/bin/sh` with ` 2>&1` behind it
@param output   What the command prints, in any encoding and with NUL bytes if it prints such, is
    appended here
@return Wait status as `waitpid()` gives it, so 768 for an exit status of 3; 0 also if the command
    could not be started. The two can't be told apart.

When there's no memory for more of the output, the rest is dropped; a command that goes on printing
then ends by `SIGPIPE`.
*/
int runCommandCapture(const std::string& command, std::string& output);

/**
@brief Change the working directory of the whole process
@return 0, or -1 on failure with the reason in `errno`
*/
int changeDirectory(const std::string& path);

/**
@brief Copy a folder with all it holds
@param from Existing folder. Links in it are followed, their targets are copied.
@param to   Created, with its parents, where it doesn't exist. Files in it are replaced if the source
    has them, too, and left alone otherwise.
@return 0, or 1 if a file could not be copied. What was copied until then stays.

Prints a line on Corrade's debug output before each file. A folder that can't be created shows as
failed copies of the files in it; one that can't be listed counts as empty. What never ends is
left out without changing the result: @p to where the source holds it, folders in it that the copy
has reached, a folder inside of itself, which links make possible, pipes, and character devices
other than the null device, which is an empty file. A file which is its own target stays as it is.
A pipe in the place of a file's target can't be copied to.
*/
int copyRecursive(const std::string& from, const std::string& to);

/** @brief A new random UUID, 36 characters such as `3F2504E0-4F89-41D3-9A0C-0305E82C3301` */
std::string generateUUID();

/** @brief What a notification is about. The order is that of `pfd::icon`. */
enum class NotificationIcon { Info, Warning, Error, Question };

/**
@brief Let the user choose a folder
@param title        Shown by the dialog
@param defaultPath  Where it starts. Empty: wherever the desktop likes.
@return The folder with forward slashes, empty when the user cancelled or no dialog could be shown

Blocks until the dialog is closed, however long that takes. Call it on the UI thread.
*/
std::string openFolderDialog(const std::string& title, const std::string& defaultPath);

/**
@brief Let the user choose files to open
@param title        Shown by the dialog
@param defaultPath  Folder or file where it starts. Empty: wherever the desktop likes.
@param filters      Pairs of a description and its patterns, separated by spaces: `"Images",
    "*.png *.jpg"`. Not retained. Empty: all files.
@param single       `true` lets the user choose one file at most, `false` several
@return The files with forward slashes, in the dialog's order. Empty when the user cancelled or no
    dialog could be shown.

Blocks until the dialog is closed, however long that takes. Call it on the UI thread. Where several
can be chosen, a name with a newline in it doesn't come back whole.
*/
Corrade::Containers::Array<std::string> openFileDialog(const std::string& title,
    const std::string& defaultPath, Corrade::Containers::ArrayView<const std::string> filters,
    bool single);

/** @overload */
Corrade::Containers::Array<std::string> openFileDialog(const std::string& title,
    const std::string& defaultPath, std::initializer_list<std::string> filters, bool single);

/**
@brief Let the user choose a file to save to
@param title        Shown by the dialog
@param defaultPath  Folder where it starts or file that it proposes. Empty: wherever the desktop likes.
@param filters      As for @ref openFileDialog()
@return The file with forward slashes, empty when the user cancelled or no dialog could be shown. It
    need not exist; if it does, the dialog has asked whether to overwrite it.

Blocks until the dialog is closed, however long that takes. Call it on the UI thread.
*/
std::string saveFileDialog(const std::string& title, const std::string& defaultPath,
    Corrade::Containers::ArrayView<const std::string> filters);

/** @overload */
std::string saveFileDialog(const std::string& title, const std::string& defaultPath,
    std::initializer_list<std::string> filters);

/**
@brief Show a notification on the desktop

Doesn't wait for it to be shown or closed. Nothing happens where the desktop has none.
*/
void notification(const std::string& title, const std::string& message, NotificationIcon icon);

/** @brief Which dialog is asked for */
enum class DialogType {
    Folder,      /**< @ref openFolderDialog() */
    OpenOneFile, /**< @ref openFileDialog() with `single` set */
    OpenFiles,   /**< @ref openFileDialog() without it */
    SaveFile     /**< @ref saveFileDialog() */
};

/** @brief What a dialog was asked for. The references are valid during the call that gets it. */
struct DialogRequest {
    DialogType type;                /**< Which of the dialogs */
    const std::string& title;       /**< Of its window */
    const std::string& defaultPath; /**< Where it starts, empty for anywhere */
    Corrade::Containers::ArrayView<const std::string> filters; /**< Always empty for a folder */
};

/**
@brief Answers a dialog in the user's place
@param request  What is asked, valid during the call
@param userData As given to @ref setDialogAnswer()
@return The chosen paths, empty for a cancelled dialog. Where one is asked for, the first counts.

Called on the thread that asks. Expected not to throw.
*/
using DialogAnswer = Corrade::Containers::Array<std::string> (*)(
    const DialogRequest& request, void* userData);

/**
@brief Answer all dialogs without the desktop
@param answer   Has to outlive its use here, so it may not lie in a module. Null brings the
    desktop's dialogs back, as they are at first.
@param userData Handed to @p answer, not touched here

For a host without a display, and for tests. Call it on the UI thread, as the dialogs.
*/
void setDialogAnswer(DialogAnswer answer, void* userData);

}

#endif

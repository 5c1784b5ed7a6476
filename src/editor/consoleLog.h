#ifndef Quillmere_editor_consoleLog_h
#define Quillmere_editor_consoleLog_h

namespace QuillmereEngine {

class QuillmereEditorApplication;

/**
@brief Make sure that lines of the log reach the console
@param application  Has to outlive the callback

Installs the host's own log callback unless there is one. Panels install theirs when they are
initialized, and any panel that lets go of the host removes whatever there is; without this the
lines after it would be lost to the console until the next panel comes. UI thread.
*/
void ensureLogCallback(QuillmereEditorApplication& application);

}

#endif

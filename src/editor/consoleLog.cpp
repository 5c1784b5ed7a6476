#include "editor/consoleLog.h"

#include "QuillmereEditor/Tools/Log.h"
#include "host/QuillmereEditorApplication.h"

namespace QuillmereEngine {

void ensureLogCallback(QuillmereEditorApplication& application) {
    if(!getLogCallback().first)
        setLogCallback(appendConsoleLine, &application);
}

}

#include "QuillmereEditor/Change.h"

#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>

#include "QuillmereEditor/changePath.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

Utility::Debug& operator<<(Utility::Debug& debug, const Change& change) {
    const Containers::StringView path = pathText(change.path);
    if(change.oldValue)
        debug << (change.newValue ? "Change" : "Remove") << path << Utility::Debug::nospace << ":"
              << *change.oldValue;
    else
        debug << "Create" << path << Utility::Debug::nospace << ": ()";

    debug << "->";
    if(change.newValue)
        return debug << *change.newValue;
    return debug << "()";
}

}

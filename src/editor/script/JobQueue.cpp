#include "editor/script/JobQueue.h"

#include <algorithm>
#include <utility>

#include <js/CallAndConstruct.h>
#include <js/Exception.h>
#include <js/GlobalObject.h>

namespace QuillmereEngine {

JobQueue::JobQueue(JSContext* const context): _context{context} {
    JS::SetJobQueue(context, this);
    JS::SetPromiseRejectionTrackerCallback(context, trackRejection, this);
}

bool JobQueue::run(const std::function<void()>& failed) {
    while(!_jobs.empty()) {
        const JS::RootedObject job{_context, _jobs.front()};
        _jobs.pop_front();
        const JSAutoRealm realm{_context, job};
        JS::RootedValue ignored{_context};
        if(JS::Call(
               _context, JS::UndefinedHandleValue, job, JS::HandleValueArray::empty(), &ignored))
            continue;
        if(!JS_IsExceptionPending(_context))
            return false;
        failed();
    }
    return true;
}

std::vector<JS::PersistentRootedObject> JobQueue::takeUnhandled() {
    return std::exchange(_unhandled, {});
}

void JobQueue::clear() {
    _jobs.clear();
    _unhandled.clear();
}

JSObject* JobQueue::getIncumbentGlobal(JSContext* const context) {
    return JS::CurrentGlobalOrNull(context);
}

bool JobQueue::enqueuePromiseJob(JSContext* const context, JS::HandleObject, JS::HandleObject job,
    JS::HandleObject, JS::HandleObject) {
    _jobs.emplace_back(context, job);
    /* The engine runs the continuation of an await at once where it thinks that nothing waits */
    JS::JobQueueMayNotBeEmpty(context);
    return true;
}

/* Only debuggers call these two, and there's none */
void JobQueue::runJobs(JSContext*) {}
js::UniquePtr<JS::JobQueue::SavedJobQueue> JobQueue::saveJobQueue(JSContext*) { return {}; }

void JobQueue::trackRejection(JSContext* const context, bool, const JS::HandleObject promise,
    const JS::PromiseRejectionHandlingState state, void* const queue) {
    auto& unhandled = static_cast<JobQueue*>(queue)->_unhandled;
    if(state == JS::PromiseRejectionHandlingState::Unhandled) {
        unhandled.emplace_back(context, promise);
        return;
    }
    unhandled.erase(std::remove_if(unhandled.begin(), unhandled.end(),
                        [&promise](const JS::PersistentRootedObject& i) { return i == promise; }),
        unhandled.end());
}

}

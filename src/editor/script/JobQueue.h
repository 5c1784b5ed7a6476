#ifndef Quillmere_editor_script_JobQueue_h
#define Quillmere_editor_script_JobQueue_h

#include <deque>
#include <functional>
#include <vector>

#include <js/Promise.h>
#include <js/RootingAPI.h>
#include <jsapi.h>

namespace QuillmereEngine {

/**
@brief Jobs of promises, and rejections that nobody handled

Not the engine's own queue, which can't be emptied without running what is in it: jobs of a script
that was stopped must not run with the next one.
*/
class JobQueue: public JS::JobQueue {
public:
    /** @brief Becomes the context's queue, which it has to outlive */
    explicit JobQueue(JSContext* context);

    /**
    @brief Run all jobs, also those that they make
    @param failed   Called with a job's exception pending, which it takes
    @return Whether none was stopped
    */
    bool run(const std::function<void()>& failed);

    /** @brief Take the promises that were rejected and never handled, in their order */
    std::vector<JS::PersistentRootedObject> takeUnhandled();

    /** @brief Forget jobs and rejections */
    void clear();

    JSObject* getIncumbentGlobal(JSContext* context) override;
    bool enqueuePromiseJob(JSContext* context, JS::HandleObject promise, JS::HandleObject job,
        JS::HandleObject allocationSite, JS::HandleObject incumbentGlobal) override;
    void runJobs(JSContext* context) override;
    bool empty() const override { return _jobs.empty(); }

protected:
    js::UniquePtr<SavedJobQueue> saveJobQueue(JSContext* context) override;

private:
    static void trackRejection(JSContext* context, bool areErrorsMuted, JS::HandleObject promise,
        JS::PromiseRejectionHandlingState state, void* queue);

    JSContext* _context;
    std::deque<JS::PersistentRootedObject> _jobs;
    std::vector<JS::PersistentRootedObject> _unhandled;
};

}

#endif

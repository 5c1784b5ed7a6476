#ifndef Quillmere_editor_JournalThread_h
#define Quillmere_editor_JournalThread_h

#include <condition_variable>
#include <mutex>
#include <thread>

#include "editor/JournalWriter.h"

namespace QuillmereEngine {

/**
@brief Lets a journal's writer work when it's due

On a thread of its own, as the one that draws must neither wait for a slow disk nor hold up the
journal while a dialog of the desktop is open or a panel hangs.
*/
class JournalThread {
public:
    /** @param writer   Has to outlive the thread, which sets its waker */
    explicit JournalThread(JournalWriter& writer);

    JournalThread(const JournalThread&) = delete;
    JournalThread& operator=(const JournalThread&) = delete;

    /** @brief Ends the thread, and then does what is still ordered */
    ~JournalThread();

private:
    void run();
    void wakeUp();

    JournalWriter& _writer;
    std::mutex _mutex;
    std::condition_variable _condition;
    bool _isWoken = false;
    bool _isStopping = false;
    std::thread _thread;
};

}

#endif

// SPDX-License-Identifier: MIT
// Tells ThreadSanitizer what Qt's mutexes and the end of a QThread put in order: the distribution's Qt is built
// without it. The program's own calls come here, and go on to the library. Linked where that sanitizer is on.
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <QDeadlineTimer>
#include <QMutex>
#include <QThread>

namespace {

template <class Function>
Function *ofQt(const char *symbol)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, symbol));
}

// Each pass ends with an unlocked mutex, and a thread with a pass.
char lastUnlock = 0;

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static auto *const lock = ofQt<void(QMutex *)>("_ZN6QMutex4lockEv");
    lock(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    static auto *const unlock = ofQt<void(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(&lastUnlock);
    __tsan_release(this);
    unlock(this);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static auto *const wait = ofQt<bool(QThread *, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool hasEnded = wait(this, deadline);
    __tsan_acquire(&lastUnlock);
    return hasEnded;
}

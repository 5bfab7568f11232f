#include "reliability/systemfaults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

struct Reading
{
    std::string suffix;
    long after = 0;
    int error = 0;
    void (*handler)() = nullptr;
};

// Plain until a test asks for faults: Qt opens files before and after main().
bool isActive = false;
std::string *unopenable = nullptr;
int openError = 0;
Reading *reading = nullptr;
int watchError = 0;
int failureCount = 0;

bool endsWith(const std::string &text, const std::string &suffix)
{
    return text.size() >= suffix.size()
            && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int fail(int error)
{
    ++failureCount;
    errno = error;
    return -1;
}

std::string pathOf(int descriptor)
{
    char target[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, size_t(length)) : std::string();
}

} // namespace

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (isActive && unopenable && endsWith(path, *unopenable))
        return fail(openError);
    static const auto original = next<int (*)(const char *, int, ...)>("open64");
    return original(path, flags, mode);
}

extern "C" ssize_t read(int descriptor, void *buffer, size_t size)
{
    static const auto original = next<ssize_t (*)(int, void *, size_t)>("read");
    if (!isActive || !reading || !endsWith(pathOf(descriptor), reading->suffix))
        return original(descriptor, buffer, size);
    const long left = reading->after - lseek(descriptor, 0, SEEK_CUR);
    if (left > 0)
        return original(descriptor, buffer, size < size_t(left) ? size : size_t(left));
    if (void (*handler)() = reading->handler) {
        reading->handler = nullptr;
        handler();
    }
    return reading->error ? fail(reading->error) : original(descriptor, buffer, size);
}

extern "C" int inotify_init1(int flags)
{
    if (isActive && watchError == EMFILE)
        return fail(watchError);
    static const auto original = next<int (*)(int)>("inotify_init1");
    return original(flags);
}

// What Qt tries when the other one fails.
extern "C" int inotify_init()
{
    return inotify_init1(0);
}

extern "C" int inotify_add_watch(int descriptor, const char *path, std::uint32_t mask)
{
    if (isActive && watchError)
        return fail(watchError);
    static const auto original = next<int (*)(int, const char *, std::uint32_t)>(
            "inotify_add_watch");
    return original(descriptor, path, mask);
}

void SystemFaults::failOpening(const char *suffix, int error)
{
    delete unopenable;
    unopenable = suffix ? new std::string(suffix) : nullptr;
    openError = error;
    isActive = true;
}

void SystemFaults::failReading(const char *suffix, long after, int error)
{
    delete reading;
    reading = suffix ? new Reading{ suffix, after, error, nullptr } : nullptr;
    isActive = true;
}

void SystemFaults::interruptReading(const char *suffix, long after, void (*handler)())
{
    delete reading;
    reading = new Reading{ suffix, after, 0, handler };
    isActive = true;
}

void SystemFaults::failWatching(int error)
{
    watchError = error;
    isActive = true;
}

int SystemFaults::failures()
{
    return failureCount;
}

void SystemFaults::reset()
{
    isActive = false;
    failOpening(nullptr, 0);
    failReading(nullptr, 0, 0);
    watchError = 0;
    failureCount = 0;
    isActive = false;
}

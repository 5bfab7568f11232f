// The functions below stand before those of the C library, so that Qt's calls come here first.

#include "filecalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdarg>

namespace {

FileCalls calls;

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

void FileCalls::clear()
{
    calls = FileCalls();
}

FileCalls FileCalls::counted()
{
    return calls;
}

extern "C" {

int open64(const char *path, int flags, ...)
{
    static const auto real = next<int (*)(const char *, int, ...)>("open64");
    ++calls.opened;
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = va_arg(arguments, unsigned);
    va_end(arguments);
    return real(path, flags, mode);
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *result)
{
    static const auto real = next<int (*)(int, const char *, int, unsigned, struct statx *)>(
            "statx");
    // An empty path asks about a file that is open already.
    if (*path)
        ++calls.lookedUp;
    return real(folder, path, flags, mask, result);
}

int access(const char *path, int mode)
{
    static const auto real = next<int (*)(const char *, int)>("access");
    ++calls.lookedUp;
    return real(path, mode);
}

DIR *opendir(const char *path)
{
    static const auto real = next<DIR *(*)(const char *)>("opendir");
    ++calls.listed;
    return real(path);
}

} // extern "C"

#pragma once

/// Faults of the operating system on request. The executable's own open64(), read(),
/// inotify_init() and inotify_add_watch() take the place of the C library's for Qt as well, and
/// hand everything on that is not meant to fail.
namespace SystemFaults {

/// Opening of paths that end in \a suffix fails with \a error; null: none.
void failOpening(const char *suffix, int error);

/// Reading of files whose paths end in \a suffix fails with \a error, once \a after bytes have been
/// read from one; null: none.
void failReading(const char *suffix, long after, int error);

/// What is to be done, once, when \a after bytes of a file of that suffix have been read.
void interruptReading(const char *suffix, long after, void (*handler)());

/// Watching of files fails with \a error; 0: it works.
void failWatching(int error);

/// How many calls have failed on request since the last call of reset().
int failures();

/// No more faults.
void reset();

} // namespace SystemFaults

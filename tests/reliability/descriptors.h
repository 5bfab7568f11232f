#pragma once

/// What a process holds of the system's limited resources.
namespace Descriptors {

/// The files, sockets and the like that are open.
int openCount();

/// The files and folders that are watched through inotify.
int watchCount();

} // namespace Descriptors

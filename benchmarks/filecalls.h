#pragma once

/// Counts the calls to the file system that the process makes through the C library.
struct FileCalls
{
    /// Files opened.
    int opened = 0;
    /// Look-ups of a path: its kind, its size, whether it is there.
    int lookedUp = 0;
    /// Folders listed.
    int listed = 0;

    static void clear();
    static FileCalls counted();
};

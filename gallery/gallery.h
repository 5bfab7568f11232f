#pragma once

/// What the process returns.
enum ExitCode {
    Success = 0,
    /// Wrong arguments, no display to open a window on, a picture that could not be written, or one
    /// that is missing because its theme can't be applied.
    Failed = 1,
    /// The folder does not exist, holds no theme, or not the one that was asked for.
    NoThemes = 2
};

/// The whole application: reads the command line, loads the themes, and opens the window or writes
/// pictures. Returns an ExitCode.
int runGallery(int &argc, char *argv[]);

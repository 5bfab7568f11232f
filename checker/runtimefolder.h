#pragma once

/// Names a folder for what lives as long as the session where the environment has no
/// XDG_RUNTIME_DIR (no session, as for a build robot). Qt makes the folder; it reports a problem
/// when it has to find one by itself. To be called before there is an application.
void ensureRuntimeFolder();

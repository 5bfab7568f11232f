#pragma once

/// Names the folder that Qt falls back to where the environment has no XDG_RUNTIME_DIR (no session,
/// as for a build robot). Qt reports it as a problem when it has to do that by itself. To be called
/// before there is an application.
void ensureRuntimeFolder();

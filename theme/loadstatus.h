#pragma once

/// What Theme::load() and Theme::reload() return.
enum LoadStatus { Loaded = 0, Failed = 1, WaitsForParent = 2 };

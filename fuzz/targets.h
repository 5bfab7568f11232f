#pragma once

#include <cstddef>
#include <cstdint>

/// \file
/// What is fuzzed. Each function runs one input from start to end, leaves nothing behind and ends
/// the process when the library does not hold what it promises. Used by the libFuzzer programs and
/// by the test that replays the inputs of corpus/ and regressions/.

/// The input is a theme file: it is loaded, made current and shown by an item with its classes.
void fuzzDocument(const std::uint8_t *data, std::size_t size);

/// The input makes up class scopes and styles and then looks things up; each answer is compared
/// with that of a plain model.
void fuzzLookups(const std::uint8_t *data, std::size_t size);

/// The input is split into the files of one or two theme folders, which are loaded.
void fuzzFolder(const std::uint8_t *data, std::size_t size);

/// The input is a theme file in a folder with another theme: it is checked, and what is told of it
/// is compared with what the catalogue makes of it.
void fuzzChecker(const std::uint8_t *data, std::size_t size);

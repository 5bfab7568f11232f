#pragma once

#include "checker/document.h"

/// Finds out where the values of a JSON text stand.
namespace Positions {

struct Failure
{
    /// -1 when there was none.
    int offset = -1;
    int code = 0;
};

/// Reads \a text strictly by the standard. \return what the first offence is, and fills \a root
/// (which may be null) with the ranges and keys of all values if there is none.
Failure read(const QByteArray &text, Node *root);

/// Reads \a text by rules that are at least as wide as those of Qt's parser, which takes control
/// characters in strings, unknown and unpaired escapes, and numbers that begin or end with a point.
Failure readLeniently(const QByteArray &text, Node *root);

/// The offset of the first byte in \a text that is no UTF-8; -1 if there is none.
int firstBadByte(const QByteArray &text);

} // namespace Positions

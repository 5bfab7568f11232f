#pragma once

#include "checker/document.h"

#include <QtCore/QJsonParseError>

/// What an author should be told about a text that Qt's JSON parser refuses.
struct SyntaxError
{
    Range range;
    /// A part of a sentence.
    QString text;
    /// What would mend it; empty if that can't be told.
    QString help;

    /// Describes the first fault of \a text. \a error is what Qt said of it; its offset is only
    /// used where no other parser finds fault.
    static SyntaxError find(const QByteArray &text, QJsonParseError error);
};

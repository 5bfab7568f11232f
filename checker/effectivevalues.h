#pragma once

#include "checker/document.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVector>

class LoadedFolder;
class Theme;

/// Where a value comes from.
struct ValueOrigin
{
    enum Kind {
        /// The application gives it, because no theme does.
        Default,
        /// It stands in a theme file.
        Written,
        /// It was made from another value of the theme.
        Derived,
        /// It is a file beside the theme.
        File
    };

    Kind kind = Default;
    /// The theme file where the value, or the one that it was derived from, is written; for a File
    /// the file itself. Empty when nothing is written at all.
    QString file;
    /// The place in there.
    Position position;
    /// "global", or the name of the class, that the written value belongs to.
    QString scope;
    /// Title of the theme that it is inherited from; empty for the theme's own.
    QString inheritedFrom;
    /// For a Derived value, the key of the value that it was made from.
    QString base;
    /// How a Derived value was made, or which value of the application the Default is.
    QString rule;

    /// The rule of what is taken over as it is.
    static QString same() { return QStringLiteral("the same"); }
};

/// A value as an item reads it.
struct EffectiveValue
{
    /// The path of properties of the attached Theme, as in "colors/foreground" and
    /// "fonts/h1Font/pointSize"; "styles/NAME" for a style, "class/PATH" for a class value.
    QString key;
    /// A color, text, a number, a truth value, or, for class values, whatever the file holds. The
    /// weight of a font is the number that this Qt has for it.
    QVariant value;
    ValueOrigin origin;
};

/// All values of a theme as an item with some class names reads them, and where they come from.
///
/// Each value is read from the plugin's own classes; only the origins are worked out here.
struct EffectiveValues
{
    QString title;
    /// Absolute path of the theme file.
    QString file;
    QString classnames;
    /// The classes of the theme: those that it describes or inherits, and those that a style has a
    /// variant for.
    QStringList themeClasses;
    /// The class names of the item that are none of these.
    QStringList missingClasses;
    QVector<EffectiveValue> values;

    /// The values of \a theme, one of \a folder, for an item with \a classnames. Class values are
    /// those that stand beside colors, fonts and radius; other ones come with classValue().
    static EffectiveValues of(const LoadedFolder &folder, Theme *theme, const QString &classnames);

    /// The class value at \a path, whatever it is; a value that is not valid when there is none.
    static EffectiveValue classValue(const LoadedFolder &folder, Theme *theme,
                                     const QString &classnames, const QString &path);

    /// The value of \a key; null if there is none.
    const EffectiveValue *find(const QString &key) const;
};

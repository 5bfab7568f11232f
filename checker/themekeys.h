#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// A key that a theme file may hold, as the checker, the schema and docs/theme-files.md know it.
///
/// The texts are sentences in Markdown for the author of a theme; the schema takes their plain
/// form.
struct ThemeKey
{
    /// The object whose member the key is.
    enum Place {
        /// The document itself.
        Document,
        /// "global" or a class scope.
        Scope,
        /// The "colors" of a scope.
        Colors,
        /// The "fonts" of a scope.
        Fonts,
        /// One font in there.
        Font
    };

    enum Type {
        Text,
        /// Text that QColor understands.
        Color,
        /// Text that is one of words, in any case.
        Word,
        Number,
        /// A number of zero or more without a fraction.
        WholeNumber,
        Truth,
        /// An object whose members are those of content.
        Object
    };

    Place place;
    /// Empty for the keys of class scopes, which are named by the author of the theme.
    QString name;
    Type type;
    /// What the members of an Object are.
    Place content;
    QString unit;
    QString meaning;
    /// What holds when the key is missing.
    QString absence;
    /// What a value of another type, or one that means nothing, does.
    QString mistake;
    /// The value that is the same as leaving the key out, as JSON; empty when there is no such
    /// constant.
    QString defaultJson;
    /// The values of a Word.
    QStringList words;
    /// Whether no theme does well without the key.
    bool isRequired;
    /// Whether the value has to be above zero.
    bool isPositive;
    /// Whether the key is read and yet changes nothing that is seen.
    bool isFutile;
};

/// The one table of all keys of theme files.
namespace ThemeKeys {

/// All keys, in the order in which they are explained.
const QVector<ThemeKey> &all();

/// The keys of the objects at \a place, in that order.
QVector<ThemeKey> at(ThemeKey::Place place);

/// Their names, without that of class scopes.
QStringList names(ThemeKey::Place place);

/// The key \a name of the objects at \a place; in the document, any name that is not another key's
/// is the key of a class scope. Null when there is none.
const ThemeKey *find(ThemeKey::Place place, const QString &name);

/// How the path of the objects at \a place is written: "", "global", "global/colors",
/// "global/fonts" or "global/fonts/main", the one scope and the one font standing for all.
QString path(ThemeKey::Place place);

/// What \a type is called: "color", "whole number" and so on.
QString typeName(ThemeKey::Type type);

} // namespace ThemeKeys

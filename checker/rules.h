#pragma once

#include "checker/findings.h"
#include "checker/fontfacts.h"
#include "checker/loadorder.h"
#include "checker/scratchtheme.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

/// \file
/// What is looked for in themes. Each function looks for some of the codes and knows nothing of the
/// others.

/// What is kept of a theme file while the others are read. Small: there may be thousands.
struct ThemeSummary
{
    /// The path as it is shown, and the absolute one.
    QString path;
    QString filePath;
    Document::Fault fault = Document::NoFault;
    /// Where to point at when something is said about the theme: its title, or its beginning.
    Position place;
    bool hasTitle = false;
    /// Whether its problems are asked for. The others only are there to be extended.
    bool isRequested = true;
    /// Whether it has a "global" that counts, and which of its colors that sets, see roleBit().
    bool hasGlobal = false;
    unsigned globalRoles = 0;
    /// The classes that its file describes, as numbers of ThemeSet::classNames: those with a value,
    /// and those without one, which hide what is inherited.
    QVector<int> classes;
    QVector<int> emptyClasses;

    // What ThemeSet::load() works out.

    /// The classes with a value that the theme shows, and all that it describes in any way,
    /// inherited ones included.
    QVector<int> shownClasses;
    QVector<int> describedClasses;
    /// The roles whose color some theme sets, this one or one it inherits from, not the
    /// application.
    unsigned knownRoles = 0;
};

/// All the themes that are loaded together.
struct ThemeSet
{
    /// The themes that show a class.
    struct ClassUse
    {
        int count = 0;
        /// The first of them, in the order of the catalogue.
        QVector<int> themes;
    };

    QVector<ThemeSummary> themes;
    /// In the same order.
    QVector<LoadOrder::Entry> entries;
    QStringList classNames;
    /// Those of classNames that are told to be no classes, see isMistakenClass().
    QSet<int> mistakenClasses;

    // What load() works out.
    LoadOrder::Result order;
    QVector<ClassUse> classUses;
    /// The titles of the themes in the catalogue, in its order, and the first theme of each.
    QStringList titles;
    QHash<QString, int> firstTitled;
    /// The same for titles in lower case.
    QHash<QString, int> firstTitledAlike;
    /// The first theme of each title among those that are left out.
    QHash<QString, int> firstLeftOut;

    void load();

    /// "path:line:column" of the title of a theme.
    QString place(int theme) const;
    /// Whether a theme of the catalogue shows the class \a name.
    bool isShown(const QString &name) const;

private:
    void inherit(int theme);
};

/// A color of a theme.
struct ColorRole
{
    const char *key;
    /// The key of the color that it is derived from; empty for one that is not.
    const char *base;
    QColor (ThemeObjectColors::*color)() const;
};
Q_DECLARE_TYPEINFO(ColorRole, Q_PRIMITIVE_TYPE);

enum ColorFamily { ForegroundColors, BackgroundColors };

/// A color and its two shades.
const QVector<ColorRole> &colorRoles(ColorFamily family);

/// The bit of the color with the member name \a key; 0 if there is none.
unsigned roleBit(const QString &key);

/// The bits of the roles that a "colors" object decides; with \a derives also those of the shades
/// that it leaves to be derived.
unsigned colorRolesIn(const QJsonObject &colors, bool derives);

/// Whether the plugin takes \a text for a color, and which one.
QColor readColor(const QString &text);

/// Whether the member \a key of a document, with \a value, makes a class but is told to be meant
/// for another key or another place.
bool isMistakenClass(const QString &key, const QJsonValue &value);

/// One theme that is looked at.
struct ThemeContext
{
    const ThemeSet &set;
    int index;
    const Document &document;
    /// Null for a theme that is left out.
    ScratchTheme *scratch;
    FontFacts &fonts;
    /// The ratio that texts need; 0 for none.
    double contrast;

    const ThemeSummary &summary() const { return set.themes.at(index); }
    const LoadOrder::Entry &entry() const { return set.entries.at(index); }
    const LoadOrder::Outcome &outcome() const { return set.order.outcomes.at(index); }
    bool isLoaded() const { return outcome().isLoaded; }
    /// The range of the member at \a path; the beginning of the document if there is none.
    Range keyRange(const QString &path) const;
    Range valueRange(const QString &path) const;
};

/// Text, encoding, duplicate keys, title.
void checkDocument(const ThemeContext &context, Findings &findings);
/// What the theme extends.
void checkParent(const ThemeContext &context, Findings &findings);
/// Keys and values of the scopes, fonts excepted.
void checkScopes(const ThemeContext &context, Findings &findings);
/// The fonts of all scopes.
void checkFonts(const ThemeContext &context, Findings &findings);
/// The contrast of texts in all scopes.
void checkContrast(const ThemeContext &context, Findings &findings);
/// Titles and classes, compared with those of the other themes.
void checkAmongOthers(const ThemeContext &context, Findings &findings);

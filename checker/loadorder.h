#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// Which themes of some folders come into the catalogue of an application, in which order, and
/// which theme each of them extends there.
namespace LoadOrder {

/// A theme file as the catalogue sees it.
struct Entry
{
    /// Its folder; folders are loaded one after another, beginning with 0.
    int folder = 0;
    /// The name of the file in its folder.
    QString name;
    /// Whether there is a text to be read. A text that is no JSON counts.
    bool isReadable = true;
    QString title;
    /// The title that it extends; empty for none.
    QString extends;
};

/// What becomes of an entry.
struct Outcome
{
    bool isLoaded = false;
    /// Index of the entry that it extends; -1 for none.
    int parent = -1;
};

struct Result
{
    /// In the order of the entries.
    QVector<Outcome> outcomes;
    /// Indexes of the entries that are loaded, in the order of the catalogue.
    QVector<int> catalogue;
};

/// The names of the theme files that the catalogue takes from \a folder, in its order.
QStringList themeFiles(const QString &folder);

/// Loads \a entries, which are in the order of their folders and of the names in them.
Result load(const QVector<Entry> &entries);

/// A name for the file of entry \a index under which it would be loaded, that of its parent behind
/// it being what keeps it out; empty if no other name helps.
QString nameThatLoads(const QVector<Entry> &entries, int index, int parent);

} // namespace LoadOrder

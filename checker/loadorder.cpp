#include "checker/loadorder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>

#include <algorithm>

namespace {

class Loader
{
public:
    explicit Loader(const QVector<LoadOrder::Entry> &entries)
        : m_entries(entries)
    {
        m_result.outcomes.resize(entries.size());
    }

    LoadOrder::Result run()
    {
        for (int begin = 0; begin < m_entries.size();) {
            int end = begin;
            while (end < m_entries.size() && m_entries.at(end).folder == m_entries.at(begin).folder)
                ++end;
            loadFolder(begin, end);
            begin = end;
        }
        return m_result;
    }

private:
    void loadFolder(int begin, int end)
    {
        QVector<int> waiting;
        for (int i = begin; i < end; ++i) {
            if (m_entries.at(i).isReadable && !load(i))
                waiting.append(i);
        }
        // Exactly one more try, in the same order.
        for (const int i : qAsConst(waiting))
            load(i);
    }

    /// \return whether entry \a index needs no theme that is not there yet.
    bool load(int index)
    {
        const LoadOrder::Entry &entry = m_entries.at(index);
        LoadOrder::Outcome &outcome = m_result.outcomes[index];
        if (!entry.extends.isEmpty()) {
            outcome.parent = m_byTitle.value(entry.extends, -1);
            if (outcome.parent < 0)
                return false;
        }
        outcome.isLoaded = true;
        m_result.catalogue.append(index);
        // The first theme keeps a title.
        if (!m_byTitle.contains(entry.title))
            m_byTitle.insert(entry.title, index);
        return true;
    }

    const QVector<LoadOrder::Entry> &m_entries;
    LoadOrder::Result m_result;
    QHash<QString, int> m_byTitle;
};

/// The order of QDir, which the catalogue lists a folder in.
bool comesBefore(const LoadOrder::Entry &a, const LoadOrder::Entry &b)
{
    if (a.folder != b.folder)
        return a.folder < b.folder;
    return a.name.toLower() < b.name.toLower();
}

bool isLoadedAs(QVector<LoadOrder::Entry> entries, int index, const QString &name)
{
    for (const LoadOrder::Entry &entry : qAsConst(entries)) {
        if (entry.folder == entries.at(index).folder
            && entry.name.compare(name, Qt::CaseInsensitive) == 0)
            return false;
    }
    LoadOrder::Entry renamed = entries.takeAt(index);
    renamed.name = name;
    const auto place = std::upper_bound(entries.begin(), entries.end(), renamed, comesBefore);
    const int newIndex = int(place - entries.begin());
    entries.insert(newIndex, renamed);
    return LoadOrder::load(entries).outcomes.at(newIndex).isLoaded;
}

} // namespace

QStringList LoadOrder::themeFiles(const QString &folder)
{
    // The very call that the catalogue makes.
    return QDir(folder).entryList(QStringList(QStringLiteral("*.thm")));
}

LoadOrder::Result LoadOrder::load(const QVector<Entry> &entries)
{
    return Loader(entries).run();
}

QString LoadOrder::nameThatLoads(const QVector<Entry> &entries, int index, int parent)
{
    // An underscore comes behind the point, so this is right behind the parent.
    const QString base = QFileInfo(entries.at(parent).name).completeBaseName();
    const QString name = base + QLatin1Char('_') + entries.at(index).name;
    return isLoadedAs(entries, index, name) ? name : QString();
}

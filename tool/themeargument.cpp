#include "tool/themeargument.h"

#include "checker/loadedfolder.h"
#include "checker/themefault.h"
#include "theme/theme.h"
#include "tool/command.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

ThemeArgument::ThemeArgument(const QString &argument, const QString &folder)
{
    if (QFileInfo(argument).isFile())
        findFile(argument);
    else
        findTitle(argument, folder);
}

ThemeArgument::~ThemeArgument() = default;

void ThemeArgument::findFile(const QString &path)
{
    m_folder = std::make_unique<LoadedFolder>(QFileInfo(path).absolutePath());
    m_theme = m_folder->fromFile(path);
    const QVector<Problem> faults = themeFaults(path);
    if (!faults.isEmpty())
        m_problem = lineOf(faults.first());
    else if (!m_theme)
        m_problem = QStringLiteral("%1 gives no theme").arg(path);
}

void ThemeArgument::findTitle(const QString &title, const QString &folder)
{
    m_folder = std::make_unique<LoadedFolder>(folder);
    m_theme = m_folder->titled(title);
    if (m_theme)
        return;
    if (QFileInfo(title).isDir()) {
        m_problem = QStringLiteral("\"%1\" is a folder; name a theme file in it, or a title and "
                                   "--folder %1")
                            .arg(title);
        return;
    }
    QStringList titles;
    QStringList quoted;
    const QList<Theme *> themes = m_folder->themes();
    for (const Theme *theme : themes) {
        titles.append(theme->title());
        quoted.append(QStringLiteral("\"%1\"").arg(theme->title()));
    }
    m_problem = QStringLiteral("there is no file \"%1\", and no theme of that title in \"%2\"")
                        .arg(title, folder);
    if (!quoted.isEmpty())
        m_problem += (quoted.size() == 1 ? QStringLiteral("; there is ")
                                         : QStringLiteral("; there are "))
                + quoted.join(QLatin1String(", "));
    m_problem += didYouMean(title, titles);
}

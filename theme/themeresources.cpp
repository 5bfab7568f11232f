// Theme: the styles and fonts that lie beside a theme file.

#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

namespace {

/// The files in the folder \a name beside \a filename, in the order of the file system. Empty when
/// there is no such folder.
QFileInfoList filesBeside(const QString &filename, const QString &name, const QStringList &patterns)
{
    // Early versions of Qt complain on the log about the folder of no file.
    if (filename.isEmpty())
        return QFileInfoList();
    QDir folder = QFileInfo(filename).absoluteDir();
    if (!folder.cd(name))
        return QFileInfoList();
    return folder.entryInfoList(patterns, QDir::Files, QDir::NoSort);
}

QString styleUrl(const QString &path)
{
    // The colon stays after the slashes: the engine loads "qrc://:/..." as it stands.
    if (path.startsWith(QLatin1String(":/")))
        return QLatin1String("qrc://") + path;
    return QUrl::fromLocalFile(path).toString();
}

} // namespace

void Theme::loadThemeQmlStyles()
{
    const QFileInfoList files = filesBeside(m_filename, QStringLiteral("styles"),
                                            QStringList(QStringLiteral("*.qml")));
    if (files.isEmpty())
        return;
    ensureData();
    for (const QFileInfo &file : files)
        d->styles.insert(file.baseName(), styleUrl(file.absoluteFilePath()));
}

void Theme::loadThemeFonts()
{
    // The font database ends the process when it is used without a GUI application.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    const QFileInfoList files = filesBeside(m_filename, QStringLiteral("fonts"), QStringList());
    for (const QFileInfo &file : files)
        QFontDatabase::addApplicationFont(file.absoluteFilePath());
}

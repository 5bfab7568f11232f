#include "support/testfont.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace {

// As long as the name that it replaces, so that no table of the font file moves.
const QLatin1String originalName("DejaVu Sans");
const QLatin1String replacedName("Probe Fonts");

QString pathOf(const QString &fileName)
{
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::FontsLocation);
    for (const QString &folder : folders) {
        QDirIterator file(folder, QStringList(fileName), QDir::Files, QDirIterator::Subdirectories);
        if (file.hasNext())
            return file.next();
    }
    return QString();
}

/// The text as font files store it for Windows: two bytes a character, the higher one first.
QByteArray bigEndian(const QString &text)
{
    QByteArray bytes;
    for (const QChar character : text) {
        bytes.append(char(character.row()));
        bytes.append(char(character.cell()));
    }
    return bytes;
}

} // namespace

QString TestFont::family()
{
    return replacedName;
}

QByteArray TestFont::content()
{
    QFile file(pathOf(QStringLiteral("DejaVuSans.ttf")));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    QByteArray bytes = file.readAll();
    bytes.replace(bigEndian(originalName), bigEndian(replacedName));
    bytes.replace(QByteArray(originalName.data()), QByteArray(replacedName.data()));
    return bytes;
}

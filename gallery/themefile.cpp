#include "gallery/themefile.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

namespace {

QString parseProblem(const QByteArray &text, QJsonParseError error)
{
    const QByteArray before = text.left(error.offset);
    const int line = before.count('\n') + 1;
    const int column = before.size() - before.lastIndexOf('\n');
    return QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(error.errorString());
}

} // namespace

ThemeFile ThemeFile::read(const QString &path)
{
    ThemeFile result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.problem = file.exists() ? QStringLiteral("the file can't be read")
                                       : QStringLiteral("the file is gone");
        return result;
    }
    const QByteArray text = file.readAll();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (text.isEmpty())
        result.problem = QStringLiteral("the file is empty");
    else if (error.error != QJsonParseError::NoError)
        result.problem = parseProblem(text, error);
    else if (!document.isObject())
        result.problem = QStringLiteral("the file holds no object");
    result.object = document.object();
    return result;
}

QString ThemeFile::extends() const
{
    return object.value(QLatin1String("extends")).toString();
}

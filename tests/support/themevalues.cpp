#include "support/themevalues.h"

#include "theme/theme.h"

#include <QtCore/QJsonParseError>

ThemePrivate *dataOf(const Theme &theme)
{
    return qobject_cast<ThemePrivate *>(theme.colors()->parent());
}

QJsonObject parsed(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        qFatal("no JSON object: %s", text.constData());
    return document.object();
}

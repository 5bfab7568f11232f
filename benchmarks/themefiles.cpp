#include "themefiles.h"

#include "look.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

constexpr int classCount = 10;
constexpr int styleCount = 10;
constexpr int largeFileSize = 3 * 1024;

QJsonObject fonts(const QString &family, double pointSize)
{
    return {
        { QStringLiteral("main"),
          QJsonObject{ { QStringLiteral("family"), family },
                       { QStringLiteral("pointSize"), pointSize } } },
    };
}

/// Point sizes in theme files are scaled by three quarters when they are read.
double writtenSize(int pointSize)
{
    return pointSize / 0.75;
}

QJsonObject globalScope(const Look &look)
{
    return {
        { QStringLiteral("colors"),
          QJsonObject{
                  { QStringLiteral("foreground"), look.foreground.name() },
                  { QStringLiteral("background"), look.background.name() },
                  { QStringLiteral("selection"), look.accent.name() },
          } },
        { QStringLiteral("fonts"), fonts(look.font.family(), writtenSize(look.font.pointSize())) },
        { QStringLiteral("radius"), look.radius },
    };
}

/// A class has the look's colors turned round, each class in a shade of its own.
QJsonObject classScope(const Look &look, int number)
{
    const int factor = 101 + number;
    return {
        { QStringLiteral("colors"),
          QJsonObject{
                  { QStringLiteral("foreground"), look.background.darker(factor).name() },
                  { QStringLiteral("background"), look.accent.darker(factor).name() },
                  { QStringLiteral("darkerBackground"), look.accent.darker(2 * factor).name() },
          } },
        { QStringLiteral("fonts"),
          fonts(look.font.family(), writtenSize(look.font.pointSize() + 1 + number)) },
        { QStringLiteral("radius"), look.radius + 1 },
    };
}

QJsonObject document(const QString &title, const Look &look)
{
    QJsonObject theme{
        { QStringLiteral("title"), title },
        { QStringLiteral("global"), globalScope(look) },
    };
    for (int i = 0; i < classCount; ++i)
        theme.insert(ThemeFiles::className(i), classScope(look, i));
    QJsonObject first = theme.value(ThemeFiles::className(0)).toObject();
    const QJsonObject spacing{ { QStringLiteral("wide"), 12 } };
    first.insert(QStringLiteral("metrics"), QJsonObject{ { QStringLiteral("spacing"), spacing } });
    theme.insert(ThemeFiles::className(0), first);
    return theme;
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("Can't write %s", qPrintable(path));
}

void write(const QString &path, const QJsonObject &theme)
{
    write(path, QJsonDocument(theme).toJson(QJsonDocument::Compact));
}

QString numbered(const QString &prefix, int number)
{
    return prefix + QStringLiteral("%1").arg(number, 5, 10, QLatin1Char('0'));
}

} // namespace

ThemeFiles::ThemeFiles()
{
    if (!m_folder.isValid())
        qFatal("Can't make a temporary folder: %s", qPrintable(m_folder.errorString()));
}

QString ThemeFiles::path() const
{
    return m_folder.path();
}

void ThemeFiles::writeLooks() const
{
    for (int look = 0; look < lookCount; ++look)
        writeLook(look, look);
}

void ThemeFiles::writeLook(int title, int look) const
{
    write(m_folder.filePath(lookTitle(title) + QStringLiteral(".thm")),
          document(lookTitle(title), Look::at(look)));
}

void ThemeFiles::writeMany(int count) const
{
    for (int i = 0; i < count; ++i) {
        const QString title = numbered(QStringLiteral("theme"), i);
        QJsonObject theme = document(title, Look::at(i % lookCount));
        // The class scopes carry data of the application's own up to the size of the file.
        const int size = QJsonDocument(theme).toJson(QJsonDocument::Compact).size();
        const QString note(qMax(0, largeFileSize - size) / classCount, QLatin1Char('x'));
        for (int number = 0; number < classCount; ++number) {
            QJsonObject scope = theme.value(className(number)).toObject();
            scope.insert(QStringLiteral("note"), note);
            theme.insert(className(number), scope);
        }
        write(m_folder.filePath(title + QStringLiteral(".thm")), theme);
    }
}

void ThemeFiles::writeClean(int count) const
{
    const QJsonObject colors{
        { QStringLiteral("foreground"), QStringLiteral("#102030") },
        { QStringLiteral("lighterForeground"), QStringLiteral("#203040") },
        { QStringLiteral("darkerForeground"), QStringLiteral("#000000") },
        { QStringLiteral("background"), QStringLiteral("#ffffff") },
        { QStringLiteral("lighterBackground"), QStringLiteral("#ffffff") },
        { QStringLiteral("darkerBackground"), QStringLiteral("#e8e8e8") },
        { QStringLiteral("selection"), QStringLiteral("#ffe9b8") },
    };
    const QJsonObject scope{ { QStringLiteral("colors"), colors },
                             { QStringLiteral("fonts"),
                               fonts(QStringLiteral("DejaVu Sans"), 16) } };
    for (int i = 0; i < count; ++i) {
        const QString title = numbered(QStringLiteral("clean"), i);
        QJsonObject theme{ { QStringLiteral("title"), title },
                           { QStringLiteral("global"), scope } };
        for (int number = 0; number < classCount; ++number)
            theme.insert(className(number), scope);
        write(m_folder.filePath(title + QStringLiteral(".thm")),
              QJsonDocument(theme).toJson(QJsonDocument::Compact));
    }
}

void ThemeFiles::writeSmall(int count, Parents parents) const
{
    // File names are listed in their order, so "later" comes after every "early".
    const QString early = QStringLiteral("early");
    const QString later = QStringLiteral("later");
    const int parentCount = parents == Parents::None ? 0 : parents == Parents::One ? 1 : count / 2;
    const int childCount = count - parentCount;
    for (int i = 0; i < count; ++i) {
        const bool isParent = i >= childCount;
        const QString title = isParent ? numbered(later, i - childCount) : numbered(early, i);
        QJsonObject theme{
            { QStringLiteral("title"), title },
            { QStringLiteral("global"), globalScope(Look::at(i % lookCount)) },
        };
        if (!isParent && parentCount > 0)
            theme.insert(QStringLiteral("extends"), numbered(later, i % parentCount));
        write(m_folder.filePath(title + QStringLiteral(".thm")), theme);
    }
}

void ThemeFiles::writeStyles() const
{
    const QDir folder(m_folder.path());
    if (!folder.mkdir(QStringLiteral("styles")))
        qFatal("Can't make the styles folder");
    for (int i = 0; i < styleCount; ++i) {
        write(folder.filePath(QStringLiteral("styles/%1.qml").arg(styleName(i))),
              QByteArrayLiteral("import QtQuick 2.15\nRectangle {}\n"));
    }
}

QString ThemeFiles::lookTitle(int look)
{
    return QStringLiteral("Look %1").arg(look);
}

QString ThemeFiles::className(int number)
{
    return QStringLiteral("class%1").arg(number);
}

QString ThemeFiles::deepPath()
{
    return QStringLiteral("metrics/spacing/wide");
}

QString ThemeFiles::styleName(int number)
{
    return QStringLiteral("Style%1").arg(number);
}

QString ThemeFiles::unknownClass()
{
    return QStringLiteral("unheardof");
}

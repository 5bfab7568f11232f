#include "manager/thememanager.h"
#include "qml/qmltestcase.h"
#include "theme/theme.h"
#include "values/themeobjectcolors.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaEnum>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

/// That a folder of themes looks alike with every Qt: what an item shows is written down, value by
/// value, and compared with what look/look.txt recorded. The builds with Qt 5 and with Qt 6 are
/// held to the same file.
class tst_Look : public QmlTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void itemsShowTheSame();
    void complementsAreTheSame();

private:
    QByteArray shown(QObject *item) const;

    const QDir m_themes{ QStringLiteral(TAVOLINS_SOURCE_DIR "/tests/qml/look") };
};

namespace {

const char *const classes[] = {
    "", "warm", "plain", "empty", "plain warm", "warm plain", "nobody"
};

// Class values are the one thing that only native code can ask for.
const char *const paths[] = { "value",        "deep/text", "deep/flag",         "deep/list",
                              "deep/nothing", "deep",      "colors/foreground", "nobody" };

// Everything that QML can ask the attached theme for.
const char *const itemQml = R"(import QtQuick 2.12
    import Tavolins 1.0
    Item {
        property var colors: [
            Theme.colors.foreground, Theme.colors.lighterForeground, Theme.colors.darkerForeground,
            Theme.colors.background, Theme.colors.lighterBackground, Theme.colors.darkerBackground,
            Theme.colors.selection, Theme.complementaryColor(Theme.colors.foreground),
            Theme.complementaryColor(Theme.colors.background),
            Theme.complementaryColor(Theme.colors.selection)
        ]
        property var fonts: [
            Theme.fonts.mainFont, Theme.fonts.alternateFont, Theme.fonts.h1Font,
            Theme.fonts.h2Font, Theme.fonts.h3Font, Theme.fonts.h4Font
        ]
        property int radius: Theme.radius
        // Bindings follow properties only, so one is read.
        property var styles: (Theme.colors ? [
            Theme.getStyle("Button"), Theme.getStyle("Button", Theme.classnames),
            Theme.getStyle("Card"), Theme.getStyle("Card", Theme.classnames)
        ] : []).map(function(url) { return url.substring(url.lastIndexOf("/") + 1) })
        property var names: ["warm", "plain", "", "nobody"].map(
            function(name) { return Theme.hasClassname(name) })
        property string classes
        Theme.classnames: classes
    })";

/// The name that stands for the weight in the scale of either series of Qt.
QByteArray weightName(int weight)
{
    const QMetaEnum names = QMetaEnum::fromType<QFont::Weight>();
    const char *const name = names.valueToKey(weight);
    return name ? QByteArray(name) : QByteArray::number(weight);
}

QByteArray described(const QFont &font)
{
    return font.family().toUtf8() + ", " + QByteArray::number(font.pointSizeF()) + " pt, "
            + weightName(font.weight()) + ", style " + QByteArray::number(font.style())
            + ", capitalization " + QByteArray::number(font.capitalization()) + ", spacing "
            + QByteArray::number(font.letterSpacing());
}

} // namespace

void tst_Look::initTestCase()
{
    // Where a theme names no font.
    QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Serif"), 11));
    addModule(QStringLiteral("Tavolins"));
}

/// All that \a item shows, a line a value.
QByteArray tst_Look::shown(QObject *item) const
{
    QByteArray text;
    const QVariantList colors = item->property("colors").toList();
    for (const QVariant &color : colors)
        text += "  " + color.value<QColor>().name(QColor::HexArgb).toLatin1() + '\n';
    const QVariantList fonts = item->property("fonts").toList();
    for (const QVariant &font : fonts)
        text += "  " + described(font.value<QFont>()) + '\n';
    text += "  radius " + item->property("radius").toByteArray() + '\n';
    text += "  styles " + item->property("styles").toStringList().join(QLatin1Char(' ')).toUtf8()
            + '\n';
    const Theme *theme = Theme::attachedTheme(item);
    for (const char *path : paths) {
        const QVariant value = theme->getClassValue(QString::fromLatin1(path), QStringLiteral("-"));
        text += QByteArray("  ") + path + ' '
                + QJsonDocument(QJsonArray{ QJsonValue::fromVariant(value) })
                          .toJson(QJsonDocument::Compact)
                + '\n';
    }
    text += "  names " + item->property("names").toStringList().join(QLatin1Char(' ')).toUtf8()
            + '\n';
    return text;
}

void tst_Look::itemsShowTheSame()
{
    ThemeManager *const manager = ThemeManager::getInstance();
    manager->loadThemes(m_themes.path(), QString());
    const auto engine = newEngine();
    std::vector<std::unique_ptr<QObject>> items;
    for (const char *names : classes) {
        items.push_back(create(engine.get(), itemQml));
        QVERIFY(items.back());
        items.back()->setProperty("classes", QString::fromLatin1(names));
    }
    QByteArray text;
    // Twice, as the colors of an item with a class depend on the theme that was shown before.
    for (int round = 0; round < 2; ++round) {
        for (const char *title : { "Base", "Child", "Half" }) {
            manager->setCurrent(manager->themeFromName(QString::fromLatin1(title)));
            for (std::size_t i = 0; i < items.size(); ++i) {
                text += QByteArray(title) + ", class \"" + classes[i] + "\"\n"
                        + shown(items[i].get());
            }
        }
    }
    // To be compared as a whole, and to be recorded when the folder of themes is changed.
    QFile seen(QCoreApplication::applicationDirPath() + QStringLiteral("/look.txt"));
    QVERIFY(seen.open(QIODevice::WriteOnly) && seen.write(text) == text.size());

    QFile record(m_themes.filePath(QStringLiteral("look.txt")));
    QVERIFY(record.open(QIODevice::ReadOnly));
    const QList<QByteArray> expected = record.readAll().split('\n');
    const QList<QByteArray> actual = text.split('\n');
    QByteArray place;
    for (int line = 0; line < std::min(actual.size(), expected.size()); ++line) {
        if (!actual.at(line).startsWith(' '))
            place = actual.at(line);
        QVERIFY2(actual.at(line) == expected.at(line),
                 place + ": \"" + actual.at(line) + "\" instead of \"" + expected.at(line)
                         + "\" in line " + QByteArray::number(line + 1));
    }
    QCOMPARE(actual.size(), expected.size());
}

void tst_Look::complementsAreTheSame()
{
    Theme theme;
    theme.colors()->setBackground(Qt::black);
    const auto isWhite = [&](const QColor &color) {
        return theme.complementaryColor(color) == QColor(Qt::white);
    };
    // Every lightness that 8 bits give, from every pair of channels.
    for (int greatest = 0; greatest < 256; ++greatest) {
        for (int least = 0; least <= greatest; ++least) {
            const QColor color(greatest, least, least);
            QVERIFY2(isWhite(color) == (greatest + least < 255), qPrintable(color.name()));
        }
    }
    // 16 bits around one half, of lightness and of opacity: the next number makes the difference.
    for (int shade = 0x7f00; shade <= 0x8100; ++shade) {
        const auto channel = quint16(shade);
        const bool isBelowHalf = shade < 0x8000;
        QCOMPARE(isWhite(QColor::fromRgba64(channel, channel, channel, 0xffff)), isBelowHalf);
        QCOMPARE(isWhite(QColor::fromRgba64(0xffff, 0xffff, 0xffff, channel)), isBelowHalf);
    }
}

TAVOLINS_TEST_MAIN(tst_Look)
#include "tst_look.moc"

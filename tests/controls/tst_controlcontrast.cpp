#include "controls/controlstestcase.h"
#include "controls/samples.h"
#include "manager/thememanager.h"
#include "support/readable.h"
#include "theme/theme.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

using Readable::contrast;

/// Whether all controls can be read, and the keyboard's focus seen, under each theme.
class tst_ControlContrast : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void textIsReadable_data();
    void textIsReadable();
    void popupsAreReadable_data();
    void popupsAreReadable();
    void focusIsSeen_data();
    void focusIsSeen();

private:
    void addThemeRows();
    void useTheme();
    QQuickWindow *showPage(const QString &classname);
    static double bestContrast(const QString &classname);
    QStringList unreadable(QQuickWindow *window, double wanted, const QString &state) const;
};

namespace {

/// Themes at the edge of what is readable, and beyond: the style can't be better than they are.
const struct
{
    const char *name;
    const char *foreground;
    const char *background;
    const char *raised;
} grayThemes[] = {
    { "just readable on white", "#757575", "#ffffff", "#ffffff" },
    { "just readable on black", "#757575", "#000000", "#000000" },
    { "readable on gray", "#000000", "#808080", "#8a8a8a" },
    { "white on gray", "#ffffff", "#6a6a6a", "#707070" },
    { "too pale", "#999999", "#ffffff", "#f8f8f8" },
};

QByteArray grayTheme(const char *foreground, const char *background, const char *raised)
{
    const QByteArray colors = QByteArray("\"foreground\": \"") + foreground
            + "\", \"background\": \"" + background + '"';
    return "{\"title\": \"Gray\", \"global\": {\"colors\": {" + colors
            + ", \"lighterBackground\": \"" + raised + "\", \"darkerBackground\": \"" + background
            + "\", \"selection\": \"" + background + "\"}, \"radius\": 4},\n"
            + "\"primary\": {\"colors\": {\"foreground\": \"" + background
            + "\", \"background\": \"" + foreground + "\"}}, \"danger\": {\"colors\": {" + colors
            + "}}}";
}

void hover(QQuickItem *item)
{
    const QPointF center(item->width() / 2, item->height() / 2);
    const QPointF outside(-1, -1);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QHoverEvent event(QEvent::HoverEnter, center, center, outside);
#else
    QHoverEvent event(QEvent::HoverEnter, center, outside);
#endif
    QCoreApplication::sendEvent(item, &event);
}

/// Buttons are held down without a press, which might start something.
void press(QQuickItem *item)
{
    if (item->property("down").isValid() && item->setProperty("down", true))
        return;
    // A list would wait for more.
    if (!item->property("pressed").isValid())
        return;
    const QPointF center(item->width() / 2, item->height() / 2);
    QMouseEvent event(QEvent::MouseButtonPress, center, center, center, Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(item, &event);
}

/// What is seen of \a item: its own opacity and that of all it is in.
double opacityOf(const QQuickItem *item)
{
    double opacity = 1;
    for (; item; item = item->parentItem())
        opacity *= item->opacity();
    return opacity;
}

/// The color that most pixels have where \a item is.
QColor groundOf(const QQuickItem *item, const QImage &picture)
{
    const QRect rect = item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toRect()
            & picture.rect();
    QHash<QRgb, int> counts;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    return most == counts.end() ? QColor() : QColor(most.key());
}

/// Whether \a item shows the color of its property "color" on a ground.
bool hasInk(const QQuickItem *item)
{
    if (!item->property("color").isValid())
        return false;
    if (item->property("source").isValid())
        return !item->property("source").toUrl().isEmpty() && item->width() > 0;
    return item->property("contentWidth").toReal() > 0
            && !item->property("text").toString().isEmpty();
}

void collectInk(QQuickItem *item, QList<QQuickItem *> *found)
{
    // What a tumbler fades out is not to be read.
    if (!item->isVisible() || item->opacity() < 0.5)
        return;
    if (hasInk(item))
        found->append(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        collectInk(child, found);
}

QString controlOf(const QQuickItem *item)
{
    for (; item; item = item->parentItem()) {
        const QString name = QString::fromLatin1(item->metaObject()->className());
        if (name.contains(QStringLiteral("_QML")))
            return name.section(QLatin1Char('_'), 0, 0);
    }
    return QString();
}

} // namespace

void tst_ControlContrast::addThemeRows()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("classname");
    const QStringList titles = bundledThemes();
    for (const char *classname : { "", "primary", "danger", "header" }) {
        const QString name = QString::fromLatin1(classname);
        for (const QString &title : titles)
            QTest::addRow("%s %s", qPrintable(title), classname) << title << QByteArray() << name;
    }
    for (const auto &theme : grayThemes) {
        QTest::newRow(theme.name) << QString()
                                  << grayTheme(theme.foreground, theme.background, theme.raised)
                                  << QString();
    }
}

/// Makes the theme of the current row current.
void tst_ControlContrast::useTheme()
{
    QFETCH(QString, title);
    QFETCH(QByteArray, text);
    if (text.isEmpty())
        switchTo(title);
    else
        makeCurrent(QStringLiteral("gray.thm"), text);
}

/// All looks of all controls with the class \a classname, and of what is in them.
QQuickWindow *tst_ControlContrast::showPage(const QString &classname)
{
    const QByteArray common = "Theme.classnames: \"" + classname.toLatin1() + "\";";
    QByteArray page;
    const QStringList controls = Samples::controls();
    for (const QString &control : controls) {
        // A label brings no ground along that the text of its class was made for.
        const bool isUnfit = control == QLatin1String("Label") && !classname.isEmpty();
        if (!isUnfit && control != QLatin1String("ApplicationWindow") && !Samples::isPopup(control)
            && !control.endsWith(QLatin1String("HeaderView")))
            page += Samples::looks(control, common).join();
    }
    for (const char *part : { "Label { ", "TabButton { " })
        page.replace(part, part + common + ' ');
    QQuickWindow *window = show("Flow { objectName: \"samples\"; anchors.fill: parent; spacing: 8\n"
                                + page + " }");
    if (window)
        window->resize(1000, 1000);
    return window;
}

/// What the theme's own colors allow, but no more than is wanted.
double tst_ControlContrast::bestContrast(const QString &classname)
{
    const Theme &current = *ThemeManager::getInstance()->current();
    const auto pair = [&current](const QString &name) {
        Theme theme;
        theme = current;
        theme.setClassnames(name);
        return contrast(theme.colors()->foreground(), theme.colors()->background());
    };
    return std::min(
            { 4.5, pair(QString()), pair(QStringLiteral("primary")), pair(classname),
              contrast(current.colors()->foreground(), current.colors()->lighterBackground()) });
}

QStringList tst_ControlContrast::unreadable(QQuickWindow *window, double wanted,
                                            const QString &state) const
{
    const QImage image = picture(window);
    QList<QQuickItem *> ink;
    collectInk(window->contentItem(), &ink);
    QStringList found;
    int seen = 0;
    for (QQuickItem *item : qAsConst(ink)) {
        const QColor ground = groundOf(item, image);
        if (!ground.isValid())
            continue;
        ++seen;
        QColor color = item->property("color").value<QColor>();
        color.setAlphaF(color.alphaF() * opacityOf(item));
        // Rounding to whole colors.
        if (contrast(color, ground) < wanted - 0.06) {
            found.append(
                    QStringLiteral("%1 %2: %3 on %4 is %5")
                            .arg(state, controlOf(item), color.name(QColor::HexArgb), ground.name())
                            .arg(contrast(color, ground)));
        }
    }
    if (seen < 2)
        found.append(QStringLiteral("nothing is seen"));
    return found;
}

void tst_ControlContrast::textIsReadable_data()
{
    addThemeRows();
}

void tst_ControlContrast::textIsReadable()
{
    QFETCH(QString, classname);
    useTheme();
    QQuickWindow *window = showPage(classname);
    QVERIFY(window);
    const double wanted = bestContrast(classname);
    QStringList found = unreadable(window, wanted, QStringLiteral("normal"));
    const QList<QQuickItem *> all = samples(window);
    for (QQuickItem *item : all)
        hover(item);
    found += unreadable(window, wanted, QStringLiteral("hovered"));
    for (QQuickItem *item : all)
        press(item);
    found += unreadable(window, wanted, QStringLiteral("pressed"));
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void tst_ControlContrast::popupsAreReadable_data()
{
    addThemeRows();
}

void tst_ControlContrast::popupsAreReadable()
{
    QFETCH(QString, classname);
    useTheme();
    const QByteArray common = "Theme.classnames: \"" + classname.toLatin1() + "\"";
    const QByteArray item = " { " + common + "; text: \"Text\" }";
    QQuickWindow *window = show(
            "Dialog { visible: true; width: 200; title: \"Title\"; standardButtons: Dialog.Ok\n"
            + common + "; Label" + item + " }\nMenu { visible: true; x: 220\n" + common
            + "; MenuItem { text: \"Text\"; Theme.classnames: \"" + classname.toLatin1()
            + "\" } Action { text: \"Action\" } }\nToolTip { visible: true; x: 220; y: 200\n"
            + common + "; text: \"Text\" }");
    QVERIFY(window);
    const QStringList found = unreadable(window, bestContrast(classname), QStringLiteral("normal"));
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void tst_ControlContrast::focusIsSeen_data()
{
    addThemeRows();
}

/// A line that goes around what has the focus, in which each pixel stands out from what was there
/// before.
void tst_ControlContrast::focusIsSeen()
{
    QFETCH(QString, classname);
    useTheme();
    QQuickWindow *window = showPage(classname);
    QVERIFY(window);
    const QImage before = picture(window);
    const double wanted = std::min(3.0, bestContrast(classname));
    const QList<QQuickItem *> all = samples(window);
    QStringList found;
    int focused = 0;
    for (QQuickItem *item : all) {
        if (!item->activeFocusOnTab() || Samples::paintsNothing(controlOf(item)))
            continue;
        item->forceActiveFocus(Qt::TabFocusReason);
        ++focused;
        const QImage after = picture(window);
        const QRect area =
                item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toAlignedRect();
        QRect line;
        int pixels = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (contrast(after.pixelColor(x, y), before.pixelColor(x, y)) < wanted)
                    continue;
                ++pixels;
                line |= QRect(x, y, 1, 1);
            }
        }
        // A circle is shorter than the square around it.
        const int around = 2 * (line.width() + line.height()) - 4;
        if (line.width() < 10 || line.height() < 10 || pixels < 0.6 * around) {
            found.append(QStringLiteral("%1: %2 of %3 pixels around %4 x %5")
                                 .arg(controlOf(item))
                                 .arg(pixels)
                                 .arg(around)
                                 .arg(line.width())
                                 .arg(line.height()));
        }
    }
    QVERIFY(focused > 30);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

TAVOLINS_TEST_MAIN(tst_ControlContrast)
#include "tst_controlcontrast.moc"

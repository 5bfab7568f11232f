#include "controls/controlstestcase.h"
#include "controls/samples.h"
#include "manager/thememanager.h"
#include "support/heap.h"
#include "support/objectcount.h"
#include "support/receivers.h"
#include "support/testfont.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

/// Each control of the style, as it is shown.
class tst_Controls : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listOfControlsIsQts();
    // First: a theme without the class has it from the themes shown before.
    void emphasisWithoutPrimary_data();
    void emphasisWithoutPrimary();

    void isInTheStyle_data();
    void isInTheStyle();
    void followsASwitch_data();
    void followsASwitch();
    void followsItsClass_data();
    void followsItsClass();
    void followsLiveReload_data();
    void followsLiveReload();
    void outlivesItsTheme_data();
    void outlivesItsTheme();
    void isMirrored_data();
    void isMirrored();
    void isSeenToBeDisabled_data();
    void isSeenToBeDisabled();
    void growsWithTheFont_data();
    void growsWithTheFont();
    void isHighEnoughToTouch_data();
    void isHighEnoughToTouch();
    void roundButtonIsRound_data();
    void roundButtonIsRound();
    void frameOfASpinBoxIsClosed_data();
    void frameOfASpinBoxIsClosed();
    void partsOfASpinBoxHaveRoom_data();
    void partsOfASpinBoxHaveRoom();

    void classOfUnknownNameIsNone_data();
    void classOfUnknownNameIsNone();
    void pageIsMadeAndDestroyedWhileSwitching();
    void sharedToolTipEndsWithItsEngine();
    void pictureOfAllControls_data();
    void pictureOfAllControls();

private:
    struct Look
    {
        Colors colors;
        QImage picture;
    };

    Look lookOf(QQuickWindow *window) const;
    void checkLook(QQuickWindow *window, const QString &control, const QByteArray &common = "");
    QByteArray pageOfAllControls() const;

    /// How controls look that were made under the second theme, by their QML.
    QHash<QByteArray, Look> m_fresh;
    QByteArray m_first;
    QByteArray m_second;
};

namespace {

/// The colors that are in many pixels of \a picture, in no order.
QList<QRgb> colorsIn(const QImage &picture, int atLeast)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QList<QRgb> colors;
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
        if (it.value() >= atLeast)
            colors.append(it.key());
    }
    std::sort(colors.begin(), colors.end());
    return colors;
}

/// Whether \a color is one of \a a and \a b, or a mixture of them.
bool isBetween(const QColor &color, const QColor &a, const QColor &b)
{
    const auto isWithin = [](int value, int one, int other) {
        return value >= std::min(one, other) - 1 && value <= std::max(one, other) + 1;
    };
    return isWithin(color.red(), a.red(), b.red()) && isWithin(color.green(), a.green(), b.green())
            && isWithin(color.blue(), a.blue(), b.blue());
}

/// Where \a item paints, as seen from \a control. Empty if it paints nothing.
QRectF paintedRect(QQuickItem *item, QQuickItem *control)
{
    // How a text is aligned follows from its own direction.
    const bool isText = !item->property("text").toString().isEmpty()
            && item->property("contentWidth").isValid();
    const bool isRectangle = item->property("color").isValid()
            && item->property("radius").isValid();
    const bool isImage = item->property("source").isValid()
            && !item->property("source").toUrl().isEmpty();
    if (!isText && !isRectangle && !isImage)
        return QRectF();
    // Of the items that leave padding out only what is inside is painted.
    const auto padding = [item](const char *name) { return item->property(name).toReal(); };
    return item->mapRectToItem(control,
                               QRectF(0, 0, item->width(), item->height())
                                       .adjusted(padding("leftPadding"), padding("topPadding"),
                                                 -padding("rightPadding"),
                                                 -padding("bottomPadding")));
}

void collectRects(QQuickItem *item, QQuickItem *control, QList<QRectF> *rects)
{
    if (!item->isVisible())
        return;
    const QRectF rect = paintedRect(item, control);
    if (!rect.isEmpty())
        rects->append(rect);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        collectRects(child, control, rects);
}

/// Where \a item is, as seen from \a root.
QRectF rectIn(QQuickItem *root, QQuickItem *item)
{
    return item->mapRectToItem(root, QRectF(0, 0, item->width(), item->height()));
}

QByteArray describe(const QRectF &rect)
{
    return QStringLiteral("(%1, %2) %3 x %4")
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height())
            .toLatin1();
}

/// Whether something starts when \a item is touched.
bool takesInput(QQuickItem *item)
{
    return item->activeFocusOnTab() || item->inherits("QQuickAbstractButton")
            || item->inherits("QQuickSpinBox") || item->inherits("QQuickRangeSlider");
}

/// Texts below \a item that are cut off, or that stand out of \a item.
QStringList cutTexts(QQuickItem *item, QQuickItem *root)
{
    QStringList cut;
    // A tumbler has items that nobody sees.
    if (!item->isVisible() || item->opacity() <= 0)
        return cut;
    const QString text = item->property("text").toString();
    const QVariant width = item->property("contentWidth");
    if (!text.isEmpty() && width.isValid() && item->property("font").isValid()) {
        const qreal height = item->property("contentHeight").toReal();
        const QRectF inRoot = rectIn(root, item);
        const QRectF bounds = QRectF(0, 0, root->width(), root->height()).adjusted(-1, -1, 1, 1);
        if (item->property("truncated").toBool() || width.toReal() > item->width() + 1
            || height > item->height() + 1 || !bounds.contains(inRoot))
            cut.append(QStringLiteral("%1: %2 x %3 in %4 x %5, %6")
                               .arg(text)
                               .arg(width.toReal())
                               .arg(height)
                               .arg(item->width())
                               .arg(item->height())
                               .arg(QLatin1String(describe(inRoot))));
    }
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        cut.append(cutTexts(child, root));
    return cut;
}

} // namespace

void tst_Controls::initTestCase()
{
    ControlsTestCase::initTestCase();
    m_first = themeAround(QStringLiteral("First"), 10);
    m_second = themeAround(QStringLiteral("Second"), 190);
}

tst_Controls::Look tst_Controls::lookOf(QQuickWindow *window) const
{
    // In Qt 6 the cells that a table no longer has are seen until then.
    deleteDeferred();
    return { colors(window), picture(window) };
}

/// Whether \a window, a sample of \a control, looks like one that is made under the second theme.
void tst_Controls::checkLook(QQuickWindow *window, const QString &control, const QByteArray &common)
{
    const Look seen = lookOf(window);
    const QByteArray key = control.toLatin1() + common;
    if (!m_fresh.contains(key)) {
        QQuickWindow *fresh = showSample(control, common);
        QVERIFY(fresh);
        m_fresh.insert(key, lookOf(fresh));
    }
    const Look &fresh = m_fresh[key];
    QCOMPARE(seen.colors.keys(), fresh.colors.keys());
    for (auto it = seen.colors.constBegin(); it != seen.colors.constEnd(); ++it) {
        const QColor wanted = fresh.colors.value(it.key());
        QVERIFY2(it.value() == wanted,
                 qPrintable(it.key() + QStringLiteral(" is ") + it.value().name(QColor::HexArgb)
                            + QStringLiteral(", not ") + wanted.name(QColor::HexArgb)));
    }
    // What turns all the time is another picture at every moment, of the same colors.
    if (control == QLatin1String("BusyIndicator"))
        QCOMPARE(colorsIn(seen.picture, 20), colorsIn(fresh.picture, 20));
    else
        QCOMPARE(seen.picture, fresh.picture);
}

void tst_Controls::listOfControlsIsQts()
{
    const QStringList controls = Samples::controls();
    QVERIFY(controls.size() >= 52);
    for (const char *name : { "Button", "ApplicationWindow", "ToolTip", "VerticalHeaderView" })
        QVERIFY2(controls.contains(QLatin1String(name)), name);
}

void tst_Controls::isInTheStyle_data()
{
    addControlRows();
}

/// Made by its name alone, without a line on the log, from the style's own file.
void tst_Controls::isInTheStyle()
{
    QFETCH(QString, control);
    QVERIFY(QFileInfo(styleFile(control + QStringLiteral(".qml")).toLocalFile()).isFile());
    QObject *object = create(control.toLatin1() + " { }");
    QVERIFY(object);
    QQmlComponent file(engine(), styleFile(control + QStringLiteral(".qml")));
    const std::unique_ptr<QObject> ours(file.create());
    QVERIFY2(ours, qPrintable(file.errorString()));
    // Types made of files are numbered.
    QCOMPARE(object->metaObject()->className(), ours->metaObject()->className());
}

void tst_Controls::followsASwitch_data()
{
    addControlRows();
}

/// Each color that something is painted with is another one after a switch, and both the colors and
/// the pixels are those of a control that is made under the new theme.
void tst_Controls::followsASwitch()
{
    QFETCH(QString, control);
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = showSample(control);
    QVERIFY(window);
    const Look before = lookOf(window);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    checkLook(window, control);

    const Look after = lookOf(window);
    // The window's own is always there.
    QCOMPARE(after.colors.size() == 1,
             Samples::paintsNothing(control) || control == QLatin1String("ApplicationWindow"));
    for (auto it = before.colors.constBegin(); it != before.colors.constEnd(); ++it) {
        const QColor now = after.colors.value(it.key());
        QVERIFY2(it.value() != now || now.alpha() == 0, qPrintable(it.key()));
    }
    const QList<QRgb> colorsBefore = colorsIn(before.picture, 1);
    const QList<QRgb> colorsAfter = colorsIn(after.picture, 1);
    for (const QRgb color : colorsAfter)
        QVERIFY2(!colorsBefore.contains(color), qPrintable(QColor(color).name()));
}

void tst_Controls::followsItsClass_data()
{
    addControlRows();
}

/// A class decides the colors, whether it is there from the beginning, comes later or goes.
void tst_Controls::followsItsClass()
{
    QFETCH(QString, control);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    const QByteArray common = "Theme.classnames: window.classes";
    QQuickWindow *window = showSample(control, common, "property string classes: \"\"");
    QVERIFY(window);
    const Look plain = lookOf(window);
    checkLook(window, control);

    window->setProperty("classes", QStringLiteral("danger"));
    checkLook(window, control, "Theme.classnames: \"danger\"");
    const Look danger = lookOf(window);
    QCOMPARE(danger.picture == plain.picture, Samples::paintsNothing(control));
    if (!Samples::paintsNothing(control)) {
        Theme scope;
        scope = *ThemeManager::getInstance()->current();
        scope.setClassnames(QStringLiteral("danger"));
        int changed = 0;
        for (auto it = danger.colors.constBegin(); it != danger.colors.constEnd(); ++it) {
            if (it.value() == plain.colors.value(it.key()))
                continue;
            ++changed;
            QVERIFY2(isBetween(it.value(), scope.colors()->foreground(),
                               scope.colors()->background()),
                     qPrintable(it.key() + QLatin1Char(' ') + it.value().name()));
        }
        QVERIFY(changed > 0);
    }

    window->setProperty("classes", QStringLiteral("muted"));
    checkLook(window, control, "Theme.classnames: \"muted\"");
    window->setProperty("classes", QString());
    checkLook(window, control);
}

void tst_Controls::followsLiveReload_data()
{
    addControlRows();
}

/// The file of the current theme is written in place.
void tst_Controls::followsLiveReload()
{
    QFETCH(QString, control);
    const Theme *theme = makeCurrent(QStringLiteral("edited.thm"), m_first);
    QQuickWindow *window = showSample(control);
    QVERIFY(window);
    write(QStringLiteral("edited.thm"), m_second);
    QTRY_COMPARE(theme->title(), QStringLiteral("Second"));
    checkLook(window, control);
}

void tst_Controls::outlivesItsTheme_data()
{
    addControlRows();
}

void tst_Controls::outlivesItsTheme()
{
    QFETCH(QString, control);
    Theme *theme = makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = showSample(control, "Theme.classnames: \"danger\"");
    QVERIFY(window);
    delete theme;
    picture(window);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    checkLook(window, control, "Theme.classnames: \"danger\"");
}

void tst_Controls::isMirrored_data()
{
    addControlRows();
}

/// Where the layout is mirrored, all that is painted is on the other side.
void tst_Controls::isMirrored()
{
    QFETCH(QString, control);
    // Qt does not mirror tables and splits, and the angle of a dial tells its value.
    static const QStringList alike = { QStringLiteral("Dial"),
                                       QStringLiteral("HorizontalHeaderView"),
                                       QStringLiteral("SplitView"),
                                       QStringLiteral("VerticalHeaderView") };
    if (Samples::isPopup(control) || control == QLatin1String("ApplicationWindow")) {
        QQuickWindow *window = showSample(control, "locale: Qt.locale(\"ar_EG\")");
        QVERIFY(window);
        picture(window);
        return;
    }
    QQuickWindow *usual = showSample(control);
    QVERIFY(usual);
    QQuickWindow *mirrored = showSample(
            control, "LayoutMirroring.enabled: true; LayoutMirroring.childrenInherit: true");
    QVERIFY(mirrored);
    picture(usual);
    picture(mirrored);
    const QList<QQuickItem *> items = samples(usual);
    const QList<QQuickItem *> mirroredItems = samples(mirrored);
    QVERIFY(!items.isEmpty());
    QCOMPARE(items.size(), mirroredItems.size());
    for (int i = 0; i < items.size(); ++i) {
        QCOMPARE(mirroredItems[i]->size(), items[i]->size());
        QList<QRectF> rects;
        collectRects(items[i], items[i], &rects);
        QList<QRectF> mirroredRects;
        collectRects(mirroredItems[i], mirroredItems[i], &mirroredRects);
        QCOMPARE(mirroredRects.size(), rects.size());
        for (const QRectF &rect : qAsConst(rects)) {
            const qreal x = alike.contains(control) ? rect.x() : items[i]->width() - rect.right();
            const auto isThere = [&rect, x](const QRectF &other) {
                return std::abs(other.x() - x) <= 1 && std::abs(other.y() - rect.y()) <= 1
                        && std::abs(other.width() - rect.width()) <= 1
                        && std::abs(other.height() - rect.height()) <= 1;
            };
            QVERIFY2(std::any_of(mirroredRects.begin(), mirroredRects.end(), isThere),
                     describe(rect));
        }
    }
}

void tst_Controls::isSeenToBeDisabled_data()
{
    addControlRows();
}

/// What takes input is paler while it is disabled, and as before when it is enabled again.
void tst_Controls::isSeenToBeDisabled()
{
    QFETCH(QString, control);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    if (Samples::isPopup(control) || control == QLatin1String("ApplicationWindow")) {
        QQuickWindow *window = showSample(control);
        QVERIFY(window);
        window->contentItem()->setEnabled(false);
        picture(window);
        return;
    }
    QQuickWindow *window = showSample(control, "enabled: window.usable",
                                      "property bool usable: true");
    QVERIFY(window);
    window->setProperty("usable", false);
    const QImage disabled = picture(window);
    QQuickItem *sample = samples(window).constFirst();
    if (takesInput(sample) && !Samples::paintsNothing(control))
        QVERIFY(disabled != m_fresh.value(control.toLatin1()).picture);
    window->setProperty("usable", true);
    checkLook(window, control);
}

void tst_Controls::growsWithTheFont_data()
{
    addControlRows();
}

/// A theme with twice the font: nothing is cut off, and all is where it is in controls that are
/// made under it.
void tst_Controls::growsWithTheFont()
{
    QFETCH(QString, control);
    makeCurrent(QStringLiteral("small.thm"), themeAround(QStringLiteral("Small"), 20, 14));
    QQuickWindow *window = showSample(control);
    QVERIFY(window);
    window->resize(1000, 800);
    picture(window);
    const auto sizes = [window]() {
        QList<QSizeF> found;
        const QList<QQuickItem *> shown = samples(window);
        for (const QQuickItem *item : shown)
            found.append(item->size());
        return found;
    };
    const QList<QSizeF> before = sizes();
    makeCurrent(QStringLiteral("large.thm"), themeAround(QStringLiteral("Large"), 20, 28));
    picture(window);
    QStringList cut = cutTexts(window->contentItem(), window->contentItem());
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1Char('\n'))));
    const QList<QSizeF> after = sizes();
    const QList<QQuickItem *> shown = samples(window);
    for (int i = 0; i < shown.size(); ++i) {
        // A list is as wide as it is, and what does not fit is scrolled.
        if (!shown[i]->inherits("QQuickScrollView"))
            cut = cutTexts(shown[i], shown[i]);
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1Char('\n'))));
        QVERIFY(after[i].height() >= before[i].height());
    }

    QQuickWindow *fresh = showSample(control);
    QVERIFY(fresh);
    fresh->resize(1000, 800);
    picture(fresh);
    const QList<QQuickItem *> made = samples(fresh);
    for (int i = 0; i < made.size(); ++i)
        QCOMPARE(after[i], made[i]->size());
}

void tst_Controls::isHighEnoughToTouch_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("fusionFile");
    const QStringList controls = Samples::controls();
    for (const QString &control : controls) {
        const QString file = Samples::qtFile(control, QStringLiteral("Fusion"));
        auto *item = qobject_cast<QQuickItem *>(create(control.toLatin1() + " { }"));
        if (item && takesInput(item) && QFileInfo::exists(file))
            QTest::newRow(qPrintable(control)) << control << file;
    }
    closeAll();
}

/// No control that takes input is lower than Fusion's, with the same font.
void tst_Controls::isHighEnoughToTouch()
{
    QFETCH(QString, control);
    QFETCH(QString, fusionFile);
    auto *ours = qobject_cast<QQuickItem *>(create(control.toLatin1() + " { }"));
    QQmlComponent component(engine(), QUrl::fromLocalFile(fusionFile));
    const std::unique_ptr<QObject> object(component.create());
    auto *fusion = qobject_cast<QQuickItem *>(object.get());
    QVERIFY2(fusion, qPrintable(component.errorString()));
    for (QQuickItem *item : { ours, fusion }) {
        item->setProperty("font", QFont(QStringLiteral("DejaVu Sans"), 11));
        if (item->property("text").isValid())
            item->setProperty("text", QStringLiteral("Text"));
    }
    QVERIFY2(ours->implicitHeight() >= fusion->implicitHeight(),
             qPrintable(QStringLiteral("%1 < %2")
                                .arg(ours->implicitHeight())
                                .arg(fusion->implicitHeight())));
}

void tst_Controls::roundButtonIsRound_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("isCircle");
    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("a narrow letter") << QByteArray("text: \"i\"") << true;
    QTest::newRow("a sign") << QByteArray("text: \"+\"") << true;
    QTest::newRow("a wide letter") << QByteArray("text: \"W\"") << true;
    QTest::newRow("a large sign") << QByteArray("text: \"+\"; font.pixelSize: 60") << true;
    QTest::newRow("a small sign") << QByteArray("text: \"+\"; font.pixelSize: 8") << true;
    QTest::newRow("an icon") << QByteArray("icon.source: iconFile") << true;
    QTest::newRow("a large icon") << QByteArray(
            "icon.source: iconFile; icon.width: 64; icon.height: 64")
                                  << true;
    QTest::newRow("a high icon") << QByteArray("icon.source: iconFile; icon.height: 64") << true;
    QTest::newRow("an icon above a letter") << QByteArray("text: \"i\"; icon.source: iconFile; "
                                                          "display: AbstractButton.TextUnderIcon")
                                            << true;
    QTest::newRow("a word") << QByteArray("text: \"Settings\"") << false;
    QTest::newRow("an icon and a word")
            << QByteArray("text: \"Settings\"; icon.source: iconFile") << false;
}

/// A circle around what is not wider than high, else a half circle at each end.
void tst_Controls::roundButtonIsRound()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, isCircle);
    QVERIFY(bundledThemes().contains(QStringLiteral("Dusk")));
    switchTo(QStringLiteral("Dusk"));
    QQuickWindow *window = show("RoundButton { objectName: \"button\"\n" + body + " }");
    QVERIFY(window);
    picture(window);
    QQuickItem *button = find(window, "button");
    QVERIFY(button->height() >= 32);
    if (isCircle)
        QCOMPARE(button->width(), button->height());
    else
        QVERIFY(button->width() > button->height());
    const QObject *background = button->property("background").value<QObject *>();
    QCOMPARE(background->property("radius").toReal(), button->height() / 2);
    const QStringList cut = cutTexts(button, button);
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1Char('\n'))));
}

void tst_Controls::frameOfASpinBoxIsClosed_data()
{
    QTest::addColumn<QByteArray>("classname");
    QTest::addColumn<bool>("isFocused");
    QTest::addColumn<QByteArray>("pressed");
    for (const char *name : { "no class", "primary", "danger" }) {
        const QByteArray classname = qstrcmp(name, "no class") == 0 ? "" : name;
        for (const bool isFocused : { false, true }) {
            const char *focus = isFocused ? "focused" : "without focus";
            QTest::addRow("%s, %s", name, focus) << classname << isFocused << QByteArray();
            for (const char *end : { "up", "down" })
                QTest::addRow("%s, %s, %s pressed", name, focus, end)
                        << classname << isFocused << QByteArray(end);
        }
    }
}

/// The line around it is as wide, and of the same color, at the ends as in the middle.
void tst_Controls::frameOfASpinBoxIsClosed()
{
    QFETCH(QByteArray, classname);
    QFETCH(bool, isFocused);
    QFETCH(QByteArray, pressed);
    constexpr int width = 220;
    constexpr int height = 60;
    constexpr int radius = 10;
    QVERIFY(bundledThemes().contains(QStringLiteral("Dusk")));
    switchTo(QStringLiteral("Dusk"));
    QQuickWindow *window = show("SpinBox { objectName: \"box\"; width: 220; height: 60; value: 5\n"
                                "editable: true; focusPolicy: Qt.NoFocus; Theme.classnames: \""
                                + classname + "\" }");
    QVERIFY(window);
    QVERIFY(QTest::qWaitForWindowActive(window));
    QQuickItem *box = find(window, "box");
    if (isFocused)
        box->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(box->hasActiveFocus(), isFocused);
    const QPoint place(pressed == "up" ? width - 15 : 15, height / 2);
    if (!pressed.isEmpty()) {
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, place);
        QVERIFY(QQmlProperty(box, QLatin1String(pressed + ".pressed")).read().toBool());
    }
    const QImage image = picture(window);
    if (!pressed.isEmpty())
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, place);

    const QRgb line = image.pixel(width / 2, 0);
    for (int depth = 0; depth < (isFocused ? 2 : 1); ++depth) {
        for (int x = radius; x < width - radius; ++x) {
            QCOMPARE(image.pixel(x, depth), line);
            QCOMPARE(image.pixel(x, height - 1 - depth), line);
        }
        for (int y = radius; y < height - radius; ++y) {
            QCOMPARE(image.pixel(depth, y), line);
            QCOMPARE(image.pixel(width - 1 - depth, y), line);
        }
    }
    QVERIFY(image.pixel(width / 2, 3) != line);
    QVERIFY(image.pixel(3, height / 2) != line);
    QVERIFY(image.pixel(width - 4, height / 2) != line);
}

void tst_Controls::partsOfASpinBoxHaveRoom_data()
{
    QTest::addColumn<int>("pixelSize");
    for (const int pixelSize : { 10, 14, 40, 44, 80 })
        QTest::addRow("a font of %d pixels", pixelSize) << pixelSize;
}

/// Each sign stands inside its indicator, and both beside the number, whatever the font.
void tst_Controls::partsOfASpinBoxHaveRoom()
{
    QFETCH(int, pixelSize);
    constexpr qreal margin = 4;
    QVERIFY(bundledThemes().contains(QStringLiteral("Dusk")));
    switchTo(QStringLiteral("Dusk"));
    QQuickWindow *window = show("SpinBox { objectName: \"box\"; to: 1000000; value: 999999\n"
                                "font.pixelSize: "
                                + QByteArray::number(pixelSize) + " }");
    QVERIFY(window);
    picture(window);
    QQuickItem *box = find(window, "box");
    auto *number = box->property("contentItem").value<QQuickItem *>();
    QVERIFY(number->width() >= number->implicitWidth());
    const QRectF room(0, 0, box->width(), box->height());
    for (const char *end : { "up", "down" }) {
        auto *indicator = QQmlProperty(box, QLatin1String(end) + QLatin1String(".indicator"))
                                  .read()
                                  .value<QQuickItem *>();
        QVERIFY(indicator);
        const QRectF area = rectIn(box, indicator);
        const QRectF sign = rectIn(box, indicator->childItems().constFirst());
        QCOMPARE(sign.width(), qreal(pixelSize));
        QVERIFY2(area.contains(sign.adjusted(-margin, -margin, margin, margin)), describe(sign));
        QVERIFY2(room.contains(area), describe(area));
        QVERIFY2(!rectIn(box, number).intersects(area), describe(area));
    }
}

void tst_Controls::classOfUnknownNameIsNone_data()
{
    QTest::addColumn<QByteArray>("classname");
    QTest::newRow("unheard") << QByteArray("unheard");
    // What every object of JavaScript has.
    for (const char *name : { "constructor", "hasOwnProperty", "toString", "__proto__" })
        QTest::newRow(name) << QByteArray(name);
}

void tst_Controls::classOfUnknownNameIsNone()
{
    QFETCH(QByteArray, classname);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    const QString button = QStringLiteral("Button");
    QQuickWindow *window = showSample(button, "Theme.classnames: \"" + classname + '"');
    QVERIFY(window);
    checkLook(window, button);
}

void tst_Controls::emphasisWithoutPrimary_data()
{
    QTest::addColumn<QByteArray>("scope");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("no such class") << QByteArray() << QColor(0x20, 0x20, 0x40);
    QTest::newRow("a class with the background of the page")
            << QByteArray(", \"primary\": {\"colors\": {\"foreground\": \"#802020\"}}")
            << QColor(0x80, 0x20, 0x20);
    QTest::newRow("a class that says nothing")
            << QByteArray(", \"primary\": {}") << QColor(0x20, 0x20, 0x40);
    QTest::newRow("a class with a background")
            << QByteArray(", \"primary\": {\"colors\": {\"foreground\": \"#ffffff\", "
                          "\"background\": \"#205020\"}}")
            << QColor(0x20, 0x50, 0x20);
}

/// What is emphasized is seen in themes that know nothing of it.
void tst_Controls::emphasisWithoutPrimary()
{
    QFETCH(QByteArray, scope);
    QFETCH(QColor, ground);
    makeCurrent(QStringLiteral("theme.thm"),
                "{\"title\": \"Theme\", \"global\": {\"colors\": {\"foreground\": \"#202040\", "
                "\"background\": \"#f0f0f0\"}}"
                        + scope + "}");
    const QObject *button = create("Button { highlighted: true }");
    QVERIFY(button);
    QCOMPARE(button->property("background").value<QObject *>()->property("color").value<QColor>(),
             ground);
}

/// All controls, the popups closed.
QByteArray tst_Controls::pageOfAllControls() const
{
    // Qt itself leaves behind, in every style, what these make: standard buttons, the handles of a
    // split, and headers that were never laid out.
    static const QStringList leftOut = {
        QStringLiteral("ApplicationWindow"), QStringLiteral("Dialog"),
        QStringLiteral("DialogButtonBox"),   QStringLiteral("HorizontalHeaderView"),
        QStringLiteral("SplitView"),         QStringLiteral("VerticalHeaderView")
    };
    QByteArray page = "Dialog { title: \"Title\"; footer: DialogButtonBox { Button { } } }";
    const QStringList controls = Samples::controls();
    for (const QString &control : controls) {
        if (!leftOut.contains(control))
            page += Samples::looks(control, "Theme.classnames: \"danger\"").join();
    }
    return "ApplicationWindow { id: window; width: 800; height: 600; Flow { width: 800\n"
            + page.replace("visible: true", "") + "} }";
}

/// Objects, connections and memory are the same after each round.
void tst_Controls::pageIsMadeAndDestroyedWhileSwitching()
{
#if defined(TAVOLINS_HEAP_IS_REPLACED)
    // Each of them takes three times as long; what leaks leaks in each round.
    constexpr int rounds = 60;
#else
    constexpr int rounds = 100;
#endif
    constexpr int warmUp = 10;

    Theme *first = makeCurrent(QStringLiteral("first.thm"), m_first);
    Theme *second = makeCurrent(QStringLiteral("second.thm"), m_second);
    ThemeManager *manager = ThemeManager::getInstance();
    QQmlComponent component(engine());
    component.setData(Samples::imports() + pageOfAllControls(), QUrl());
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    const ObjectCount objects;
    const QObject *data = Theme::global()->colors()->parent();
    int objectsBefore = 0;
    int followersBefore = 0;
    qint64 heapBefore = 0;
    qint64 heapAfter = 0;
    for (int round = 0; round < rounds; ++round) {
        std::unique_ptr<QObject> page(component.create());
        QVERIFY(page);
        manager->setCurrent(round % 2 ? first : second);
        if (round % 4 == 3) {
            page->setProperty("visible", true);
            QCoreApplication::processEvents();
        }
        page.reset();
        deleteDeferred();
        if (round % 4 != 0 || round < warmUp)
            continue;
        engine()->collectGarbage();
        deleteDeferred();
        const int followers = receiverCount(data, SIGNAL(updateTheme()));
        if (objectsBefore == 0) {
            objectsBefore = objects.value();
            followersBefore = followers;
            continue;
        }
        // QML's own memory has grown to its size by then.
        heapAfter = heapInUse();
        if (heapBefore == 0 && round >= rounds / 2)
            heapBefore = heapAfter;
        QCOMPARE(objects.value(), objectsBefore);
        QCOMPARE(followers, followersBefore);
    }
    // A rectangle in each round would be more.
    QVERIFY2(heapAfter - heapBefore < qint64(rounds / 2) * 200,
             qPrintable(QString::number(heapAfter - heapBefore)));
}

/// The tool tip that all items share ends after what the style has in common.
void tst_Controls::sharedToolTipEndsWithItsEngine()
{
    makeCurrent(QStringLiteral("first.thm"), m_first);
    std::unique_ptr<QQmlEngine> engine(new QQmlEngine);
    engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QQmlComponent component(engine.get());
    component.setData(Samples::imports()
                              + "ApplicationWindow { visible: true; width: 200; height: 200\n"
                                "id: window; property bool hints: false\n"
                                "property bool isShown: button.ToolTip.toolTip.visible\n"
                                "Button { id: button; ToolTip.visible: window.hints; ToolTip.text: "
                                "\"Tip\" } }",
                      QUrl());
    std::unique_ptr<QObject> window(component.create());
    QVERIFY2(window, qPrintable(component.errorString()));
    window->setProperty("hints", true);
    QTRY_VERIFY(window->property("isShown").toBool());
    window.reset();
    engine.reset();
}

void tst_Controls::pictureOfAllControls_data()
{
    QTest::addColumn<QString>("title");
    const QStringList titles = bundledThemes();
    QCOMPARE(titles.size(), 5);
    for (const QString &title : titles)
        QTest::newRow(qPrintable(title)) << title;
}

/// All looks of all controls in one picture, to be looked at: TAVOLINS_PICTURES names a folder.
void tst_Controls::pictureOfAllControls()
{
    QFETCH(QString, title);
    switchTo(title);
    QByteArray page;
    const QStringList controls = Samples::controls();
    for (const QString &control : controls) {
        if (control == QLatin1String("ApplicationWindow") || Samples::isPopup(control)
            || control.endsWith(QLatin1String("HeaderView")))
            continue;
        page += Samples::looks(control).join();
    }
    QQuickWindow *window = show("Flow { anchors.fill: parent; "
                                "anchors.margins: 12; spacing: 12\n"
                                + page + "}");
    QVERIFY(window);
    window->resize(900, 900);
    const QImage image = picture(window);
    QVERIFY(colorsIn(image, 50).size() > 5);
    const QString folder = qEnvironmentVariable("TAVOLINS_PICTURES");
    if (!folder.isEmpty())
        QVERIFY(image.save(folder + QStringLiteral("/controls-") + title + QStringLiteral(".png")));
}

TAVOLINS_TEST_MAIN(tst_Controls)
#include "tst_controls.moc"

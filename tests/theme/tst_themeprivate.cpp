#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "theme/themeprivate.h"

#include <QtCore/QMetaMethod>
#include <QtGui/QPalette>
#include <QtTest/QtTest>

namespace {

const QString a = QStringLiteral("A");
const QString b = QStringLiteral("B");
const QString c = QStringLiteral("C");

/// Gives \a data values that differ from the defaults, and from those for another \a seed.
void fill(ThemePrivate &data, int seed)
{
    data.radius = seed + 0.5;
    data.colors.setForeground(QColor(seed, 1, 2));
    data.colors.setSelection(QColor(seed, 3, 4));
    data.fonts.setMainFont(QFont(QStringLiteral("Main"), seed));
    data.fonts.setH4Font(QFont(QStringLiteral("H4"), seed));
}

QJsonObject scope(int radius)
{
    return { { QStringLiteral("radius"), radius } };
}

/// Records the data's own signal and its groups' signals.
void watchAll(SignalRecorder &recorder, ThemePrivate &data)
{
    recorder.watch(&data);
    recorder.watch(&data.colors);
    recorder.watch(&data.fonts);
}

} // namespace

class tst_ThemePrivate : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void destroyedByItsDefaults_data();
    void destroyedByItsDefaults();
    void metaObject();
    void newDataHoldsTheDefaults();
    void initDefaultsResetsEverything();
    void initDefaultsEmitsOnlyTheGroupsSignals();
    void initDefaultsTakesTheGroupsBack();

    void assignmentTakesTheValues();
    void assignmentEmitsInOrder();
    void assignmentEmitsOnceAfterAllValuesAreInPlace();
    void assignmentOfEqualDataStillEmits();
    void assignmentToItself();
    void assignmentMerges_data();
    void assignmentMerges();
    void assignmentMergesStyles();
    void assignmentKeepsTheGroups();
    void assignmentFromAHandlerStands_data();
    void assignmentFromAHandlerStands();
    void sourceDestroyedByAHandler();
    void dataDestroyedByAHandler_data();
    void dataDestroyedByAHandler();

    void copyTakesAllButTheFonts();
    void copyIsIndependent();
    void copyEmitsNothing();
    void copyLeavesItsGroupsAlone();
};

void tst_ThemePrivate::metaObject()
{
    const QMetaObject &meta = ThemePrivate::staticMetaObject;
    QCOMPARE(meta.className(), "ThemePrivate");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.constructorCount(), 0);
    QCOMPARE(meta.methodCount(), meta.methodOffset() + 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodSignature(), QByteArray("updateTheme()"));
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(method.returnType(), int(QMetaType::Void));
}

void tst_ThemePrivate::newDataHoldsTheDefaults()
{
    const ThemePrivate data;
    QVERIFY(!data.parent());
    QCOMPARE(data.radius, 0.0);
    QVERIFY(data.styles.isEmpty());
    QVERIFY(data.classScopes.isEmpty());
    QCOMPARE(data.colors.foreground(), QPalette().color(QPalette::WindowText));
    QCOMPARE(data.colors.selection(), QPalette().color(QPalette::HighlightedText));
    QCOMPARE(data.fonts.mainFont(), QFont());
    QCOMPARE(data.colors.parent(), &data);
    QCOMPARE(data.fonts.parent(), &data);
}

void tst_ThemePrivate::initDefaultsResetsEverything()
{
    ThemePrivate data;
    fill(data, 20);
    data.styles.insert(a, QStringLiteral("file:///a.qml"));
    data.classScopes.insert(a, scope(3));
    data.initDefaults();
    QCOMPARE(data.radius, 0.0);
    QVERIFY(data.styles.isEmpty());
    QVERIFY(data.classScopes.isEmpty());
    QCOMPARE(data.colors.foreground(), QPalette().color(QPalette::WindowText));
    QCOMPARE(data.fonts.h4Font(), QFont());
}

void tst_ThemePrivate::initDefaultsEmitsOnlyTheGroupsSignals()
{
    ThemePrivate data;
    fill(data, 20);
    SignalRecorder recorder;
    watchAll(recorder, data);
    data.initDefaults();
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("foregroundChanged"), QStringLiteral("selectionChanged"),
                           QStringLiteral("mainFontChanged"), QStringLiteral("h4FontChanged") }));
    data.initDefaults();
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemePrivate::initDefaultsTakesTheGroupsBack()
{
    QObject other;
    ThemePrivate data;
    data.colors.setParent(&other);
    data.fonts.setParent(nullptr);
    data.initDefaults();
    QCOMPARE(data.colors.parent(), &data);
    QCOMPARE(data.fonts.parent(), &data);
}

void tst_ThemePrivate::assignmentTakesTheValues()
{
    ThemePrivate source;
    fill(source, 20);
    ThemePrivate data;
    fill(data, 30);
    data.colors.setDarkerBackground(Qt::cyan);
    QCOMPARE(&(data = source), &data);
    QCOMPARE(data.radius, 20.5);
    QCOMPARE(data.colors.foreground(), QColor(20, 1, 2));
    QCOMPARE(data.colors.selection(), QColor(20, 3, 4));
    QCOMPARE(data.colors.darkerBackground(), source.colors.darkerBackground());
    QCOMPARE(data.fonts.mainFont(), QFont(QStringLiteral("Main"), 20));
    QCOMPARE(data.fonts.h4Font(), QFont(QStringLiteral("H4"), 20));
    QCOMPARE(data.fonts.h1Font(), QFont());
}

void tst_ThemePrivate::assignmentEmitsInOrder()
{
    ThemePrivate source;
    fill(source, 20);
    ThemePrivate data;
    SignalRecorder recorder;
    watchAll(recorder, data);
    SignalRecorder sourceRecorder;
    watchAll(sourceRecorder, source);
    data = source;
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("foregroundChanged"), QStringLiteral("selectionChanged"),
                           QStringLiteral("mainFontChanged"), QStringLiteral("h4FontChanged"),
                           QStringLiteral("updateTheme") }));
    QCOMPARE(sourceRecorder.take(), QStringList());
}

void tst_ThemePrivate::assignmentEmitsOnceAfterAllValuesAreInPlace()
{
    ThemePrivate source;
    fill(source, 20);
    source.styles.insert(a, QStringLiteral("file:///a.qml"));
    source.classScopes.insert(a, scope(3));
    ThemePrivate data;
    int updates = 0;
    connect(&data, &ThemePrivate::updateTheme, &data, [&] {
        ++updates;
        QCOMPARE(data.radius, 20.5);
        QCOMPARE(data.colors.selection(), QColor(20, 3, 4));
        QCOMPARE(data.fonts.h4Font(), QFont(QStringLiteral("H4"), 20));
        QCOMPARE(data.styles, source.styles);
        QCOMPARE(data.classScopes, source.classScopes);
    });
    data = source;
    QCOMPARE(updates, 1);
}

void tst_ThemePrivate::assignmentOfEqualDataStillEmits()
{
    ThemePrivate source;
    ThemePrivate data;
    fill(source, 20);
    fill(data, 20);
    SignalRecorder recorder;
    watchAll(recorder, data);
    data = source;
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("updateTheme")));
}

void tst_ThemePrivate::assignmentToItself()
{
    ThemePrivate data;
    fill(data, 20);
    data.styles.insert(a, QStringLiteral("file:///a.qml"));
    data.classScopes.insert(a, scope(3));
    SignalRecorder recorder;
    watchAll(recorder, data);
    const ThemePrivate &same = data;
    data = same;
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("updateTheme")));
    QCOMPARE(data.radius, 20.5);
    QCOMPARE(data.styles.size(), 1);
    QCOMPARE(data.classScopes.value(a), scope(3));
}

void tst_ThemePrivate::assignmentMerges_data()
{
    typedef QHash<QString, QJsonObject> Scopes;
    QTest::addColumn<Scopes>("own");
    QTest::addColumn<Scopes>("assigned");
    QTest::addColumn<Scopes>("expected");

    QTest::newRow("A into B leaves both") << Scopes{ { b, scope(2) } } << Scopes{ { a, scope(1) } }
                                          << Scopes{ { a, scope(1) }, { b, scope(2) } };
    QTest::newRow("a key in both takes the source's value")
            << Scopes{ { a, scope(1) }, { b, scope(2) } }
            << Scopes{ { b, scope(3) }, { c, scope(4) } }
            << Scopes{ { a, scope(1) }, { b, scope(3) }, { c, scope(4) } };
    QTest::newRow("scopes themselves are not merged")
            << Scopes{ { a, { { QStringLiteral("x"), 1 } } } }
            << Scopes{ { a, { { QStringLiteral("y"), 2 } } } }
            << Scopes{ { a, { { QStringLiteral("y"), 2 } } } };
    QTest::newRow("an empty scope replaces")
            << Scopes{ { a, scope(1) } } << Scopes{ { a, QJsonObject() } }
            << Scopes{ { a, QJsonObject() } };
    QTest::newRow("nothing into something")
            << Scopes{ { a, scope(1) } } << Scopes() << Scopes{ { a, scope(1) } };
    QTest::newRow("something into nothing")
            << Scopes() << Scopes{ { a, scope(1) } } << Scopes{ { a, scope(1) } };
}

void tst_ThemePrivate::assignmentMerges()
{
    typedef QHash<QString, QJsonObject> Scopes;
    QFETCH(Scopes, own);
    QFETCH(Scopes, assigned);
    QFETCH(Scopes, expected);

    ThemePrivate data;
    data.classScopes = own;
    ThemePrivate source;
    source.classScopes = assigned;
    data = source;
    QCOMPARE(data.classScopes, expected);
    QCOMPARE(source.classScopes, assigned);
}

void tst_ThemePrivate::assignmentMergesStyles()
{
    const QString one = QStringLiteral("file:///1.qml");
    const QString two = QStringLiteral("file:///2.qml");
    const QString three = QStringLiteral("file:///3.qml");
    ThemePrivate data;
    data.styles = { { a, one }, { b, one } };
    ThemePrivate source;
    source.styles = { { b, two }, { c, three } };
    data = source;
    QCOMPARE(data.styles, (QHash<QString, QString>{ { a, one }, { b, two }, { c, three } }));

    // What was merged in does not go back.
    data.styles.insert(c, one);
    QCOMPARE(source.styles.value(c), three);
}

void tst_ThemePrivate::assignmentKeepsTheGroups()
{
    ThemePrivate source;
    ThemePrivate data;
    data.setObjectName(QStringLiteral("kept"));
    data = source;
    QCOMPARE(data.colors.parent(), &data);
    QCOMPARE(data.fonts.parent(), &data);
    QCOMPARE(data.objectName(), QStringLiteral("kept"));
    QVERIFY(!data.parent());
}

void tst_ThemePrivate::assignmentFromAHandlerStands_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("updates");

    QTest::newRow("while the colors are taken") << QStringLiteral("foregroundChanged") << 1;
    QTest::newRow("while the fonts are taken") << QStringLiteral("mainFontChanged") << 1;
    QTest::newRow("at the end") << QStringLiteral("updateTheme") << 2;
}

void tst_ThemePrivate::assignmentFromAHandlerStands()
{
    QFETCH(QString, signal);
    QFETCH(int, updates);

    ThemePrivate first;
    fill(first, 20);
    ThemePrivate second;
    fill(second, 30);
    ThemePrivate data;
    SignalRecorder recorder;
    watchAll(recorder, data);
    bool assigned = false;
    recorder.onSignal([&](const QString &name) {
        if (name == signal && !assigned) {
            assigned = true;
            data = second;
        }
    });
    data = first;
    QVERIFY(assigned);
    QCOMPARE(data.radius, 30.5);
    QCOMPARE(data.colors.foreground(), second.colors.foreground());
    QCOMPARE(data.colors.selection(), second.colors.selection());
    QCOMPARE(data.fonts.mainFont(), second.fonts.mainFont());
    QCOMPARE(data.fonts.h4Font(), second.fonts.h4Font());
    QCOMPARE(recorder.take().count(QStringLiteral("updateTheme")), updates);
}

void tst_ThemePrivate::sourceDestroyedByAHandler()
{
    QPointer<ThemePrivate> source(new ThemePrivate);
    fill(*source, 20);
    source->classScopes.insert(a, scope(3));
    ThemePrivate data;
    connect(&data.colors, &ThemeObjectColors::foregroundChanged, this, [&] { delete source; });
    data = *source;
    QVERIFY(!source);
    QCOMPARE(data.radius, 20.5);
    QCOMPARE(data.colors.selection(), QColor(20, 3, 4));
    QCOMPARE(data.fonts.h4Font(), QFont(QStringLiteral("H4"), 20));
    QCOMPARE(data.classScopes.value(a), scope(3));
}

void tst_ThemePrivate::dataDestroyedByAHandler_data()
{
    QTest::addColumn<QString>("signal");

    for (const char *signal : { "foregroundChanged", "selectionChanged", "mainFontChanged",
                                "h4FontChanged", "updateTheme" })
        QTest::newRow(signal) << QString::fromLatin1(signal);
}

void tst_ThemePrivate::dataDestroyedByAHandler()
{
    QFETCH(QString, signal);

    ThemePrivate source;
    fill(source, 20);
    const QPointer<ThemePrivate> data(new ThemePrivate);
    SignalRecorder recorder;
    watchAll(recorder, *data);
    recorder.onSignal([&](const QString &name) {
        if (name == signal)
            delete data;
    });
    *data = source;
    QVERIFY(!data);
    QCOMPARE(recorder.take().constLast(), signal);
}

void tst_ThemePrivate::copyTakesAllButTheFonts()
{
    ThemePrivate source;
    fill(source, 20);
    source.styles.insert(a, QStringLiteral("file:///a.qml"));
    source.classScopes.insert(a, scope(3));
    QObject parent;
    source.setParent(&parent);
    const ThemePrivate copy(source);
    source.setParent(nullptr);
    QVERIFY(!copy.parent());
    QCOMPARE(copy.radius, 20.5);
    QCOMPARE(copy.colors.foreground(), QColor(20, 1, 2));
    QCOMPARE(copy.colors.selection(), QColor(20, 3, 4));
    QCOMPARE(copy.colors.lighterBackground(), source.colors.lighterBackground());
    QCOMPARE(copy.styles, source.styles);
    QCOMPARE(copy.classScopes, source.classScopes);
    QCOMPARE(copy.fonts.mainFont(), QFont());
    QCOMPARE(copy.fonts.h4Font(), QFont());
}

void tst_ThemePrivate::copyIsIndependent()
{
    ThemePrivate source;
    source.styles.insert(a, QStringLiteral("file:///a.qml"));
    ThemePrivate copy(source);
    copy.styles.insert(b, QStringLiteral("file:///b.qml"));
    copy.classScopes.insert(a, scope(3));
    copy.colors.setForeground(Qt::cyan);
    QCOMPARE(source.styles.size(), 1);
    QVERIFY(source.classScopes.isEmpty());
    QVERIFY(source.colors.foreground() != QColor(Qt::cyan));
}

void tst_ThemePrivate::copyEmitsNothing()
{
    ThemePrivate source;
    fill(source, 20);
    SignalRecorder recorder;
    watchAll(recorder, source);
    ThemePrivate copy(source);
    QCOMPARE(recorder.take(), QStringList());
    SignalRecorder copyRecorder;
    watchAll(copyRecorder, copy);
    source.colors.setForeground(Qt::cyan);
    source = ThemePrivate();
    QCOMPARE(copyRecorder.take(), QStringList());
}

void tst_ThemePrivate::copyLeavesItsGroupsAlone()
{
    // Only initDefaults() takes the groups as children, and a copy does not run it.
    const ThemePrivate source;
    const ThemePrivate copy(source);
    QVERIFY(!copy.colors.parent());
    QVERIFY(!copy.fonts.parent());
}

void tst_ThemePrivate::destroyedByItsDefaults_data()
{
    QTest::addColumn<bool>("byFonts");
    QTest::newRow("in a handler of its colors") << false;
    QTest::newRow("in a handler of its fonts") << true;
}

void tst_ThemePrivate::destroyedByItsDefaults()
{
    QFETCH(const bool, byFonts);
    const QPointer<ThemePrivate> data(new ThemePrivate);
    data->colors.setForeground(Qt::red);
    data->fonts.setMainFont(QFont(QStringLiteral("Another"), 40));
    const auto destroy = [&] { delete data; };
    if (byFonts)
        connect(&data->fonts, &ThemeObjectFonts::mainFontChanged, this, destroy);
    else
        connect(&data->colors, &ThemeObjectColors::foregroundChanged, this, destroy);
    data->initDefaults();
    QVERIFY(!data);
}

TAVOLINS_TEST_MAIN(tst_ThemePrivate)
#include "tst_themeprivate.moc"

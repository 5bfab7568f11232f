#include "support/testcase.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtGui/QPalette>
#include <QtTest/QtTest>

#include <memory>

class tst_ThemeObject : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void metaObjectIsEmpty();
    void groupsShareTheBase();
    void baseLoadsAndResetsWithoutKnowingTheKind();
};

void tst_ThemeObject::metaObjectIsEmpty()
{
    const QMetaObject &meta = ThemeObject::staticMetaObject;
    QCOMPARE(meta.className(), "ThemeObject");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(meta.constructorCount(), 0);
    QCOMPARE(meta.enumeratorCount(), QObject::staticMetaObject.enumeratorCount());
}

void tst_ThemeObject::groupsShareTheBase()
{
    QObject parent;
    QObject *colors = new ThemeObjectColors(&parent);
    QObject *fonts = new ThemeObjectFonts(&parent);
    QCOMPARE(qobject_cast<ThemeObject *>(colors), colors);
    QCOMPARE(qobject_cast<ThemeObject *>(fonts), fonts);
    QCOMPARE(colors->parent(), &parent);
    QCOMPARE(fonts->parent(), &parent);
}

void tst_ThemeObject::baseLoadsAndResetsWithoutKnowingTheKind()
{
    const std::unique_ptr<ThemeObject> group(new ThemeObjectColors);
    QJsonObject object{ { QStringLiteral("background"), QStringLiteral("teal") } };
    group->load(object, false);
    QCOMPARE(group->property("background").value<QColor>(), QColor(0, 128, 128));
    group->initDefaults();
    QCOMPARE(group->property("background").value<QColor>(), QPalette().color(QPalette::Window));
}

TAVOLINS_TEST_MAIN(tst_ThemeObject)
#include "tst_themeobject.moc"

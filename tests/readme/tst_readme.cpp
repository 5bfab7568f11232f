#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QColor>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

/// The README's examples, run as they stand there.
class tst_Readme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void exampleShowsTheExampleTheme();
    void exampleIsShort();

private:
    static QString example(const QString &language);
};

QString tst_Readme::example(const QString &language)
{
    QFile readme(QStringLiteral(TAVOLINS_SOURCE_DIR "/README.md"));
    if (!readme.open(QIODevice::ReadOnly))
        return QString();
    const QRegularExpression fence(QStringLiteral("```%1\\n(.*?)```").arg(language),
                                   QRegularExpression::DotMatchesEverythingOption);
    return fence.match(QString::fromUtf8(readme.readAll())).captured(1);
}

void tst_Readme::exampleShowsTheExampleTheme()
{
    write(QStringLiteral("themes/harbour.thm"), example(QStringLiteral("json")).toUtf8());
    const QString code = example(QStringLiteral("qml"))
                                 .replace(QStringLiteral("import Tavolins "),
                                          QStringLiteral("import " TAVOLINS_QML_URI " "));
    QDir::setCurrent(folder());

    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QQmlComponent component(&engine);
    component.setData(code.toUtf8(), QUrl());
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
    auto *item = qobject_cast<QQuickItem *>(root.get());
    QVERIFY(item);
    QCOMPARE(item->property("color").value<QColor>(), QColor(0xf4, 0xf7, 0xf9));
    QCOMPARE(item->property("radius").toInt(), 6);
    const QList<QQuickItem *> texts = item->childItems();
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts.at(0)->property("color").value<QColor>(), QColor(0x1d, 0x2b, 0x36));
    QCOMPARE(texts.at(1)->property("color").value<QColor>(), QColor(0x0b, 0x5c, 0x8a));
}

void tst_Readme::exampleIsShort()
{
    QCOMPARE(example(QStringLiteral("qml")).trimmed().count(QLatin1Char('\n')) + 1, 10);
}

TAVOLINS_TEST_MAIN(tst_Readme)
#include "tst_readme.moc"

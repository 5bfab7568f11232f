#include "manager/thememanager.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtTest/QtTest>

#include <functional>
#include <memory>

namespace {

struct Property
{
    const char *type;
    const char *name;
    const char *notifySignal;
    bool isWritable;
    /// All signals of a write that changes the value, in order.
    QStringList onChange;
};

struct Contract
{
    const QMetaObject *meta;
    const QMetaObject *base;
    std::function<QObject *()> create;
    QList<Property> properties;
    QList<QByteArray> signalTexts;
    QList<QByteArray> slotTexts;
};

QList<Property> alike(const char *type, const QList<const char *> &names,
                      const QList<const char *> &notifySignals)
{
    QList<Property> properties;
    for (int i = 0; i < names.size(); ++i) {
        properties.append(
                { type, names.at(i), notifySignals.at(i), true,
                  QStringList(
                          QString::fromLatin1(notifySignals.at(i)).remove(QStringLiteral("()"))) });
    }
    return properties;
}

Contract colorsContract()
{
    return { &ThemeObjectColors::staticMetaObject,
             &ThemeObject::staticMetaObject,
             [] { return new ThemeObjectColors; },
             alike("QColor",
                   { "foreground", "lighterForeground", "darkerForeground", "background",
                     "lighterBackground", "darkerBackground", "selection" },
                   { "foregroundChanged()", "lighterForegroundChanged()",
                     "darkerForegroundChanged()", "backgroundChanged()",
                     "lighterBackgroundChanged()", "darkerBackgroundChanged()",
                     "selectionChanged()" }),
             { "void foregroundChanged()", "void lighterForegroundChanged()",
               "void darkerForegroundChanged()", "void backgroundChanged()",
               "void lighterBackgroundChanged()", "void darkerBackgroundChanged()",
               "void selectionChanged()" },
             {} };
}

Contract fontsContract()
{
    Contract contract = {
        &ThemeObjectFonts::staticMetaObject,
        &ThemeObject::staticMetaObject,
        [] { return new ThemeObjectFonts; },
        alike("QFont", { "mainFont", "alternateFont", "h1Font", "h2Font", "h3Font", "h4Font" },
              { "mainFontChanged()", "alternateFontChanged()", "h1FontChanged()", "h2FontChanged()",
                "h3FontChanged()", "h4FontChanged()" }),
        { "void mainFontChanged()", "void alternateFontChanged()", "void h1FontChanged()",
          "void h2FontChanged()", "void h3FontChanged()", "void h4FontChanged()",
          "void fontFactorChanged()" },
        {}
    };
    contract.properties.append({ "double", "fontFactor", "fontFactorChanged()", false, {} });
    return contract;
}

Contract themeContract()
{
    return {
        &Theme::staticMetaObject,
        &QObject::staticMetaObject,
        [] { return new Theme; },
        {
                { "QString",
                  "title",
                  "titleChanged(QString)",
                  true,
                  { QStringLiteral("titleChanged(written)") } },
                { "QString",
                  "filename",
                  "filenameChanged()",
                  true,
                  { QStringLiteral("filenameChanged") } },
                { "ThemeObjectColors*", "colors", "themeObjectChanged()", false, {} },
                { "ThemeObjectFonts*", "fonts", "themeObjectChanged()", false, {} },
                { "int", "radius", "radiusChanged()", true, { QStringLiteral("radiusChanged") } },
                // Class names select other colors and fonts.
                { "QString",
                  "classnames",
                  "classnamesChanged()",
                  true,
                  { QStringLiteral("themeObjectChanged"), QStringLiteral("classnamesChanged") } },
        },
        { "void titleChanged(QString title)", "void themeChanged()", "void needUpdate()",
          "void filenameChanged()", "void radiusChanged()", "void isActiveChanged()",
          "void classnamesChanged()", "void themeObjectChanged()" },
        { "void sendUpdate()", "void setTitle(QString title)", "void setFilename(QString filename)",
          "void setRadius(int radius)", "void themeChanged(Theme* )",
          "QString getStyle(QString style, QString classnames)",
          "[cloned] QString getStyle(QString style)", "void setClassnames(QString classnames)",
          "bool hasClassname(QString classname)", "QColor complementaryColor(QColor baseColor)" }
    };
}

const QList<Contract> &contracts()
{
    static const QList<Contract> list{ colorsContract(), fontsContract(), themeContract() };
    return list;
}

/// A value of the property's type that no new object has.
QVariant otherValue(const QMetaProperty &property)
{
    switch (property.userType()) {
    case QMetaType::QColor:
        return QColor(1, 2, 3, 4);
    case QMetaType::QFont:
        return QFont(QStringLiteral("Written"), 77);
    case QMetaType::QString:
        return QStringLiteral("written");
    case QMetaType::Int:
        return 7;
    case QMetaType::Double:
        return 7.5;
    default:
        return QVariant();
    }
}

QByteArray describe(QMetaMethod method)
{
    QList<QByteArray> parameters;
    const QList<QByteArray> types = method.parameterTypes();
    const QList<QByteArray> names = method.parameterNames();
    for (int i = 0; i < types.size(); ++i)
        parameters.append(types.at(i) + ' ' + names.at(i));
    QByteArray text = QByteArray(method.typeName()) + ' ' + method.name() + '('
            + parameters.join(", ") + ')';
    if (method.attributes() & QMetaMethod::Cloned)
        text.prepend("[cloned] ");
    return text;
}

} // namespace

/// What the meta-objects of the types with properties promise to QML.
class tst_Properties : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void classes_data();
    void classes();
    void order_data();
    void order();
    void methods_data();
    void methods();

    void properties_data();
    void properties();
    void defaults_data();
    void defaults();
    void equalValueEmitsNothing_data();
    void equalValueEmitsNothing();
    void changeEmitsOnce_data();
    void changeEmitsOnce();
    void changeIsSeenByHandlers_data();
    void changeIsSeenByHandlers();
    void readOnlyPropertiesRefuseWrites_data();
    void readOnlyPropertiesRefuseWrites();

private:
    enum Kind { AnyProperty, WritableProperty, ReadOnlyProperty };

    static void classRows();
    static void propertyRows(Kind kind);
};

void tst_Properties::initTestCase()
{
    // Creates the global theme, so that the themes below are ordinary ones.
    ThemeManager::getInstance();
}

void tst_Properties::classRows()
{
    QTest::addColumn<int>("contractIndex");
    for (int i = 0; i < contracts().size(); ++i)
        QTest::newRow(contracts().at(i).meta->className()) << i;
}

void tst_Properties::propertyRows(Kind kind)
{
    QTest::addColumn<int>("contractIndex");
    QTest::addColumn<int>("propertyIndex");
    for (int i = 0; i < contracts().size(); ++i) {
        const Contract &contract = contracts().at(i);
        for (int j = 0; j < contract.properties.size(); ++j) {
            const Property &property = contract.properties.at(j);
            if (kind == AnyProperty || property.isWritable == (kind == WritableProperty)) {
                QTest::addRow("%s.%s", contract.meta->className(), property.name) << i << j;
            }
        }
    }
}

/// The row's contract, its object, the expected and the real property.
#define FETCH_PROPERTY \
    QFETCH(int, contractIndex); \
    QFETCH(int, propertyIndex); \
    const Contract &contract = contracts().at(contractIndex); \
    const Property &expected = contract.properties.at(propertyIndex); \
    const QMetaProperty property = contract.meta->property(contract.meta->propertyOffset() \
                                                           + propertyIndex); \
    QCOMPARE(property.name(), expected.name); \
    const std::unique_ptr<QObject> object(contract.create())

void tst_Properties::classes_data()
{
    classRows();
}

void tst_Properties::classes()
{
    QFETCH(int, contractIndex);
    const Contract &contract = contracts().at(contractIndex);
    const QMetaObject &meta = *contract.meta;
    QCOMPARE(meta.className(), QTest::currentDataTag());
    QCOMPARE(meta.superClass(), contract.base);
    const std::unique_ptr<QObject> object(contract.create());
    QCOMPARE(object->metaObject(), contract.meta);
    QVERIFY(!object->parent());
    // Nothing beside the properties and methods that the other tests list.
    QCOMPARE(meta.constructorCount(), 0);
    QCOMPARE(meta.enumeratorCount(), contract.base->enumeratorCount());
    QCOMPARE(meta.classInfoCount(), contract.base->classInfoCount());
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), contract.properties.size());
    QCOMPARE(meta.methodCount() - meta.methodOffset(),
             contract.signalTexts.size() + contract.slotTexts.size());
}

void tst_Properties::order_data()
{
    classRows();
}

void tst_Properties::order()
{
    QFETCH(int, contractIndex);
    const Contract &contract = contracts().at(contractIndex);
    QList<QByteArray> names;
    for (int i = contract.meta->propertyOffset(); i < contract.meta->propertyCount(); ++i)
        names.append(contract.meta->property(i).name());
    QList<QByteArray> expected;
    for (const Property &property : contract.properties)
        expected.append(property.name);
    QCOMPARE(names, expected);
}

void tst_Properties::methods_data()
{
    classRows();
}

void tst_Properties::methods()
{
    QFETCH(int, contractIndex);
    const Contract &contract = contracts().at(contractIndex);
    QList<QByteArray> texts;
    for (int i = contract.meta->methodOffset(); i < contract.meta->methodCount(); ++i) {
        const QMetaMethod method = contract.meta->method(i);
        const bool isSignal = i - contract.meta->methodOffset() < contract.signalTexts.size();
        QCOMPARE(method.methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.revision(), 0);
        texts.append(describe(method));
    }
    QCOMPARE(texts, contract.signalTexts + contract.slotTexts);
}

void tst_Properties::properties_data()
{
    propertyRows(AnyProperty);
}

void tst_Properties::properties()
{
    FETCH_PROPERTY;
    QCOMPARE(property.typeName(), expected.type);
    QVERIFY(property.isReadable());
    QCOMPARE(property.isWritable(), expected.isWritable);
    QVERIFY(property.hasNotifySignal());
    QCOMPARE(property.notifySignal().methodSignature(), QByteArray(expected.notifySignal));
    QVERIFY(property.isDesignable());
    QVERIFY(property.isScriptable());
    QVERIFY(property.isStored());
    QVERIFY(!property.isConstant());
    QVERIFY(!property.isFinal());
    QVERIFY(!property.isResettable());
    QVERIFY(!property.isUser());
    QVERIFY(!property.isRequired());
    QVERIFY(!property.isEnumType());
    QCOMPARE(property.revision(), 0);
    // In the groups the signals stand in the order of their properties.
    if (contract.base == &ThemeObject::staticMetaObject)
        QCOMPARE(property.notifySignalIndex() - contract.meta->methodOffset(), propertyIndex);
}

void tst_Properties::defaults_data()
{
    propertyRows(AnyProperty);
}

void tst_Properties::defaults()
{
    FETCH_PROPERTY;
    const QVariant value = property.read(object.get());
    QVERIFY(value.isValid());
    switch (property.userType()) {
    case QMetaType::QColor:
        QVERIFY(!value.value<QColor>().isValid());
        break;
    case QMetaType::QFont:
        QCOMPARE(value.value<QFont>(), QFont());
        break;
    case QMetaType::QString:
        QCOMPARE(value.toString(), QString());
        break;
    case QMetaType::Int:
        QCOMPARE(value.toInt(), 0);
        break;
    case QMetaType::Double:
        QCOMPARE(value.toDouble(), 0.75);
        break;
    default: {
        // A group that belongs to the theme's own data.
        const QObject *group = value.value<QObject *>();
        QVERIFY(group);
        QCOMPARE(QByteArray(group->metaObject()->className()) + '*', QByteArray(expected.type));
        const std::unique_ptr<QObject> other(contract.create());
        QVERIFY(property.read(other.get()).value<QObject *>() != group);
    }
    }
}

void tst_Properties::equalValueEmitsNothing_data()
{
    propertyRows(WritableProperty);
}

void tst_Properties::equalValueEmitsNothing()
{
    FETCH_PROPERTY;
    SignalRecorder recorder(object.get());
    QVERIFY(property.write(object.get(), property.read(object.get())));
    QCOMPARE(recorder.take(), QStringList());

    QVERIFY(property.write(object.get(), otherValue(property)));
    recorder.take();
    QVERIFY(property.write(object.get(), otherValue(property)));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_Properties::changeEmitsOnce_data()
{
    propertyRows(WritableProperty);
}

void tst_Properties::changeEmitsOnce()
{
    FETCH_PROPERTY;
    QVariantList others;
    for (int i = contract.meta->propertyOffset(); i < contract.meta->propertyCount(); ++i)
        others.append(contract.meta->property(i).read(object.get()));

    SignalRecorder recorder(object.get());
    QSignalSpy notified(object.get(), property.notifySignal());
    QVERIFY(property.write(object.get(), otherValue(property)));
    QCOMPARE(notified.count(), 1);
    QCOMPARE(recorder.take(), expected.onChange);
    QCOMPARE(property.read(object.get()), otherValue(property));

    // No other property has followed.
    for (int i = contract.meta->propertyOffset(); i < contract.meta->propertyCount(); ++i) {
        const QMetaProperty other = contract.meta->property(i);
        if (i != property.propertyIndex() && other.userType() != QMetaType::UnknownType)
            QCOMPARE(other.read(object.get()), others.at(i - contract.meta->propertyOffset()));
    }
}

void tst_Properties::changeIsSeenByHandlers_data()
{
    propertyRows(WritableProperty);
}

void tst_Properties::changeIsSeenByHandlers()
{
    FETCH_PROPERTY;
    QVariantList seen;
    SignalRecorder recorder(object.get());
    recorder.onSignal([&](const QString &) { seen.append(property.read(object.get())); });
    QVERIFY(property.write(object.get(), otherValue(property)));
    QCOMPARE(seen.size(), expected.onChange.size());
    for (const QVariant &value : qAsConst(seen))
        QCOMPARE(value, otherValue(property));
}

void tst_Properties::readOnlyPropertiesRefuseWrites_data()
{
    propertyRows(ReadOnlyProperty);
}

void tst_Properties::readOnlyPropertiesRefuseWrites()
{
    FETCH_PROPERTY;
    const QVariant before = property.read(object.get());
    const std::unique_ptr<QObject> other(contract.create());
    QVariant written = otherValue(property);
    if (!written.isValid())
        written = property.read(other.get());
    SignalRecorder recorder(object.get());
    QVERIFY(!property.write(object.get(), written));
    QCOMPARE(property.read(object.get()), before);
    QCOMPARE(recorder.take(), QStringList());
}

TAVOLINS_TEST_MAIN(tst_Properties)
#include "tst_properties.moc"

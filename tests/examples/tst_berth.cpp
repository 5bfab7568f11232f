// The application of ten lines that writes no color.

#include "manager/thememanager.h"
#include "support/renderer.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QColor>
#include <QtGui/QPainter>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <memory>

class tst_Berth : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void hasTenLinesAndNoColor();
    void looksLikeTheTheme_data();
    void looksLikeTheTheme();
    void switchesWhileTheDialogIsOpen();
    void pictureIsMade();

private:
    QObject *find(const QByteArray &type) const;
    QColor ground(const QByteArray &type) const;
    void openDialog();
    void checkLook();
    QImage picture();

    QString m_code;
    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

namespace {

ThemeManager &manager()
{
    return *ThemeManager::getInstance();
}

void switchTo(const QString &title)
{
    manager().setCurrent(manager().themeFromName(title));
}

QObject *findBelow(QQuickItem *item, const QByteArray &type)
{
    if (!item->isVisible())
        return nullptr;
    if (QByteArray(item->metaObject()->className()).startsWith(type))
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (QObject *found = findBelow(child, type))
            return found;
    }
    return nullptr;
}

} // namespace

void tst_Berth::initTestCase()
{
    m_renderer.reset(new Renderer);
    qputenv("QT_QUICK_CONTROLS_STYLE", "Tavolins");
    qputenv("QT_QUICK_CONTROLS_STYLE_PATH",
            TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR "/..");
    QFile file(QStringLiteral(TAVOLINS_SOURCE_DIR "/examples/berth/berth.qml"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_code = QString::fromUtf8(file.readAll());
}

/// Where the application is told to be run, with the themes of the build.
void tst_Berth::init()
{
    TestCase::init();
    QDir::setCurrent(QStringLiteral(TAVOLINS_THEMES_DIR "/.."));
    m_engine.reset(new QQmlEngine);
    m_engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QQmlComponent component(m_engine.get());
    QString code = m_code;
    code.replace(QStringLiteral("import Tavolins "),
                 QStringLiteral("import " TAVOLINS_QML_URI " "));
    component.setData(code.toUtf8(), QUrl());
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    QVERIFY2(m_window, qPrintable(component.errorString()));
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_Berth::cleanup()
{
    m_window.reset();
    m_engine.reset();
    TestCase::cleanup();
}

/// The first item of the file \a type.qml that is seen, in the page or else in the dialog.
QObject *tst_Berth::find(const QByteArray &type) const
{
    auto *page = m_window->property("contentItem").value<QQuickItem *>();
    QObject *found = findBelow(page, type);
    return found ? found : findBelow(m_window->contentItem(), type);
}

QColor tst_Berth::ground(const QByteArray &type) const
{
    const auto *background = find(type)->property("background").value<QObject *>();
    return background->property("color").value<QColor>();
}

void tst_Berth::openDialog()
{
    auto *button = qobject_cast<QQuickItem *>(find("Button_"));
    const QPointF center(button->width() / 2, button->height() / 2);
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier,
                      button->mapToScene(center).toPoint());
    QTRY_VERIFY(find("DialogButtonBox_"));
    QTest::mouseMove(m_window.get(), QPoint(1, 1));
}

/// Everything that is seen has the colors and the font of the current theme.
void tst_Berth::checkLook()
{
    Theme page;
    page = *manager().current();
    Theme primary;
    primary = page;
    primary.setClassnames(QStringLiteral("primary"));
    const auto color = [this](const char *type, const char *property) {
        return find(type)->property(property).value<QColor>();
    };

    QCOMPARE(m_window->color(), page.colors()->background());
    QCOMPARE(color("TextField_", "color"), page.colors()->foreground());
    QCOMPARE(ground("TextField_"), page.colors()->background());
    QCOMPARE(ground("Button_"), primary.colors()->background());
    QCOMPARE(color("CheckIndicator_", "color"), primary.colors()->background());
    QCOMPARE(find("Button_")->property("font").value<QFont>().family(),
             page.fonts()->mainFont().family());
    if (!find("DialogButtonBox_"))
        return;
    QCOMPARE(color("Label_", "color"), page.colors()->foreground());
    auto *box = qobject_cast<QQuickItem *>(find("DialogButtonBox_"));
    const auto *background = findBelow(box, "Button_")->property("background").value<QObject *>();
    QCOMPARE(background->property("color").value<QColor>(), page.colors()->lighterBackground());
}

QImage tst_Berth::picture()
{
    QCoreApplication::processEvents();
    const QSharedPointer<QQuickItemGrabResult> result = m_window->contentItem()->grabToImage();
    QSignalSpy ready(result.data(), &QQuickItemGrabResult::ready);
    ready.wait();
    QImage image(m_window->size(), QImage::Format_RGB32);
    image.fill(m_window->color());
    QPainter(&image).drawImage(QPoint(), result->image());
    return image;
}

void tst_Berth::hasTenLinesAndNoColor()
{
    QCOMPARE(m_code.trimmed().count(QLatin1Char('\n')) + 1, 10);
    static const QRegularExpression look(QStringLiteral("color|font|palette|radius|#"));
    QVERIFY(!m_code.contains(look));
}

void tst_Berth::looksLikeTheTheme_data()
{
    QTest::addColumn<QString>("title");
    for (const char *title : { "Daylight", "Dusk", "Moss", "Plum", "Signal" })
        QTest::newRow(title) << QString::fromLatin1(title);
}

void tst_Berth::looksLikeTheTheme()
{
    QFETCH(QString, title);
    switchTo(title);
    checkLook();
    const QPoint corner(m_window->width() - 3, m_window->height() - 3);
    QCOMPARE(picture().pixelColor(corner), manager().current()->colors()->background());
    openDialog();
    checkLook();
}

void tst_Berth::switchesWhileTheDialogIsOpen()
{
    openDialog();
    for (const char *title : { "Signal", "Moss", "Daylight", "Dusk", "Plum" }) {
        switchTo(QString::fromLatin1(title));
        QVERIFY(find("DialogButtonBox_"));
        checkLook();
    }
}

/// All themes in one picture, to be looked at: see the README of the example.
void tst_Berth::pictureIsMade()
{
    const char *const titles[] = { "Daylight", "Dusk", "Signal", "Plum", "Daylight", "Moss" };
    const QSize size = m_window->size();
    QImage all(3 * size.width(), 2 * size.height(), QImage::Format_RGB32);
    QPainter painter(&all);
    QList<QImage> pictures;
    for (int i = 0; i < 6; ++i) {
        switchTo(QString::fromLatin1(titles[i]));
        if (i == 3)
            openDialog();
        pictures.append(picture());
        QCOMPARE(pictures.count(pictures.last()), 1);
        painter.drawImage(QPoint(i % 3 * size.width(), i / 3 * size.height()), pictures.last());
    }
    painter.end();
    const QString folder = qEnvironmentVariable("TAVOLINS_PICTURES");
    if (!folder.isEmpty())
        QVERIFY(all.save(folder + QStringLiteral("/berth.png")));
}

TAVOLINS_TEST_MAIN(tst_Berth)
#include "tst_berth.moc"

#pragma once

#include "support/renderer.h"
#include "support/testcase.h"

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQml/QQmlEngine>

#include <functional>
#include <memory>
#include <vector>

class QQuickItem;
class QQuickWindow;
class Theme;

/// Base of the tests that show controls in the style of this build.
class ControlsTestCase : public TestCase
{
    Q_OBJECT

protected:
    /// The colors by which items paint, by the place of the item and the name of the property.
    using Colors = QMap<QString, QColor>;

    /// One row for each control that Qt has, with a column "control".
    static void addControlRows();

    QQmlEngine *engine() const;

    /// Creates an object from \a qml. Errors go to the log, where they fail the test; null then.
    /// The object lives until the end of the test function.
    QObject *create(const QByteArray &qml);

    /// Shows an ApplicationWindow with \a body in it, whose id is "window". Null if that fails.
    QQuickWindow *show(const QByteArray &body);

    /// Shows all looks of \a control beside each other, with the bindings \a common and those of
    /// the window. Null if that fails.
    QQuickWindow *showSample(const QString &control, const QByteArray &common = QByteArray(),
                             const QByteArray &ofWindow = QByteArray());

    /// Closes all windows and destroys what create() made.
    void closeAll();

    /// The color of each item in \a window that is seen; that of the window is one of them.
    static Colors colors(QQuickWindow *window);
    /// \overload of what is in \a item.
    static Colors colors(QQuickItem *item);

    /// What is painted in \a window.
    static QImage picture(QQuickWindow *window);

    /// The first one for which \a matches holds, of \a item and all that is below it; null if none.
    static QQuickItem *find(QQuickItem *item, const std::function<bool(QQuickItem *)> &matches);
    /// The item with the object name \a name in \a window, null if there is none.
    static QQuickItem *find(QQuickWindow *window, const char *name);
    /// The samples that showSample() shows in \a window, popups left out.
    static QList<QQuickItem *> samples(QQuickWindow *window);

    /// The text of a theme file with \a title whose seven colors are around \a hue, from 0 to 359,
    /// and so are those of its classes "primary", "danger" and "muted".
    static QByteArray themeAround(const QString &title, int hue, int fontSize = 14);

    /// The theme whose file \a name, in folder(), holds \a text, made current.
    Theme *makeCurrent(const QString &name, const QByteArray &text);

    /// Where a file of the style is, as a URL.
    static QUrl styleFile(const QString &name);

    /// Titles of the bundled themes, which are loaded by the first call.
    static QStringList bundledThemes();
    static void switchTo(const QString &title);

protected Q_SLOTS:
    void initTestCase();
    void cleanup();

private:
    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<QQmlEngine> m_engine;
    std::vector<std::unique_ptr<QObject>> m_objects;
};

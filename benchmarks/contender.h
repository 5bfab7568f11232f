#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QObject;
class QQmlEngine;

/// How one contender's items are written in QML, and how its look is switched.
///
/// An item binds four values: its color, its border's color, its radius and a font. A peer that
/// has no radius or no font binds another of its colors instead, so that all bind four values.
struct Contender
{
    QString name;
    QString imports;
    /// The item that holds all items, and its lines.
    QString rootType = QStringLiteral("Item");
    QString rootLines;
    /// Lines of every item before its bindings.
    QString itemLines;
    /// Expressions for the four values. Empty: the plain item, which has constants.
    QString background;
    QString foreground;
    QString corner;
    QString face;
    /// Types of the last two; a corner of type "radius" is the rectangle's own radius.
    QString cornerType = QStringLiteral("radius");
    QString faceType = QStringLiteral("font");
    QString itemType = QStringLiteral("Rectangle");
    /// What has to be there before QML is loaded.
    std::function<void(QQmlEngine *)> prepare = [](QQmlEngine *) {};
    /// Switches to the look of that index. Null for contenders that have nothing to switch.
    std::function<void(int look, QObject *root)> show;
    /// Writes another look into the file of the current theme, and reads that file anew. Null for
    /// contenders without files.
    std::function<void(int look)> rewrite;
    std::function<void()> reload;
    /// Whether the values are those of the looks, so that items can be compared with them.
    bool showsLooks = true;
    /// Comes from outside and may be missing on the machine.
    bool isPeer = false;

    static const Contender *named(const QString &name);
    static QStringList names();
};

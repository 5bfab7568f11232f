#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Controls in one of the styles of Qt Quick Controls: making each of them, and switching a page of
/// them.
struct ControlScenario
{
    QString style;
    /// How many of each control are made.
    int count = 0;
    /// Whether the two themes differ in fonts and radius, as themes do, or in colors alone, as
    /// those of Material.
    bool fontsDiffer = false;

    /// Makes every control; each has a phase of its own name. \return the time of each, and the
    /// number of objects that one is made of as "objects"; else an object with "unavailable" or
    /// "error".
    QJsonObject create() const;

    /// Switches a page of 300 controls of all kinds. \return the time of a switch, else as above.
    QJsonObject switchPage() const;

    static QStringList styles();
};

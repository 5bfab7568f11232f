#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

struct Contender;

/// The life of many items: create them, switch their look, destroy them.
struct ItemScenario
{
    enum class Measurement {
        /// Creation, switches and destruction, and the heap that the items hold.
        Life,
        /// Destruction alone.
        Destruction,
        /// The evaluations of each binding in a switch, counted.
        Evaluations,
        /// Reading the current theme's file anew.
        Reload,
    };
    enum class DestroyOrder { Creation, Reverse, Random };

    const Contender *contender = nullptr;
    QString shape;
    int count = 0;
    DestroyOrder order = DestroyOrder::Creation;
    Measurement measurement = Measurement::Life;

    /// \return what was measured, each per item; on failure an object with "unavailable" (a peer
    /// that is not installed) or "error".
    QJsonObject run() const;

    static QStringList shapes();
};

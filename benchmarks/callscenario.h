#pragma once

#include <QtCore/QJsonObject>

/// The calls that applications make most, on an item with three class names. Each is given its
/// longest way: the answer is found at the class name that is looked at last, or at none.
struct CallScenario
{
    int count = 0;

    QJsonObject run() const;
};

#pragma once

/// The number of QObjects that were created and not destroyed while it lives, in all classes,
/// Qt's own included. Only one may live at a time.
class ObjectCount
{
public:
    ObjectCount();
    ~ObjectCount();

    ObjectCount(const ObjectCount &) = delete;
    ObjectCount &operator=(const ObjectCount &) = delete;

    int value() const;
};

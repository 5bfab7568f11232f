#include "theme/deferreddeletion.h"

#include "theme/registry.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"

namespace {

bool isUnloaded = false;

/// The objects whose deletion is scheduled.
template <typename Object>
class Pending
{
public:
    Pending() = default;
    Pending(const Pending &) = delete;
    Pending &operator=(const Pending &) = delete;

    ~Pending()
    {
        isUnloaded = true;
        while (!m_objects.objects().isEmpty())
            delete m_objects.objects().last();
    }

    void add(Object *object)
    {
        if (!m_objects.contains(object))
            m_objects.enter(object);
        object->deleteLater();
    }

private:
    Registry<Object> m_objects;
};

template <typename Object>
void deleteLater(Object *object)
{
    if (isUnloaded) {
        delete object;
        return;
    }
    static Pending<Object> pending;
    pending.add(object);
}

} // namespace

void DeferredDeletion::schedule(Theme *theme)
{
    deleteLater(theme);
}

void DeferredDeletion::schedule(ThemePrivate *data)
{
    deleteLater(data);
}

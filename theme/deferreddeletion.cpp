#include "theme/deferreddeletion.h"

#include "theme/registry.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"
#include "values/runningcall.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

bool isUnloaded = false;

} // namespace

/// The objects that die with this one, which the event loop deletes.
class DeferredDeletion::Batch : public QObject
{
public:
    ~Batch() override;

    /// Whether what is scheduled now can wait here: an event loop within the one that was running
    /// may not delete these objects, and the events of an application that is gone never come.
    bool takes() const
    {
        return m_loopLevel == QThread::currentThread()->loopLevel()
                && m_application == QCoreApplication::instance();
    }

    void add(Theme *theme) { m_themes.enter(theme); }
    void add(ThemePrivate *data) { m_data.enter(data); }

    /// Takes all objects out and hands each to \a function.
    template <typename Function>
    void takeAll(const Function &function)
    {
        takeAll(m_themes, function);
        takeAll(m_data, function);
    }

private:
    template <typename Object, typename Function>
    static void takeAll(Registry<Object> &registry, const Function &function)
    {
        while (!registry.objects().empty()) {
            Object *object = registry.objects().back();
            registry.leave(object);
            function(object);
        }
    }

    Registry<Theme> m_themes;
    Registry<ThemePrivate> m_data;
    const int m_loopLevel = QThread::currentThread()->loopLevel();
    const QCoreApplication *const m_application = QCoreApplication::instance();
};

struct DeferredDeletion::Queue
{
    std::vector<Batch *> batches;
    /// What was in use when its turn came.
    const std::unique_ptr<Batch> kept = std::make_unique<Batch>();

    Queue() = default;
    Queue(const Queue &) = delete;
    Queue &operator=(const Queue &) = delete;

    ~Queue()
    {
        isUnloaded = true;
        RunningCall::whenReturned(nullptr);
        while (!batches.empty())
            delete batches.back();
    }
};

DeferredDeletion::Batch::~Batch()
{
    Queue &all = queue();
    const auto place = std::find(all.batches.begin(), all.batches.end(), this);
    if (place != all.batches.end())
        all.batches.erase(place);
    takeAll([&all](auto *object) {
        if (isUnloaded || !object->isInUse()) {
            delete object;
            return;
        }
        all.kept->add(object);
        RunningCall::whenReturned(&DeferredDeletion::scheduleKept);
    });
}

DeferredDeletion::Queue &DeferredDeletion::queue()
{
    static Queue queue;
    return queue;
}

/// A call has returned, so that what was kept may be free now.
void DeferredDeletion::scheduleKept()
{
    RunningCall::whenReturned(nullptr);
    queue().kept->takeAll([](auto *object) { schedule(object); });
}

template <typename Object>
void DeferredDeletion::add(Object *object)
{
    if (isUnloaded) {
        delete object;
        return;
    }
    if (object->isDeletionScheduled())
        return;
    std::vector<Batch *> &batches = queue().batches;
    const auto open = std::find_if(batches.cbegin(), batches.cend(),
                                   [](const Batch *batch) { return batch->takes(); });
    if (open != batches.cend()) {
        (*open)->add(object);
        return;
    }
    batches.push_back(new Batch);
    batches.back()->add(object);
    batches.back()->deleteLater();
}

void DeferredDeletion::schedule(Theme *theme)
{
    add(theme);
}

void DeferredDeletion::schedule(ThemePrivate *data)
{
    add(data);
}

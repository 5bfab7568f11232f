#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

/// Writes down the signals of several objects in the order in which they are emitted.
///
/// The signals are found through the meta-object, so one that somebody adds is recorded as well.
class SignalRecorder : public QObject
{
public:
    SignalRecorder() = default;
    /// Records \a object under its signals' plain names.
    explicit SignalRecorder(QObject *object);

    /// Records all signals of \a object but those of QObject itself, as "prefix.signal", or
    /// "signal" if the \a prefix is empty. A text argument follows in parentheses.
    void watch(QObject *object, const QString &prefix = QString());

    /// Called at each signal, after it has been written down.
    void onSignal(const std::function<void(const QString &)> &handler);

    /// What has been recorded since the last call.
    QStringList take();

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    struct Source
    {
        QString name;
        bool hasText;
    };

    QList<Source> m_sources;
    QStringList m_record;
    std::function<void(const QString &)> m_handler;
};

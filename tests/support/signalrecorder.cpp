#include "support/signalrecorder.h"

#include <QtCore/QMetaMethod>

SignalRecorder::SignalRecorder(QObject *object)
{
    watch(object);
}

void SignalRecorder::watch(QObject *object, const QString &prefix)
{
    const QMetaObject *meta = object->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        const QString name = QString::fromLatin1(method.name());
        const Source source = { prefix.isEmpty() ? name : prefix + QLatin1Char('.') + name,
                                method.parameterCount() == 1
                                        && method.parameterType(0) == QMetaType::QString };
        // Each source has a method of its own past those of QObject; qt_metacall() answers them.
        QMetaObject::connect(object, i, this,
                             QObject::staticMetaObject.methodCount() + m_sources.size(),
                             Qt::DirectConnection);
        m_sources.append(source);
    }
}

void SignalRecorder::onSignal(const std::function<void(const QString &)> &handler)
{
    m_handler = handler;
}

QStringList SignalRecorder::take()
{
    QStringList record;
    record.swap(m_record);
    return record;
}

int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    const Source source = m_sources.at(id);
    QString entry = source.name;
    if (source.hasText) {
        entry += QLatin1Char('(') + *static_cast<const QString *>(arguments[1]) + QLatin1Char(')');
    }
    m_record.append(entry);
    if (m_handler)
        m_handler(entry);
    return -1;
}

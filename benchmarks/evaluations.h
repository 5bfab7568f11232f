#pragma once

#include <QtCore/QObject>
#include <QtCore/QVector>

/// Counts how often each of the four bindings of the items is evaluated.
class Evaluations : public QObject
{
    Q_OBJECT

public:
    static Evaluations *instance();

    Q_INVOKABLE void count(int binding);

    void clear();
    QVector<int> counts() const;

private:
    QVector<int> m_counts = QVector<int>(4);
};

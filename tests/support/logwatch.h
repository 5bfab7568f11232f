#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Catches Qt's log while it lives. Only one may live at a time.
class LogWatch
{
public:
    LogWatch();
    ~LogWatch();

    LogWatch(const LogWatch &) = delete;
    LogWatch &operator=(const LogWatch &) = delete;

    /// Announces that \a message will be logged exactly \a count times (in all calls together).
    void expect(const QString &message, int count = 1);

    /// What is wrong so far: messages nobody expected, and expected ones that did not come or came
    /// too rarely. Empty when all is well. Forgets everything it has seen and expected.
    QStringList takeProblems();
};

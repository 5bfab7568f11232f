#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

/// Loading a folder of theme files.
struct LoadScenario
{
    enum class Reader {
        /// The catalogue.
        Tavolins,
        /// What can't be saved: listing the folder, reading the files and parsing their JSON.
        Json,
        /// What `tavolins check` does with the folder.
        Checker,
    };

    Reader reader = Reader::Tavolins;
    /// What the folder holds, one of folders().
    QString folder;
    int count = 0;

    QJsonObject run() const;

    static QStringList folders();
};

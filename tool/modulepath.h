#pragma once

#include <QtCore/QString>

/// The import path of the QML module beside the executable, built or installed.
QString modulePath();

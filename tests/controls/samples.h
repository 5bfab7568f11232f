#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// How controls are written so that each of their parts is seen.
namespace Samples {

/// The controls that styles have a file for, read from Qt's own installed style.
QStringList controls();

/// The file of \a control in a style of Qt's own, in its plainest one unless \a style is named.
QString qtFile(const QString &control, const QString &style = QString());

/// Whether \a control is a popup, which is no item.
bool isPopup(const QString &control);

/// The controls that paint nothing themselves.
bool paintsNothing(const QString &control);

/// QML of \a control, once for each look it has (highlighted, checked, flat), all with the bindings
/// \a common.
QList<QByteArray> looks(const QString &control, const QByteArray &common = QByteArray());

/// The import lines that the QML of samples needs.
QByteArray imports();

} // namespace Samples

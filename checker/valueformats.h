#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QString>
#include <QtCore/QVector>

struct EffectiveValue;
struct EffectiveValues;
struct ValueOrigin;

/// A value that two themes differ in. At most one of both is null.
struct ValueDifference
{
    const EffectiveValue *left;
    const EffectiveValue *right;
};
Q_DECLARE_TYPEINFO(ValueDifference, Q_PRIMITIVE_TYPE);

/// Writes the values of themes for people and for programs.
namespace ValueFormats {

/// \a value as people write it: "#rrggbb" (or "#aarrggbb" where it is not opaque), words, numbers.
QString text(const QVariant &value);

/// Where a value comes from, in a few words.
QString text(const ValueOrigin &origin);

/// The path of \a file, from the working folder when it lies in there.
QString shortPath(const QString &file);

/// A table for people. With \a colored, a patch of the color stands beside each color.
QString asText(const EffectiveValues &values, bool colored);

/// An object with title, file, classes and the values, each with its origin.
QString asJson(const EffectiveValues &values);

/// Custom properties, below the selector of the class names.
QString asCss(const EffectiveValues &values);

/// A QtObject with the same properties as the attached Theme.
QString asQml(const EffectiveValues &values);

/// The values that are not the same in \a left and \a right, in their order. Styles count as the
/// same when the files are.
QVector<ValueDifference> differences(const EffectiveValues &left, const EffectiveValues &right);

/// The differences as a table for people; empty when there are none.
QString differencesAsText(const EffectiveValues &left, const EffectiveValues &right, bool colored);

/// An object with both themes and the differences, each with values and origins.
QString differencesAsJson(const EffectiveValues &left, const EffectiveValues &right);

} // namespace ValueFormats

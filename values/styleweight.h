#pragma once

#include <QtCore/QString>

/// A named style of a font family, and the weight it had when it was looked up.
///
/// What the font database answers changes when fonts are registered, so a font that was computed
/// from an answer is good only as long as that answer stands.
class StyleWeight
{
public:
    StyleWeight(const QString &family, const QString &style);

    /// The weight; -1 if the family has no such style.
    int weight() const { return m_weight; }

    /// Whether the font database still gives the same answer.
    bool stillHolds() const;

private:
    QString m_family;
    QString m_style;
    int m_weight;
};

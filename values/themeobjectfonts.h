#pragma once

#include "values/themeobject.h"

#include <QtGui/QFont>

#include <array>
#include <vector>

class StyleWeight;

/// The font group of a theme: body font, a second text font and four headings.
///
/// All six font properties behave alike: writing a font that compares equal to the stored one
/// does nothing, any other font is stored and then announced by the property's notify signal.
class TAVOLINS_EXPORT ThemeObjectFonts : public ThemeObject
{
    Q_OBJECT

    /// Body text. Default of all six fonts: the application's default font.
    Q_PROPERTY(QFont mainFont READ mainFont WRITE setMainFont NOTIFY mainFontChanged)
    /// A second text font.
    Q_PROPERTY(QFont alternateFont READ alternateFont WRITE setAlternateFont NOTIFY
                       alternateFontChanged)
    /// Heading level 1, the largest.
    Q_PROPERTY(QFont h1Font READ h1Font WRITE setH1Font NOTIFY h1FontChanged)
    /// Heading level 2.
    Q_PROPERTY(QFont h2Font READ h2Font WRITE setH2Font NOTIFY h2FontChanged)
    /// Heading level 3.
    Q_PROPERTY(QFont h3Font READ h3Font WRITE setH3Font NOTIFY h3FontChanged)
    /// Heading level 4, the smallest.
    Q_PROPERTY(QFont h4Font READ h4Font WRITE setH4Font NOTIFY h4FontChanged)
    /// Multiplier of every point size read from a theme document: always 0.75.
    Q_PROPERTY(double fontFactor READ fontFactor NOTIFY fontFactorChanged)

public:
    explicit ThemeObjectFonts(QObject *parent = nullptr);
    ~ThemeObjectFonts() override;

    /// Writes each of \a other's fonts through the setters, in the order of the properties, so
    /// that exactly the fonts that differ are announced. The factor and the parent stay.
    ///
    /// If a handler of one of those signals assigns to this group again, that later assignment
    /// stands and the rest of this one is dropped.
    ThemeObjectFonts &operator=(const ThemeObjectFonts &other);

    QFont mainFont() const;
    void setMainFont(const QFont &font);
    QFont alternateFont() const;
    void setAlternateFont(const QFont &font);
    QFont h1Font() const;
    void setH1Font(const QFont &font);
    QFont h2Font() const;
    void setH2Font(const QFont &font);
    QFont h3Font() const;
    void setH3Font(const QFont &font);
    QFont h4Font() const;
    void setH4Font(const QFont &font);
    double fontFactor() const;

    /// Reads a "fonts" object with the font descriptions "main", "alternate", "h1" to "h4".
    ///
    /// The main font is always rebuilt, also when the object leaves it out. A font that is left
    /// out takes everything but its size from the font before it; headings then get the main
    /// font's size plus 5, 4, 3 and 1 points, the last two in whole points. Missing members are
    /// added to \a object as null values, and a description of the wrong type counts as left out.
    /// \a deriveMissing has no effect on fonts.
    void load(QJsonObject &object, bool deriveMissing) override;

    /// Sets all six fonts to the application's default font.
    void initDefaults() override;

    /// Builds a font from a font \a description.
    ///
    /// Members: "family" (string), "pointSize" (number, multiplied by fontFactor()), "bold" and
    /// "italic" (booleans), "capitalization" ("allUppercase", "allLowercase", "smallCaps",
    /// "capitalize", in any letter case; all else, also when it is missing, is mixed case),
    /// "letterSpacing" (number, in pixels) and "weight" (the name of a style of the family). Any
    /// other member that is missing or of the wrong type takes \a base's value; the size then is
    /// scaled as well. "weight" has the
    /// last word over "bold", also when it is missing: the weight is then \a base's. A size that
    /// is not above zero leaves the application's default size.
    QFont readFont(const QJsonObject &description, const QFont &base) const;

Q_SIGNALS:
    void mainFontChanged();
    void alternateFontChanged();
    void h1FontChanged();
    void h2FontChanged();
    void h3FontChanged();
    void h4FontChanged();
    void fontFactorChanged();

private:
    friend class ThemePrivate;

    enum Role { Main, Alternate, H1, H2, H3, H4, RoleCount };
    typedef std::array<QFont, RoleCount> Values;

    explicit ThemeObjectFonts(const Values &values);

    static std::vector<StyleWeight> styleWeights(const QJsonObject &object, const Values &fonts);

    void setFont(Role role, const QFont &font);
    void setFonts(const Values &fonts);

    Values m_fonts;
    double m_fontFactor;
};

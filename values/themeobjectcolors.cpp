#include "values/themeobjectcolors.h"

#include "values/runningcall.h"

#include <QtCore/QVariant>
#include <QtGui/QPalette>

namespace {

// Defaults and documents lighten by different factors. Themes in use are tuned to both, so
// unifying them would change how they look.
const int defaultLighterFactor = 150;
const int documentLighterFactor = 200;
const int darkerFactor = 200;

const char *const baseWords[] = { "foreground", "background", "selection" };

struct Shade
{
    const char *word;
    QColor (*derive)(const QColor &base);
};

const Shade shades[] = {
    { "", nullptr },
    { "lighter", [](const QColor &base) { return base.lighter(documentLighterFactor); } },
    { "darker", [](const QColor &base) { return base.darker(darkerFactor); } },
};

QString memberName(const QString &shadeWord, const QString &baseWord)
{
    if (shadeWord.isEmpty())
        return baseWord;
    return shadeWord + baseWord.at(0).toUpper() + baseWord.mid(1).toLower();
}

} // namespace

ThemeObjectColors::ThemeObjectColors(QObject *parent)
    : ThemeObject(parent)
{
    groupName = QStringLiteral("colors");
}

/// A group without a parent that holds \a values from the start.
ThemeObjectColors::ThemeObjectColors(const Values &values)
    : m_colors(values)
{
    groupName = QStringLiteral("colors");
}

ThemeObjectColors::~ThemeObjectColors() = default;

ThemeObjectColors &ThemeObjectColors::operator=(const ThemeObjectColors &other)
{
    const Values colors = other.m_colors;
    setColors(colors);
    return *this;
}

QColor ThemeObjectColors::foreground() const
{
    return m_colors[Foreground];
}

void ThemeObjectColors::setForeground(const QColor &color)
{
    setColor(Foreground, color);
}

QColor ThemeObjectColors::lighterForeground() const
{
    return m_colors[LighterForeground];
}

void ThemeObjectColors::setLighterForeground(const QColor &color)
{
    setColor(LighterForeground, color);
}

QColor ThemeObjectColors::darkerForeground() const
{
    return m_colors[DarkerForeground];
}

void ThemeObjectColors::setDarkerForeground(const QColor &color)
{
    setColor(DarkerForeground, color);
}

QColor ThemeObjectColors::background() const
{
    return m_colors[Background];
}

void ThemeObjectColors::setBackground(const QColor &color)
{
    setColor(Background, color);
}

QColor ThemeObjectColors::lighterBackground() const
{
    return m_colors[LighterBackground];
}

void ThemeObjectColors::setLighterBackground(const QColor &color)
{
    setColor(LighterBackground, color);
}

QColor ThemeObjectColors::darkerBackground() const
{
    return m_colors[DarkerBackground];
}

void ThemeObjectColors::setDarkerBackground(const QColor &color)
{
    setColor(DarkerBackground, color);
}

QColor ThemeObjectColors::selection() const
{
    return m_colors[Selection];
}

void ThemeObjectColors::setSelection(const QColor &color)
{
    setColor(Selection, color);
}

void ThemeObjectColors::load(QJsonObject &object, bool deriveMissing)
{
    const RunningCall self(m_calls);
    for (const char *baseWord : baseWords) {
        const QString base = QLatin1String(baseWord);
        for (const Shade &shade : shades) {
            const QString member = memberName(QLatin1String(shade.word), base);
            const QByteArray name = member.toLatin1();
            // The words also compose names that are no property (shades of the selection).
            if (!property(name.constData()).isValid())
                continue;
            if (object.contains(member)) {
                setProperty(name.constData(), object.value(member).toString());
            } else if (deriveMissing && shade.derive) {
                const QColor color = property(baseWord).value<QColor>();
                // Written as "#rrggbb" on purpose: a derived shade is always opaque.
                setProperty(name.constData(), shade.derive(color).name());
            }
            if (!self.isAlive())
                return;
        }
    }
}

void ThemeObjectColors::initDefaults()
{
    const QPalette palette;
    const QColor &foreground = palette.color(QPalette::Current, QPalette::WindowText);
    const QColor &background = palette.color(QPalette::Current, QPalette::Window);
    // The selection is the color of selected text, so it is not the Highlight role.
    const QColor &selection = palette.color(QPalette::Current, QPalette::HighlightedText);
    setColors({ { foreground, foreground.lighter(defaultLighterFactor),
                  foreground.darker(darkerFactor), background,
                  background.lighter(defaultLighterFactor), background.darker(darkerFactor),
                  selection } });
}

void ThemeObjectColors::setColor(Role role, const QColor &color)
{
    static void (ThemeObjectColors::*const changed[RoleCount])() = {
        &ThemeObjectColors::foregroundChanged,        &ThemeObjectColors::lighterForegroundChanged,
        &ThemeObjectColors::darkerForegroundChanged,  &ThemeObjectColors::backgroundChanged,
        &ThemeObjectColors::lighterBackgroundChanged, &ThemeObjectColors::darkerBackgroundChanged,
        &ThemeObjectColors::selectionChanged,
    };
    if (m_colors[role] == color)
        return;
    m_colors[role] = color;
    ++m_changes;
    const RunningCall self(m_calls);
    Q_EMIT(this->*changed[role])();
}

void ThemeObjectColors::setColors(const Values &colors)
{
    RunningCall::supersede(m_calls);
    const RunningCall self(m_calls);
    for (int role = 0; role < RoleCount; ++role) {
        setColor(Role(role), colors[size_t(role)]);
        // A handler may have assigned anew, or destroyed the group: what it did stands.
        if (!self.isCurrent())
            return;
    }
}

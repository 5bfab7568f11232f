#include "callscenario.h"

#include "phase.h"
#include "themefiles.h"

#include "manager/thememanager.h"

#include <QtCore/QStringList>

#include <functional>
#include <memory>

namespace {

struct Call
{
    const char *name;
    /// \return whether the answer was right.
    std::function<bool()> run;
};

} // namespace

QJsonObject CallScenario::run() const
{
    const ThemeFiles files;
    files.writeLooks();
    files.writeStyles();
    ThemeManager::getInstance()->loadThemes(files.path(), ThemeFiles::lookTitle(0));

    QObject item;
    Theme *theme = Theme::qmlAttachedProperties(&item);
    const QString names = QStringList{ ThemeFiles::className(0), ThemeFiles::className(1),
                                       ThemeFiles::className(2) }
                                  .join(QLatin1Char(' '));
    theme->setClassnames(names);

    const QString lastClass = ThemeFiles::className(2);
    const QString style = ThemeFiles::styleName(0);
    const QString path = ThemeFiles::deepPath();
    const QVariant none;
    const Call calls[] = {
        { "hasClassname", [&] { return theme->hasClassname(lastClass); } },
        { "getStyle", [&] { return !theme->getStyle(style, names).isEmpty(); } },
        { "getClassValue", [&] { return theme->getClassValue(path, none).isValid(); } },
    };
    QJsonObject result;
    for (const Call &call : calls) {
        Phase phase(call.name);
        int right = 0;
        call.run();
        phase.begin();
        for (int i = 0; i < count; ++i)
            right += call.run();
        phase.end();
        if (right != count)
            return { { QStringLiteral("error"), QStringLiteral("wrong answers") } };
        result.insert(QLatin1String(call.name) + QLatin1String("_ns"), phase.finish() / count);
    }
    return result;
}

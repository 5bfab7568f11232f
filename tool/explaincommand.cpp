#include "checker/codes.h"
#include "tool/command.h"
#include "tool/subcommands.h"

int runExplain(const QStringList &arguments)
{
    Command command(
            QStringLiteral("explain"),
            QStringLiteral("Explains a code of `" TOOL_NAME " check`: what it means, an example, "
                           "and the mend. `" TOOL_NAME " check --list-codes` prints all codes."));
    command.parser().addPositionalArgument(QStringLiteral("CODE"),
                                           QStringLiteral("The code, as in brackets at the end of "
                                                          "a problem."));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList names = command.parser().positionalArguments();
    if (names.size() != 1)
        return command.refuse(
                QStringLiteral("name one code; `" TOOL_NAME " check --list-codes` prints all"));
    const CodeInfo *info = Codes::find(names.first());
    if (!info)
        return command.refuse(noSuchCode(names.first()));
    print(QStringLiteral("%1 (%2): %3\n\n%4\n")
                  .arg(info->name, Codes::severityName(info->severity), info->summary,
                       Codes::text(info->code)));
    return Success;
}

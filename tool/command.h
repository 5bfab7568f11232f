#pragma once

#include <QtCore/QCommandLineParser>
#include <QtCore/QString>
#include <QtCore/QStringList>

enum ExitCode {
    /// Nothing to complain of.
    Success = 0,
    /// There are problems.
    ProblemsFound = 1,
    /// Wrong arguments, or something that can't be read or written.
    UsageError = 2
};

/// The arguments of a subcommand. Understands --help by itself.
class Command
{
public:
    /// \a description is the first paragraph of the help text.
    Command(const QString &name, const QString &description);

    /// Where the options and positional arguments of the subcommand are entered.
    QCommandLineParser &parser() { return m_parser; }

    /// Reads \a arguments, those behind the subcommand's name.
    /// \return whether the subcommand is to go on; if not, exitCode() is what to end with, and
    ///         what there is to say has been said.
    bool parse(const QStringList &arguments);

    int exitCode() const { return m_exitCode; }

    /// Writes \a message on standard error, where it follows the names of program and subcommand:
    /// it begins with a small letter and has no full stop. \return UsageError, to end with.
    int complain(const QString &message) const;

    /// Says that an argument is wrong and where help is. \return UsageError, to end with.
    int refuse(const QString &message) const;

private:
    QString m_name;
    QCommandLineParser m_parser;
    QCommandLineOption m_help;
    int m_exitCode = Success;
};

/// \a words as "text, json or sarif".
QString orList(const QStringList &words);

/// What to say of the \a value of an option for \a what that is none of \a words: "the format "xml"
/// is not text or json".
QString notOneOf(const QString &what, const QString &value, const QStringList &words);

/// What to say of a \a name that no code of `check` has, with the one that may be meant.
QString noSuchCode(const QString &name);

/// What to add about the one of \a candidates that may be meant by \a name; empty if none is near.
QString didYouMean(const QString &name, const QStringList &candidates);

/// Writes \a text on standard output.
void print(const QString &text);

/// Whether something could not be printed.
bool isOutputLost();

/// What to end with after a subcommand ended with \a result: UsageError, said on standard error,
/// when output is lost.
int exitCodeOf(int result);

#pragma once

#include <QtCore/QCommandLineParser>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The command line of the gallery.
///
/// It is read before there is an application, because it decides which platform Qt starts on.
class CommandLine
{
public:
    CommandLine();

    /// Reads \a arguments, the first of which is the program.
    /// \return whether they are right; if not, errorText() says what is wrong.
    bool parse(const QStringList &arguments);

    QString errorText() const;
    /// Needs an application.
    QString helpText() const;

    bool helpWanted() const;
    bool versionWanted() const;
    /// Where pictures are to be written; empty when a window is wanted.
    QString shotFolder() const;
    /// Title of the theme to begin with; empty for the first one.
    QString theme() const;
    /// The folder of themes; empty for the bundled ones.
    QString folder() const;

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
    QCommandLineOption m_shot;
    QCommandLineOption m_theme;
    QString m_error;
};

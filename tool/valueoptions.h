#pragma once

#include <QtCore/QCommandLineParser>
#include <QtCore/QStringList>

/// The options that subcommands have in common which tell the values of themes.
class ValueOptions
{
public:
    /// Enters the options into \a parser, which must outlive this. The first of \a formats is the
    /// default.
    ValueOptions(QCommandLineParser *parser, const QStringList &formats);

    /// What is wrong with what the parser has read; empty if nothing is.
    QString problem() const;

    QString classnames() const { return m_parser->value(m_classes); }
    QString format() const { return m_parser->value(m_format); }
    /// The folder in which themes are looked for by title.
    QString folder() const { return m_parser->value(m_folder); }
    /// Whether to print in colors.
    bool isColored() const;

private:
    const QCommandLineParser *m_parser;
    QStringList m_formats;
    QCommandLineOption m_classes;
    QCommandLineOption m_format;
    QCommandLineOption m_folder;
    QCommandLineOption m_color;
};

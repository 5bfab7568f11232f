#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// What a program is run with: the plugin, or types made the usual way in its place.
enum class Subject { Plugin, StandIn };

/// The whole QML document of a \a program as ProgramWriter writes it.
QByteArray programDocument(const QByteArray &program, Subject subject);

/// Runs a \a program in an engine, a window and a catalogue of its own, and tells what did not
/// hold, each with a word for its kind and a colon in front. Empty when all is well:
///
/// - every living object shows what a new one with the same class names shows, from the next
///   switch on;
/// - what the program created is gone after it, the connections of shared data as well;
/// - nothing was said on Qt's log, except that a handler's change came back to the binding that had
///   caused it.
///
/// Of the stand-in only the last two are asked.
QStringList runProgram(const QByteArray &program, Subject subject);

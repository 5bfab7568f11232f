#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <random>

/// Makes folders of themes by chance, the same ones for the same seed: right and wrong values for
/// every key, themes that extend each other, titles that occur twice, classes and styles.
class RandomThemes
{
public:
    explicit RandomThemes(unsigned seed);

    /// File names, with folders, and contents of another folder.
    QHash<QString, QByteArray> folder();

    /// Class names of an item: none, one or several, some of which are no classes.
    QString classnames();

private:
    int below(int count);
    bool chance(int percent);
    template <typename Choices>
    auto oneOf(const Choices &choices);

    QByteArray color();
    QByteArray colors();
    QByteArray font();
    QByteArray fonts();
    QByteArray scope(bool isClass);
    QByteArray theme();

    std::mt19937 m_engine;
};

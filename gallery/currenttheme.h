#pragma once

#include "gallery/themefollower.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

class Theme;

/// What the window tells about the current theme beside its values: where it comes from, which
/// classes and styles it has, and what is wrong with its file.
///
/// Follows the edits of the file, and has the theme read it again when it can be applied. A file
/// that can't keeps the theme's last look and shows up as problem(). (The plugin itself watches the
/// file too and takes text that it can't parse for an empty document; that costs the theme its
/// title until the file is whole again, but no value.)
class CurrentTheme : public QObject
{
    Q_OBJECT

    /// Name of the theme file without its folder.
    Q_PROPERTY(QString fileName READ fileName NOTIFY changed)
    /// Title of the theme that it extends; empty if it extends none.
    Q_PROPERTY(QString extends READ extends NOTIFY changed)
    /// The names of its classes, the well-known ones first.
    Q_PROPERTY(QStringList classNames READ classNames NOTIFY changed)
    /// Where each of these classes comes from, in the same order: the title of the theme that it
    /// is inherited from, or empty text for the theme's own.
    Q_PROPERTY(QStringList classOrigins READ classOrigins NOTIFY changed)
    /// The styles as the two arguments of getStyle(), in maps with the members "style" and
    /// "classname", sorted.
    Q_PROPERTY(QVariantList styles READ styles NOTIFY changed)
    /// Why the file as it is now can't be applied; empty when it can.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    explicit CurrentTheme(QObject *parent = nullptr);

    QString fileName() const;
    QString extends() const;
    QStringList classNames() const;
    QStringList classOrigins() const;
    QVariantList styles() const;
    QString problem() const;

Q_SIGNALS:
    /// At least one of the properties has another value.
    void changed();

private:
    struct Description
    {
        QString fileName;
        QString extends;
        QStringList classNames;
        QStringList classOrigins;
        QVariantList styles;
        QString problem;

        bool operator==(const Description &other) const;
    };

    void follow(Theme *theme);
    void readAgain();
    void describe(const Theme *theme, const QString &problem);

    ThemeFollower m_follower;
    Description m_description;
};

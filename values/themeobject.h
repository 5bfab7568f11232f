#pragma once

#include "values/tavolinsexport.h"

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>

class RunningCall;

/// Base of the value groups of a theme (colors, fonts).
///
/// A group is a QObject whose notifying properties QML reads directly, and which reads its own
/// member of a theme document. Groups live on the GUI thread and are not locked.
class TAVOLINS_EXPORT ThemeObject : public QObject
{
    Q_OBJECT

public:
    explicit ThemeObject(QObject *parent = nullptr);
    ~ThemeObject() override;

    /// Reads the group's member \a object of a theme document.
    ///
    /// What a member of the wrong type or with unusable text does is told by each group; nothing
    /// is reported. Each value that changes emits its notify signal once.
    /// \param object the "colors" or "fonts" object; an implementation may add null members to it.
    /// \param deriveMissing whether values that the object leaves out are computed from the ones
    ///        they belong to instead of being kept.
    virtual void load(QJsonObject &object, bool deriveMissing) = 0;

    /// Gives every value of the group its default. Values that change emit their notify signals.
    virtual void initDefaults() = 0;

protected:
    /// The group's member key in a theme document.
    QString groupName;
    /// Reserved; always empty.
    QString groupText;
    /// Counts the changes of the group's values.
    unsigned m_changes = 0;
    /// The innermost call that is emitting the group's signals.
    RunningCall *m_calls = nullptr;

private:
    friend class Theme;
    friend class ThemePrivate;

    void loadMember(const QJsonObject &scope, bool deriveMissing);
};

#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

/// What writePictures() tells while it goes on.
class PictureReport
{
public:
    virtual ~PictureReport();

    /// The picture number \a number of \a count is about to be made, of the theme file \a name.
    virtual void begins(int number, int count, const QString &name) = 0;
    /// The picture was written to \a path.
    virtual void wrote(const QString &path) = 0;
    /// Something went wrong, in one line.
    virtual void failed(const QString &problem) = 0;
};

enum class PictureResult {
    /// All that was ordered.
    Written,
    /// A theme is broken, or a picture could not be written.
    Incomplete,
    /// No theme has the title of the order.
    NoSuchTheme
};

struct PictureOrder
{
    /// The folder of themes, as it is to be named in messages.
    QString themes;
    /// The folder to write to. It is created when it does not exist.
    QString destination;
    /// Title of the one theme to make a picture of; empty for all.
    QString title;
    /// Size of the pictures in pixels; the gallery's usual one when it is not valid.
    QSize size;
    /// Whether each theme gets a second picture, NAME-controls.png, of the page of all controls. It
    /// gets none where the style of the controls is not there.
    bool hasControls = false;
};

/// Writes a picture of the gallery's window for each theme of a folder, named after the theme file.
///
/// The catalogue has to hold the themes of that folder. A theme that is broken gets no picture and
/// keeps none of the others from theirs; a picture that can't be written ends the work.
PictureResult writePictures(const PictureOrder &order, PictureReport *report);

/// The smallest pictures in which the window is not cut.
QSize smallestPicture();

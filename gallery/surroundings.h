#pragma once

#include <QtCore/QString>

/// What the gallery finds around itself. It never needs an environment variable.
namespace Surroundings {

/// Chooses the platform and the renderer that Qt is about to start with. A choice that the
/// environment makes stands. Must be called before there is an application.
/// \param forPictures whether no window will be shown; the pictures are then the same everywhere.
/// \return whether a window would be seen by anybody.
bool choosePlatform(bool forPictures);

/// The import path of the QML module beside the executable, built or installed.
QString importPath();

/// Has Qt Quick Controls take the style "Tavolins" below \a importPath, whatever the environment
/// says: it is what the gallery shows. Must be called before the first control is loaded.
/// \return whether the style is there; it can be left out of a build.
bool chooseControlsStyle(const QString &importPath);

/// The folder of the bundled themes.
QString bundledThemes();

} // namespace Surroundings

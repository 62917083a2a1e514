#pragma once

#include <QString>

namespace kelo {

/// The names of the files in which a symbol is drawn.
struct SymbolFiles
{
    /// Themed icon names, for hosts that load icons themselves and tint symbolic ones.
    QString symbolic;
    QString urgent;
    /// A resource drawn for a grid of 22 pixels, for pictures of our own.
    QString drawing;
};

/// The files of a symbol, "calendar.badge.clock". Those of the plain clock for names that have none.
SymbolFiles symbolFiles(const QString &symbol);

/// A folder in which hosts find the icons by name. Empty if they are installed where every host looks.
///
/// An installation in another place brings its own folder. A program that was not installed writes the icons
/// into the user's runtime folder, once.
QString iconThemePath();

} // namespace kelo
